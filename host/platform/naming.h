// What some POSIX systems can do beyond the standard, so that files appear whole and keep what they had. All of it has
// a fallback, so nothing here throws but copyAttributes.
#pragma once

#include <filesystem>
#include <sys/stat.h>

namespace embedded_host::platform
{

namespace fs = std::filesystem;

/// Opens a new file without a name, which can be given one later; -1 where that cannot be done.
int openNameless(const fs::path& folder, mode_t mode);

/// Names such a file. False with errno set; EEXIST when the name is taken.
bool giveName(int file, const fs::path& name);

/// Renames a file, unless the new name is taken. False with errno set when it is or this cannot be done.
bool renameToNew(const fs::path& from, const fs::path& to);

/// Exchanges two files' names at once. False with errno set, also where this cannot be done.
bool exchange(const fs::path& one, const fs::path& other);

/// Gives the open file the access list and the extended attributes of the one at the path, and no others. Throws
/// std::system_error.
void copyAttributes(const fs::path& from, int to);

/// Whether the symbolic link stands for a file that a process has open: following it by its text leads elsewhere.
bool standsForOpenFile(const fs::path& link);

} // namespace embedded_host::platform
