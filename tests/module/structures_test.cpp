// What is no single value and no machine has: far reads, log lines, versions, kinds of values, makers' structures.
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

using tests::byte;
using tests::discover;
using tests::TableBuilder;

using Texts = std::vector<std::string>;

constexpr const char* kUid = "SMBIOS:0x0001";
constexpr const char* kSecond = "SMBIOS:0x0002";

TEST(OnBoardDevices, HaveNoGroupWithoutAnEntry)
{
    TableBuilder table;
    table.add(10, 0x0001, 0x05);
    EXPECT_EQ(discover(table).uids(), Texts{"SMBIOS"});
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
    EXPECT_EQ(recorded.log.back().priority, 4);
}

TEST(MemoryDevices, HaveASpeedFromVersion23On)
{
    TableBuilder table;
    table.add(17, 0x0001, 0x22);
    table.end();
    const auto speed = [](const tests::Bytes& image) { return discover(image).value(kUid, "t17_speed"); };
    EXPECT_EQ(speed(table.dump32(2, 2)), "(absent)");
    EXPECT_EQ(speed(table.dump32(2, 3)), "0 Hz");
    EXPECT_EQ(speed(table.structures()), "0 Hz") << "no entry point counts as 3.0";
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

TEST(Kinds, CountsAreNumbersAndVoltagesTexts)
{
    TableBuilder table;
    table.add(23, 0x0001, 0x0D);
    table.add(4, 0x0002, 0x12).put(byte(0x11), 0x05);
    const auto recorded = discover(table);
    const auto& voltages = recorded.device(kSecond).find("t4_voltage")->held();
    EXPECT_TRUE(std::holds_alternative<int>(recorded.device(kUid).find("t23_reset_cnt")->held()));
    EXPECT_TRUE(std::holds_alternative<orb5::OrbString>(voltages)) << "several are no list";
}

TEST(Makers, OnlyTheExactShapeAndTextAreSystemMetrics)
{
    const auto accepted = [](unsigned char length, const char* text) {
        TableBuilder table;
        table.add(0, 0x0000, 0x18).text(0x04, "IBM");
        table.add(131, 0x0001, length).text(0x0A, text);
        return discover(table).uids().back() == kUid;
    };
    EXPECT_TRUE(accepted(0x0B, "IBM System Metrics"));
    EXPECT_TRUE(accepted(0x0B, "Lenovo System Metrics"));
    EXPECT_FALSE(accepted(0x0C, "Lenovo System Metrics"));
    EXPECT_FALSE(accepted(0x0B, "lenovo system metrics"));
    EXPECT_FALSE(accepted(0x0B, "IBM System Metrics "));
}

} // namespace
