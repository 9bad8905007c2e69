// The firmware's table as Linux offers it.
#include "embedded_host/firmware.h"
#include "firmware.h"
#include "table_error.h"

namespace embedded_host
{

FirmwarePlaces& firmwarePlaces()
{
    static FirmwarePlaces places;
    return places;
}

namespace table
{

namespace
{

/// A file that belongs to the kernel: one that it refuses is refused for want of rights, which the user can mend.
Bytes readKernelFile(const std::filesystem::path& path)
{
    const auto name = platform::utf8FromPath(path);
    try {
        return platform::readFile(path, kLargestFile);
    } catch (const std::system_error& error) {
        const auto plain = TableError::unreadable(error, name);
        const bool refused = plain.result() == libsmbios2::POPULATE_TABLE_NO_PERMISSION;
        throw TableError(plain.result(), plain.error(), plain.what() + std::string(refused ? "; run as root" : ""));
    }
}

/// The kernel's copy of entry point and table.
class KernelTable : public FirmwareTable
{
public:
    explicit KernelTable(std::filesystem::path folder) : folder_(std::move(folder))
    {
        const auto path = folder_ / kEntryPointFile;
        auto reading = readEntryPoint(readKernelFile(path));
        if (!reading.entryPoint)
            throw TableError::malformed(platform::utf8FromPath(path) + ": " +
                                        (reading.fault.empty() ? "is no entry point" : reading.fault));
        entryPoint_ = std::move(*reading.entryPoint);
    }

    Version version() const override { return entryPoint_.version; }

    RawTable read() override { return joined(entryPoint_, readKernelFile(folder_ / kTableFile)); }

private:
    std::filesystem::path folder_;
    EntryPoint entryPoint_;
};

} // namespace

std::unique_ptr<FirmwareTable> findFirmwareTable() { return std::make_unique<KernelTable>(firmwarePlaces().tables); }

} // namespace table

} // namespace embedded_host
