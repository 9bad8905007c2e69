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
