// What one structure shows, a row for each rule. Plain conversions are recorded in machines/, lengths in ladders/.
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

/// The structure is a table of its own. `what` is a property, "name" or "children"; "after X" is the property that
/// follows X on the device; "set X" is what X was set to, whether or not the device has it.
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
    {"a_bios_cut_short_has_a_start", s(0, 0x18).put(word(0x06), 0xE800).put(length, 4), "t0_start", "0xE800"},
    {"a_bios_cut_short_has_a_release", s(0, 0x18).put(word(0x14), 0x0C01).put(length, 4), "t0_version", "1.12"},
    {"bios_bits_without_a_text_are_left_out", s(0, 0x18).put(qword(0x0A), 0x8000000080000085).put(word(0x12), 0x9001),
     "t0_characteristics",
     "Unknown, PCI is supported, NEC PC-98, ACPI is supported, SMBIOS table describes a virtual machine"},

    // system
    {"a_uuid_behind_the_end_shows_its_bytes_as_stored",
     s(1, 0x18).put(qword(0x08), 0x0706050403020100).put(byte(0x17), 0xAF).put(length, 8), "t1_uuid",
     "00-01-02-03-04-05-06-07-00-00-00-00-00-00-00-AF"},
    {"a_uuid_of_zeros_is_shown", s(1, 0x18), "t1_uuid", "00-00-00-00-00-00-00-00-00-00-00-00-00-00-00-00"},

    // base boards: member count and members
    {"missing_members_are_listed", s(2, 0x13).bytes(0x0E, {2, 0xFE, 0xFF, 0xFF, 0xFF}), "t2_members", "0xFFFE, 0xFFFF"},
    {"missing_members_are_no_children", s(2, 0x13).bytes(0x0E, {2, 0xFE, 0xFF, 0xFF, 0xFF}), "children", ""},
    {"a_boards_members_may_lie_behind_it", s(2, 0x11).bytes(0x0E, {1, 5}).put(length, 0x0F), "t2_members", "0x0005"},
    {"a_board_without_a_count_has_no_members", s(2, 0x11).bytes(0x0E, {1, 5}).put(length, 0x0E), "t2_members", ""},
    {"a_boards_parent_is_not_FFFFh", s(2, 0x0F).put(word(0x0B), 0xFFFF), "smbios2_parent", "(absent)"},
    {"a_boards_parent_may_be_FFFEh", s(2, 0x0F).put(word(0x0B), 0xFFFE), "smbios2_parent", "0xFFFE"},
    {"a_boards_parent_may_be_0", s(2, 0x0F), "smbios2_parent", "0x0000"},

    // enclosures: bit 7, the lock, does not count
    {"enclosure_0_is_a_desktop", s(3, 0x06), "ChassisType", "Desktop"},
    {"another_enclosure_is_no_desktop", s(3, 0x06).put(byte(0x05), 0x01), "ChassisType", "Other"},
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
    {"a_large_oem_dword_is_not_cut", s(3, 0x11).put(dword(0x0D), 0x12345), "t3_oem_defined", "0x12345"},
    {"contained_elements_do_not_move_the_sku", s(3, 0x1C).bytes(0x13, {2, 3}).text(0x18, "SKU"), "t3_sku", "SKU"},

    // processors: the family that FEh refers to
    {"the_first_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x104), "t4_family", "SH-3"},
    {"no_second_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x105), "t4_family", "Family 0105"},
    {"no_middle_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x118), "t4_family", "Family 0118"},
    {"no_last_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x1F4), "t4_family", "Family 01F4"},
    {"no_lower_family_is_found", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x100), "t4_family", "Family 0100"},
    {"family_0Bh_refers_to_no_other", s(4, 0x2A).put(byte(0x06), 0x0B).put(word(0x28), 0x104), "t4_family",
     "Intel Pentium processor"},
    {"the_first_byte_of_a_word_is_a_family", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x104).put(length, 0x29),
     "t4_family", "SH-3"},
    {"a_family_behind_the_end_is_none", s(4, 0x2A).put(byte(0x06), 0xFE).put(word(0x28), 0x104).put(length, 0x28),
     "t4_family", "Indicator to obtain the processor family from the Processor Family 2 field"},

    // voltages
    {"a_voltage_in_tenths_shows_two_decimals", s(4, 0x12).put(byte(0x11), 0x8C), "t4_voltage", "1.20 V"},
    {"a_voltage_of_no_tenths_is_a_number", s(4, 0x12).put(byte(0x11), 0x80), "t4_voltage", "0.00 V"},
    {"the_highest_voltage_is_a_number", s(4, 0x12).put(byte(0x11), 0xFF), "t4_voltage", "12.70 V"},
    {"several_voltages_are_one_text", s(4, 0x12).put(byte(0x11), 0x05), "t4_voltage", "5V, 2.9V"},
    {"no_voltage_is_an_empty_text", s(4, 0x12), "t4_voltage", ""},
    {"reserved_voltages_are_left_out", s(4, 0x12).put(byte(0x11), 0x7A), "t4_voltage", "3.3V"},

    // counts, which go on in a word where there is one
    {"a_count_below_FFh_is_the_bytes", s(4, 0x30).put(byte(0x23), 8).put(word(0x2A), 512), "t4_core_cnt", "8"},
    {"a_count_of_0_is_unknown", s(4, 0x30).put(word(0x2A), 512), "t4_core_cnt", "UNKNOWN"},
    {"a_count_of_FFh_is_the_words", s(4, 0x30).put(byte(0x23), 0xFF).put(word(0x2A), 512), "t4_core_cnt", "512"},
    {"a_wide_count_of_0_is_unknown", s(4, 0x30).put(byte(0x23), 0xFF), "t4_core_cnt", "UNKNOWN"},
    {"without_a_word_FFh_is_255_cores", s(4, 0x2A).put(byte(0x23), 0xFF), "t4_core_cnt", "255"},
    {"without_a_word_FFh_is_255_enabled", s(4, 0x2C).put(byte(0x24), 0xFF), "t4_core_enabled", "255"},
    {"without_a_word_FFh_is_255_threads", s(4, 0x2E).put(byte(0x25), 0xFF), "t4_thread_cnt", "255"},
    {"half_a_word_counts_cores", s(4, 0x2B).put(byte(0x23), 0xFF).put(byte(0x2A), 52), "t4_core_cnt", "52"},
    {"half_a_word_counts_enabled", s(4, 0x2D).put(byte(0x24), 0xFF).put(byte(0x2C), 52), "t4_core_enabled", "52"},
    {"half_a_word_counts_threads", s(4, 0x2F).put(byte(0x25), 0xFF).put(byte(0x2E), 52), "t4_thread_cnt", "52"},

    // the rest of a processor
    {"a_clock_of_0_shows_0_Hz", s(4, 0x18), "t4_ext_clock", "0 Hz"},
    {"a_maximum_speed_of_0_shows_0_Hz", s(4, 0x18), "t4_max_speed", "0 Hz"},
    {"missing_caches_are_no_children", s(4, 0x20).bytes(0x1A, {7, 0, 0xFF, 0xFF, 0xFE, 0xFF}), "children", "0x0007"},

    // memory controllers: the size is an exponent
    {"exponent_0_is_1_mb", s(5, 0x09), "t5_max_mod_sz", "1 MB"},
    {"exponent_31_is_negative", s(5, 0x09).put(byte(0x08), 0x1F), "t5_max_mod_sz", "-2 PB"},
    {"exponent_32_has_no_size", s(5, 0x09).put(byte(0x08), 0x20), "t5_max_mod_sz", "(absent)"},
    {"exponent_7Dh_is_no_marker_here", s(5, 0x09).put(byte(0x08), 0x7D), "t5_max_mod_sz", "(absent)"},
    {"bit_7_belongs_to_the_exponent_here", s(5, 0x09).put(byte(0x08), 0x8A), "t5_max_mod_sz", "(absent)"},
    {"a_controller_lists_all_modules", s(5, 0x13).bytes(0x0E, {2, 5, 0, 0xFF, 0xFF}), "t5_members", "0x0005, 0xFFFF"},
    {"a_module_FFFFh_is_no_child", s(5, 0x13).bytes(0x0E, {2, 5, 0, 0xFF, 0xFF}), "children", "0x0005"},
    {"modules_may_lie_behind_the_end", s(5, 0x11).bytes(0x0E, {1, 5}).put(length, 0x0F), "t5_members", "0x0005"},
    {"a_controller_without_slots_has_an_empty_list", s(5, 0x0F), "t5_members", ""},

    // memory modules: bit 7 is the double bank, three exponents are markers
    {"a_module_speed_of_0_shows_0_s", s(6, 0x0C), "t6_speed", "0 s"},
    {"an_installed_size_may_be_negative", s(6, 0x0C).put(byte(0x09), 0x1F), "t6_installed_sz", "-2 PB"},
    {"installed_exponent_7Ch_has_no_size", s(6, 0x0C).put(byte(0x09), 0x7C), "t6_installed_sz", "(absent)"},
    {"an_undeterminable_size_is_unknown", s(6, 0x0C).put(byte(0x09), 0x7D), "t6_installed_sz", "UNKNOWN"},
    {"a_size_not_installed_is_unknown", s(6, 0x0C).put(byte(0x09), 0x7F), "t6_installed_sz", "UNKNOWN"},
    {"a_double_bank_is_no_exponent", s(6, 0x0C).put(byte(0x09), 0x8A), "t6_installed_sz", "1 GB"},
    {"a_double_bank_hides_no_marker", s(6, 0x0C).put(byte(0x09), 0xFD), "t6_installed_sz", "UNKNOWN"},
    {"an_enabled_double_bank_is_dropped", s(6, 0x0C).put(byte(0x0A), 0x8A), "t6_enabled_sz", "1 GB"},
    {"no_enabled_bank_is_shown", s(6, 0x0C).put(byte(0x0A), 0x8A), "after t6_enabled_sz", "t6_err_status"},

    // caches
    {"a_cache_is_named_by_its_level", s(7, 0x13).put(word(0x05), 0x0182), "name", "L3 Cache"},
    {"the_highest_level_is_8", s(7, 0x13).put(word(0x05), 0x000F), "name", "L8 Cache"},
    {"the_levels_byte_suffices_for_a_name", s(7, 0x06).put(byte(0x05), 0x01), "name", "L2 Cache"},
    {"a_cache_too_short_for_a_level_has_none", s(7, 0x06).put(byte(0x05), 1).put(length, 5), "name", "L? Cache"},
    {"a_cache_size_below_bit_15_is_in_kb", s(7, 0x0B).put(word(0x07), 0x7FFF), "t7_max_cache_sz", "32 MB"},
    {"bit_15_still_counts_in_a_cache_size", s(7, 0x0B).put(word(0x07), 0x8010), "t7_max_cache_sz", "2 GB"},
    {"bit_15_still_counts_in_an_installed_size", s(7, 0x0B).put(word(0x09), 0x8010), "t7_installed_sz", "2 GB"},
    {"reserved_sram_bits_are_left_out", s(7, 0x0D).put(word(0x0B), 0x8021), "t7_supported_sram", "Other, Synchronous"},
    {"the_cache_type_comes_before_the_correction", s(7, 0x13), "after t7_type", "t7_error_correction"},

    // ports
    {"a_port_of_no_type_is_a_port", s(8, 0x09), "name", "Port"},
    {"a_port_of_a_type_without_a_text_is_a_port", s(8, 0x09).put(byte(0x08), 0x77), "name", "Port"},
    {"a_type_behind_the_end_names_no_port", s(8, 0x09).put(byte(0x08), 0x10).put(length, 8), "name", "Port"},
    {"a_ports_designators_come_first", s(8, 0x09).text(0x04, "J1").text(0x06, "USB"), "after t8_designation",
     "t8_external_designator"},

    // slots
    {"another_slot_is_a_slot", s(9, 0x09).put(byte(0x05), 0x01), "name", "Slot"},
    {"a_type_behind_the_end_names_no_slot", s(9, 0x09).put(byte(0x05), 0x06).put(length, 5), "name", "Slot"},
    {"a_slots_raw_type_comes_before_its_text", s(9, 0x0D), "after t9_type_internal", "t9_type"},
    {"a_slots_raw_usage_comes_after_its_text", s(9, 0x0D), "after t9_usage", "t9_usage_internal"},
    {"a_slot_without_flags_has_an_empty_list", s(9, 0x0D), "t9_flags", ""},
    {"flags_behind_the_end_are_still_set", s(9, 0x0D).bytes(0x0B, {4, 1}).put(length, 0x0B), "set t9_flags",
     "Provides 3.3 volts, PCI slot supports Power Management Event (PME#) signal"},
    {"a_slot_nowhere_has_no_bus", s(9, 0x11).bytes(0x0F, {0xFF, 0xFF}), "t9_pci_busid", "(absent)"},
    {"a_slot_may_be_on_bus_FFh", s(9, 0x11).bytes(0x0F, {0xFF, 8}), "t9_pci_busid", "255"},
    {"a_slot_may_be_device_31", s(9, 0x11).bytes(0x0F, {3, 0xFF}), "t9_pci_device", "31"},
    {"a_slot_may_be_function_7", s(9, 0x11).bytes(0x0F, {3, 0xFF}), "t9_pci_function", "7"},

    // string lists, languages and groups
    {"oem_strings_keep_blanks", s(11, 0x05).put(byte(0x04), 5).string("a").string("   ").string("b "), "t11_oemstrings",
     "a,    , b "},
    {"languages_leave_blanks_out", s(13, 0x05).put(byte(0x04), 5).string("a").string("   ").string("b "),
     "t13_languages", "a, b "},
    {"without_oem_strings_there_is_no_list", s(11, 0x05).put(byte(0x04), 1), "t11_oemstrings", "(absent)"},
    {"without_languages_there_is_an_empty_list", s(13, 0x05).put(byte(0x04), 1), "t13_languages", ""},
    {"no_more_oem_strings_than_counted", s(11, 0x05).put(byte(0x04), 1).string("a").string("b"), "t11_oemstrings", "a"},
    {"no_more_languages_than_counted", s(13, 0x05).put(byte(0x04), 1).string("a").string("b"), "t13_languages", "a"},
    {"a_string_count_behind_the_end_counts", s(11, 0x05).put(byte(0x04), 1).string("a").put(length, 4),
     "t11_oemstrings", "\1a"}, // the count is now part of the text
    {"the_languages_format_is_bit_7", s(13, 0x06).put(byte(0x05), 0x80), "t13_flags_msk1_srt7", "Abbreviated format"},
    {"the_shortest_group_has_no_members", s(14, 0x04), "t14_members", ""},
    {"two_bytes_are_no_member", s(14, 0x08).put(word(0x06), 0x10).put(length, 7), "t14_members", ""},
    {"five_bytes_are_one_member", s(14, 0x0B).bytes(0x06, {5, 0, 0, 6}).put(length, 10), "t14_members", "0x0005"},
    {"a_group_lists_member_FFFFh", s(14, 0x0B).bytes(0x06, {5, 0, 0, 0xFF, 0xFF}), "t14_members", "0x0005, 0xFFFF"},
    {"a_groups_member_FFFFh_is_no_child", s(14, 0x0B).bytes(0x06, {5, 0, 0, 0xFF, 0xFF}), "children", "0x0005"},

    // the event log
    {"the_logs_length_is_hexadecimal", s(15, 0x17).put(word(0x04), 0x0400), "t15_area_len", "0x0400"},
    {"a_log_is_valid_by_bit_0", s(15, 0x17).put(byte(0x0B), 0x02), "t15_status_msk1_srt0", "Log area not valid"},
    {"a_log_is_full_by_bit_1", s(15, 0x17).put(byte(0x0B), 0x02), "t15_status_msk1_srt1", "Log area full"},
    {"the_logs_header_format_comes_before_its_status", s(15, 0x17), "after t15_hdr_fmt", "t15_status_msk1_srt0"},

    // memory arrays: 80000000h refers to the extended capacity
    {"capacity_80000000h_is_extended", s(16, 0x17).put(dword(0x07), 0x80000000).put(qword(0x0F), 1ull << 40),
     "t16_max_sz", "1 TB"},
    {"capacity_80000001h_is_not_extended", s(16, 0x17).put(dword(0x07), 0x80000001).put(qword(0x0F), 1ull << 40),
     "t16_max_sz", "2 TB"},
    {"an_extended_capacity_of_0_is_shown", s(16, 0x17).put(dword(0x07), 0x80000000), "t16_max_sz", "0 B"},
    {"the_first_byte_of_the_extended_capacity_suffices",
     s(16, 0x17).put(dword(0x07), 0x80000000).put(qword(0x0F), 1ull << 40).put(length, 0x10), "t16_max_sz", "1 TB"},
    {"an_extended_capacity_behind_the_end_is_none",
     s(16, 0x17).put(dword(0x07), 0x80000000).put(qword(0x0F), 1ull << 40).put(length, 0x0F), "t16_max_sz", "2 TB"},
    {"error_handle_FFFEh_is_no_child", s(16, 0x0F).put(word(0x0B), 0xFFFE), "children", ""},

    // memory devices: the size
    {"size_0_is_not_installed", s(17, 0x28), "t17_sz", "Not Installed"},
    {"size_0_is_not_populated", s(17, 0x28), "t17_socket_populated", "false"},
    {"size_FFFFh_is_unknown", s(17, 0x28).put(word(0x0C), 0xFFFF), "t17_sz", "UNKNOWN"},
    {"size_FFFFh_is_populated", s(17, 0x28).put(word(0x0C), 0xFFFF), "t17_socket_populated", "true"},
    {"bit_15_still_counts_in_the_size", s(17, 0x28).put(word(0x0C), 0x8200), "t17_sz", "32.5 MB"}, // not 512 KB
    {"7FFFh_is_the_extended_size", s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 65536), "t17_sz", "64 GB"},
    {"bit_31_counts_in_the_size", s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 0x80000000), "t17_sz", "2 PB"},
    {"the_first_byte_of_the_extended_size_suffices",
     s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 65536).put(length, 0x1D), "t17_sz", "64 GB"},
    {"an_extended_size_behind_the_end_is_none",
     s(17, 0x28).put(word(0x0C), 0x7FFF).put(dword(0x1C), 65536).put(length, 0x1C), "t17_sz", "32 GB"},
    {"a_size_behind_the_end_populates", s(17, 0x28).put(word(0x0C), 1).put(length, 4), "t17_socket_populated", "true"},
    {"a_size_behind_the_end_is_still_set", s(17, 0x28).put(word(0x0C), 0x0123).put(length, 4), "set t17_sz", "291 MB"},

    // the rest of a memory device
    {"a_memory_speed_of_0_shows_0_Hz", s(17, 0x28), "t17_speed", "0 Hz"},
    {"a_reserved_bit_alone_is_no_detail", s(17, 0x28).put(word(0x13), 0x0001), "t17_type_detail", "(absent)"},
    {"an_array_FFFEh_is_a_parent", s(17, 0x08).put(word(0x04), 0xFFFE), "smbios2_parent", "0xFFFE"},
    {"an_array_FFFFh_is_no_parent", s(17, 0x08).put(word(0x04), 0xFFFF), "smbios2_parent", "(absent)"},
    {"an_error_FFFEh_is_no_child", s(17, 0x08).put(word(0x06), 0xFFFE), "children", ""},

    // memory errors: each field has its own number for unknown
    {"errors_show_numbers_before_texts", s(18, 0x17), "after smbios2_hdr_handle", "t18_syndrome"},
    {"device_0_is_known", s(18, 0x17), "t18_device_address", "0x00000000"},
    {"device_80000000h_is_unknown", s(18, 0x17).put(dword(0x0F), 0x80000000), "t18_device_address", "UNKNOWN"},
    {"resolution_80000000h_is_unknown", s(18, 0x17).put(dword(0x13), 0x80000000), "t18_resolution", "UNKNOWN"},
    {"wide_errors_show_numbers_before_texts", s(33, 0x1F), "after smbios2_hdr_handle", "t33_syndrome"},
    {"syndrome_80000000h_is_known", s(33, 0x1F).put(dword(0x07), 0x80000000), "t33_syndrome", "0x80000000"},
    {"wide_array_80000000h_is_known", s(33, 0x1F).put(qword(0x0B), 0x80000000), "t33_array_err_address",
     "0x0000000080000000"},
    {"wide_array_bit_63_is_unknown", s(33, 0x1F).put(qword(0x0B), 1ull << 63), "t33_array_err_address", "UNKNOWN"},

    // mapped addresses
    {"an_array_start_of_FFFFFFFFh_is_shown_as_stored", s(19, 0x1F).put(dword(0x04), 0xFFFFFFFF).put(qword(0x0F), 1),
     "t19_start", "0xFFFFFFFF"},
    {"a_device_start_of_FFFFFFFFh_is_shown_as_stored", s(20, 0x23).put(dword(0x04), 0xFFFFFFFF).put(qword(0x13), 1),
     "t20_start", "0xFFFFFFFF"},
    {"a_ranges_array_may_be_FFFEh", s(19, 0x1F).put(word(0x0C), 0xFFFE), "smbios2_parent", "0xFFFE"},
    {"a_ranges_parent_is_its_device", s(20, 0x23).put(word(0x0C), 1).put(word(0x0E), 2), "smbios2_parent", "0x0001"},
    {"device_FFFFh_is_shown", s(20, 0x23).put(word(0x0C), 0xFFFF), "t20_device_handle", "0xFFFF"},
    {"device_FFFFh_is_no_parent", s(20, 0x23).put(word(0x0C), 0xFFFF), "smbios2_parent", "(absent)"},
    {"position_FEh_is_a_number", s(20, 0x23).put(byte(0x11), 0xFE), "t20_interleave_position", "254"},

    // batteries
    {"chemistry_2_is_the_smart_batterys", s(22, 0x1A).put(byte(0x09), 2).text(0x14, "LiP "), "t22_chemistry", "LiP "},
    {"without_a_text_chemistry_2_is_unknown", s(22, 0x1A).put(byte(0x09), 2), "t22_chemistry", "Unknown"},
    {"a_blank_chemistry_is_no_text", s(22, 0x1A).put(byte(0x09), 2).text(0x14, "  "), "t22_chemistry", "Unknown"},
    {"a_chemistry_behind_the_end_is_no_text", s(22, 0x1A).put(byte(0x09), 2).text(0x14, "LiP").put(length, 0x14),
     "t22_chemistry", "Unknown"},
    {"chemistry_6_stays_itself", s(22, 0x1A).put(byte(0x09), 6).text(0x14, "LiP"), "t22_chemistry", "Lithium-ion"},
    {"a_capacity_is_multiplied", s(22, 0x1A).put(word(0x0A), 4400).put(byte(0x15), 10), "t22_capacity", "44 Wh"},
    {"a_multiplier_behind_the_end_is_none", s(22, 0x16).put(word(0x0A), 4400).put(byte(0x15), 10).put(length, 0x15),
     "t22_capacity", "4.4 Wh"},
    {"a_multiplier_of_0_shows_0_Wh", s(22, 0x1A).put(word(0x0A), 4400), "t22_capacity", "0 Wh"},
    {"a_capacity_of_0_is_unknown", s(22, 0x1A).put(byte(0x15), 10), "t22_capacity", "UNKNOWN"},
    {"an_unknown_battery_error_shows_as_255_percent", s(22, 0x1A).put(byte(0x0F), 0xFF), "t22_max_err", "255%"},
    {"a_battery_serial_shows_its_low_byte_first", s(22, 0x1A).put(word(0x10), 0x1234), "t22_sbds_serial", "34-12"},
    {"the_first_date_is_in_1980", s(22, 0x1A).put(word(0x12), 0x0021), "t22_sbds_date", "1980-01-01"},
    {"the_last_date_is_in_2107", s(22, 0x1A).put(word(0x12), 0xFF9F), "t22_sbds_date", "2107-12-31"},
    {"a_date_of_day_0_is_absent", s(22, 0x1A).put(word(0x12), 0x4A20), "t22_sbds_date", "(absent)"},
    {"a_date_of_month_0_is_absent", s(22, 0x1A).put(word(0x12), 0x4A01), "t22_sbds_date", "(absent)"},
    {"a_date_of_month_13_is_absent", s(22, 0x1A).put(word(0x12), 0x4BA1), "t22_sbds_date", "(absent)"},
    {"a_date_text_hides_the_date", s(22, 0x1A).put(byte(0x06), 9).put(word(0x12), 0x4A21), "t22_sbds_date", "(absent)"},

    // system reset and hardware security
    {"a_reset_count_of_FFFEh_is_a_number", s(23, 0x0D).put(word(0x05), 0xFFFE), "t23_reset_cnt", "65534"},
    {"the_front_panel_reset_is_the_lowest_bits", s(24, 0x05).put(byte(0x04), 0xE4), "t24_flags_msk2_srt0", "Disabled"},

    // probes and cooling
    {"reading_8000h_is_unknown", s(26, 0x16).put(word(0x06), 0x8000), "t26_max", "UNKNOWN"},
    {"a_negative_voltage_shows_as_a_large_one", s(26, 0x16).put(word(0x0C), 0x8001), "t26_tolerance", "32.77 V"},
    {"a_voltage_accuracy_is_not_divided", s(26, 0x16).put(word(0x0E), 50), "t26_accuracy", "50%"},
    {"a_cooler_speed_of_8001h_is_a_number", s(27, 0x0F).put(word(0x0C), 0x8001), "t27_speed", "32769 RPM"},
    {"a_temperature_below_0_shows_as_a_large_one", s(28, 0x16).put(word(0x08), 0x8001), "t28_min", "3276.9 °C"},
    {"a_nominal_temperature_is_whole", s(28, 0x16).put(word(0x14), 1504), "t28_nominal", "150 °C"},
    {"a_temperature_accuracy_is_not_divided", s(28, 0x16).put(word(0x0E), 50), "t28_accuracy", "50%"},
    {"a_temperature_probes_place_comes_first", s(28, 0x16).text(0x04, "CPU"), "after smbios2_hdr_handle",
     "t28_loc_and_status_msk3_srt5"},
    {"a_negative_current_shows_as_a_large_one", s(29, 0x16).put(word(0x08), 0x8001), "t29_min", "32.77 A"},
    {"a_current_accuracy_is_not_divided", s(29, 0x16).put(word(0x0E), 50), "t29_accuracy", "50%"},

    // remote access and boot status
    {"reserved_connections_are_left_out", s(30, 0x06).put(byte(0x05), 0xFF), "t30_connections",
     "Inbound Connection Enabled, Outbound Connection Enabled"},
    {"without_connections_there_is_an_empty_list", s(30, 0x06), "t30_connections", ""},
    {"boot_data_ends_with_the_structure", s(32, 0x0D).bytes(0x0B, {0x0A, 0xFF}), "t32_additional_data", "0A-FF"},

    // management
    {"a_management_handle_shows_32_bits", s(35, 0x0B).put(word(0x05), 0x34), "t35_management_handle", "0x00000034"},
    {"a_management_device_is_a_parent_of_16_bits", s(35, 0x0B).put(word(0x05), 0x34), "smbios2_parent", "0x0034"},
    {"threshold_FFFEh_is_shown", s(35, 0x0B).put(word(0x09), 0xFFFE), "t35_threshold_handle", "0x0000FFFE"},
    {"a_threshold_never_filled_in_is_child_0", s(35, 0x0B).put(word(0x07), 0xFFFF), "children", "0x0000"},
    {"management_device_FFFEh_is_a_parent", s(35, 0x0B).put(word(0x05), 0xFFFE), "smbios2_parent", "0xFFFE"},
    {"an_ipmi_revision_is_two_halves_of_a_byte", s(38, 0x10).put(byte(0x05), 0x9A), "t38_revision", "9.10"},
    {"a_base_address_keeps_bit_0", s(38, 0x10).put(qword(0x08), 0x0CA3), "t38_base_addr", "0x0000000000000CA3"},

    // power supplies
    {"power_counts_whole_watts", s(39, 0x16).put(word(0x0C), 350), "t39_max_power", "350 W"},
    {"probe_FFFEh_is_shown", s(39, 0x16).put(word(0x14), 0xFFFE), "t39_input_cprobe_handle", "0xFFFE"},
    {"no_missing_probe_is_a_child", s(39, 0x16).bytes(0x10, {0xFF, 0xFF, 0x40, 0, 0xFE, 0xFF}), "children", "0x0040"},

    // on-board devices of the later kind
    {"a_blank_designation_is_no_name", s(41, 0x0B).text(0x04, "  "), "name", "On Board Device"},
    {"on_bus_and_device_FFh_the_bus_is_shown", s(41, 0x0B).bytes(0x09, {0xFF, 0xFF}), "t41_pci_busid", "255"},
    {"on_bus_and_device_FFh_the_device_is_shown", s(41, 0x0B).bytes(0x09, {0xFF, 0xFF}), "t41_pci_device", "31"},
};

std::string childrenOf(const tests::Recorded& recorded)
{
    std::string joined;
    for (const auto& id : recorded.children(kUid))
        joined += (joined.empty() ? "" : ", ") + id;
    return joined;
}

std::string propertyAfter(const embedded_host::DeviceRecord& device, const std::string& name)
{
    std::string before;
    for (const auto& property : device.properties) {
        if (before == name)
            return property.declaration->name;
        before = property.declaration->name;
    }
    return "(nothing)";
}

std::string setValue(const std::string& name)
{
    const auto properties = embedded_host::declaredProperties();
    const auto found = std::ranges::find(properties, name, &embedded_host::Property::name);
    return found == properties.end() ? "(no such property)" : (*found)->value.toString().lumString().bytes();
}

std::string lookUp(const tests::Recorded& recorded, const std::string& what)
{
    if (what == "name")
        return recorded.device(kUid).name;
    if (what == "children")
        return childrenOf(recorded);
    if (what.starts_with("after "))
        return propertyAfter(recorded.device(kUid), what.substr(6));
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
