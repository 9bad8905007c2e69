// What one structure shows where machines/, which record plain conversions, and ladders/, which record lengths, do not
// tell: a row for each rule.
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using tests::byte;
using tests::dword;
using tests::qword;
using tests::StructureBuilder;
using tests::word;

constexpr const char* kUid = "SMBIOS:0x0001";

/// The structure is a table of its own. `what` is a property, "name" or "children"; "set X" is what X was set to,
/// whether or not the device has it.
struct Row
{
    const char* name;
    StructureBuilder structure;
    const char* what;
    const char* expected;
};

/// What ctest shows of a row.
void PrintTo(const Row& row, std::ostream* out) { *out << row.what; }

StructureBuilder s(unsigned char type, unsigned char length) { return {type, 0x0001, length}; }

/// `put(length, n)` ends a structure early; the bytes behind its end stay.
constexpr auto length = byte(0x01);

const Row kRows[] = {
    // BIOS
    {"bios_bits_without_a_text_are_left_out", s(0, 0x18).put(qword(0x0A), 0x8000000080000085).put(word(0x12), 0x9001),
     "t0_characteristics",
     "Unknown, PCI is supported, NEC PC-98, ACPI is supported, SMBIOS table describes a virtual machine"},

    // system
    {"a_uuid_of_zeros_is_shown", s(1, 0x18), "t1_uuid", "00-00-00-00-00-00-00-00-00-00-00-00-00-00-00-00"},

    // base boards: member count and members
    {"missing_members_are_no_children", s(2, 0x13).bytes(0x0E, {2, 0xFE, 0xFF, 0xFF, 0xFF}), "children", ""},
    {"a_boards_parent_is_not_FFFFh", s(2, 0x0F).put(word(0x0B), 0xFFFF), "smbios2_parent", "(absent)"},
    {"a_boards_parent_may_be_FFFEh", s(2, 0x0F).put(word(0x0B), 0xFFFE), "smbios2_parent", "0xFFFE"},

    // enclosures: bit 7, the lock, does not count
    {"enclosure_0_is_a_desktop", s(3, 0x06), "ChassisType", "Desktop"},
    {"an_unknown_enclosure_is_no_desktop", s(3, 0x06).put(byte(0x05), 0x82), "ChassisType", "Other"},
    {"a_portable_is_a_laptop", s(3, 0x06).put(byte(0x05), 0x08), "ChassisType", "Laptop"},
    {"a_locked_laptop_is_a_laptop", s(3, 0x06).put(byte(0x05), 0x89), "ChassisType", "Laptop"},
    {"a_hand_held_is_a_laptop", s(3, 0x06).put(byte(0x05), 0x0B), "ChassisType", "Laptop"},
    {"a_docking_station_is_a_desktop", s(3, 0x06).put(byte(0x05), 0x0C), "ChassisType", "Desktop"},
    {"an_all_in_one_is_an_all_in_one", s(3, 0x06).put(byte(0x05), 0x0D), "ChassisType", "All in One"},
    {"a_sub_notebook_is_a_laptop", s(3, 0x06).put(byte(0x05), 0x0E), "ChassisType", "Laptop"},
    {"a_lunch_box_is_a_laptop", s(3, 0x06).put(byte(0x05), 0x10), "ChassisType", "Laptop"},
    {"a_rack_is_a_desktop", s(3, 0x06).put(byte(0x05), 0x17), "ChassisType", "Desktop"},
    {"a_small_oem_dword_shows_four_digits", s(3, 0x11).put(dword(0x0D), 5), "t3_oem_defined", "0x0005"},

    // processors: the family that FEh refers to
    {"the_first_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x104), "t4_family", "SH-3"},
    {"no_second_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x105), "t4_family", "Family 0105"},
    {"a_family_behind_the_end_is_none", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x104).put(length, 0x28),
     "t4_family", "Indicator to obtain the processor family from the Processor Family 2 field"},

    // voltages
    {"a_voltage_of_no_tenths_is_a_number", s(4, 0x12).put(byte(0x11), 0x80), "t4_voltage", "0.00 V"},
    {"no_voltage_is_an_empty_text", s(4, 0x12), "t4_voltage", ""},
    {"reserved_voltages_are_left_out", s(4, 0x12).put(byte(0x11), 0x7A), "t4_voltage", "3.3V"},

    // counts, which go on in a word where there is one
    {"a_wide_count_of_0_is_unknown", s(4, 0x30).put(byte(0x23), 0xFF), "t4_core_cnt", "UNKNOWN"},
    {"without_a_word_FFh_is_255_cores", s(4, 0x2A).put(byte(0x23), 0xFF), "t4_core_cnt", "255"},

    // the rest of a processor
    {"a_clock_of_0_shows_0_Hz", s(4, 0x18), "t4_ext_clock", "0 Hz"},
    {"a_maximum_speed_of_0_shows_0_Hz", s(4, 0x18), "t4_max_speed", "0 Hz"},
    {"missing_caches_are_no_children", s(4, 0x20).bytes(0x1A, {7, 0, 0xFF, 0xFF, 0xFE, 0xFF}), "children", "0x0007"},

    // memory controllers: the size is an exponent
    {"exponent_31_is_negative", s(5, 0x09).put(byte(0x08), 0x1F), "t5_max_mod_sz", "-2 PB"},
    {"a_controller_without_slots_has_an_empty_list", s(5, 0x0F), "t5_members", ""},

    // memory modules: bit 7 is the double bank, three exponents are markers
    {"installed_exponent_7Ch_has_no_size", s(6, 0x0C).put(byte(0x09), 0x7C), "t6_installed_sz", "(absent)"},
    {"a_double_bank_hides_no_marker", s(6, 0x0C).put(byte(0x09), 0xFD), "t6_installed_sz", "UNKNOWN"},

    // caches
    {"the_highest_level_is_8", s(7, 0x13).put(word(0x05), 0x000F), "name", "L8 Cache"},
    {"the_levels_byte_suffices_for_a_name", s(7, 0x06).put(byte(0x05), 0x01), "name", "L2 Cache"},
    {"a_cache_too_short_for_a_level_has_none", s(7, 0x06).put(byte(0x05), 1).put(length, 5), "name", "L? Cache"},
    {"reserved_sram_bits_are_left_out", s(7, 0x0D).put(word(0x0B), 0x8021), "t7_supported_sram", "Other, Synchronous"},

    // ports
    {"a_port_of_a_type_without_a_text_is_a_port", s(8, 0x09).put(byte(0x08), 0x77), "name", "Port"},
    {"a_type_behind_the_end_names_no_port", s(8, 0x09).put(byte(0x08), 0x10).put(length, 8), "name", "Port"},

    // slots
    {"a_type_behind_the_end_names_no_slot", s(9, 0x09).put(byte(0x05), 0x06).put(length, 5), "name", "Slot"},
    {"a_slot_without_flags_has_an_empty_list", s(9, 0x0D), "t9_flags", ""},
    {"flags_behind_the_end_are_dropped", s(9, 0x0D).bytes(0x0B, {4, 1}).put(length, 0x0C), "t9_flags", "(absent)"},
    {"a_slot_may_be_function_7", s(9, 0x11).bytes(0x0F, {3, 0xFF}), "t9_pci_function", "7"},
    {"a_slot_may_be_device_31", s(9, 0x11).bytes(0x0F, {3, 0xFF}), "t9_pci_device", "31"},

    // string lists, languages and groups
    {"without_oem_strings_there_is_no_list", s(11, 0x05).put(byte(0x04), 1), "t11_oemstrings", "(absent)"},
    {"without_languages_there_is_an_empty_list", s(13, 0x05).put(byte(0x04), 1), "t13_languages", ""},
    {"no_more_oem_strings_than_counted", s(11, 0x05).put(byte(0x04), 1).string("a").string("b"), "t11_oemstrings", "a"},
    {"no_more_languages_than_counted", s(13, 0x05).put(byte(0x04), 1).string("a").string("b"), "t13_languages", "a"},
    {"a_string_count_behind_the_end_counts", s(11, 0x05).put(byte(0x04), 1).string("a").put(length, 4),
     "t11_oemstrings", "\1a"}, // the count is now part of the text
    {"the_languages_format_is_bit_7", s(13, 0x06).put(byte(0x05), 0x80), "t13_flags_msk1_srt7", "Abbreviated format"},
    {"two_bytes_are_no_member", s(14, 0x08).put(word(0x06), 0x10).put(length, 7), "t14_members", ""},
    {"five_bytes_are_one_member", s(14, 0x0B).bytes(0x06, {5, 0, 0, 6}).put(length, 10), "t14_members", "0x0005"},

    // memory arrays: 80000000h refers to the extended capacity
    {"capacity_80000000h_is_extended", s(16, 0x17).put(dword(0x07), 0x80000000).put(qword(0x0F), 1ull << 40),
     "t16_max_sz", "1 TB"},
    {"capacity_80000001h_is_not_extended", s(16, 0x17).put(dword(0x07), 0x80000001).put(qword(0x0F), 1ull << 40),
     "t16_max_sz", "2 TB"},
    {"an_extended_capacity_of_0_is_shown", s(16, 0x17).put(dword(0x07), 0x80000000), "t16_max_sz", "0 B"},
    {"an_extended_capacity_behind_the_end_is_none",
     s(16, 0x17).put(dword(0x07), 0x80000000).put(qword(0x0F), 1ull << 40).put(length, 0x0F), "t16_max_sz", "2 TB"},

    // memory devices: the size
    {"7FFFh_is_the_extended_size", s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 65536), "t17_sz", "64 GB"},
    {"bit_31_counts_in_the_size", s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 0x80000000), "t17_sz", "2 PB"},
    {"an_extended_size_behind_the_end_is_none",
     s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 65536).put(length, 0x1C), "t17_sz", "32 GB"},
    {"a_size_behind_the_end_populates", s(17, 0x28).put(word(0x0C), 1).put(length, 4), "t17_socket_populated", "true"},
    {"a_size_behind_the_end_is_still_set", s(17, 0x28).put(word(0x0C), 0x0123).put(length, 4), "set t17_sz", "291 MB"},

    // the rest of a memory device
    {"a_reserved_bit_alone_is_no_detail", s(17, 0x28).put(word(0x13), 0x0001), "t17_type_detail", "(absent)"},

    // memory errors: each field has its own number for unknown
    {"device_80000000h_is_unknown", s(18, 0x17).put(dword(0x0F), 0x80000000), "t18_device_address", "UNKNOWN"},
    {"resolution_80000000h_is_unknown", s(18, 0x17).put(dword(0x13), 0x80000000), "t18_resolution", "UNKNOWN"},
    {"syndrome_80000000h_is_known", s(33, 0x1F).put(dword(0x07), 0x80000000), "t33_syndrome", "0x80000000"},
    {"wide_array_80000000h_is_known", s(33, 0x1F).put(qword(0x0B), 0x80000000), "t33_array_err_address",
     "0x0000000080000000"},
    {"wide_array_bit_63_is_unknown", s(33, 0x1F).put(qword(0x0B), 1ull << 63), "t33_array_err_address", "UNKNOWN"},

    // mapped addresses
    {"a_device_start_of_FFFFFFFFh_is_shown_as_stored", s(20, 0x23).put(dword(0x04), 0xFFFFFFFF).put(qword(0x13), 1),
     "t20_start", "0xFFFFFFFF"},
    {"device_FFFFh_is_shown", s(20, 0x23).put(word(0x0C), 0xFFFF), "t20_device_handle", "0xFFFF"},
    {"position_FEh_is_a_number", s(20, 0x23).put(byte(0x11), 0xFE), "t20_interleave_position", "254"},

    // batteries
    {"a_blank_chemistry_is_no_text", s(22, 0x1A).put(byte(0x09), 2).text(0x14, "  "), "t22_chemistry", "Unknown"},
    {"a_chemistry_behind_the_end_is_no_text", s(22, 0x1A).put(byte(0x09), 2).text(0x14, "LiP").put(length, 0x14),
     "t22_chemistry", "Unknown"},
    {"chemistry_6_stays_itself", s(22, 0x1A).put(byte(0x09), 6).text(0x14, "LiP"), "t22_chemistry", "Lithium-ion"},
    {"a_multiplier_behind_the_end_is_none", s(22, 0x16).put(word(0x0A), 4400).put(byte(0x15), 10).put(length, 0x15),
     "t22_capacity", "4.4 Wh"},
    {"a_multiplier_of_0_shows_0_Wh", s(22, 0x1A).put(word(0x0A), 4400), "t22_capacity", "0 Wh"},
    {"the_last_date_is_in_2107", s(22, 0x1A).put(word(0x12), 0xFF9F), "t22_sbds_date", "2107-12-31"},
    {"a_date_of_day_0_is_absent", s(22, 0x1A).put(word(0x12), 0x4A20), "t22_sbds_date", "(absent)"},
    {"a_date_of_month_13_is_absent", s(22, 0x1A).put(word(0x12), 0x4BA1), "t22_sbds_date", "(absent)"},
    {"a_date_text_hides_the_date", s(22, 0x1A).put(byte(0x06), 9).put(word(0x12), 0x4A21), "t22_sbds_date", "(absent)"},

    // system reset and hardware security
    {"a_reset_count_of_FFFEh_is_a_number", s(23, 0x0D).put(word(0x05), 0xFFFE), "t23_reset_cnt", "65534"},

    // probes and cooling
    {"a_negative_voltage_shows_as_a_large_one", s(26, 0x16).put(word(0x0C), 0x8001), "t26_tolerance", "32.77 V"},
    {"a_cooler_speed_of_8001h_is_a_number", s(27, 0x0F).put(word(0x0C), 0x8001), "t27_speed", "32769 RPM"},
    {"a_temperature_below_0_shows_as_a_large_one", s(28, 0x16).put(word(0x08), 0x8001), "t28_min", "3276.9 °C"},
    {"a_negative_current_shows_as_a_large_one", s(29, 0x16).put(word(0x08), 0x8001), "t29_min", "32.77 A"},

    // remote access and boot status
    {"reserved_connections_are_left_out", s(30, 0x06).put(byte(0x05), 0xFF), "t30_connections",
     "Inbound Connection Enabled, Outbound Connection Enabled"},
    {"without_connections_there_is_an_empty_list", s(30, 0x06), "t30_connections", ""},

    // management
    {"links_never_filled_in_are_children_0", s(35, 0x0B), "children", "0x0000, 0x0000"},
    {"an_ipmi_revision_is_two_halves_of_a_byte", s(38, 0x10).put(byte(0x05), 0x9A), "t38_revision", "9.10"},

    // on-board devices of the later kind
    {"a_blank_designation_is_no_name", s(41, 0x0B).text(0x04, "  "), "name", "On Board Device"},
};

std::string setValue(const std::string& name)
{
    const auto properties = embedded_host::declaredProperties();
    const auto found = std::ranges::find(properties, name, &embedded_host::Property::name);
    return found == properties.end() ? "(no such property)" : (*found)->value.toString().getUTF8Buffer();
}

std::string lookUp(const tests::Recorded& recorded, const std::string& what)
{
    if (what == "name")
        return std::string(recorded.device(kUid).name.bytes());
    if (what == "children")
        return recorded.children(kUid);
    if (what.starts_with("set "))
        return setValue(what.substr(4));
    return recorded.value(kUid, what);
}

class Value : public testing::TestWithParam<Row>
{
};

TEST_P(Value, IsShown)
{
    tests::TableBuilder table;
    table.add(0, 0, 4) = GetParam().structure;
    EXPECT_EQ(lookUp(tests::discover(table), GetParam().what), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, Value, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
