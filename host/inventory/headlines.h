// What the text form says of a device beside its name, so that a reader finds it without reading its properties.
#pragma once

#include <string_view>

namespace embedded_host::inventory
{

/// The properties that tell a device from its like, in the order in which a headline shows them.
inline constexpr std::string_view kHeadlines[] = {
    "smbios2_version",
    "t0_ver",
    "t1_manufacturer",
    "t1_product",
    "t2_product",
    "t3_type_msk7_srt0",
    "t4_socket",
    "t4_ver",
    "t6_socket_designation",
    "t6_installed_sz",
    "t7_socket_designation",
    "t7_installed_sz",
    "t8_designation",
    "t8_external_designator",
    "t9_designation",
    "t9_usage",
    "t14_group",
    "t16_use",
    "t16_max_sz",
    "t17_locator",
    "t17_sz",
    "t17_mem_type",
    "t21_type",
    "t22_name",
    "t26_description",
    "t27_description",
    "t28_description",
    "t29_description",
    "t34_description",
    "t39_location",
    "t39_name",
};

} // namespace embedded_host::inventory
