// Where this machine's firmware table is looked for.
#pragma once

#include <filesystem>

namespace embedded_host
{

/// The places of the live table on Linux, in the order in which they are tried. Tests put places of their own in their
/// stead.
struct FirmwarePlaces
{
    std::filesystem::path tables = "/sys/firmware/dmi/tables"; ///< a folder with smbios_entry_point and DMI
    std::filesystem::path systab = "/sys/firmware/efi/systab"; ///< tells where UEFI firmware put the entry point
    std::filesystem::path memory = "/dev/mem";                 ///< where it is read, and searched where nobody tells
};

/// The places that the next discovery looks at; they may be changed. Programs for other systems have none.
FirmwarePlaces& firmwarePlaces();

} // namespace embedded_host
