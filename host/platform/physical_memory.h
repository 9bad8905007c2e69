// The machine's physical memory, as the kernel lets a privileged process read it.
#pragma once

#include "files.h"

namespace embedded_host::platform
{

/// A device in the manner of /dev/mem.
class PhysicalMemory
{
public:
    /// Throws std::system_error; what is no character device is no_such_device.
    explicit PhysicalMemory(const std::filesystem::path& device);
    ~PhysicalMemory();
    PhysicalMemory(const PhysicalMemory&) = delete;
    PhysicalMemory& operator=(const PhysicalMemory&) = delete;

    /// The bytes at a physical address, as far as the kernel shows them. Throws std::system_error when it shows none.
    Bytes read(std::uint64_t address, std::size_t length) const;

private:
    std::filesystem::path device_;
    int descriptor_;
};

} // namespace embedded_host::platform
