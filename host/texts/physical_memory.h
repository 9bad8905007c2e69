// Enumeration texts of types 16 and 17: memory arrays and devices (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kMemoryArrayLocation[] = {{0x01, "Other"},
                                                    {0x02, "Unknown"},
                                                    {0x03, "System board or motherboard"},
                                                    {0x04, "ISA add-on card"},
                                                    {0x05, "EISA add-on card"},
                                                    {0x06, "PCI add-on card"},
                                                    {0x07, "MCA add-on card"},
                                                    {0x08, "PCMCIA add-on card"},
                                                    {0x09, "Proprietary add-on card"},
                                                    {0x0A, "NuBus"},
                                                    {0xA0, "PC-98/C20 add-on card"},
                                                    {0xA1, "PC-98/C24 add-on card"},
                                                    {0xA2, "PC-98/E add-on card"},
                                                    {0xA3, "PC-98/Local bus add-on card"},
                                                    {0xA4, "CXL add-on card"}};

inline constexpr EnumText kMemoryArrayUse[] = {
    {0x01, "Other"},        {0x02, "Unknown"},          {0x03, "System memory"}, {0x04, "Video memory"},
    {0x05, "Flash memory"}, {0x06, "Non-volatile RAM"}, {0x07, "Cache memory"}};

inline constexpr EnumText kMemoryArrayErrorCorrection[] = {
    {0x01, "Other"},          {0x02, "Unknown"},       {0x03, "None"}, {0x04, "Parity"},
    {0x05, "Single-bit ECC"}, {0x06, "Multi-bit ECC"}, {0x07, "CRC"}};

inline constexpr EnumText kMemoryFormFactor[] = {
    {0x01, "Other"},  {0x02, "Unknown"}, {0x03, "SIMM"},         {0x04, "SIP"},
    {0x05, "Chip"},   {0x06, "DIP"},     {0x07, "ZIP"},          {0x08, "Proprietary Card"},
    {0x09, "DIMM"},   {0x0A, "TSOP"},    {0x0B, "Row of chips"}, {0x0C, "RIMM"},
    {0x0D, "SODIMM"}, {0x0E, "SRIMM"},   {0x0F, "FB-DIMM"},      {0x10, "Die"},
    {0x11, "CAMM"},   {0x12, "CUDIMM"},  {0x13, "CSODIMM"}};

inline constexpr EnumText kMemoryType[] = {{0x01, "Other"},
                                           {0x02, "Unknown"},
                                           {0x03, "DRAM"},
                                           {0x04, "EDRAM"},
                                           {0x05, "VRAM"},
                                           {0x06, "SRAM"},
                                           {0x07, "RAM"},
                                           {0x08, "ROM"},
                                           {0x09, "FLASH"},
                                           {0x0A, "EEPROM"},
                                           {0x0B, "FEPROM"},
                                           {0x0C, "EPROM"},
                                           {0x0D, "CDRAM"},
                                           {0x0E, "3DRAM"},
                                           {0x0F, "SDRAM"},
                                           {0x10, "SGRAM"},
                                           {0x11, "RDRAM"},
                                           {0x12, "DDR"},
                                           {0x13, "DDR2"},
                                           {0x14, "DDR2 FB-DIMM"},
                                           {0x18, "DDR3"},
                                           {0x19, "FBD2"},
                                           {0x1A, "DDR4"},
                                           {0x1B, "LPDDR"},
                                           {0x1C, "LPDDR2"},
                                           {0x1D, "LPDDR3"},
                                           {0x1E, "LPDDR4"},
                                           {0x1F, "Logical non-volatile device"},
                                           {0x20, "HBM (High Bandwidth Memory)"},
                                           {0x21, "HBM2 (High Bandwidth Memory Generation 2)"},
                                           {0x22, "DDR5"},
                                           {0x23, "LPDDR5"},
                                           {0x24, "HBM3 (High Bandwidth Memory Generation 3)"},
                                           {0x25, "MRDIMM"}};

inline constexpr EnumText kMemoryTypeDetail[] = {{0, "Reserved"},
                                                 {1, "Other"},
                                                 {2, "Unknown"},
                                                 {3, "Fast-paged"},
                                                 {4, "Static column"},
                                                 {5, "Pseudo-static"},
                                                 {6, "RAMBUS"},
                                                 {7, "Synchronous"},
                                                 {8, "CMOS"},
                                                 {9, "EDO"},
                                                 {10, "Window DRAM"},
                                                 {11, "Cache DRAM"},
                                                 {12, "Non-volatile"},
                                                 {13, "Registered (Buffered)"},
                                                 {14, "Unbuffered (Unregistered)"},
                                                 {15, "LRDIMM"}};

inline constexpr FieldTexts kPhysicalMemoryFields[] = {
    {16, 0x04, 0, 0, kMemoryArrayLocation},
    {16, 0x05, 0, 0, kMemoryArrayUse},
    {16, 0x06, 0, 0, kMemoryArrayErrorCorrection},
    {17, 0x0E, 0, 0, kMemoryFormFactor},
    {17, 0x12, 0, 0, kMemoryType},
    {17, 0x13, 0, 0, kMemoryTypeDetail},
};

} // namespace embedded_host::texts
