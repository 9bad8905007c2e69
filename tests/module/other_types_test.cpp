// Ports and slots, on-board devices, string lists and groups, the event log, peripherals, probes, management and power,
// and the two makers' own structures.
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

using tests::byte;
using tests::discover;
using tests::dword;
using tests::qword;
using tests::TableBuilder;
using tests::word;

using Texts = std::vector<std::string>;

constexpr const char* kUid = "SMBIOS:0x0001";
constexpr const char* kSecond = "SMBIOS:0x0002";

TEST(Nothing, IsPublishedForTypesWithoutADecoder)
{
    TableBuilder table;
    for (const int type : {25, 31, 36, 37, 40, 42, 43, 44, 45, 46, 126, 128, 200, 255})
        table.add(static_cast<unsigned char>(type), static_cast<std::uint16_t>(type), 0x20);
    EXPECT_EQ(discover(table.end()).uids(), Texts{"SMBIOS"});
}

TEST(PortsAndSlots, AreNamedByWhatTheyAreWhereTheStandardSays)
{
    const struct
    {
        unsigned char type, length, raw;
        const char* name;
    } cases[] = {
        {8, 0x09, 0x10, "USB"},  {8, 0x09, 0x00, "Port"}, {8, 0x09, 0xFF, "Port"},
        {8, 0x09, 0x77, "Port"}, {8, 0x08, 0x10, "Port"}, {9, 0x09, 0x06, "PCI"},
        {9, 0x09, 0x01, "Slot"}, {9, 0x09, 0x02, "Slot"}, {9, 0x05, 0x06, "Slot"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(each.type, 0x0001, 0x09).put(byte(each.type == 8 ? 0x08 : 0x05), each.raw).cut(each.length);
        const auto device = discover(table).device(kUid);
        EXPECT_EQ(Texts({device.name, device.identifier, device.description}), Texts(3, each.name));
    }
}

TEST(Slots, TheLocationIsShownWholeOrNotAtAll)
{
    const struct
    {
        unsigned char length, bus, deviceAndFunction;
        Texts expected;
    } cases[] = {
        {0x11, 0xFF, 0xFF, Texts(4, "(absent)")},
        {0x11, 0xFF, 0x08, {"0x0002", "255", "1", "0"}},
        {0x11, 0x03, 0xFF, {"0x0002", "3", "31", "7"}},
        {0x10, 0x03, 0x08, Texts(4, "(absent)")},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(9, 0x0001, 0x11)
            .put(word(0x0D), 2)
            .put(byte(0x0F), each.bus)
            .put(byte(0x10), each.deviceAndFunction)
            .cut(each.length);
        const auto recorded = discover(table);
        Texts found;
        for (const char* name : {"t9_pci_segment_grpid", "t9_pci_busid", "t9_pci_device", "t9_pci_function"})
            found.push_back(recorded.value(kUid, name));
        EXPECT_EQ(found, each.expected);
    }
}

TEST(Slots, FlagsAreAListEvenWithoutAny)
{
    TableBuilder table;
    table.add(9, 0x0001, 0x0D).put(byte(0x0B), 0x05).put(byte(0x0C), 0x02);
    table.add(9, 0x0002, 0x0D);
    table.add(9, 0x0003, 0x0C).put(byte(0x0B), 0xFF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t9_flags"),
              (Texts{"Characteristics unknown", "Provides 3.3 volts", "Slot supports hot-plug devices"}));
    EXPECT_EQ(recorded.list(kSecond, "t9_flags"), Texts{});
    EXPECT_EQ(recorded.value("SMBIOS:0x0003", "t9_flags"), "(absent)");
    EXPECT_EQ(recorded.children("SMBIOS:Slots"), (Texts{"0x0001", "0x0002", "0x0003"}));
    EXPECT_EQ(recorded.uids().back(), "SMBIOS:Slots");
}

TEST(OnBoardDevices, EachEntryIsADeviceAndTheGroupNamesTheHandleForEach)
{
    TableBuilder table;
    table.add(10, 0x0001, 0x0A).put(byte(0x04), 0x85).text(0x05, "Net").put(byte(0x06), 0x03).text(0x09, "  ");
    table.add(10, 0x0002, 0x05);
    table.add(10, 0x0003, 0x07);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.uids(), (Texts{"SMBIOS", "SMBIOS:0x0001", "SMBIOS:0x0001:1", "SMBIOS:0x0001:2", "SMBIOS:0x0003",
                                      "SMBIOS:OnBoardDevices"}));
    EXPECT_EQ(recorded.children("SMBIOS:OnBoardDevices"), (Texts{"0x0001", "0x0001", "0x0001", "0x0003"}));
    EXPECT_EQ(recorded.device(kUid).name, "Net");
    EXPECT_EQ(recorded.value(kUid, "t10_devs_msk1_srt7"), "Device Enabled");
    EXPECT_EQ(recorded.value(kUid, "t10_devs_msk7_srt0"), "Ethernet");
    EXPECT_EQ(recorded.value(kUid, "t10_description"), "Net");
    EXPECT_EQ(recorded.value("SMBIOS:0x0001:1", "t10_devs_msk7_srt0"), "Video");
    EXPECT_EQ(recorded.value("SMBIOS:0x0001:2", "t10_description"), "(absent)") << "blank";
    EXPECT_EQ(recorded.device("SMBIOS:0x0001:2").name, "On Board Device");

    TableBuilder none;
    none.add(10, 0x0001, 0x04);
    EXPECT_EQ(discover(none).uids(), Texts{"SMBIOS"}) << "no entry, no group";
}

