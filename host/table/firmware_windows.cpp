// The firmware's table as Windows offers it.
#include "firmware.h"
#include "services/messages.h"
#include "table_error.h"

#include <windows.h>

namespace embedded_host::table
{

namespace
{

/// The block with the table; Windows hands out no entry point.
class SystemTable : public FirmwareTable
{
public:
    explicit SystemTable(Faults& faults) : raw_(readWindowsBlock(block(), kName, faults)) {}

    Version version() const override { return raw_.version; }

    RawTable read(Faults& /*faults*/) override { return raw_; }

private:
    static constexpr const char* kName = "GetSystemFirmwareTable(RSMB)";

    static Bytes block()
    {
        constexpr DWORD kProvider = 'R' << 24 | 'S' << 16 | 'M' << 8 | 'B';
        const UINT size = GetSystemFirmwareTable(kProvider, 0, nullptr, 0);
        Bytes bytes(size);
        if (size == 0 || GetSystemFirmwareTable(kProvider, 0, bytes.data(), size) != size) {
            const std::system_error error(static_cast<int>(GetLastError()), std::system_category());
            const auto plain = TableError::unreadable(error, kName);
            const bool refused = plain.result() == libsmbios2::POPULATE_TABLE_NO_PERMISSION;
            throw TableError(plain.result(), plain.error(),
                             refused ? services::message("%1; run as administrator", plain.what()) : plain.what());
        }
        return bytes;
    }

    RawTable raw_;
};

} // namespace

std::unique_ptr<FirmwareTable> findFirmwareTable(Faults& faults) { return std::make_unique<SystemTable>(faults); }

} // namespace embedded_host::table
