// Enumeration texts of types 0 to 3: BIOS, system, base board, enclosure (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kBiosCharacteristics[] = {
    {0, "Reserved"},
    {1, "Reserved"},
    {2, "Unknown"},
    {3, "BIOS Characteristics are not supported"},
    {4, "ISA is supported"},
    {5, "MCA is supported"},
    {6, "EISA is supported"},
    {7, "PCI is supported"},
    {8, "PC card (PCMCIA) is supported"},
    {9, "Plug and Play is supported"},
    {10, "APM is supported"},
    {11, "BIOS is upgradeable (Flash)"},
    {12, "BIOS shadowing is allowed"},
    {13, "VL-VESA is supported"},
    {14, "ESCD support is available"},
    {15, "Boot from CD is supported"},
    {16, "Selectable boot is supported"},
    {17, "BIOS ROM is socketed (e.g., PLCC or SOP socket)"},
    {18, "Boot from PC card (PCMCIA) is supported"},
    {19, "EDD specification is supported"},
    {20, "Int 13h - Japanese floppy for NEC 9800 1.2 MB (3.5\", 1K bytes/sector, 360 RPM) is supported"},
    {21, "Int 13h - Japanese floppy for Toshiba 1.2 MB (3.5\", 360 RPM) is supported"},
    {22, "Int 13h - 5.25\" / 360 KB floppy services are supported"},
    {23, "Int 13h - 5.25\" / 1.2 MB floppy services are supported"},
    {24, "Int 13h - 3.5\" / 720 KB floppy services are supported"},
    {25, "Int 13h - 3.5\" / 2.88 MB floppy services are supported"},
    {26, "Int 5h, print screen service is supported"},
    {27, "Int 9h, 8042 keyboard services are supported"},
    {28, "Int 14h, serial services are supported"},
    {29, "Int 17h, printer services are supported"},
    {30, "Int 10h, CGA/Mono Video Services are supported"},
    {31, "NEC PC-98"},
    {32, 63, "Reserved"}};

inline constexpr EnumText kBiosCharacteristicsExtension[] = {
    {0, "ACPI is supported"},
    {1, "USB Legacy is supported"},
    {2, "AGP is supported"},
    {3, "I2O boot is supported"},
    {4, "LS-120 SuperDisk boot is supported"},
    {5, "ATAPI ZIP drive boot is supported"},
    {6, "1394 boot is supported"},
    {7, "Smart battery is supported"},
    {8, "BIOS Boot Specification is supported"},
    {9, "Function key-initiated network service boot is supported"},
    {10, "Enable targeted content distribution"},
    {11, "UEFI Specification is supported"},
    {12, "SMBIOS table describes a virtual machine"},
    {13, "Manufacturing mode is supported"},
    {14, "Manufacturing mode is enabled"},
    {15, "Reserved"}};

inline constexpr EnumText kWakeUpType[] = {{0x00, "Reserved"},     {0x01, "Other"},      {0x02, "Unknown"},
                                           {0x03, "APM Timer"},    {0x04, "Modem Ring"}, {0x05, "LAN Remote"},
                                           {0x06, "Power Switch"}, {0x07, "PCI PME#"},   {0x08, "AC Power Restored"}};

inline constexpr EnumText kBoardFeatures[] = {
    {0, "The board is a hosting board (for example, a motherboard)"},
    {1, "The board requires at least one daughter board or auxiliary card to function properly"},
    {2, "The board is removable"},
    {3, "The board is replaceable"},
    {4, "The board is hot swappable"}};

inline constexpr EnumText kBoardType[] = {{0x01, "Unknown"},
                                          {0x02, "Other"},
                                          {0x03, "Server Blade"},
                                          {0x04, "Connectivity Switch"},
                                          {0x05, "System Management Module"},
                                          {0x06, "Processor Module"},
                                          {0x07, "I/O Module"},
                                          {0x08, "Memory Module"},
                                          {0x09, "Daughter board"},
                                          {0x0A, "Motherboard (includes processor, memory, and I/O)"},
                                          {0x0B, "Processor/Memory Module"},
                                          {0x0C, "Processor/IO Module"},
                                          {0x0D, "Interconnect board"}};

inline constexpr EnumText kChassisLock[] = {{0, "Lock is not present or unknown"}, {1, "Chassis lock is present"}};

inline constexpr EnumText kChassisType[] = {{1, "Other"},
                                            {2, "Unknown"},
                                            {3, "Desktop"},
                                            {4, "Low Profile Desktop"},
                                            {5, "Pizza Box"},
                                            {6, "Mini Tower"},
                                            {7, "Tower"},
                                            {8, "Portable"},
                                            {9, "Laptop"},
                                            {10, "Notebook"},
                                            {11, "Hand Held"},
                                            {12, "Docking Station"},
                                            {13, "All in One"},
                                            {14, "Sub Notebook"},
                                            {15, "Space-saving"},
                                            {16, "Lunch Box"},
                                            {17, "Main Server Chassis"},
                                            {18, "Expansion Chassis"},
                                            {19, "SubChassis"},
                                            {20, "Bus Expansion Chassis"},
                                            {21, "Peripheral Chassis"},
                                            {22, "RAID Chassis"},
                                            {23, "Rack Mount Chassis"},
                                            {24, "Sealed-case PC"},
                                            {25, "Multi-system chassis"},
                                            {26, "Compact PCI"},
                                            {27, "Advanced TCA"},
                                            {28, "Blade"},
                                            {29, "Blade Enclosure"},
                                            {30, "Tablet"},
                                            {31, "Convertible"},
                                            {32, "Detachable"},
                                            {33, "IoT Gateway"},
                                            {34, "Embedded PC"},
                                            {35, "Mini PC"},
                                            {36, "Stick PC"}};

inline constexpr EnumText kChassisState[] = {{0x01, "Other"},   {0x02, "Unknown"},  {0x03, "Safe"},
                                             {0x04, "Warning"}, {0x05, "Critical"}, {0x06, "Non-recoverable"}};

inline constexpr EnumText kChassisSecurityStatus[] = {{0x01, "Other"},
                                                      {0x02, "Unknown"},
                                                      {0x03, "None"},
                                                      {0x04, "External interface locked out"},
                                                      {0x05, "External interface enabled"}};

inline constexpr FieldTexts kPlatformIdentityFields[] = {
    {0, 0x0A, 0, 0, kBiosCharacteristics},
    {0, 0x12, 0, 0, kBiosCharacteristicsExtension, 64},
    {1, 0x18, 0, 0, kWakeUpType},
    {2, 0x09, 0, 0, kBoardFeatures},
    {2, 0x0D, 0, 0, kBoardType},
    {3, 0x05, 1, 7, kChassisLock},
    {3, 0x05, 7, 0, kChassisType},
    {3, 0x09, 0, 0, kChassisState},
    {3, 0x0A, 0, 0, kChassisState},
    {3, 0x0B, 0, 0, kChassisState},
    {3, 0x0C, 0, 0, kChassisSecurityStatus},
};

} // namespace embedded_host::texts
