// Gate ladders: at which length of a structure each property first appears.
//
// Every type is fed every length from 4 up to the full one. The recorded ladder of a type names device, properties and
// links with the length (hexadecimal) from which on they are there, and which numbers the texts show in the end.
#include "support/expected_file.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace
{

using tests::byte;
using tests::StructureBuilder;
using tests::TableBuilder;

constexpr unsigned char kTypes[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,  18, 19,
                                    20, 21, 22, 23, 24, 26, 27, 28, 29, 30, 32, 33, 34, 35, 38, 39, 41, 131, 208};

/// Longer than any of these types, but where more bytes are more members or another maker's structure.
unsigned char fullLength(unsigned char type) { return type == 14 || type == 131 ? 0x0B : 0x54; }

/// A structure of the type. Every byte is 1, so that every string number names a string, every enumerated field has a
/// text and every handle is a child's.
StructureBuilder full(unsigned char type)
{
    StructureBuilder structure(type, 0x0100, fullLength(type));
    for (unsigned offset = 4; offset < fullLength(type); ++offset)
        structure.put(byte(offset), 1);
    return structure.string("Lenovo System Metrics");
}

/// What the structure's device has, in the order in which it was added: names, and the numbers that their texts show.
std::vector<std::pair<std::string, std::string>> contents(const tests::Recorded& recorded)
{
    std::vector<std::pair<std::string, std::string>> all;
    const auto device =
        std::ranges::find_if(recorded.devices, [](const auto& each) { return each.uid == "SMBIOS:0x0100"; });
    if (device == recorded.devices.end())
        return all;
    all.emplace_back("device", "");
    for (const auto& property : device->properties)
        all.emplace_back(property.declaration->name, tests::numbersIn(property.value));
    for (std::size_t i = 1; i <= device->childBusIds.size(); ++i)
        all.emplace_back("child " + std::to_string(i), "");
    return all;
}

std::string ladderOf(const StructureBuilder& structure, unsigned fullLength)
{
    std::map<std::string, unsigned> first;
    std::vector<std::pair<std::string, std::string>> atFullLength;
    for (unsigned length = 4; length <= fullLength; ++length) {
        TableBuilder table;
        table.add(0, 0xFE00, 0x18).text(0x04, "LENOVO");
        table.add(1, 0xFE01, 0x1B).text(0x04, "Dell");
        table.add(structure).cut(static_cast<unsigned char>(length));
        atFullLength = contents(tests::discover(table));
        for (const auto& [name, numbers] : atFullLength)
            first.emplace(name, length);
    }
    EXPECT_EQ(first.size(), atFullLength.size()) << "something is gone again at the full length";

    std::string text;
    for (const auto& [name, numbers] : atFullLength)
        text += lum::SprintfFormat("%02X  %s%s\n", first[name], name.c_str(), numbers.c_str()).bytes();
    return text;
}

void expectLadder(const std::string& name, const StructureBuilder& structure)
{
    const auto file = TESTS_FOLDER "/ladders/type_" + name + ".ladder";
    tests::expectFile(file, ladderOf(structure, fullLength(structure.type())));
}

TEST(Ladder, EveryPropertyAppearsAtItsLength)
{
    for (const auto type : kTypes)
        expectLadder(std::string(lum::SprintfFormat("%02u", unsigned{type}).bytes()), full(type));
    expectLadder("22_smart_battery", full(22).put(byte(0x06), 0).put(byte(0x09), 2));
}

} // namespace
