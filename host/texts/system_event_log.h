// Enumeration texts of type 15: the system event log (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kLogAccessMethod[] = {{0x00, "Indexed I/O: 1 8-bit index port, 1 8-bit data port"},
                                                {0x01, "Indexed I/O: 2 8-bit index ports, 1 8-bit data port"},
                                                {0x02, "Indexed I/O: 1 16-bit index port, 1 8-bit data port"},
                                                {0x03, "Memory-mapped physical 32-bit address"},
                                                {0x04, "Available through General-Purpose NonVolatile Data functions"},
                                                {0x80, 0xFF, "BIOS Vendor/OEM-specific"}};

inline constexpr EnumText kLogAreaValid[] = {{0, "Log area not valid"}, {1, "Log area valid"}};

inline constexpr EnumText kLogAreaFull[] = {{0, "Log area not full"}, {1, "Log area full"}};

inline constexpr EnumText kLogHeaderFormat[] = {
    {0x00, "No header"}, {0x01, "Type 1 log header"}, {0x80, 0xFF, "BIOS vendor or OEM-specific format"}};

inline constexpr FieldTexts kSystemEventLogFields[] = {
    {15, 0x0A, 0, 0, kLogAccessMethod},
    {15, 0x0B, 1, 0, kLogAreaValid},
    {15, 0x0B, 1, 1, kLogAreaFull},
    {15, 0x14, 0, 0, kLogHeaderFormat},
};

} // namespace embedded_host::texts
