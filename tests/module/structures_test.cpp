// What several structures show together, and what is no single value: groups, carried lists, far reads, log lines,
// versions, kinds of values, the two makers' own structures.
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using orb5::OrbDiscreteMeasurement;
using tests::byte;
using tests::discover;
using tests::TableBuilder;
using tests::word;

using Texts = std::vector<std::string>;

constexpr const char* kUid = "SMBIOS:0x0001";
constexpr const char* kSecond = "SMBIOS:0x0002";

TEST(Nothing, IsPublishedForTypesWithoutADecoderAndForNoEntry)
{
    TableBuilder table;
    for (const unsigned char type : tests::Bytes{25, 31, 36, 37, 40, 42, 43, 44, 45, 46, 126, 128, 200, 255})
        table.add(type, type, 0x20);
    table.add(10, 10, 0x05); // too short for an entry, so that it has no group either
    EXPECT_EQ(discover(table.end()).uids(), Texts{"SMBIOS"});
}

TEST(Groups, FollowTheirStructuresAndNameThem)
{
    const struct
    {
        unsigned char type;
        std::string uid, name;
    } groups[] = {{4, "SMBIOS:Processors", "Processors"},
                  {8, "SMBIOS:Ports", "Ports"},
                  {9, "SMBIOS:Slots", "Slots"},
                  {10, "SMBIOS:OnBoardDevices", "On Board Devices"},
                  {41, "SMBIOS:OnBoardDevicesExt", "On Board Devices (Extended Information)"}};
    for (const auto& group : groups) {
        TableBuilder table;
        table.add(group.type, 0x0001, 0x06);
        table.add(group.type, 0x0002, 0x06);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.uids(), (Texts{"SMBIOS", kUid, kSecond, group.uid}));
        EXPECT_EQ(tests::inventoryText({recorded.devices.back()}),
                  group.uid + " [" + group.name + "] [" + group.uid + "] [" + group.name +
                      "] Other\n  child SMBIOS 0x0001\n  child SMBIOS 0x0002\n");
    }
}

TEST(OnBoardDevices, OfOneStructureAreNamedByTheirGroupOnceForEach)
{
    TableBuilder table;
    table.add(10, 0x0001, 0x0A).text(0x05, "Net").text(0x09, "  ");
    table.add(10, 0x0002, 0x05);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.uids(), (Texts{"SMBIOS", kUid, "SMBIOS:0x0001:1", "SMBIOS:0x0001:2", "SMBIOS:OnBoardDevices"}));
    EXPECT_EQ(recorded.children("SMBIOS:OnBoardDevices"), Texts(3, "0x0001"));
    EXPECT_EQ(recorded.device(kUid).name, "Net");
    EXPECT_EQ(recorded.device("SMBIOS:0x0001:2").name, "On Board Device") << "as its own text is blank";
    EXPECT_EQ(recorded.value("SMBIOS:0x0001:2", "t10_description"), "(absent)");
}

TEST(OnBoardDevices, ALaterEntryHasTheTextsOfTheFirst)
{
    TableBuilder table;
    table.add(10, 0x0001, 0x08).put(byte(0x06), 0x83);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value("SMBIOS:0x0001:1", "t10_devs_msk1_srt7"), "Device Enabled");
    EXPECT_EQ(recorded.value("SMBIOS:0x0001:1", "t10_devs_msk7_srt0"), "Video");
}

TEST(Boards, ListEveryFeatureAfterTheMembersOfTheBoardBefore)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x11).bytes(0x0E, {1, 0xFE, 0xFF});
    table.add(2, 0x0002, 0x0F);
    table.add(2, 0x0003, 0x0F);
    const auto recorded = discover(table);
    const auto features = recorded.list(kUid, "t2_features");
    EXPECT_EQ(features.size(), 5u) << "though no bit is set";
    auto carried = features;
    carried.insert(carried.begin(), "0xFFFE");
    EXPECT_EQ(recorded.list(kSecond, "t2_features"), carried);
    EXPECT_EQ(recorded.list("SMBIOS:0x0003", "t2_features"), features) << "the second board has no members";
}

TEST(Members, AreAsManyAsCountedThoughFarBehindTheTable)
{
    for (const unsigned char type : tests::Bytes{2, 5}) {
        TableBuilder table;
        table.add(type, 0x0001, 0x0F).put(byte(0x0E), 255);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.list(kUid, "t" + std::to_string(type) + "_members").size(), 255u);
        EXPECT_EQ(recorded.children(kUid).size(), 255u);
    }
}

TEST(LegacyMemory, SizesTooLargeAreLogged)
{
    TableBuilder table;
    table.add(5, 0x00AB, 0x09).put(byte(0x08), 0xA0);
    table.add(6, 0x00CD, 0x0B).put(byte(0x09), 0xA8).put(byte(0x0A), 0x29);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.messages("zorpsysinfosmbios2"),
              (Texts{"699 Unrealistically large memory size for SMBIOS device with handle 00ABh, it is 160",
                     "758 Unrealistically large memory size for SMBIOS device with handle 00CDh, it is 40",
                     "775 Unrealistically large memory size for SMBIOS device with handle 00CDh, it is 41"}));
    EXPECT_EQ(recorded.log.front().priority, 4);
}

