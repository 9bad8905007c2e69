// Regular files that are read, and nothing but those: reading never waits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

namespace embedded_host::platform
{

/// A regular file, open for reading. What its path names is looked at before it is opened, since opening some devices
/// does something, and what was opened is looked at again, since the path may name something else by then.
class RegularFile
{
public:
    /// Throws std::system_error; what is no regular file is not_supported, or is_a_directory.
    explicit RegularFile(const std::filesystem::path& path);
    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    /// In bytes, as the system tells it: 0 for many files of the kernel's own file systems, whatever they hold.
    std::uint64_t size() const { return size_; }

    /// Reads what comes next and returns how many bytes that were; 0 at the end. Throws std::system_error; a file that
    /// would make its reader wait is not_supported.
    std::size_t read(std::span<unsigned char> to);

private:
    /// Delegated to, so that the destructor also closes what the look at the opened file refuses.
    explicit RegularFile(std::intptr_t handle) : handle_(handle) {}

    std::intptr_t handle_; ///< as the system names open files
    std::uint64_t size_ = 0;
};

} // namespace embedded_host::platform
