// What is no single value and no machine has: far reads, log lines, versions, kinds of values, makers' structures.
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

using tests::byte;
using tests::discover;
using tests::TableBuilder;

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

TEST(Members, AreAsManyAsCountedThoughFarBehindTheTable)
{
    for (const unsigned char type : tests::Bytes{2, 5}) {
        TableBuilder table;
        table.add(type, 0x0001, 0x0F).put(byte(0x0E), 255);
        const auto recorded = discover(table);
        std::string zeros = "0x0000"; // what is behind the table
        for (int i = 1; i < 255; ++i)
            zeros += ", 0x0000";
        EXPECT_EQ(recorded.value(kUid, "t" + std::to_string(type) + "_members"), zeros);
        EXPECT_EQ(recorded.children(kUid), zeros);
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

TEST(Kinds, ReserveNumbersForWhatIsCounted)
{
    EXPECT_TRUE(holds<int>(23, "t23_reset_cnt")) << "though declared as a text";
    EXPECT_TRUE(holds<orb5::OrbString>(4, "t4_voltage", 0x8C));
    EXPECT_TRUE(holds<orb5::OrbString>(4, "t4_voltage", 0x05)) << "several are no list";
}

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

} // namespace
