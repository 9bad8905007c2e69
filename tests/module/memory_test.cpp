// Memory in all its structures: types 5, 6, 16 to 20 and 33.
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

TEST(LegacyMemory, SizesArePowersOfTwoAndTooLargeOnesAreLogged)
{
    const struct
    {
        unsigned char raw;
        const char* controller;
        const char* module;
    } cases[] = {
        {0x05, "32 MB", "32 MB"},       {0x00, "1 MB", "1 MB"},         {0x1F, "-2 PB", "-2 PB"},
        {0x20, "(absent)", "(absent)"}, {0x7C, "(absent)", "(absent)"}, {0x7D, "(absent)", "UNKNOWN"},
        {0x7E, "(absent)", "UNKNOWN"},  {0x7F, "(absent)", "UNKNOWN"},  {0x8A, "(absent)", "1 GB"},
        {0x9F, "(absent)", "-2 PB"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(5, 0x00AB, 0x09).put(byte(0x08), each.raw);
        table.add(6, 0x00CD, 0x0B).put(byte(0x09), each.raw).put(byte(0x0A), each.raw);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.value("SMBIOS:0x00AB", "t5_max_mod_sz"), each.controller);
        EXPECT_EQ(recorded.value("SMBIOS:0x00CD", "t6_installed_sz"), each.module);
        EXPECT_EQ(recorded.value("SMBIOS:0x00CD", "t6_enabled_sz"), each.module);
    }
    TableBuilder table;
    table.add(5, 0x00AB, 0x09).put(byte(0x08), 0xA0);
    table.add(6, 0x00CD, 0x0B).put(byte(0x09), 0xA8).put(byte(0x0A), 0x29);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.messages("zorpsysinfosmbios2"),
              (Texts{"699 Unrealistically large memory size for SMBIOS device with handle 00ABh, it is 160",
                     "758 Unrealistically large memory size for SMBIOS device with handle 00CDh, it is 40",
                     "775 Unrealistically large memory size for SMBIOS device with handle 00CDh, it is 41"}));
    EXPECT_EQ(recorded.log.front().priority, 4);
    EXPECT_EQ(recorded.value("SMBIOS:0x00CD", "t6_installed_sz_msk1_srt7"), "Double-bank connection");
}

TEST(LegacyMemory, TheControllersModuleCountAloneSaysHowManyAreRead)
{
    TableBuilder table;
    table.add(5, 0x0001, 0x13).put(byte(0x0E), 2).put(word(0x0F), 0x0010).put(word(0x11), 0xFFFF);
    table.add(5, 0x0002, 0x0F);
    table.add(5, 0x0003, 0x0F).put(byte(0x0E), 255);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t5_members"), (Texts{"0x0010", "0xFFFF"}));
    EXPECT_EQ(recorded.children(kUid), Texts{"0x0010"});
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t5_num_slots"), "0");
    EXPECT_EQ(recorded.list("SMBIOS:0x0002", "t5_members"), Texts{});
    EXPECT_EQ(recorded.list("SMBIOS:0x0003", "t5_members").size(), 255u) << "far behind the table's end";
}

TEST(LegacyMemory, ModuleSpeedAndErrorStatus)
{
    TableBuilder table;
    table.add(6, 0x0001, 0x0C).put(byte(0x06), 70).put(byte(0x0B), 0x04);
    table.add(6, 0x0002, 0x07);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t6_speed"), "70 ns");
    EXPECT_EQ(recorded.value(kUid, "t6_err_status"), "0x04");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t6_speed"), "0 s");
}

