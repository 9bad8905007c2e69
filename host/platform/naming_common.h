// Names beside a file, alike on every system.
#pragma once

#include <filesystem>

namespace embedded_host::platform
{

/// The folder in which the file stands.
inline std::filesystem::path folderOf(const std::filesystem::path& file)
{
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

/// A name in the same folder that nobody can foresee.
std::filesystem::path temporaryBeside(const std::filesystem::path& target);

} // namespace embedded_host::platform
