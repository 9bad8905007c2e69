// Files that are their owner's alone, whatever the umask.
#pragma once

#include <filesystem>

namespace embedded_host::platform
{

/// The folder in which programs keep what they find out: the system's as an administrator, else the user's own; empty
/// when the surroundings name none.
std::filesystem::path stateFolder();

/// Makes the folder, and those around it, where they are missing. Throws std::system_error, as all of this does.
void makeOwnFolder(const std::filesystem::path& folder);

/// Makes an empty file where nothing is, and takes the file from all others where it is there. Never follows a link.
void makeOwnFile(const std::filesystem::path& file);

/// Whether the file is there and belongs to another user than the one whom this process works for.
bool isAnothers(const std::filesystem::path& file);

} // namespace embedded_host::platform
