// Reading files, alike on every system.
#include "files.h"

#include "regular_file.h"

#include <algorithm>

namespace embedded_host::platform
{

Bytes readFile(const std::filesystem::path& path, std::size_t limit, std::size_t room)
{
    RegularFile file(path);
    const auto refuse = [&] { throw std::system_error(std::make_error_code(std::errc::file_too_large)); };
    if (file.size() > limit)
        refuse();

    // One byte more than there should be, so that the usual file is read at once, and so is its end. Some files of the
    // kernel do not tell their size.
    constexpr std::size_t kLeast = 0x1000;
    Bytes bytes;
    bytes.reserve(std::max(static_cast<std::size_t>(file.size()) + 1, kLeast) + room);
    bytes.resize(bytes.capacity() - room);
    std::size_t held = 0;
    while (const auto more = file.read(std::span(bytes).subspan(held))) {
        held += more;
        if (held > limit)
            refuse();
        if (held == bytes.size())
            bytes.resize(2 * held);
    }
    bytes.resize(held);
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
