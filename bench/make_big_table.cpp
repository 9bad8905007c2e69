// make-big-table STRUCTURES FILE: writes a dump of that many structures, the sample machine's over and over.
#include "support/machine_text.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>

namespace
{

using namespace tests;

constexpr unsigned kMost = 0xFE00; ///< the handles of so many stay clear of those that mean none

/// Where structures hold handles of others.
constexpr struct
{
    unsigned char type;
    unsigned offset;
} kReferences[] = {
    {2, 0x0B},  {2, 0x0F},  {2, 0x11},  {2, 0x13},  {4, 0x1A},  {4, 0x1C},  {4, 0x1E},  {5, 0x0F},  {5, 0x11},
    {5, 0x13},  {14, 0x06}, {14, 0x09}, {14, 0x0C}, {16, 0x0B}, {17, 0x04}, {17, 0x06}, {19, 0x0C}, {20, 0x0C},
    {20, 0x0E}, {27, 0x04}, {35, 0x05}, {35, 0x07}, {35, 0x09}, {37, 0x08}, {39, 0x10}, {39, 0x12}, {39, 0x14},
};

std::uint16_t wordAt(const Bytes& image, unsigned offset)
{
    return static_cast<std::uint16_t>(image.at(offset) | image.at(offset + 1) << 8);
}

/// Handles count from 0; what refers to a structure of the sample refers to the one of the same copy.
TableBuilder repeated(const std::deque<StructureBuilder>& sample, unsigned structures)
{
    std::map<std::uint16_t, unsigned> places; // in the sample, by handle
    for (unsigned place = 0; place < sample.size(); ++place)
        places.emplace(wordAt(sample[place].image(), 0x02), place);
    const auto copied = static_cast<unsigned>(sample.size() - 1); // its last one is the end of the table

    TableBuilder table;
    for (unsigned handle = 0; handle < structures - 1; ++handle) {
        const unsigned place = handle % copied;
        const Bytes original = sample[place].image();
        StructureBuilder& copy = table.add(sample[place]);
        copy.put(word(0x02), static_cast<std::uint16_t>(handle));
        for (const auto& [type, offset] : kReferences)
            if (type == original[0] && offset + 1 < original[1])
                if (const auto found = places.find(wordAt(original, offset)); found != places.end())
                    copy.put(word(offset), static_cast<std::uint16_t>(handle - place + found->second));
    }
    return table.end();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-big-table STRUCTURES FILE\n");
        return 1;
    }
    try {
        const unsigned long structures = std::strtoul(argv[1], nullptr, 10);
        if (structures < 1 || structures > kMost)
            throw std::runtime_error(std::string(argv[1]) + ": not a number from 1 to " + std::to_string(kMost));
        const TableBuilder sample = readMachine(SAMPLE_MACHINE).table;
        writeBytes(argv[2], repeated(sample.all(), static_cast<unsigned>(structures)).dump64(3, 2, 0));
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "%s\n", wrong.what());
        return 1;
    }
}
