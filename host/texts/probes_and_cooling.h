// Enumeration texts of types 26 to 29: probes and cooling devices (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kProbeStatus[] = {{1, "Other"},        {2, "Unknown"},  {3, "OK"},
                                            {4, "Non-critical"}, {5, "Critical"}, {6, "Non-recoverable"}};

inline constexpr EnumText kProbeLocation[] = {
    {1, "Other"},       {2, "Unknown"},        {3, "Processor"},
    {4, "Disk"},        {5, "Peripheral Bay"}, {6, "System Management Module"},
    {7, "Motherboard"}, {8, "Memory Module"},  {9, "Processor Module"},
    {10, "Power Unit"}, {11, "Add-in Card"}};

inline constexpr EnumText kCoolingDeviceType[] = {{1, "Other"},
                                                  {2, "Unknown"},
                                                  {3, "Fan"},
                                                  {4, "Centrifugal Blower"},
                                                  {5, "Chip Fan"},
                                                  {6, "Cabinet Fan"},
                                                  {7, "Power Supply Fan"},
                                                  {8, "Heat Pipe"},
                                                  {9, "Integrated Refrigeration"},
                                                  {16, "Active Cooling"},
                                                  {17, "Passive Cooling"}};

inline constexpr EnumText kTemperatureProbeLocation[] = {{1, "Other"},
                                                         {2, "Unknown"},
                                                         {3, "Processor"},
                                                         {4, "Disk"},
                                                         {5, "Peripheral Bay"},
                                                         {6, "System Management Module"},
                                                         {7, "Motherboard"},
                                                         {8, "Memory Module"},
                                                         {9, "Processor Module"},
                                                         {10, "Power Unit"},
                                                         {11, "Add-in Card"},
                                                         {12, "Front Panel Board"},
                                                         {13, "Back Panel Board"},
                                                         {14, "Power System Board"},
                                                         {15, "Drive Back Plane"}};

inline constexpr FieldTexts kProbesAndCoolingFields[] = {
    {26, 0x05, 3, 5, kProbeStatus},       {26, 0x05, 5, 0, kProbeLocation}, {27, 0x06, 3, 5, kProbeStatus},
    {27, 0x06, 5, 0, kCoolingDeviceType}, {28, 0x05, 3, 5, kProbeStatus},   {28, 0x05, 5, 0, kTemperatureProbeLocation},
    {29, 0x05, 3, 5, kProbeStatus},       {29, 0x05, 5, 0, kProbeLocation},
};

} // namespace embedded_host::texts
