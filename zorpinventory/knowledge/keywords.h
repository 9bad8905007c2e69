// The names under which users of the field ask for single strings.
#pragma once

#include <string_view>

namespace zorpinventory::knowledge
{

/// What a property's text becomes before it is told under a name.
enum class Form {
    Plain,
    Revision,  ///< 255.255 stands for none, and so does what a structure is too short for
    Uuid,      ///< in groups, the first three turned round from version 2.6 on
    Megahertz, ///< without a fraction
};

struct Keyword
{
    std::string_view name;
    unsigned type;
    std::string_view property;
    Form form = Form::Plain;
};

inline constexpr Keyword kKeywords[] = {
    {"bios-vendor", 0, "t0_vendor"},
    {"bios-version", 0, "t0_ver"},
    {"bios-release-date", 0, "t0_date"},
    {"bios-revision", 0, "t0_version", Form::Revision},
    {"firmware-revision", 0, "t0_fwversion", Form::Revision},
    {"system-manufacturer", 1, "t1_manufacturer"},
    {"system-product-name", 1, "t1_product"},
    {"system-version", 1, "t1_ver"},
    {"system-serial-number", 1, "t1_serial"},
    {"system-uuid", 1, "t1_uuid", Form::Uuid},
    {"system-sku-number", 1, "t1_sku"},
    {"system-family", 1, "t1_family"},
    {"baseboard-manufacturer", 2, "t2_manufacturer"},
    {"baseboard-product-name", 2, "t2_product"},
    {"baseboard-version", 2, "t2_ver"},
    {"baseboard-serial-number", 2, "t2_serial"},
    {"baseboard-asset-tag", 2, "t2_asset_tag"},
    {"chassis-manufacturer", 3, "t3_manufacturer"},
    {"chassis-type", 3, "t3_type_msk7_srt0"},
    {"chassis-version", 3, "t3_version"},
    {"chassis-serial-number", 3, "t3_serial"},
    {"chassis-asset-tag", 3, "t3_asset_tag"},
    {"processor-family", 4, "t4_family"},
    {"processor-manufacturer", 4, "t4_manufacturer"},
    {"processor-version", 4, "t4_ver"},
    {"processor-frequency", 4, "t4_cur_speed", Form::Megahertz},
};

} // namespace zorpinventory::knowledge
