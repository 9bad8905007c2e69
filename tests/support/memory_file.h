// A file in memory, for bytes that the host reads by path: far faster than a disk, and nothing stays behind.
#pragma once

#include <cerrno>
#include <span>
#include <string>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace tests
{

class MemoryFile
{
public:
    MemoryFile() : descriptor_(memfd_create("zorp", MFD_CLOEXEC)) { check(descriptor_ >= 0); }
    explicit MemoryFile(std::span<const unsigned char> content) : MemoryFile() { hold(content); }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Replaces the content.
    void hold(std::span<const unsigned char> content)
    {
        check(ftruncate(descriptor_, 0) == 0);
        check(pwrite(descriptor_, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()));
    }

    /// Names the file as long as this object lives.
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    static void check(bool done)
    {
        if (!done)
            throw std::system_error(errno, std::generic_category(), "a file in memory");
    }

    int descriptor_;
};

} // namespace tests
