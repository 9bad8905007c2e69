// Where the module's settings come from.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace embedded_host
{

/// The settings of a discovery: what is given wins over the file.
struct SettingsSource
{
    std::vector<std::pair<std::string, std::string>> given; ///< name and value; the last of a name wins
    std::optional<std::filesystem::path> file;              ///< none: the user's, then the system's folder is searched
};

} // namespace embedded_host