TEST(MemoryArray, CapacityAndErrorHandle)
{
    const struct
    {
        unsigned char length;
        std::uint32_t kilobytes;
        std::uint64_t extended;
        const char* expected;
    } cases[] = {
        {0x0F, 0x00800000, 0, "8 GB"},
        {0x0F, 0x80000000, 0, "2 TB"}, // too short for the extended capacity: two billion kilobytes
        {0x17, 0x80000000, std::uint64_t{1} << 40, "1 TB"},
        {0x17, 0x80000001, std::uint64_t{1} << 40, "2 TB"},
        {0x17, 0x80000000, 0, "0 B"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(16, 0x0001, 0x17).put(dword(0x07), each.kilobytes).put(qword(0x0F), each.extended).cut(each.length);
        EXPECT_EQ(discover(table).value(kUid, "t16_max_sz"), each.expected);
    }
    TableBuilder table;
    table.add(16, 0x0001, 0x0F).put(word(0x0B), 0xFFFE).put(word(0x0D), 4);
    table.add(16, 0x0002, 0x0F).put(word(0x0B), 0x0033);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t16_error_handle"), "0xFFFE");
    EXPECT_EQ(recorded.children(kUid), Texts{});
    EXPECT_EQ(recorded.children("SMBIOS:0x0002"), Texts{"0x0033"});
}

TEST(MemoryDevice, Bit15StillCountsInTheSize)
{
    const struct
    {
        unsigned char length;
        std::uint16_t size;
        std::uint32_t extended;
        const char* expected;
        const char* populated;
    } cases[] = {
        {0x28, 0x0000, 0, "Not Installed", "false"}, {0x28, 0xFFFF, 0, "UNKNOWN", "true"},
        {0x28, 0x2000, 0, "8 GB", "true"},           {0x28, 0x8200, 0, "32.5 MB", "true"},       // 33280 KB, not 512
        {0x28, 0x7FFF, 65536, "64 GB", "true"},      {0x28, 0x7FFF, 0x80000000, "2 PB", "true"}, // all 32 bits
        {0x1D, 0x7FFF, 0x20, "32 MB", "true"},       {0x1B, 0x7FFF, 65536, "32 GB", "true"},
        {0x0C, 0x2000, 0, "(absent)", "true"}, // set on the property, not on the device
        {0x04, 0x0000, 0, "(absent)", "false"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        auto& device = table.add(17, 0x0001, 0x28).put(word(0x0C), each.size).put(dword(0x1C), each.extended);
        auto image = table.dump64(3, 0, 0);
        image[0x21] = each.length; // the bytes behind stay
        EXPECT_EQ(discover(image).value(kUid, "t17_socket_populated"), each.populated);
        device.cut(each.length);
        EXPECT_EQ(discover(table).value(kUid, "t17_sz"), each.expected);
    }
}

TEST(MemoryDevice, FiveFieldsNeedVersion23)
{
    TableBuilder table;
    table.add(17, 0x0001, 0x22)
        .put(word(0x15), 400)
        .text(0x17, "Maker")
        .text(0x18, "Serial")
        .text(0x19, "Tag")
        .text(0x1A, "Part")
        .put(word(0x20), 333);
    const auto missing = [&](const tests::Bytes& image) {
        const auto recorded = discover(image);
        EXPECT_EQ(recorded.value(kUid, "t17_config_mem_clock_speed"), "333 MHz") << "in every version";
        int count = 0;
        for (const char* name : {"t17_speed", "t17_manufacturer", "t17_serial", "t17_asset_tag", "t17_part_num"})
            count += recorded.value(kUid, name) == "(absent)" ? 1 : 0;
        return count;
    };
    EXPECT_EQ(missing(table.dump32(2, 2)), 5);
    EXPECT_EQ(missing(table.dump32(2, 3)), 0);
    EXPECT_EQ(missing(table.dump32(2, 33)), 0) << "which means 2.3";
    EXPECT_EQ(missing(table.structures()), 0) << "no entry point counts as 3.0";
}

TEST(MemoryDevice, WidthsVoltagesSpeedsAndDetails)
{
    TableBuilder table;
    table.add(17, 0x0001, 0x28)
        .put(word(0x08), 72)
        .put(word(0x0A), 0xFFFF)
        .put(byte(0x0F), 0xFF)
        .put(word(0x13), 0x0080)
        .put(word(0x22), 1200);
    table.add(17, 0x0002, 0x28).put(word(0x13), 0x0001);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t17_total_width"), "72 bits");
    EXPECT_EQ(recorded.value(kUid, "t17_data_width"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t17_device_set"), "255");
    EXPECT_EQ(recorded.value(kUid, "t17_speed"), "0 Hz");
    EXPECT_EQ(recorded.value(kUid, "t17_min_voltage"), "1.2 V");
    EXPECT_EQ(recorded.value(kUid, "t17_max_voltage"), "UNKNOWN");
    EXPECT_EQ(recorded.list(kUid, "t17_type_detail"), Texts{"Synchronous"});
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t17_type_detail"), "(absent)") << "a reserved bit alone is no detail";
}

TEST(MemoryDevice, ParentAndChildTestsDiffer)
{
    const struct
    {
        std::uint16_t handle;
        const char* parent;
        Texts children;
    } cases[] = {{0x1000, "0x1000", {"0x1000"}}, {0xFFFE, "0xFFFE", {}}, {0xFFFF, "(absent)", {}}};
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(17, 0x0001, 0x08).put(word(0x04), each.handle).put(word(0x06), each.handle);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.value(kUid, "smbios2_parent"), each.parent);
        EXPECT_EQ(recorded.children(kUid), each.children);
        const bool isMeasurement = each.handle == 0xFFFF || std::holds_alternative<orb5::OrbDiscreteMeasurement>(
                                                                recorded.device(kUid).find("smbios2_parent")->held());
        EXPECT_TRUE(isMeasurement);
    }
}

TEST(MemoryErrors, EachFieldHasItsOwnUnknown)
{
    TableBuilder table;
    table.add(18, 0x0001, 0x17).put(dword(0x0B), 0x80000000).put(dword(0x13), 0x80000000);
    table.add(33, 0x0002, 0x1F)
        .put(dword(0x07), 0x80000000)
        .put(qword(0x0B), 0x80000000)
        .put(qword(0x13), 0x8000000000000000)
        .put(dword(0x1B), 0x10);
    const auto recorded = discover(table);
    const auto values = [&](const char* uid, std::initializer_list<const char*> names) {
        Texts texts;
        for (const char* name : names)
            texts.push_back(recorded.value(uid, name));
        return texts;
    };
    EXPECT_EQ(values(kUid, {"t18_syndrome", "t18_array_address", "t18_device_address", "t18_resolution"}),
              (Texts{"UNKNOWN", "UNKNOWN", "0x00000000", "UNKNOWN"}));
    EXPECT_EQ(values("SMBIOS:0x0002",
                     {"t33_syndrome", "t33_array_err_address", "t33_device_err_address", "t33_err_resolution"}),
              (Texts{"0x80000000", "0x0000000080000000", "UNKNOWN", "0x00000010"}));
}

TEST(MappedAddresses, AreShownAsStoredWithTheirParents)
{
    TableBuilder table;
    table.add(19, 0x0001, 0x1F).put(dword(0x04), 0xFFFFFFFF).put(qword(0x0F), 1).put(word(0x0C), 0xFFFE);
    table.add(20, 0x0002, 0x23)
        .put(word(0x0C), 0xFFFF)
        .put(word(0x0E), 0x0001)
        .put(byte(0x10), 0xFF)
        .put(byte(0x11), 0xFE);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t19_start"), "0xFFFFFFFF");
    EXPECT_EQ(recorded.value(kUid, "smbios2_parent"), "0xFFFE");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t20_device_handle"), "0xFFFF");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "smbios2_parent"), "(absent)");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t20_array_mapped_handle"), "0x0001");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t20_row_position"), "UNKNOWN");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t20_interleave_position"), "254");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t20_interleave_depth"), "0");
}

} // namespace
