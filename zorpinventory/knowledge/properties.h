// Which properties are compared, and which only name other structures.
#pragma once

#include <algorithm>
#include <string_view>

namespace zorpinventory::knowledge
{

/// What says nothing of the machine: where structures stand, what changes from boot to boot with nobody touching the
/// machine, and what only repeats another property.
inline constexpr std::string_view kNotCompared[] = {
    "ChassisType",
    "t15_area_len",
    "t15_status_msk1_srt0",
    "t15_status_msk1_srt1",
    "t17_socket_populated",
    "t1_wakeup",
    "t22_max_err",
    "t24_hw_security_byte",
    "t26_loc_and_status_msk3_srt5",
    "t27_type_and_status_msk3_srt5",
    "t28_loc_and_status_msk3_srt5",
    "t29_loc_and_status_msk3_srt5",
    "t2_type_int",
    "t38_access_method", // follows from the structure's place among its like
    "t3_boot_state",
    "t3_ps_state",
    "t3_therm_state",
    "t4_cur_speed", // declared volatile
    "t4_status_internal",
    "t4_voltage",
    "t9_type_internal",
    "t9_usage_internal",
};
static_assert(std::ranges::is_sorted(kNotCompared));

/// What the tree leaves out unless all is wanted: what the module declares as internal or as of the third tier.
inline constexpr std::string_view kNotUsuallyShown[] = {
    "ChassisType",
    "__smbios2_hdr_handle",
    "smbios2_hdr_handle",
    "smbios2_hdr_len",
    "smbios2_hdr_type",
    "smbios2_parent",
    "t131_ln_nvram_ptr",
    "t13_flags_msk1_srt7",
    "t14_members",
    "t16_error_handle",
    "t17_asset_tag",
    "t17_conf_voltage",
    "t17_device_set",
    "t17_err_info_handle",
    "t17_max_voltage",
    "t17_min_voltage",
    "t17_physical_handle",
    "t17_socket_populated",
    "t18_device_address",
    "t18_resolution",
    "t18_syndrome",
    "t19_partition_width",
    "t1_family",
    "t208_dl_first_power_on_date",
    "t208_dl_hardware_revision",
    "t208_dl_major_revision",
    "t208_dl_manufacturer_date",
    "t208_dl_minor_revision",
    "t208_dl_system_family",
    "t208_dl_system_id",
    "t208_dl_system_id_extension",
    "t208_dl_system_properties",
    "t208_dl_system_revision",
    "t20_interleave_depth",
    "t20_interleave_position",
    "t20_row_position",
    "t22_oem_flags",
    "t22_sbds_chemistry",
    "t24_hw_security_byte",
    "t26_nominal",
    "t26_oem_flags",
    "t27_oem_flags",
    "t27_probe_handle",
    "t28_nominal",
    "t28_oem_flags",
    "t29_nominal",
    "t29_oem_flags",
    "t2_members",
    "t2_type_int",
    "t32_additional_data",
    "t33_syndrome",
    "t37_dev_handle",
    "t38_i2c_slave",
    "t38_nv_storage",
    "t39_asset_tag",
    "t39_cooling_dev_handle",
    "t39_input_cprobe_handle",
    "t39_input_vprobe_handle",
    "t39_part_num",
    "t3_oem_defined",
    "t41_pci_segment_grpid",
    "t4_processorid",
    "t4_status_internal",
    "t5_current_interleave",
    "t5_members",
    "t5_support_interleave",
    "t6_err_status",
    "t6_speed",
    "t6_type",
    "t7_associativity",
    "t7_cache_cfg_msk2_srt8",
    "t7_supported_sram",
    "t9_pci_segment_grpid",
    "t9_type_internal",
    "t9_usage_internal",
};
static_assert(std::ranges::is_sorted(kNotUsuallyShown));

/// The list whose handles are carried over from the board before.
inline constexpr std::string_view kBoardFeatures = "t2_features";

inline constexpr std::string_view kChildLinks = "childBusIds";

constexpr bool isHeader(std::string_view property) { return property.find("_hdr_") != std::string_view::npos; }

/// Whether the property names other structures.
constexpr bool isLink(std::string_view property)
{
    return property == "smbios2_parent" || property == kChildLinks ||
           (!isHeader(property) && (property.ends_with("_handle") || property.ends_with("_members")));
}

/// Whether the property tells one machine from another of the same model.
constexpr bool isIdentity(std::string_view property)
{
    return property.ends_with("_serial") || property.ends_with("_asset_tag") || property == "t1_uuid";
}

constexpr bool isCompared(std::string_view property)
{
    return !isHeader(property) && !std::ranges::binary_search(kNotCompared, property);
}

/// Whether the text is a handle: "0x0011".
constexpr bool isHandle(std::string_view text)
{
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); };
    return text.size() == 6 && text.starts_with("0x") && std::ranges::all_of(text.substr(2), isDigit);
}

} // namespace zorpinventory::knowledge
