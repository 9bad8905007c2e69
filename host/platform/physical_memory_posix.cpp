// Reading /dev/mem.
#include "physical_memory.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded_host::platform
{

PhysicalMemory::PhysicalMemory(const std::filesystem::path& device)
    : device_(device), descriptor_(open(device.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
{
    if (descriptor_ < 0)
        throw std::system_error(errno, std::generic_category(), device.string());
    // A plain file under this name is somebody's trick, and a pipe would never answer.
    struct stat status = {};
    if (fstat(descriptor_, &status) != 0 || !S_ISCHR(status.st_mode)) {
        close(descriptor_);
        throw std::system_error(std::make_error_code(std::errc::no_such_device), device.string());
    }
}

PhysicalMemory::~PhysicalMemory() { close(descriptor_); }

Bytes PhysicalMemory::read(std::uint64_t address, std::size_t length) const
{
    // Mapping reaches memory above the kernel's own, where firmware puts its tables; reading does not. Page by page,
    // since the kernel refuses a whole stretch for one page of it.
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    Bytes bytes;
    while (bytes.size() < length) {
        const auto at = address + bytes.size();
        const auto before = static_cast<std::size_t>(at % page);
        void* mapped = mmap(nullptr, page, PROT_READ, MAP_PRIVATE, descriptor_, static_cast<off_t>(at - before));
        if (mapped == MAP_FAILED && bytes.empty())
            throw std::system_error(errno, std::generic_category(), device_.string());
        if (mapped == MAP_FAILED)
            break;
        const auto* start = static_cast<const unsigned char*>(mapped) + before;
        bytes.insert(bytes.end(), start, start + std::min(page - before, length - bytes.size()));
        munmap(mapped, page);
    }
    return bytes;
}

} // namespace embedded_host::platform
