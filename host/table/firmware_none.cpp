// Systems whose firmware table this host cannot read yet; saved tables work there all the same.
#include "firmware.h"
#include "services/messages.h"
#include "table_error.h"

namespace embedded_host::table
{

std::unique_ptr<FirmwareTable> findFirmwareTable(Faults& /*faults*/)
{
    throw TableError(
        libsmbios2::POPULATE_TABLE_NONE, ENOSYS,
        services::message("this system's firmware table cannot be read yet; name a saved one with LoadTable"));
}

} // namespace embedded_host::table
