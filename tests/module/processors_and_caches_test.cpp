// Types 4 and 7.
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

using tests::byte;
using tests::discover;
using tests::TableBuilder;
using tests::word;

using Texts = std::vector<std::string>;

constexpr const char* kUid = "SMBIOS:0x0001";

TEST(Processor, TheFamilyWalkFindsOnlyTheFirstRow)
{
    const struct
    {
        unsigned char length, family;
        std::uint16_t family2;
        const char* expected;
    } cases[] = {
        {0x2A, 0xFE, 0x0104, "SH-3"},        {0x2A, 0xFE, 0x0118, "Family 0118"},
        {0x2A, 0xFE, 0x0105, "Family 0105"}, {0x2A, 0xFE, 0x0100, "Family 0100"},
        {0x2A, 0xFE, 0x01F4, "Family 01F4"}, {0x2A, 0x0B, 0x0104, "Intel Pentium processor"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(4, 0x0001, each.length).put(byte(0x06), each.family).put(word(0x28), each.family2);
        EXPECT_EQ(discover(table).value(kUid, "t4_family"), each.expected);
    }
    TableBuilder tooShort;
    tooShort.add(4, 0x0001, 0x28).put(byte(0x06), 0xFE);
    EXPECT_EQ(discover(tooShort).value(kUid, "t4_family"),
              "Indicator to obtain the processor family from the Processor "
              "Family 2 field");
}

TEST(Processor, TheVoltageIsANumberOrAListInOneText)
{
    const std::pair<unsigned char, const char*> cases[] = {
        {0x8C, "1.20 V"}, {0x80, "0.00 V"},   {0x89, "900.00 mV"}, {0xFF, "12.70 V"},
        {0x02, "3.3V"},   {0x05, "5V, 2.9V"}, {0x00, ""},          {0x78, ""},
    };
    for (const auto& [raw, expected] : cases) {
        TableBuilder table;
        table.add(4, 0x0001, 0x12).put(byte(0x11), raw);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.value(kUid, "t4_voltage"), expected);
        EXPECT_TRUE(std::holds_alternative<orb5::OrbString>(recorded.device(kUid).find("t4_voltage")->held()));
    }
}

TEST(Processor, CountsGoOnInAWordWhereThereIsOne)
{
    const struct
    {
        unsigned char length, narrow;
        std::uint16_t wide;
        const char* expected;
    } cases[] = {
        {0x30, 8, 512, "8"},        {0x30, 0, 512, "UNKNOWN"}, {0x30, 0xFF, 512, "512"},
        {0x30, 0xFF, 0, "UNKNOWN"}, {0x2A, 0xFF, 0, "255"}, // too short for any of the words
    };
    for (const auto& each : cases) {
        TableBuilder table;
        auto& cpu = table.add(4, 0x0001, 0x30);
        for (unsigned i = 0; i < 3; ++i)
            cpu.put(byte(0x23 + i), each.narrow).put(word(0x2A + 2 * i), each.wide);
        cpu.cut(each.length);
        const auto recorded = discover(table);
        for (const char* property : {"t4_core_cnt", "t4_core_enabled", "t4_thread_cnt"})
            EXPECT_EQ(recorded.value(kUid, property), each.expected) << property;
    }
    TableBuilder partly;
    partly.add(4, 0x0001, 0x2B).put(byte(0x23), 0xFF).put(byte(0x24), 0xFF).put(byte(0x2A), 0x34);
    EXPECT_EQ(discover(partly).value(kUid, "t4_core_cnt"), "52") << "the word's first byte suffices";
    EXPECT_EQ(discover(partly).value(kUid, "t4_core_enabled"), "255");
}

