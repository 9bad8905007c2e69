// The tables behind manners.
#include "manners.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace embedded_host::outline
{

namespace
{

using placeholders::Kind;

/// What headlines show, in this order.
constexpr std::string_view kHeadlines[] = {
    "smbios2_version",
    "t0_vendor",
    "t0_ver",
    "t0_date",
    "t1_manufacturer",
    "t1_product",
    "t1_serial",
    "t2_manufacturer",
    "t2_product",
    "t2_serial",
    "t3_manufacturer",
    "t3_type_msk7_srt0",
    "t3_serial",
    "t4_socket",
    "t4_ver",
    "t4_status_msk3_srt0",
    "t6_socket_designation",
    "t6_installed_sz",
    "t7_socket_designation",
    "t7_installed_sz",
    "t7_type",
    "t8_external_designator",
    "t8_external_connector",
    "t8_designation",
    "t8_connector",
    "t8_type",
    "t9_designation",
    "t9_type",
    "t9_buswidth",
    "t9_usage",
    "t10_description",
    "t10_devs_msk7_srt0",
    "t10_devs_msk1_srt7",
    "t13_current",
    "t14_group",
    "t16_use",
    "t17_locator",
    "t17_sz",
    "t17_mem_type",
    "t17_speed",
    "t18_err_type",
    "t21_type",
    "t21_interface",
    "t22_manufacturer",
    "t22_name",
    "t26_description",
    "t27_description",
    "t28_description",
    "t29_description",
    "t30_manufacturer",
    "t32_boot_status",
    "t33_err_type",
    "t34_description",
    "t38_interface",
    "t39_name",
    "t39_manufacturer",
    "t39_location",
    "t41_designation",
    "t41_dev_type_msk7_srt0",
    "t41_dev_type_msk1_srt7",
    "t131_ln_description",
};

constexpr std::pair<std::string_view, Role> kRoles[] = {
    {"t4_status_msk1_srt6", Role::Vacancy}, {"t6_installed_sz", Role::Vacancy},
    {"t7_installed_sz", Role::Vacancy},     {"t16_max_sz", Role::ArrayMaximum},
    {"t16_num", Role::ArraySockets},        {"t17_sz", Role::ModuleSize},
    {"t19_start", Role::RangeStart},        {"t19_end", Role::RangeEnd},
    {"t20_start", Role::RangeStart},        {"t20_end", Role::RangeEnd},
};

/// The kinds of texts are told by how their properties' names end; all others are places.
constexpr std::pair<std::string_view, Kind> kKinds[] = {
    {"_serial", Kind::Serial},     {"_asset_tag", Kind::Serial},   {"_part_num", Kind::Serial},
    {"_manufacturer", Kind::Name}, {"_vendor", Kind::Name},        {"_product", Kind::Name},
    {"_ver", Kind::Name},          {"_version", Kind::Name},       {"_sku", Kind::Name},
    {"_family", Kind::Name},       {"_name", Kind::Name},          {"t10_description", Kind::Name},
    {"_oemstrings", Kind::Name},   {"_configoptions", Kind::Name}, {"_uuid", Kind::Uuid},
};

/// Of firmware's characteristics those that have been the same since the nineties; second bytes count on.
constexpr unsigned char kUsualFirmware[] = {4,  7,  9,  10, 12, 14, 15, 16, 19, 20, 21, 22, 23, 24,
                                            25, 26, 27, 28, 29, 30, 64, 65, 66, 68, 69, 72, 74};
constexpr unsigned char kUsualSlot[] = {2, 8, 10}; // 3.3 V, PME# and SMBus signals
constexpr unsigned char kNoConnector[] = {0x00, 0xFF};
constexpr unsigned char kLevels[] = {0, 1, 2, 3, 4, 5, 6, 7}; // they are in the caches' names
constexpr unsigned char k0[] = {0};
constexpr unsigned char k1[] = {1};
constexpr unsigned char k3[] = {3};
constexpr unsigned char k6[] = {6};

constexpr std::pair<std::string_view, std::span<const unsigned char>> kUsual[] = {
    {"t0_characteristics", kUsualFirmware},
    {"t1_wakeup", k6},         // by the power switch
    {"t2_features", k0},       // a hosting board
    {"t3_type_msk1_srt7", k0}, // the chassis's lock: not present or unknown
    {"t3_boot_state", k3},     // safe, as the next two
    {"t3_ps_state", k3},
    {"t3_therm_state", k3},
    {"t4_type", k3},                // a central processor
    {"t4_status_msk1_srt6", k1},    // in its socket
    {"t4_status_msk3_srt0", k1},    // enabled
    {"t7_cache_cfg_msk1_srt7", k1}, // enabled at boot
    {"t7_cache_cfg_msk2_srt5", k0}, // internal
    {"t7_cache_cfg_msk1_srt3", k0}, // not socketed
    {"t7_cache_cfg_msk3_srt0", kLevels},
    {"t8_connector", kNoConnector},
    {"t8_external_connector", kNoConnector},
    {"t9_flags", kUsualSlot},
    {"t10_devs_msk1_srt7", k1}, // enabled
    {"t41_dev_type_msk1_srt7", k1},
};

constexpr std::pair<std::string_view, std::string_view> kNothing[] = {
    {"t0_version", "255.255"},
    {"t0_fwversion", "255.255"},
    {"t4_voltage", "0.00 V"},
    {"t22_max_err", "255%"},
};

constexpr std::pair<std::string_view, std::string_view> kRepeats[] = {
    {"t4_core_enabled", "t4_core_cnt"},          {"t6_enabled_sz", "t6_installed_sz"},
    {"t7_max_cache_sz", "t7_installed_sz"},      {"t17_data_width", "t17_total_width"},
    {"t17_config_mem_clock_speed", "t17_speed"},
};

/// What a table has for a property, else the same as for any.
template <class Entry, std::size_t size>
auto entryOf(const Entry (&table)[size], std::string_view property, decltype(Entry::second) otherwise)
{
    const auto* found = std::ranges::find(table, property, &Entry::first);
    return found != std::end(table) ? found->second : otherwise;
}

} // namespace

Manner mannerOf(std::string_view property)
{
    Manner manner;
    if (const auto* found = std::ranges::find(kHeadlines, property); found != std::end(kHeadlines))
        manner.headline = static_cast<std::size_t>(found - kHeadlines);
    manner.role = entryOf(kRoles, property, Role::None);
    for (const auto& [ending, kind] : kKinds)
        if (property.ends_with(ending))
            manner.kind = kind;
    manner.isLink = property.ends_with("_handle") || property == "t2_features"; // boards' features hold such, too
    manner.usual = entryOf(kUsual, property, {});
    manner.nothing = entryOf(kNothing, property, {});
    manner.repeats = entryOf(kRepeats, property, {});
    return manner;
}

} // namespace embedded_host::outline
