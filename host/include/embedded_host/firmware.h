// Where this machine's firmware table is looked for.
#pragma once

#include <filesystem>

namespace embedded_host
{

/// The places of the live table. Tests put files of their own in their stead.
struct FirmwarePlaces
{
    std::filesystem::path tables = "/sys/firmware/dmi/tables"; ///< a folder with smbios_entry_point and DMI
};

/// The places that the next discovery looks at; they may be changed.
FirmwarePlaces& firmwarePlaces();

} // namespace embedded_host