TEST(Processor, SpeedsOf0AreShownAndTheStatusIsShownThreeTimes)
{
    TableBuilder table;
    table.add(4, 0x0001, 0x1A).put(word(0x14), 3200).put(byte(0x18), 0x41);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t4_ext_clock"), "0 Hz");
    EXPECT_EQ(recorded.value(kUid, "t4_max_speed"), "3.2 GHz");
    EXPECT_EQ(recorded.value(kUid, "t4_status_msk1_srt6"), "CPU Socket Populated");
    EXPECT_EQ(recorded.value(kUid, "t4_status_internal"), "65");
    EXPECT_EQ(recorded.value(kUid, "t4_status_msk3_srt0"), "CPU Enabled");
}

TEST(Processor, TheGroupComesLastAndNamesEveryProcessor)
{
    TableBuilder table;
    table.add(4, 0x0001, 0x20).put(word(0x1A), 0x0007).put(word(0x1C), 0xFFFF).put(word(0x1E), 0xFFFE);
    table.add(4, 0x0002, 0x1A);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.children(kUid), Texts{"0x0007"});
    EXPECT_EQ(recorded.uids(), (Texts{"SMBIOS", "SMBIOS:0x0001", "SMBIOS:0x0002", "SMBIOS:Processors"}));
    EXPECT_EQ(recorded.children("SMBIOS:Processors"), (Texts{"0x0001", "0x0002"}));
    EXPECT_EQ(tests::inventoryText({recorded.device("SMBIOS:Processors")}),
              "SMBIOS:Processors [Processors] [SMBIOS:Processors] [Processors] Other\n"
              "  child SMBIOS 0x0001\n  child SMBIOS 0x0002\n");
}

TEST(Cache, IsNamedByItsLevelInAllItsTexts)
{
    const struct
    {
        unsigned char length;
        std::uint16_t configuration;
        const char* name;
    } cases[] = {{0x13, 0x0180, "L1 Cache"},
                 {0x13, 0x0182, "L3 Cache"},
                 {0x13, 0x0007, "L8 Cache"},
                 {0x06, 0x0001, "L2 Cache"},
                 {0x05, 0, "L? Cache"}};
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(7, 0x0001, 0x13).put(word(0x05), each.configuration).cut(each.length);
        const auto recorded = discover(table);
        const auto& cache = recorded.device(kUid);
        EXPECT_EQ(Texts({cache.name, cache.identifier, cache.description}), Texts(3, each.name));
    }
}

TEST(Cache, SizesKeepBit15)
{
    const std::pair<std::uint16_t, const char*> cases[] = {{0x0100, "256 KB"}, {0x0000, "0 B"},  {0x7FFF, "32 MB"},
                                                           {0x8004, "2 GB"},   {0x8010, "2 GB"}, {0xFFFF, "4 GB"}};
    for (const auto& [raw, expected] : cases) {
        TableBuilder table;
        table.add(7, 0x0001, 0x0B).put(word(0x07), raw).put(word(0x09), raw);
        EXPECT_EQ(discover(table).value(kUid, "t7_max_cache_sz"), expected);
        EXPECT_EQ(discover(table).value(kUid, "t7_installed_sz"), expected);
    }
}

TEST(Cache, SubFieldsAndSpeed)
{
    TableBuilder table;
    table.add(7, 0x0001, 0x13).put(word(0x05), 0x0180 | 0x08 | 0x20).put(word(0x0B), 0x8021).put(byte(0x0F), 12);
    table.add(7, 0x0002, 0x13);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t7_cache_cfg_msk2_srt8"), "Write Back");
    EXPECT_EQ(recorded.value(kUid, "t7_cache_cfg_msk1_srt7"), "Enabled");
    EXPECT_EQ(recorded.value(kUid, "t7_cache_cfg_msk2_srt5"), "External");
    EXPECT_EQ(recorded.value(kUid, "t7_cache_cfg_msk1_srt3"), "Socketed");
    EXPECT_EQ(recorded.value(kUid, "t7_cache_cfg_msk3_srt0"), "Level 1");
    EXPECT_EQ(recorded.list(kUid, "t7_supported_sram"), (Texts{"Other", "Synchronous"}));
    EXPECT_EQ(recorded.value(kUid, "t7_speed"), "12 ns");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t7_speed"), "UNKNOWN");
}

} // namespace