TEST(OnBoardDevices, ExtendedOnesShowTheirLocationWhateverItIs)
{
    TableBuilder table;
    table.add(41, 0x0001, 0x0B).text(0x04, "  ").put(byte(0x06), 1).put(byte(0x09), 0xFF).put(byte(0x0A), 0xFF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.device(kUid).name, "On Board Device");
    EXPECT_EQ(recorded.value(kUid, "t41_designation"), "(absent)");
    EXPECT_EQ(recorded.value(kUid, "t41_dev_type_instance"), "0x01");
    EXPECT_EQ(recorded.value(kUid, "t41_pci_busid"), "255");
    EXPECT_EQ(recorded.value(kUid, "t41_pci_device"), "31");
    EXPECT_EQ(recorded.value(kUid, "t41_pci_function"), "7");
    EXPECT_EQ(recorded.device("SMBIOS:OnBoardDevicesExt").name, "On Board Devices (Extended Information)");
}

TEST(StringLists, KeepBlanksInTypes11And12AndFilterThemInType13)
{
    for (const int each : {11, 12, 13}) {
        const auto type = static_cast<unsigned char>(each);
        TableBuilder table;
        table.add(type, 0x0001, 0x05).put(byte(0x04), 5).string("a").string("   ").string("b ");
        table.add(type, 0x0002, 0x05).put(byte(0x04), 1);
        table.add(type, 0x0003, 0x05).string("not counted");
        const char* property = type == 11 ? "t11_oemstrings" : type == 12 ? "t12_configoptions" : "t13_languages";
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.list(kUid, property), type == 13 ? (Texts{"a", "b "}) : (Texts{"a", "   ", "b "}));
        const Texts empty = type == 13 ? Texts{} : Texts{"(no list)"};
        EXPECT_EQ(recorded.list(kSecond, property), empty);
        EXPECT_EQ(recorded.list("SMBIOS:0x0003", property), empty);
    }
}

TEST(StringLists, LanguagesFlagIsBit7)
{
    TableBuilder table;
    table.add(13, 0x0001, 0x06).put(byte(0x05), 0x01);
    table.add(13, 0x0002, 0x06).put(byte(0x05), 0x80);
    const auto recorded = discover(table);
    EXPECT_NE(recorded.value(kUid, "t13_flags_msk1_srt7"), recorded.value(kSecond, "t13_flags_msk1_srt7"));
    EXPECT_NE(recorded.value(kSecond, "t13_flags_msk1_srt7").find("bbreviated"), std::string::npos);
}

TEST(Group, MembersAreThreeBytesEach)
{
    const std::pair<unsigned char, std::size_t> lengths[] = {{4, 0}, {5, 0}, {7, 0}, {8, 1}, {10, 1}, {11, 2}};
    for (const auto& [length, members] : lengths) {
        TableBuilder table;
        table.add(14, 0x0001, 0x0B).put(word(0x06), 0x0010).put(word(0x09), 0xFFFF).cut(length);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.list(kUid, "t14_members").size(), members);
        EXPECT_EQ(recorded.children(kUid).size(), members != 0 ? 1u : 0u) << "FFFFh is no child";
    }
}

TEST(EventLog, LengthsAreHexadecimalAndBothStatusBitsAreShown)
{
    TableBuilder table;
    table.add(15, 0x0001, 0x17).put(word(0x04), 0x0400).put(byte(0x0B), 0x03);
    table.add(15, 0x0002, 0x14);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t15_area_len"), "0x0400");
    EXPECT_NE(recorded.value(kUid, "t15_status_msk1_srt0"), recorded.value(kSecond, "t15_status_msk1_srt0"));
    EXPECT_NE(recorded.value(kUid, "t15_status_msk1_srt1"), recorded.value(kSecond, "t15_status_msk1_srt1"));
    EXPECT_EQ(recorded.value(kUid, "t15_hdr_fmt"), "No header");
    EXPECT_EQ(recorded.value(kSecond, "t15_hdr_fmt"), "(absent)");
}

