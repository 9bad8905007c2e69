// Enumeration texts of types 21 to 24: pointing devices, batteries, system reset, hardware security (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kPointingDeviceType[] = {
    {0x01, "Other"},       {0x02, "Unknown"},   {0x03, "Mouse"},        {0x04, "Track Ball"},    {0x05, "Track Point"},
    {0x06, "Glide Point"}, {0x07, "Touch Pad"}, {0x08, "Touch Screen"}, {0x09, "Optical Sensor"}};

inline constexpr EnumText kPointingDeviceInterface[] = {{0x01, "Other"},
                                                        {0x02, "Unknown"},
                                                        {0x03, "Serial"},
                                                        {0x04, "PS/2"},
                                                        {0x05, "Infrared"},
                                                        {0x06, "HP-HIL"},
                                                        {0x07, "Bus mouse"},
                                                        {0x08, "ADB (Apple Desktop Bus)"},
                                                        {0xA0, "Bus mouse DB-9"},
                                                        {0xA1, "Bus mouse micro-DIN"},
                                                        {0xA2, "USB"},
                                                        {0xA3, "I2C"},
                                                        {0xA4, "SPI"}};

inline constexpr EnumText kBatteryChemistry[] = {{0x01, "Other"},
                                                 {0x02, "Unknown"},
                                                 {0x03, "Lead Acid"},
                                                 {0x04, "Nickel Cadmium"},
                                                 {0x05, "Nickel metal hydride"},
                                                 {0x06, "Lithium-ion"},
                                                 {0x07, "Zinc air"},
                                                 {0x08, "Lithium Polymer"}};

inline constexpr EnumText kResetStatus[] = {{0, "System reset is not enabled by the user"},
                                            {1, "System reset is enabled by the user"}};

inline constexpr EnumText kWatchdogTimer[] = {{0, "System does not contain a watchdog timer"},
                                              {1, "System contains a watchdog timer"}};

inline constexpr EnumText kResetBootOption[] = {
    {0, "Reserved"}, {1, "Operating system"}, {2, "System utilities"}, {3, "Do not reboot"}};

inline constexpr EnumText kSecurityStatus[] = {{0, "Disabled"}, {1, "Enabled"}, {2, "Not Implemented"}, {3, "Unknown"}};

inline constexpr FieldTexts kPeripheralsAndSecurityFields[] = {
    {21, 0x04, 0, 0, kPointingDeviceType}, {21, 0x05, 0, 0, kPointingDeviceInterface},
    {22, 0x09, 0, 0, kBatteryChemistry},   {23, 0x04, 1, 0, kResetStatus},
    {23, 0x04, 1, 5, kWatchdogTimer},      {23, 0x04, 2, 1, kResetBootOption},
    {23, 0x04, 2, 3, kResetBootOption},    {24, 0x04, 2, 0, kSecurityStatus},
    {24, 0x04, 2, 2, kSecurityStatus},     {24, 0x04, 2, 4, kSecurityStatus},
    {24, 0x04, 2, 6, kSecurityStatus},
};

} // namespace embedded_host::texts
