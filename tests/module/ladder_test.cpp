// Gate ladders: at which length of a structure each property first appears.
//
// Every type is fed every length from 4 up to the full one. The recorded ladder of a type names device, properties and
// links with the length (hexadecimal) from which on they are there.
#include "support/expected_file.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace
{

using tests::byte;
using tests::TableBuilder;

struct Ladder
{
    unsigned char type;
    unsigned char fullLength;
    void (*shape)(tests::StructureBuilder&) = [](tests::StructureBuilder&) {};
    const char* variant = "";
};

constexpr Ladder kLadders[] = {
    {0, 0x1A},
    {1, 0x1B},
    {2, 0x11},
    {3, 0x1A},
    {4, 0x32},
    {5, 0x11},
    {6, 0x0C},
    {7, 0x1B},
    {8, 0x09},
    {9, 0x13},
    {10, 0x08},
    {11, 0x05},
    {12, 0x05},
    {13, 0x16},
    {14, 0x0B},
    {15, 0x17},
    {16, 0x17},
    {17, 0x54},
    {18, 0x17},
    {19, 0x1F},
    {20, 0x23},
    {21, 0x07},
    {22, 0x1A},
    {22, 0x1A, [](tests::StructureBuilder& s) { s.put(byte(0x06), 0).put(byte(0x09), 2); }, "_smart_battery"},
    {23, 0x0D},
    {24, 0x05},
    {26, 0x16},
    {27, 0x0F},
    {28, 0x16},
    {29, 0x16},
    {30, 0x06},
    {32, 0x14},
    {33, 0x1F},
    {34, 0x0B},
    {35, 0x0B},
    {38, 0x12},
    {39, 0x16},
    {41, 0x0B},
    {131, 0x0B},
    {208, 0x10},
};

/// A table with one structure of the type. Every byte is 1, so that every string number names a string, every
/// enumerated field has a text and every handle is a child's.
TableBuilder tableWith(const Ladder& ladder, unsigned length)
{
    TableBuilder table;
    if (ladder.type == 131)
        table.add(0, 0xFE00, 0x18).text(0x04, "LENOVO");
    if (ladder.type == 208)
        table.add(1, 0xFE01, 0x1B).text(0x04, "Dell");
    auto& structure = table.add(ladder.type, 0x0100, ladder.fullLength);
    for (unsigned offset = 4; offset < ladder.fullLength; ++offset)
        structure.put(byte(offset), 1);
    structure.string("Lenovo System Metrics");
    ladder.shape(structure);
    structure.cut(static_cast<unsigned char>(length));
    return table;
}

/// The names of what the structure's device has, in the order in which it was added.
std::vector<std::string> contents(const tests::Recorded& recorded)
{
    std::vector<std::string> names;
    const auto device = std::ranges::find(recorded.devices, "SMBIOS:0x0100", &embedded_host::DeviceRecord::uid);
    if (device == recorded.devices.end())
        return names;
    names.emplace_back("device");
    for (const auto& property : device->properties)
        names.push_back(property.declaration->name);
    for (std::size_t i = 1; i <= device->childBusIds.size(); ++i)
        names.push_back("child " + std::to_string(i));
    return names;
}

std::string ladderOf(const Ladder& ladder)
{
    std::map<std::string, unsigned> first;
    std::vector<std::string> atFullLength;
    for (unsigned length = 4; length <= ladder.fullLength; ++length) {
        atFullLength = contents(tests::discover(tableWith(ladder, length)));
        for (const auto& name : atFullLength)
            first.emplace(name, length);
    }
    EXPECT_EQ(first.size(), atFullLength.size()) << "something is gone again at the full length";

    std::string text;
    for (const auto& name : atFullLength)
        text += lum::SprintfFormat("%02X  %s\n", first[name], name.c_str()).bytes();
    return text;
}

TEST(Ladder, EveryPropertyAppearsAtItsLength)
{
    for (const auto& ladder : kLadders) {
        const auto name = lum::SprintfFormat("type_%02u%s.ladder", unsigned{ladder.type}, ladder.variant).bytes();
        tests::expectFile(std::filesystem::path(TESTS_FOLDER "/ladders") / name, ladderOf(ladder));
    }
}

} // namespace
