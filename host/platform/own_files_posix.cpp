// The owner's files on POSIX systems.
#include "own_files.h"

#include "files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail() { throw std::system_error(errno, std::generic_category()); }

/// An environment variable that names a folder; others than absolute paths count as not set.
std::filesystem::path folderIn(const char* name)
{
    const char* value = std::getenv(name);
    const std::filesystem::path folder(value == nullptr ? "" : value);
    return folder.is_absolute() ? folder : std::filesystem::path();
}

} // namespace

std::filesystem::path stateFolder()
{
    if (geteuid() == 0)
        return "/var/lib";
    if (auto own = folderIn("XDG_STATE_HOME"); !own.empty())
        return own;
    const auto home = folderIn("HOME");
    return home.empty() ? home : home / ".local" / "state";
}

void makeOwnFolder(const std::filesystem::path& folder)
{
    if (folder.empty() || std::filesystem::exists(folder))
        return;
    makeOwnFolder(folder.parent_path());
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST)
        fail();
    // The umask may have taken the owner's own rights too.
    if (chmod(folder.c_str(), S_IRWXU) != 0)
        fail();
}

void makeOwnFile(const std::filesystem::path& file)
{
    const int opened = open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
    if (opened < 0)
        fail();
    const OpenFile closing(opened);
    struct stat status
    {
    };
    if (fstat(opened, &status) != 0)
        fail();
    constexpr mode_t kPermissions = 07777;
    if ((status.st_mode & kPermissions) != (S_IRUSR | S_IWUSR) && fchmod(opened, S_IRUSR | S_IWUSR) != 0)
        fail();
}

bool isAnothers(const std::filesystem::path& file)
{
    struct stat status
    {
    };
    return lstat(file.c_str(), &status) == 0 && status.st_uid != geteuid();
}

} // namespace embedded_host::platform
