// Where firmware's makers were to fill something in, and what they copied from samples.
#pragma once

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace zorpinventory::knowledge
{

/// Texts about the system, its boards and its enclosures by which people know machines.
inline constexpr std::string_view kFilledIn[] = {
    "t1_family",       "t1_manufacturer", "t1_product", "t1_serial",  "t1_sku", "t1_ver",
    "t2_asset_tag",    "t2_manufacturer", "t2_product", "t2_serial",  "t2_ver", "t3_asset_tag",
    "t3_manufacturer", "t3_serial",       "t3_sku",     "t3_version",
};
static_assert(std::ranges::is_sorted(kFilledIn));

/// What the devices of a type that may be nothing but a sample's copy say of a real one. Places do not count: an empty
/// bay has one too.
struct Template
{
    unsigned type;
    std::array<std::string_view, 3> texts;
    std::array<std::string_view, 6> measured;
};

inline constexpr Template kTemplates[] = {
    {22, {"t22_manufacturer", "t22_name"}, {"t22_capacity", "t22_voltage"}},
    {26, {"t26_description"}, {"t26_max", "t26_min", "t26_resolution", "t26_tolerance", "t26_accuracy", "t26_nominal"}},
    {27, {"t27_description"}, {"t27_speed"}},
    {28, {"t28_description"}, {"t28_max", "t28_min", "t28_resolution", "t28_tolerance", "t28_accuracy", "t28_nominal"}},
    {29, {"t29_description"}, {"t29_max", "t29_min", "t29_resolution", "t29_tolerance", "t29_accuracy", "t29_nominal"}},
    {39, {"t39_manufacturer", "t39_name", "t39_part_num"}, {"t39_max_power"}},
};

/// What samples say of devices that are not there.
inline constexpr std::string_view kTemplateTexts[] = {
    "LM78A", "LM78B", "ABC", "DEF", "GHI", "Cooling Dev 1", "-Virtual Battery 0-", "CRB Battery 0",
};

} // namespace zorpinventory::knowledge
