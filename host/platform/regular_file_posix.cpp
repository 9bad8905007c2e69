// Regular files on POSIX systems.
#include "regular_file.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail()
{
    if (errno == ENOMEM)
        throw std::bad_alloc();
    throw std::system_error(errno, std::generic_category());
}

/// Fails for everything but regular files.
void check(const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    if (!S_ISREG(status.st_mode))
        throw std::system_error(std::make_error_code(std::errc::not_supported));
}

std::intptr_t opened(const std::filesystem::path& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        fail();
    check(status);
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        fail();
    return descriptor;
}

} // namespace

RegularFile::RegularFile(const std::filesystem::path& path) : RegularFile(opened(path))
{
    struct stat status = {};
    if (fstat(static_cast<int>(handle_), &status) != 0)
        fail();
    check(status);
    size_ = static_cast<std::uint64_t>(status.st_size);
}

RegularFile::~RegularFile() { close(static_cast<int>(handle_)); }

std::size_t RegularFile::read(std::span<unsigned char> to)
{
    for (;;) {
        const auto held = ::read(static_cast<int>(handle_), to.data(), to.size());
        if (held >= 0)
            return static_cast<std::size_t>(held);
        // The kernel's own log is called a regular file, too; but a reader at its end would have to wait.
        if (errno == EAGAIN)
            throw std::system_error(std::make_error_code(std::errc::not_supported));
        if (errno != EINTR)
            fail();
    }
}

} // namespace embedded_host::platform
