// Enumeration texts of types 30, 32, 34, 38 and 39: remote access, boot, management devices, IPMI, power supplies
// (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kRemoteAccessConnections[] = {{0, "Inbound Connection Enabled"},
                                                        {1, "Outbound Connection Enabled"}};

inline constexpr EnumText kBootStatus[] = {
    {0x00, "No errors detected"},
    {0x01, "No bootable media"},
    {0x02, "\"normal\" operating system failed to load"},
    {0x03, "Firmware-detected hardware failure, including \"unknown\" failure types"},
    {0x04, "Operating system-detected hardware failure"},
    {0x05, "User-requested boot, usually through a keystroke"},
    {0x06, "System security violation"},
    {0x07, "Previously requested image"},
    {0x08, "System watchdog timer expired, causing the system to reboot"},
    {0x80, 0xBF, "Vendor/OEM-specific implementations"},
    {0xC0, 0xFF, "Product-specific implementations"}};

inline constexpr EnumText kManagementDeviceType[] = {{0x01, "Other"},
                                                     {0x02, "Unknown"},
                                                     {0x03, "National Semiconductor LM75"},
                                                     {0x04, "National Semiconductor LM78"},
                                                     {0x05, "National Semiconductor LM79"},
                                                     {0x06, "National Semiconductor LM80"},
                                                     {0x07, "National Semiconductor LM81"},
                                                     {0x08, "Analog Devices ADM9240"},
                                                     {0x09, "Dallas Semiconductor DS1780"},
                                                     {0x0A, "Maxim 1617"},
                                                     {0x0B, "Genesys GL518SM"},
                                                     {0x0C, "Winbond W83781D"},
                                                     {0x0D, "Holtek HT82H791"}};

inline constexpr EnumText kManagementAddressType[] = {
    {0x01, "Other"}, {0x02, "Unknown"}, {0x03, "I/O Port"}, {0x04, "Memory"}, {0x05, "SM Bus"}};

inline constexpr EnumText kIpmiInterfaceType[] = {{0x00, "Unknown"},
                                                  {0x01, "KCS: Keyboard Controller Style"},
                                                  {0x02, "SMIC: Server Management Interface Chip"},
                                                  {0x03, "BT: Block Transfer"},
                                                  {0x04, "SSIF: SMBus System Interface"}};

inline constexpr EnumText kIpmiAddressSpace[] = {{0x00, "Memory-mapped"}, {0x01, "I/O"}};

inline constexpr EnumText kPowerHotReplaceable[] = {{0, "Power supply is not hot-replaceable"},
                                                    {1, "Power supply is hot-replaceable"}};

inline constexpr EnumText kPowerPresent[] = {{0, "Power supply is not present"}, {1, "Power supply is present"}};

inline constexpr EnumText kPowerUnplugged[] = {{0, "Power supply is not unplugged from the wall"},
                                               {1, "Power supply is unplugged from the wall"}};

inline constexpr EnumText kPowerStatus[] = {{1, "Other"},
                                            {2, "Unknown"},
                                            {3, "OK"},
                                            {4, "Non-critical"},
                                            {5, "Critical; power supply has failed and has been taken off-line"}};

inline constexpr EnumText kInputVoltageRangeSwitching[] = {
    {1, "Other"}, {2, "Unknown"}, {3, "Manual"}, {4, "Auto-switch"}, {5, "Wide range"}, {6, "Not applicable"}};

inline constexpr EnumText kPowerSupplyType[] = {{1, "Other"},   {2, "Unknown"}, {3, "Linear"},    {4, "Switching"},
                                                {5, "Battery"}, {6, "UPS"},     {7, "Converter"}, {8, "Regulator"}};

inline constexpr FieldTexts kManagementAndPowerFields[] = {
    {30, 0x05, 0, 0, kRemoteAccessConnections},
    {32, 0x0A, 0, 0, kBootStatus},
    {34, 0x05, 0, 0, kManagementDeviceType},
    {34, 0x0A, 0, 0, kManagementAddressType},
    {38, 0x04, 0, 0, kIpmiInterfaceType},
    {38, 0x08, 0, 0, kIpmiAddressSpace},
    {39, 0x0E, 1, 0, kPowerHotReplaceable},
    {39, 0x0E, 1, 1, kPowerPresent},
    {39, 0x0E, 1, 2, kPowerUnplugged},
    {39, 0x0E, 3, 7, kPowerStatus},
    {39, 0x0E, 4, 3, kInputVoltageRangeSwitching},
    {39, 0x0E, 4, 10, kPowerSupplyType},
};

} // namespace embedded_host::texts
