// Enumeration texts of types 18 and 33: memory errors (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kMemoryErrorType[] = {{0x01, "Other"},
                                                {0x02, "Unknown"},
                                                {0x03, "OK"},
                                                {0x04, "Bad read"},
                                                {0x05, "Parity error"},
                                                {0x06, "Single-bit error"},
                                                {0x07, "Double-bit error"},
                                                {0x08, "Multi-bit error"},
                                                {0x09, "Nibble error"},
                                                {0x0A, "Checksum error"},
                                                {0x0B, "CRC error"},
                                                {0x0C, "Corrected single-bit error"},
                                                {0x0D, "Corrected error"},
                                                {0x0E, "Uncorrectable error"}};

inline constexpr EnumText kMemoryErrorGranularity[] = {
    {0x01, "Other"}, {0x02, "Unknown"}, {0x03, "Device level"}, {0x04, "Memory partition level"}};

inline constexpr EnumText kMemoryErrorOperation[] = {
    {0x01, "Other"}, {0x02, "Unknown"}, {0x03, "Read"}, {0x04, "Write"}, {0x05, "Partial write"}};

inline constexpr FieldTexts kMemoryErrorsFields[] = {
    {18, 0x04, 0, 0, kMemoryErrorType},        {18, 0x05, 0, 0, kMemoryErrorGranularity},
    {18, 0x06, 0, 0, kMemoryErrorOperation},   {33, 0x04, 0, 0, kMemoryErrorType},
    {33, 0x05, 0, 0, kMemoryErrorGranularity}, {33, 0x06, 0, 0, kMemoryErrorOperation},
};

} // namespace embedded_host::texts
