// Types 0 to 3.
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

TEST(Bios, TheShortestStructureHasTheUngatedProperties)
{
    TableBuilder table;
    table.add(0, 0x0001, 0x04);
    table.add(0, 0x0002, 0x04);
    const auto recorded = discover(table);
    // What lies behind: two NUL bytes of the empty string set, the second structure, two more, zeros.
    EXPECT_EQ(recorded.value(kUid, "t0_start"), "0x0400");
    EXPECT_EQ(recorded.value(kUid, "t0_sz"), "64 KB");
    EXPECT_EQ(recorded.value(kUid, "t0_version"), "0.0");
    EXPECT_EQ(recorded.list(kUid, "t0_characteristics"), Texts{});
    EXPECT_EQ(recorded.value(kUid, "t0_date"), "(absent)");
}

TEST(Bios, CharacteristicsListKnownBitsInAscendingOrder)
{
    TableBuilder table;
    table.add(0, 0x0001, 0x18)
        .put(qword(0x0A), std::uint64_t{1} << 63 | 1u << 31 | 1u << 7 | 1u << 2 | 1u << 0)
        .put(word(0x12), 1u << 15 | 1u << 12 | 1u << 0);
    EXPECT_EQ(discover(table).list(kUid, "t0_characteristics"),
              (Texts{"Unknown", "PCI is supported", "NEC PC-98", "ACPI is supported",
                     "SMBIOS table describes a virtual machine"}));
}

TEST(Bios, SizeAndReleases)
{
    TableBuilder table;
    table.add(0, 0x0001, 0x18).put(word(0x06), 0xE800).put(byte(0x09), 0x0F).put(dword(0x14), 0xFF020C01);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t0_start"), "0xE800");
    EXPECT_EQ(recorded.value(kUid, "t0_sz"), "1 MB");
    EXPECT_EQ(recorded.value(kUid, "t0_version"), "1.12");
    EXPECT_EQ(recorded.value(kUid, "t0_fwversion"), "2.255");
}

TEST(Bios, EveryInstanceHasTheTypeLevelIdentifier)
{
    TableBuilder table;
    table.add(0, 0x0001, 0x18);
    table.add(0, 0x0002, 0x18);
    const auto recorded = discover(table);
    for (const char* uid : {"SMBIOS:0x0001", "SMBIOS:0x0002"})
        EXPECT_EQ(recorded.device(uid).uids.at(2), "SMBIOS:TYPE:0");
    EXPECT_EQ(recorded.device("SMBIOS:0x0002").identifier, "BIOS:1");
}

TEST(System, TheUuidIsShownByteByByteWhateverTheLength)
{
    TableBuilder table;
    auto& system = table.add(1, 0x0001, 0x1B);
    for (unsigned i = 0; i < 16; ++i)
        system.put(byte(0x08 + i), static_cast<unsigned char>(0xA0 + i));
    EXPECT_EQ(discover(table).value(kUid, "t1_uuid"), "A0-A1-A2-A3-A4-A5-A6-A7-A8-A9-AA-AB-AC-AD-AE-AF");

    TableBuilder shortTable;
    shortTable.add(1, 0x0001, 0x08);
    shortTable.end(0xFEFF);
    EXPECT_EQ(discover(shortTable).value(kUid, "t1_uuid"), "00-00-7F-04-FF-FE-00-00-00-00-00-00-00-00-00-00");
}

TEST(BaseBoard, EveryKnownFeatureIsListedWhicheverBitsAreSet)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x0A).put(byte(0x09), 0);
    EXPECT_EQ(discover(table).list(kUid, "t2_features").size(), 5u);
}

TEST(BaseBoard, FeaturesOfALaterBoardBeginWithTheMembersOfTheOneBefore)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x13).put(byte(0x0E), 2).put(word(0x0F), 0x0005).put(word(0x11), 0xFFFE);
    table.add(2, 0x0002, 0x0F);
    table.add(2, 0x0003, 0x0F);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t2_features").size(), 5u);
    const auto carried = recorded.list("SMBIOS:0x0002", "t2_features");
    ASSERT_EQ(carried.size(), 7u);
    EXPECT_EQ(Texts(carried.begin(), carried.begin() + 2), (Texts{"0x0005", "0xFFFE"}));
    EXPECT_EQ(recorded.list("SMBIOS:0x0003", "t2_features").size(), 5u) << "the second board has no members";
}

