// The firmware's table as Linux offers it: the kernel's copy, else the machine's memory.
#include "embedded_host/firmware.h"
#include "firmware.h"
#include "platform/physical_memory.h"
#include "services/messages.h"
#include "table_error.h"

#include <charconv>
#include <sstream>

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

using platform::PhysicalMemory;
using services::message;

/// What belongs to the kernel is refused to ordinary users, which they can mend; what it refuses to root too is not.
[[noreturn]] void failFor(const std::system_error& error, const std::filesystem::path& path)
{
    const auto plain = TableError::unreadable(error, platform::utf8FromPath(path));
    const bool refused = error.code() == std::errc::permission_denied;
    throw TableError(plain.result(), plain.error(), refused ? message("%1; run as root", plain.what()) : plain.what());
}

Bytes readKernelFile(const std::filesystem::path& path)
{
    try {
        return platform::readFile(path, kLargestFile, Image::kZeroTail);
    } catch (const std::system_error& error) {
        failFor(error, path);
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
            throw TableError::malformed(platform::utf8FromPath(path) + ": " + reading.faultOfEntryPoint());
        entryPoint_ = std::move(*reading.entryPoint);
    }

    Version version() const override { return entryPoint_.version; }

    RawTable read(Faults& faults) override
    {
        const auto path = folder_ / kTableFile;
        return joined(entryPoint_, readKernelFile(path), platform::utf8FromPath(path), faults);
    }

private:
    std::filesystem::path folder_;
    EntryPoint entryPoint_;
};

/// The address that a line of the EFI system table ("SMBIOS3=0x7f5b6000") gives; 0 without such a line.
std::uint64_t addressIn(const std::string& systab, const std::string& key)
{
    std::istringstream lines(systab);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(key + "=0x"))
            continue;
        std::uint64_t address = 0;
        std::from_chars(line.data() + key.size() + 3, line.data() + line.size(), address, 16);
        return address;
    }
    return 0;
}

/// The table in the machine's memory.
class MemoryTable : public FirmwareTable
{
public:
    MemoryTable(std::filesystem::path device, const std::filesystem::path& systab, Faults& faults)
        : device_(std::move(device))
    {
        const auto name = platform::utf8FromPath(device_);
        try {
            const PhysicalMemory memory(device_);
            auto found = namedBy(systab, memory, faults);
            if (!found)
                found = scanForEntryPoint(memory.read(kBiosArea, kBiosAreaSize), name, kBiosArea, faults);
            if (!found)
                throw TableError(libsmbios2::POPULATE_TABLE_NONE, ENOENT,
                                 message("%1: no entry point from 0xF0000 to 0xFFFFF", name));
            entryPoint_ = std::move(*found);
        } catch (const std::system_error& error) {
            failFor(error, device_);
        }
    }

    Version version() const override { return entryPoint_.version; }

    RawTable read(Faults& faults) override
    {
        const auto length = std::min<std::size_t>(entryPoint_.tableLength, kLargestFile);
        try {
            return joined(entryPoint_, PhysicalMemory(device_).read(entryPoint_.tableAddress, length),
                          platform::utf8FromPath(device_), faults);
        } catch (const std::system_error& error) {
            failFor(error, device_);
        }
    }

private:
    static constexpr std::uint64_t kBiosArea = 0xF0000;
    static constexpr std::size_t kBiosAreaSize = 0x10000;

    /// The entry point whose address the EFI system table gives. What is wrong there does not end the search.
    static std::optional<EntryPoint> namedBy(const std::filesystem::path& systab, const PhysicalMemory& memory,
                                             Faults& faults)
    {
        std::error_code ignored;
        if (!std::filesystem::exists(systab, ignored))
            return std::nullopt;
        try {
            const auto bytes = readKernelFile(systab);
            const std::string text(bytes.begin(), bytes.end());
            for (const char* key : {"SMBIOS3", "SMBIOS"}) {
                const auto address = addressIn(text, key);
                if (address == 0)
                    continue;
                auto reading = entryPointAt(address, memory);
                if (reading.entryPoint)
                    return reading.entryPoint;
                faults.add(FaultKind::EntryPoint,
                           message("%1: the entry point that %2 names is not used, %3", platform::utf8FromPath(systab),
                                   key, reading.faultOfEntryPoint()));
            }
        } catch (const TableError& unreadable) {
            faults.add(FaultKind::EntryPoint, unreadable.what());
        }
        return std::nullopt;
    }

    static EntryPointReading entryPointAt(std::uint64_t address, const PhysicalMemory& memory)
    {
        try {
            return readEntryPoint(memory.read(address, kDumpTableOffset));
        } catch (const std::system_error& refused) {
            return {std::nullopt, services::reason(refused)};
        }
    }

    std::filesystem::path device_;
    EntryPoint entryPoint_;
};

} // namespace

std::unique_ptr<FirmwareTable> findFirmwareTable(Faults& faults)
{
    const auto& places = firmwarePlaces();
    try {
        return std::make_unique<KernelTable>(places.tables);
    } catch (const TableError& noCopy) {
        if (noCopy.result() != libsmbios2::POPULATE_TABLE_NONE)
            throw;
        try {
            return std::make_unique<MemoryTable>(places.memory, places.systab, faults);
        } catch (const TableError& noMemory) {
            const auto causes = noCopy.what() + std::string("; ") + noMemory.what();
            const bool none = noMemory.result() == libsmbios2::POPULATE_TABLE_NONE;
            throw TableError(noMemory.result(), noMemory.error(),
                             none ? message("%1; name a saved table with LoadTable", causes) : causes);
        }
    }
}

} // namespace table

} // namespace embedded_host
