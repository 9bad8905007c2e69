// Enumeration texts of types 5 and 6: memory controllers and modules (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kErrorDetectingMethod[] = {{0x01, "Other"},        {0x02, "Unknown"},    {0x03, "None"},
                                                     {0x04, "8-bit Parity"}, {0x05, "32-bit ECC"}, {0x06, "64-bit ECC"},
                                                     {0x07, "128-bit ECC"},  {0x08, "CRC"}};

inline constexpr EnumText kErrorCorrectingCapability[] = {{0, "Other"},
                                                          {1, "Unknown"},
                                                          {2, "None"},
                                                          {3, "Single-Bit Error Correcting"},
                                                          {4, "Double-Bit Error Correcting"},
                                                          {5, "Error Scrubbing"}};

inline constexpr EnumText kInterleave[] = {{0x01, "Other"},
                                           {0x02, "Unknown"},
                                           {0x03, "One-Way Interleave"},
                                           {0x04, "Two-Way Interleave"},
                                           {0x05, "Four-Way Interleave"},
                                           {0x06, "Eight-Way Interleave"},
                                           {0x07, "Sixteen-Way Interleave"}};

inline constexpr EnumText kMemorySpeeds[] = {{0, "Other"}, {1, "Unknown"}, {2, "70ns"}, {3, "60ns"}, {4, "50ns"}};

inline constexpr EnumText kModuleMemoryType[] = {{0, "Other"}, {1, "Unknown"},   {2, "Standard"}, {3, "Fast Page Mode"},
                                                 {4, "EDO"},   {5, "Parity"},    {6, "ECC"},      {7, "SIMM"},
                                                 {8, "DIMM"},  {9, "Burst EDO"}, {10, "SDRAM"}};

inline constexpr EnumText kModuleVoltage[] = {{0, "5V"}, {1, "3.3V"}, {2, "2.9V"}};

inline constexpr EnumText kBankConnection[] = {{0, "Single-bank connection"}, {1, "Double-bank connection"}};

inline constexpr FieldTexts kLegacyMemoryFields[] = {
    {5, 0x04, 0, 0, kErrorDetectingMethod}, {5, 0x05, 0, 0, kErrorCorrectingCapability},
    {5, 0x06, 0, 0, kInterleave},           {5, 0x07, 0, 0, kInterleave},
    {5, 0x09, 0, 0, kMemorySpeeds},         {5, 0x0B, 0, 0, kModuleMemoryType},
    {5, 0x0D, 0, 0, kModuleVoltage},        {6, 0x07, 0, 0, kModuleMemoryType},
    {6, 0x09, 1, 7, kBankConnection},
};

} // namespace embedded_host::texts