TEST(BaseBoard, MembersAreAllListedButFFFEAndFFFFAreNoChildren)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x15)
        .put(byte(0x0E), 3)
        .put(word(0x0F), 0x0005)
        .put(word(0x11), 0xFFFE)
        .put(word(0x13), 0xFFFF);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t2_members"), (Texts{"0x0005", "0xFFFE", "0xFFFF"}));
    EXPECT_EQ(recorded.children(kUid), Texts{"0x0005"});
}

TEST(BaseBoard, TheMemberCountAloneSaysHowManyAreRead)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x0F).put(byte(0x0E), 255); // the list lies behind the structure and behind the table
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.list(kUid, "t2_members").size(), 255u);
    EXPECT_EQ(recorded.children(kUid).size(), 255u);
}

TEST(BaseBoard, OnlyFFFFIsNoParent)
{
    const std::pair<std::uint16_t, const char*> cases[] = {
        {0xFFFF, "(absent)"}, {0xFFFE, "0xFFFE"}, {0x0000, "0x0000"}, {0x0003, "0x0003"}};
    for (const auto& [handle, expected] : cases) {
        TableBuilder table;
        table.add(2, 0x0001, 0x0F).put(word(0x0B), handle);
        EXPECT_EQ(discover(table).value(kUid, "smbios2_parent"), expected);
    }
}

TEST(Enclosure, TheLockBitAndTheTypeShareOneByte)
{
    const struct
    {
        unsigned char raw;
        const char* lock;
        const char* type;
        const char* chassisClass;
    } cases[] = {
        {0x89, "Chassis lock is present", "Laptop", "Laptop"},
        {0x01, "Lock is not present or unknown", "Other", "Other"},
        {0x82, "Chassis lock is present", "Unknown", "Other"},
        {0x08, "Lock is not present or unknown", "Portable", "Laptop"},
        {0x0B, "Lock is not present or unknown", "Hand Held", "Laptop"},
        {0x0C, "Lock is not present or unknown", "Docking Station", "Desktop"},
        {0x0D, "Lock is not present or unknown", "All in One", "All in One"},
        {0x0E, "Lock is not present or unknown", "Sub Notebook", "Laptop"},
        {0x10, "Lock is not present or unknown", "Lunch Box", "Laptop"},
        {0x17, "Lock is not present or unknown", "Rack Mount Chassis", "Desktop"},
        {0x00, "Lock is not present or unknown", "Out of range", "Desktop"},
    };
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(3, 0x0001, 0x06).put(byte(0x05), each.raw);
        const auto recorded = discover(table);
        EXPECT_EQ(recorded.value(kUid, "t3_type_msk1_srt7"), each.lock);
        EXPECT_EQ(recorded.value(kUid, "t3_type_msk7_srt0"), each.type);
        EXPECT_EQ(recorded.value(kUid, "ChassisType"), each.chassisClass);
    }
}

TEST(Enclosure, HeightCordsOemDwordAndSku)
{
    TableBuilder table;
    table.add(3, 0x0001, 0x19)
        .put(dword(0x0D), 0x00012345)
        .put(byte(0x11), 4)
        .put(byte(0x13), 1) // one contained element of three bytes: the SKU number is not where it is looked for
        .put(byte(0x14), 3)
        .text(0x18, "SKU");
    table.add(3, 0x0002, 0x13).put(byte(0x12), 2);
    const auto recorded = discover(table);
    EXPECT_EQ(recorded.value(kUid, "t3_oem_defined"), "0x12345") << "32 bits in the 16-bit form";
    EXPECT_EQ(recorded.value(kUid, "t3_height"), "4 U");
    EXPECT_EQ(recorded.value(kUid, "t3_power_cords"), "UNKNOWN");
    EXPECT_EQ(recorded.value(kUid, "t3_sku"), "SKU");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t3_oem_defined"), "0x0000");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t3_height"), "UNKNOWN");
    EXPECT_EQ(recorded.value("SMBIOS:0x0002", "t3_power_cords"), "2");
}

} // namespace
