// Enumeration texts of types 10 and 41: on-board devices (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kDeviceEnabled[] = {{0, "Device Disabled"}, {1, "Device Enabled"}};

inline constexpr EnumText kOnBoardDeviceType[] = {
    {1, "Other"},      {2, "Unknown"}, {3, "Video"},           {4, "SCSI Controller"}, {5, "Ethernet"},
    {6, "Token Ring"}, {7, "Sound"},   {8, "PATA Controller"}, {9, "SATA Controller"}, {10, "SAS Controller"}};

inline constexpr EnumText kOnboardDeviceExtendedType[] = {{1, "Other"},
                                                          {2, "Unknown"},
                                                          {3, "Video"},
                                                          {4, "SCSI Controller"},
                                                          {5, "Ethernet"},
                                                          {6, "Token Ring"},
                                                          {7, "Sound"},
                                                          {8, "PATA Controller"},
                                                          {9, "SATA Controller"},
                                                          {10, "SAS Controller"},
                                                          {11, "Wireless LAN"},
                                                          {12, "Bluetooth"},
                                                          {13, "WWAN"},
                                                          {14, "eMMC (embedded Multi-Media Controller)"},
                                                          {15, "NVMe Controller"},
                                                          {16, "UFS Controller"}};

inline constexpr FieldTexts kOnboardDevicesFields[] = {
    {10, 0x04, 1, 7, kDeviceEnabled},
    {10, 0x04, 7, 0, kOnBoardDeviceType},
    {41, 0x05, 1, 7, kDeviceEnabled},
    {41, 0x05, 7, 0, kOnboardDeviceExtendedType},
};

} // namespace embedded_host::texts
