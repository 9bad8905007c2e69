// The module's settings: the command line's, then the settings file's.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace embedded_host::services
{

/// Where the settings of a discovery come from.
struct SettingsSource
{
    std::vector<std::pair<std::string, std::string>> given; ///< name and value; the last of a name wins
    std::optional<std::filesystem::path> file;              ///< none: the user's, then the system's folder is searched
};

/// Reads the settings anew. Throws std::runtime_error that says what is wrong and where; the settings before stay.
void readSettings(const SettingsSource& source);

/// Logs what was set but never asked for since the last `readSettings`: most likely a mistyped name.
void reportUnusedSettings();

} // namespace embedded_host::services