TEST(Battery, ChemistryComesFromTheSmartBatteryWhereTheEnumerationDoesNotKnow)
{
    const struct
    {
        unsigned char length, chemistry;
        const char* own;
        const char* expected;
    } cases[] = {
        {0x1A, 2, "LiP ", "LiP "},   {0x1A, 2, nullptr, "Unknown"},   {0x1A, 2, "  ", "Unknown"},
        {0x14, 2, "LiP", "Unknown"}, {0x1A, 6, "LiP", "Lithium-ion"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        auto& battery = table.add(22, 0x0001, 0x1A).put(byte(0x09), each.chemistry);
        if (each.own != nullptr)
            battery.text(0x14, each.own);
        battery.cut(each.length);
        EXPECT_EQ(discover(table).value(kUid, "t22_chemistry"), each.expected);
    }
}

TEST(Battery, CapacityTakesTheMultiplierWhereThereIsOne)
{
    const struct
    {
        unsigned char length;
        std::uint16_t capacity;
        unsigned char multiplier;
        const char* expected;
    } cases[] = {
        {0x1A, 4400, 10, "44 Wh"}, {0x15, 4400, 10, "4.4 Wh"}, {0x1A, 0, 10, "UNKNOWN"}, {0x1A, 4400, 0, "0 Wh"}};
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(22, 0x0001, 0x1A).put(word(0x0A), each.capacity).put(byte(0x15), each.multiplier).cut(each.length);
        EXPECT_EQ(discover(table).value(kUid, "t22_capacity"), each.expected);
    }
}

