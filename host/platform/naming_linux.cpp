// Naming files and keeping their attributes on Linux.
#include "files.h"
#include "naming.h"
#include "naming_common.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

fs::path descriptorLink(int file) { return "/proc/self/fd/" + std::to_string(file); }

/// What a call that fills a buffer has to tell. Throws std::system_error.
template <class Call>
std::string filledBy(Call call)
{
    for (;;) {
        const ssize_t size = call(nullptr, 0);
        std::string held(static_cast<std::size_t>(std::max<ssize_t>(size, 0)), '\0');
        const ssize_t filled = size <= 0 ? size : call(held.data(), held.size());
        if (filled >= 0) {
            held.resize(static_cast<std::size_t>(filled));
            return held;
        }
        if (errno == ENOTSUP)
            return {};
        if (errno != ERANGE) // it grew in between
            throw std::system_error(FileFault::AttributesNotKept);
    }
}

/// The attributes' names, each with its NUL.
template <class Call>
std::vector<std::string> namesBy(Call call)
{
    const auto list = filledBy(call);
    std::vector<std::string> names;
    for (std::size_t at = 0; at < list.size(); at += names.back().size() + 1)
        names.emplace_back(list.c_str() + at);
    return names;
}

} // namespace

int openNameless(const fs::path& folder, mode_t mode)
{
    const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    // Only through this link can the file be named without more rights than usual.
    if (file >= 0 && access(descriptorLink(file).c_str(), F_OK) != 0) {
        close(file);
        return -1;
    }
    return file;
}

bool giveName(int file, const fs::path& name)
{
    return linkat(AT_FDCWD, descriptorLink(file).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool renameToNew(const fs::path& from, const fs::path& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    // Some file systems know no conditions, but every one takes a name once only.
    return errno == EINVAL && link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0;
}

bool exchange(const fs::path& one, const fs::path& other)
{
    return renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE) == 0;
}

void copyAttributes(const fs::path& from, int to)
{
    const auto wanted = namesBy([&](char* list, std::size_t size) { return llistxattr(from.c_str(), list, size); });
    for (const auto& name : namesBy([&](char*list, std::size_t size) { return flistxattr(to, list, size); }))
        // A default of the folder's. Labels that the system itself gives to every file stay.
        if (std::ranges::find(wanted, name) == wanted.end() && fremovexattr(to, name.c_str()) != 0 &&
            !name.starts_with("security."))
            throw std::system_error(FileFault::AttributesNotKept);
    for (const auto& name : wanted) {
        const auto value = filledBy(
            [&](char* buffer, std::size_t size) { return lgetxattr(from.c_str(), name.c_str(), buffer, size); });
        std::string held(value.size() + 1, '\0');
        const ssize_t size = fgetxattr(to, name.c_str(), held.data(), held.size());
        const bool same = size >= 0 && value == std::string_view(held).substr(0, static_cast<std::size_t>(size));
        if (!same && fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0)
            throw std::system_error(FileFault::AttributesNotKept);
    }
}

bool standsForOpenFile(const fs::path& link)
{
    struct statfs system
    {
    };
    return statfs(folderOf(link).c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

} // namespace embedded_host::platform
