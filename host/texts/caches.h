// Enumeration texts of type 7: caches (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kCacheSocketed[] = {{0, "Not Socketed"}, {1, "Socketed"}};

inline constexpr EnumText kCacheEnabled[] = {{0, "Disabled"}, {1, "Enabled"}};

inline constexpr EnumText kCacheLocation[] = {{0, "Internal"}, {1, "External"}, {2, "Reserved"}, {3, "Unknown"}};

inline constexpr EnumText kCacheOperation[] = {
    {0, "Write Through"}, {1, "Write Back"}, {2, "Varies with Memory Address"}, {3, "Unknown"}};

inline constexpr EnumText kCacheLevel[] = {{0, "Level 1"}, {1, "Level 2"}, {2, "Level 3"}, {3, "Level 4"},
                                           {4, "Level 5"}, {5, "Level 6"}, {6, "Level 7"}, {7, "Level 8"}};

inline constexpr EnumText kSramType[] = {{0, "Other"},          {1, "Unknown"},     {2, "Non-Burst"},   {3, "Burst"},
                                         {4, "Pipeline Burst"}, {5, "Synchronous"}, {6, "Asynchronous"}};

inline constexpr EnumText kCacheErrorCorrection[] = {{0x01, "Other"},          {0x02, "Unknown"},
                                                     {0x03, "None"},           {0x04, "Parity"},
                                                     {0x05, "Single-bit ECC"}, {0x06, "Multi-bit ECC"}};

inline constexpr EnumText kSystemCacheType[] = {
    {0x01, "Other"}, {0x02, "Unknown"}, {0x03, "Instruction"}, {0x04, "Data"}, {0x05, "Unified"}};

inline constexpr EnumText kCacheAssociativity[] = {{0x01, "Other"},
                                                   {0x02, "Unknown"},
                                                   {0x03, "Direct Mapped"},
                                                   {0x04, "2-way Set-Associative"},
                                                   {0x05, "4-way Set-Associative"},
                                                   {0x06, "Fully Associative"},
                                                   {0x07, "8-way Set-Associative"},
                                                   {0x08, "16-way Set-Associative"},
                                                   {0x09, "12-way Set-Associative"},
                                                   {0x0A, "24-way Set-Associative"},
                                                   {0x0B, "32-way Set-Associative"},
                                                   {0x0C, "48-way Set-Associative"},
                                                   {0x0D, "64-way Set-Associative"},
                                                   {0x0E, "20-way Set-Associative"}};

inline constexpr FieldTexts kCachesFields[] = {
    {7, 0x05, 1, 3, kCacheSocketed},      {7, 0x05, 1, 7, kCacheEnabled},         {7, 0x05, 2, 5, kCacheLocation},
    {7, 0x05, 2, 8, kCacheOperation},     {7, 0x05, 3, 0, kCacheLevel},           {7, 0x0B, 0, 0, kSramType},
    {7, 0x0D, 0, 0, kSramType},           {7, 0x10, 0, 0, kCacheErrorCorrection}, {7, 0x11, 0, 0, kSystemCacheType},
    {7, 0x12, 0, 0, kCacheAssociativity},
};

} // namespace embedded_host::texts
