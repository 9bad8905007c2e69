// Reading files, alike on every system.
#include "files.h"

#include "naming_common.h"
#include "regular_file.h"

#include <algorithm>
#include <random>

namespace embedded_host::platform
{

namespace
{

/// Marks a sentence that is translated elsewhere, so that the template of translations has it.
constexpr const char* translatable(const char* english) { return english; }

class FileFaults : public std::error_category
{
    const char* name() const noexcept override { return "file"; }

    std::string message(int fault) const override
    {
        switch (static_cast<FileFault>(fault)) {
        case FileFault::DanglingLink:
            return translatable("it is a symbolic link to a file that does not exist");
        case FileFault::GroupNotKept:
            return translatable("it exists, and the group that it belongs to cannot be kept");
        case FileFault::AttributesNotKept:
            return translatable("it exists, and its access list or extended attributes cannot be kept");
        }
        return {};
    }
};

} // namespace

std::error_code make_error_code(FileFault fault)
{
    static const FileFaults category;
    return {static_cast<int>(fault), category};
}

std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    std::random_device random;
    // Short, since the target's own name may be as long as names can be.
    return target.parent_path() / (".zorp-" + std::to_string(random()) + "-" + std::to_string(random()) + ".tmp");
}

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