TEST(Battery, TheSmartBatterysDateIsShownWhereItIsOneAndNoOtherIsNamed)
{
    const struct
    {
        std::uint16_t packed;
        unsigned char dateString;
        const char* expected;
    } cases[] = {
        {0x4A21, 0, "2017-01-01"}, {0x4A20, 0, "(absent)"},   {0x4BA1, 0, "(absent)"}, {0x4A01, 0, "(absent)"},
        {0xFF9F, 0, "2107-12-31"}, {0x0021, 0, "1980-01-01"}, {0x4A21, 9, "(absent)"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(22, 0x0001, 0x1A).put(word(0x12), each.packed).put(byte(0x06), each.dateString);
        EXPECT_EQ(discover(table).value(kUid, "t22_sbds_date"), each.expected);
    }
}

TEST(Battery, SerialBytesInStoredOrderAndAnUnknownErrorAs255Percent)
{
    TableBuilder table;
    table.add(22, 0x0001, 0x1A).put(word(0x10), 0x1234).put(byte(0x0F), 0xFF).put(dword(0x16), 0xBEEF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t22_sbds_serial"), "34-12");
    EXPECT_EQ(recorded.value(kUid, "t22_max_err"), "255%");
    EXPECT_EQ(recorded.value(kUid, "t22_voltage"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t22_oem_flags"), "0x0000BEEF");
}

TEST(SystemReset, CountsAreNumbersOnPropertiesDeclaredAsTexts)
{
    TableBuilder table;
    table.add(23, 0x0001, 0x0D).put(byte(0x04), 0x2D).put(word(0x05), 0xFFFE).put(word(0x07), 0xFFFF);
    const auto recorded = discover(table);
    const auto& held = recorded.device(kUid).find("t23_reset_cnt")->held();
    ASSERT_TRUE(std::holds_alternative<int>(held));
    EXPECT_EQ(std::get<int>(held), 65534);
    EXPECT_EQ(recorded.value(kUid, "t23_reset_lim"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t23_flags_msk2_srt1"), "System utilities");
    EXPECT_EQ(recorded.value(kUid, "t23_flags_msk2_srt3"), "Operating system");
}

TEST(HardwareSecurity, HasItsCapabilityWhateverItsLength)
{
    TableBuilder table;
    table.add(24, 0x0001, 0x04);
    table.add(24, 0x0002, 0x05).put(byte(0x04), 0xE4);
    const auto recorded = discover(table, {{"verbose", "false"}});
    EXPECT_EQ(tests::inventoryText({recorded.device(kUid)}),
              "SMBIOS:0x0001 [Hardware Security] [Hardware Security:0] [Hardware Security:0] SMBIOS_Struct Security\n"
              "  smbios2_hdr_type = 24\n  smbios2_hdr_len = 4 B\n  smbios2_hdr_handle = 0x0001\n");
    EXPECT_EQ(recorded.value(kSecond, "t24_hw_security_byte"), "228");
    EXPECT_EQ(recorded.value(kSecond, "t24_flags_msk2_srt0"), "Disabled");
    EXPECT_EQ(recorded.value(kSecond, "t24_flags_msk2_srt6"), "Unknown");
}

TEST(Probes, ReadingsInTheUnitsOfTheirKind)
{
    const struct
    {
        unsigned char type;
        Texts readings; ///< max, min, resolution, tolerance, accuracy, nominal
    } cases[] = {
        {26, {"UNKNOWN", "12 V", "500.00 µV", "32.77 V", "50%", "1.5 V"}},
        {29, {"UNKNOWN", "12 A", "500.00 µA", "32.77 A", "50%", "1.5 A"}},
        {28, {"UNKNOWN", "1200.0 °C", "0.005 °C", "3276.9 °C", "50%", "150 °C"}},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(each.type, 0x0001, 0x16)
            .put(word(0x06), 0x8000)
            .put(word(0x08), 12000)
            .put(word(0x0A), 5)
            .put(word(0x0C), 0x8001)
            .put(word(0x0E), 50)
            .put(word(0x14), 1500);
        const auto recorded = discover(table);
        const auto prefix = "t" + std::to_string(each.type) + "_";
        Texts readings;
        for (const char* name : {"max", "min", "resolution", "tolerance", "accuracy", "nominal"})
            readings.push_back(recorded.value(kUid, prefix + name));
        EXPECT_EQ(readings, each.readings);
    }
}

TEST(CoolingDevice, GroupSpeedAndProbe)
{
    TableBuilder table;
    table.add(27, 0x0001, 0x0F).put(word(0x04), 0xFFFF).put(word(0x0C), 0x8000);
    table.add(27, 0x0002, 0x0E).put(word(0x04), 0x0030).put(byte(0x06), 0x63).put(byte(0x07), 3).put(word(0x0C), 4500);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t27_probe_handle"), "0xFFFF");
    EXPECT_EQ(recorded.children(kUid), Texts{});
    EXPECT_EQ(recorded.value(kUid, "t27_group"), "NONE");
    EXPECT_EQ(recorded.value(kUid, "t27_speed"), "UNKNOWN");
    EXPECT_EQ(recorded.children(kSecond), Texts{"0x0030"});
    EXPECT_EQ(recorded.value(kSecond, "t27_group"), "3");
    EXPECT_EQ(recorded.value(kSecond, "t27_speed"), "4500 RPM");
    EXPECT_EQ(recorded.value(kSecond, "t27_type_and_status_msk3_srt5"), "OK");
    EXPECT_EQ(recorded.value(kSecond, "t27_type_and_status_msk5_srt0"), "Fan");
}

TEST(RemoteAccess, ConnectionsAreAListEvenWithoutAny)
{
    TableBuilder table;
    table.add(30, 0x0001, 0x06).put(byte(0x05), 0xFF);
    table.add(30, 0x0002, 0x06);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t30_connections").size(), 2u);
    EXPECT_EQ(recorded.list(kSecond, "t30_connections"), Texts{});
}

TEST(BootInformation, AdditionalDataIsTheRestOfTheFormattedArea)
{
    TableBuilder table;
    table.add(32, 0x0001, 0x0B);
    table.add(32, 0x0002, 0x14).put(byte(0x0B), 0x0A).put(byte(0x13), 0xFF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t32_boot_status"), "No errors detected");
    EXPECT_EQ(recorded.value(kUid, "t32_additional_data"), "(absent)");
    EXPECT_EQ(recorded.value(kSecond, "t32_additional_data"), "0A-00-00-00-00-00-00-00-FF");
}

TEST(ManagementComponent, HandlesIn32BitFormAndLinksIn16)
{
    TableBuilder table;
    table.add(35, 0x0001, 0x0B).put(word(0x05), 0x0034).put(word(0x07), 0x0026).put(word(0x09), 0xFFFE);
    table.add(35, 0x0002, 0x0B).put(word(0x05), 0xFFFE).put(word(0x07), 0xFFFF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t35_management_handle"), "0x00000034");
    EXPECT_EQ(recorded.value(kUid, "smbios2_parent"), "0x0034");
    EXPECT_EQ(recorded.value(kUid, "t35_threshold_handle"), "0x0000FFFE");
    EXPECT_EQ(recorded.children(kUid), Texts{"0x0026"});
    EXPECT_EQ(recorded.value(kSecond, "smbios2_parent"), "0xFFFE");
    EXPECT_EQ(recorded.children(kSecond), Texts{"0x0000"}) << "a threshold handle never filled in";
}

TEST(Ipmi, TheAccessMethodIsLookedUpByTheStructuresIndex)
{
    TableBuilder table;
    for (std::uint16_t handle = 1; handle <= 3; ++handle)
        table.add(38, handle, 0x10).put(byte(0x05), 0x9A).put(byte(0x07), 0xFF).put(qword(0x08), 0x0CA3);
    const auto recorded = discover(table);
    const auto method = [&](const char* uid) { return recorded.value(uid, "t38_access_method"); };
    EXPECT_NE(method(kUid), method(kSecond)) << "though the bytes are the same";
    EXPECT_EQ(method("SMBIOS:0x0003"), "Out of range");
    EXPECT_EQ(recorded.value(kUid, "t38_revision"), "9.10");
    EXPECT_EQ(recorded.value(kUid, "t38_nv_storage"), "255");
    EXPECT_EQ(recorded.value(kUid, "t38_base_addr"), "0x0000000000000CA3") << "with its lowest bit";
}

TEST(PowerSupply, WholeWattsAndHandles)
{
    TableBuilder table;
    table.add(39, 0x0001, 0x16)
        .put(word(0x0C), 350)
        .put(word(0x0E), 0x1DB3)
        .put(word(0x10), 0xFFFF)
        .put(word(0x12), 0x0040)
        .put(word(0x14), 0xFFFE);
    table.add(39, 0x0002, 0x0E).put(word(0x0C), 0x8000);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t39_max_power"), "350 W");
    EXPECT_EQ(recorded.value(kSecond, "t39_max_power"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t39_input_vprobe_handle"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t39_cooling_dev_handle"), "0x0040");
    EXPECT_EQ(recorded.value(kUid, "t39_input_cprobe_handle"), "0xFFFE") << "shown, but not linked";
    EXPECT_EQ(recorded.children(kUid), Texts{"0x0040"});
    EXPECT_EQ(recorded.value(kUid, "t39_ps_flags_msk3_srt7"), "OK");
    EXPECT_EQ(recorded.value(kUid, "t39_ps_flags_msk4_srt10"), "Converter");
}

TEST(SystemMetrics, OnlyTheExactShapeAndTextCount)
{
    const struct
    {
        unsigned char length;
        const char* text;
        bool accepted;
    } cases[] = {
        {0x0B, "IBM System Metrics", true},     {0x0B, "Lenovo System Metrics", true},
        {0x0C, "Lenovo System Metrics", false}, {0x0B, "lenovo system metrics", false},
        {0x0B, "IBM System Metrics ", false},   {0x0B, nullptr, false},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(0, 0x0000, 0x18).text(0x04, "IBM");
        auto& metrics = table.add(131, 0x0001, each.length).put(word(0x08), 4096);
        if (each.text != nullptr)
            metrics.text(0x0A, each.text);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.uids().back() == kUid, each.accepted);
        if (each.accepted) {
            EXPECT_EQ(tests::inventoryText({recorded.device(kUid)}),
                      "SMBIOS:0x0001 [System Metrics] [System Metrics:0] [System Metrics:0] SMBIOS_Struct\n"
                      "  t131_ln_description = " +
                          std::string(each.text) + "\n  t131_ln_nvram_ptr = 0x00000000\n  t131_ln_buffer_len = 4 KB\n");
        }
    }
}

TEST(MakersStructures, ASkippedOneKeepsItsIndex)
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "LENOVO");
    table.add(1, 0x0010, 0x08).text(0x04, "Dell Inc.");
    table.add(131, 0x0131, 0x0B).text(0x0A, "Something else");
    table.add(131, 0x0001, 0x0B).text(0x0A, "IBM System Metrics");
    table.add(208, 0x0208, 0x07);
    table.add(208, 0x0002, 0x09).put(byte(0x08), 0x34);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.device(kUid).identifier, "System Metrics:1");
    EXPECT_EQ(recorded.device(kSecond).identifier, "Revisions and IDs:1");
    EXPECT_EQ(recorded.value(kSecond, "t208_dl_system_id_extension"), "0x0034") << "its first byte suffices";
    EXPECT_EQ(recorded.value(kSecond, "smbios2_hdr_type"), "(absent)");
    EXPECT_EQ(recorded.device(kSecond).properties.size(), 5u);
    EXPECT_EQ(recorded.uids().size(), 5u) << "root, BIOS, system and one of each maker";
}

} // namespace
