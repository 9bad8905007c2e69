// What a device of each type is known by. Nobody else asks for types by their number where devices are compared.
#pragma once

#include "document/document.h"
#include "services/messages.h"

#include <array>
#include <initializer_list>

namespace zorpinventory::knowledge
{

/// Names of properties, few enough to stand in a table.
class Names
{
public:
    constexpr Names() = default;
    constexpr Names(std::initializer_list<std::string_view> names)
    {
        for (const auto name : names)
            names_[count_++] = name;
    }
    constexpr const std::string_view* begin() const { return names_.data(); }
    constexpr const std::string_view* end() const { return names_.data() + count_; }
    constexpr bool empty() const { return count_ == 0; }

private:
    std::array<std::string_view, 3> names_{};
    std::size_t count_ = 0;
};

using IsEmpty = bool (*)(const document::Device& device);

struct Kind
{
    unsigned type = 0;
    const char* name = ""; ///< in English
    const char* key = "";  ///< of its translation among the names of devices; empty: the name is the key
    Names serials = {};    ///< its serial number; another one where the first is missing
    Names part = {};       ///< tells with the serial number which part it is
    Names model = {};      ///< tells which parts are alike
    Names place = {};
    IsEmpty isEmpty = nullptr; ///< a place without a part; null where there is no such thing
    Names headline = {};       ///< what a person knows it by
    bool followsFromOthers = false;
};

inline bool emptySocket(const document::Device& device) { return device.text("t17_socket_populated") == "false"; }
inline bool emptySlot(const document::Device& device) { return device.text("t9_usage_internal") == "3"; }

/// CPU Socket Populated, bit 6 of the processor's status.
inline bool emptyProcessorSocket(const document::Device& device)
{
    const auto status = device.number("t4_status_internal");
    return status && *status >= 0 && *status <= 0xFF && (static_cast<unsigned>(*status) & 0x40U) == 0;
}

inline constexpr Kind kKinds[] = {
    {.type = 0, .name = "BIOS", .key = "BIOS"},
    {.type = 1,
     .name = "System",
     .key = "System",
     .serials = {"t1_serial"},
     .part = {"t1_product", "t1_manufacturer"},
     .model = {"t1_product"},
     .headline = {"t1_manufacturer", "t1_product"}},
    {.type = 2,
     .name = "Base Board",
     .key = "BaseBoard",
     .serials = {"t2_serial"},
     .part = {"t2_product", "t2_manufacturer"},
     .model = {"t2_product"},
     .place = {"t2_location"},
     .headline = {"t2_product"}},
    {.type = 3,
     .name = "Enclosure",
     .key = "Enclosure",
     .serials = {"t3_serial"},
     .part = {"t3_manufacturer"},
     .headline = {"t3_type_msk7_srt0"}},
    {.type = 4,
     .name = "Processor",
     .key = "Processor",
     .serials = {"t4_serial"},
     .part = {"t4_part_num", "t4_manufacturer"},
     .model = {"t4_ver", "t4_part_num"},
     .place = {"t4_socket"},
     .isEmpty = emptyProcessorSocket,
     .headline = {"t4_socket", "t4_ver"}},
    {.type = 5, .name = "Memory Controller", .key = "MemoryController"},
    {.type = 6,
     .name = "Memory Module",
     .key = "MemoryModule",
     .place = {"t6_socket_designation"},
     .headline = {"t6_socket_designation", "t6_installed_sz"}},
    {.type = 7,
     .name = embedded_host::services::translatable("Cache"),
     .place = {"t7_socket_designation", "t7_cache_cfg_msk3_srt0", "t7_type"},
     .headline = {"t7_socket_designation", "t7_cache_cfg_msk3_srt0", "t7_installed_sz"}},
    {.type = 8,
     .name = "Port",
     .key = "Port",
     .place = {"t8_designation", "t8_external_designator"},
     .headline = {"t8_designation", "t8_external_designator"}},
    {.type = 9,
     .name = "Slot",
     .key = "Slot",
     .place = {"t9_designation", "t9_slotid"},
     .isEmpty = emptySlot,
     .headline = {"t9_designation", "t9_type"}},
    {.type = 10, .name = "On Board Device", .key = "OnBoardDevice", .headline = {"t10_description"}},
    {.type = 11, .name = "OEM Strings", .key = "OEMStrings"},
    {.type = 12, .name = "Config Options", .key = "ConfigOptions"},
    {.type = 13, .name = "BIOS Languages", .key = "BIOSLanguages"},
    {.type = 14, .name = "Group", .key = "Group", .headline = {"t14_group"}},
    {.type = 15, .name = "System Log", .key = "SystemLog"},
    {.type = 16, .name = "Memory Array", .key = "MemoryArray", .headline = {"t16_use"}},
    {.type = 17,
     .name = "Memory Device",
     .key = "MemoryDevice",
     .serials = {"t17_serial"},
     .part = {"t17_part_num", "t17_manufacturer"},
     .model = {"t17_part_num", "t17_sz", "t17_mem_type"},
     .place = {"t17_bank_locator", "t17_locator"},
     .isEmpty = emptySocket,
     .headline = {"t17_locator", "t17_sz", "t17_mem_type"}},
    {.type = 18, .name = "32-bit Memory Error", .key = "32bitMemoryError", .followsFromOthers = true},
    {.type = 19, .name = "Memory Array Mapped Address", .key = "MemoryArrayMappedAddress", .followsFromOthers = true},
    {.type = 20, .name = "Memory Device Mapped Address", .key = "MemoryDeviceMappedAddress", .followsFromOthers = true},
    {.type = 21, .name = "Pointing Device", .key = "PointingDevice", .headline = {"t21_type"}},
    {.type = 22,
     .name = "Battery",
     .key = "Battery",
     .serials = {"t22_serial", "t22_sbds_serial"},
     .part = {"t22_name", "t22_manufacturer"},
     .model = {"t22_name"},
     .place = {"t22_location"},
     .headline = {"t22_location", "t22_name"}},
    {.type = 23, .name = "System Reset", .key = "SystemReset"},
    {.type = 24, .name = "Hardware Security", .key = "HardwareSecurity"},
    {.type = 26,
     .name = "Voltage Probe",
     .key = "VoltageProbe",
     .place = {"t26_description", "t26_loc_and_status_msk5_srt0"},
     .headline = {"t26_description"}},
    {.type = 27,
     .name = "Cooling Device",
     .key = "CoolingDevice",
     .place = {"t27_description", "t27_type_and_status_msk5_srt0"},
     .headline = {"t27_description"}},
    {.type = 28,
     .name = "Temperature Probe",
     .key = "TemperatureProbe",
     .place = {"t28_description", "t28_loc_and_status_msk5_srt0"},
     .headline = {"t28_description"}},
    {.type = 29,
     .name = "Current Probe",
     .key = "CurrentProbe",
     .place = {"t29_description", "t29_loc_and_status_msk5_srt0"},
     .headline = {"t29_description"}},
    {.type = 30, .name = "Out-of-Band Remote Access", .key = "OutOfBandRemoteAccess"},
    {.type = 32, .name = "Boot Information", .key = "BootInformation", .followsFromOthers = true},
    {.type = 33, .name = "64-bit Memory Error", .key = "64bitMemoryError", .followsFromOthers = true},
    {.type = 34,
     .name = "Management Device",
     .key = "ManagementDevice",
     .place = {"t34_description"},
     .headline = {"t34_description"}},
    {.type = 35, .name = "Management Device Component", .key = "ManagementDeviceComponent"},
    {.type = 38, .name = "Device Information", .key = "DeviceInformation", .headline = {"t38_interface"}},
    {.type = 39,
     .name = "Power Supply",
     .key = "PowerSupply",
     .serials = {"t39_serial"},
     .part = {"t39_part_num", "t39_manufacturer"},
     .model = {"t39_part_num", "t39_name"},
     .place = {"t39_location"},
     .headline = {"t39_location", "t39_name"}},
    {.type = 41,
     .name = "On Board Device",
     .key = "OnBoardDevice",
     .place = {"t41_designation", "t41_dev_type_msk7_srt0", "t41_dev_type_instance"},
     .headline = {"t41_designation"}},
    {.type = 131, .name = "System Metrics", .key = "LenovoSystemMetrics"},
    {.type = 208, .name = "Revisions and IDs", .key = "DellRevisionsAndIDs"},
    {.type = document::kRootType, .name = "SMBIOS", .headline = {"smbios2_version"}},
};

/// For types that a later version of the module may know.
inline constexpr Kind kUnknownKind{.name = embedded_host::services::translatable("Device")};

/// The kind of a device's type.
constexpr const Kind& kindOf(unsigned type)
{
    for (const auto& kind : kKinds)
        if (kind.type == type)
            return kind;
    return kUnknownKind;
}

/// The types whose changes matter most to people, before all others.
inline constexpr unsigned kFirstTypes[] = {17, 4, 9, 39, 2, 1, 3, 0};

/// Texts that firmware has where a place would be named; compared without case.
inline constexpr std::string_view kNoPlaces[] = {
    "To Be Filled By O.E.M.",
    "Default string",
    "Not Specified",
    "None",
    "Unknown",
    "N/A",
    "NO DIMM",
    "Motherboard",
    "Type2 - Board Chassis Location",
    "Base Board Chassis Location",
};

} // namespace zorpinventory::knowledge
