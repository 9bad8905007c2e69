// Reading files, alike on every system.
#include "files.h"

#include <cerrno>
#include <fstream>
#include <new>

namespace embedded_host::platform
{

Bytes readFile(const std::filesystem::path& path, std::size_t limit)
{
    const auto fail = [&](std::errc why) { throw std::system_error(std::make_error_code(why), utf8FromPath(path)); };

    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (error)
        throw std::system_error(error, utf8FromPath(path));
    if (is_directory(status))
        fail(std::errc::is_a_directory);
    if (!is_regular_file(status))
        fail(std::errc::not_supported);

    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file && errno == ENOMEM)
        throw std::bad_alloc();
    if (!file)
        throw std::system_error(errno != 0 ? errno : EIO, std::generic_category(), utf8FromPath(path));

    // Read to the end: the files of the kernel's own file systems do not tell their size.
    constexpr std::size_t kChunk = 0x10000;
    Bytes bytes;
    while (file) {
        const auto held = bytes.size();
        bytes.resize(held + kChunk);
        file.read(reinterpret_cast<char*>(bytes.data() + held), kChunk);
        bytes.resize(held + static_cast<std::size_t>(file.gcount()));
        if (bytes.size() > limit)
            fail(std::errc::file_too_large);
    }
    if (file.bad())
        fail(std::errc::io_error);
    return bytes;
}

std::string reason(const std::system_error& error)
{
    const auto condition = error.code().default_error_condition();
    if (condition == std::errc::not_supported)
        return "not a regular file";
    return condition.message();
}

} // namespace embedded_host::platform