TEST(MemoryDevices, ShowFiveFieldsFromVersion23On)
{
    TableBuilder table;
    table.add(17, 0x0001, 0x22).text(0x17, "Maker").text(0x18, "Serial").text(0x19, "Tag").text(0x1A, "Part");
    const auto shown = [](const tests::Bytes& image) {
        const auto recorded = discover(image);
        EXPECT_EQ(recorded.value(kUid, "t17_config_mem_clock_speed"), "0 Hz") << "in every version";
        return std::ranges::count_if(
            Texts{"t17_speed", "t17_manufacturer", "t17_serial", "t17_asset_tag", "t17_part_num"},
            [&](const std::string& name) { return recorded.value(kUid, name) != "(absent)"; });
    };
    EXPECT_EQ(shown(table.dump32(2, 2)), 0);
    EXPECT_EQ(shown(table.dump32(2, 3)), 5);
    EXPECT_EQ(shown(table.dump32(2, 33)), 5) << "which means 2.3";
    EXPECT_EQ(shown(table.structures()), 5) << "no entry point counts as 3.0";
}

TEST(Capabilities, AreThereWhateverTheLength)
{
    TableBuilder table;
    table.add(3, 0x0001, 0x04);
    table.add(24, 0x0002, 0x04);
    const auto recorded = discover(table);
    const auto& structure = orb5::DeviceCapability::SMBIOS_Struct();
    EXPECT_EQ(recorded.device(kUid).capabilities, (std::vector{structure, orb5::DeviceCapability::Chassis()}));
    EXPECT_EQ(recorded.device(kSecond).capabilities, (std::vector{structure, orb5::DeviceCapability::Security()}));
}

TEST(Ipmi, TheAccessMethodIsThatOfTheStructuresIndex)
{
    TableBuilder table;
    for (std::uint16_t handle = 1; handle <= 3; ++handle)
        table.add(38, handle, 0x10).put(byte(0x08), 1);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t38_access_method"), "Memory-mapped");
    EXPECT_EQ(recorded.value(kSecond, "t38_access_method"), "I/O");
    EXPECT_EQ(recorded.value("SMBIOS:0x0003", "t38_access_method"), "Out of range");
}

/// Whether a structure of zeros but for its voltage holds its property as this kind of value.
template <class Kind>
bool holds(unsigned char type, const char* property, unsigned char voltage = 0)
{
    TableBuilder table;
    table.add(type, 0x0001, 0x18).put(byte(0x11), voltage);
    const auto recorded = discover(table);
    const auto* value = recorded.device(kUid).find(property);
    return value != nullptr && std::holds_alternative<Kind>(value->held());
}

TEST(Kinds, ResetCountsAreNumbersThoughDeclaredAsTexts) { EXPECT_TRUE(holds<int>(23, "t23_reset_cnt")); }
TEST(Kinds, ParentsAreMeasurements) { EXPECT_TRUE(holds<OrbDiscreteMeasurement>(17, "smbios2_parent")); }
TEST(Kinds, AVoltageIsAText) { EXPECT_TRUE(holds<orb5::OrbString>(4, "t4_voltage", 0x8C)); }
TEST(Kinds, SeveralVoltagesAreNoList) { EXPECT_TRUE(holds<orb5::OrbString>(4, "t4_voltage", 0x05)); }

TEST(Makers, OnlyTheExactShapeAndTextAreSystemMetrics)
{
    const struct
    {
        unsigned char length;
        const char* text;
        bool accepted;
    } cases[] = {
        {0x0B, "IBM System Metrics", true},     {0x0B, "Lenovo System Metrics", true},
        {0x0C, "Lenovo System Metrics", false}, {0x0B, "lenovo system metrics", false},
        {0x0B, "IBM System Metrics ", false},   {0x0B, "", false},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(0, 0x0000, 0x18).text(0x04, "IBM");
        table.add(131, 0x0001, each.length).text(0x0A, each.text);
        EXPECT_EQ(discover(table).uids().back() == kUid, each.accepted) << each.text;
    }
}

TEST(Makers, StructuresHaveNoHeaderPropertiesAndASkippedOneKeepsItsIndex)
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "LENOVO");
    table.add(1, 0x0010, 0x08).text(0x04, "Dell Inc.");
    table.add(131, 0x0131, 0x0B).text(0x0A, "Something else");
    table.add(131, 0x0001, 0x0B).put(word(0x08), 4096).text(0x0A, "IBM System Metrics");
    table.add(208, 0x0208, 0x07);
    table.add(208, 0x0002, 0x09).put(byte(0x08), 0x34);
    const auto devices = discover(table).devices;
    ASSERT_EQ(devices.size(), 5u) << "root, BIOS, system and one of each maker";
    EXPECT_EQ(tests::inventoryText({devices[3], devices[4]}),
              "SMBIOS:0x0001 [System Metrics] [System Metrics:1] [System Metrics:1] SMBIOS_Struct\n"
              "  t131_ln_description = IBM System Metrics\n"
              "  t131_ln_nvram_ptr = 0x00000000\n"
              "  t131_ln_buffer_len = 4 KB\n"
              "SMBIOS:0x0002 [Revisions and IDs] [Revisions and IDs:1] [Revisions and IDs:1] SMBIOS_Struct\n"
              "  t208_dl_major_revision = 0x00\n"
              "  t208_dl_minor_revision = 0x00\n"
              "  t208_dl_system_id = 0x00\n"
              "  t208_dl_hardware_revision = 0x00\n"
              "  t208_dl_system_id_extension = 0x0034\n");
}

} // namespace
