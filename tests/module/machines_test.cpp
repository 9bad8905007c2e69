// Whole machines: what is published of them, in order, and their text form, in every language, on terminals, and with
// links that lead astray.
#include "inventory/text_inventory.h"
#include "services/utf8.h"
#include "support/expected_file.h"
#include "support/machine_text.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

#include <gtest/gtest.h>
#include <regex>
#include <sstream>

namespace
{

using embedded_host::inventory::Detail;
using embedded_host::inventory::Looks;
using embedded_host::inventory::TextInventory;
using tests::byte;
using tests::word;
using zorpsysinfosmbios2::dword;

const std::filesystem::path kMachines = TESTS_FOLDER "/machines";

std::string textOf(const tests::Bytes& image, Looks looks = {}, const std::string& language = "en")
{
    lum::LumLocale::setGlobalLanguage(language);
    const auto text = tests::printed<TextInventory>(tests::discover(image).devices, Detail::Usual, looks);
    lum::LumLocale::setGlobalLanguage("en");
    return text;
}

tests::Bytes sample() { return tests::readMachine(kMachines / "sample.table").image; }

TEST(Machines, HaveTheirInventories)
{
    for (const std::string name : {"sample", "sample_lenovo", "sample_dell"}) {
        const auto machine = tests::readMachine(kMachines / (name + ".table"));
        tests::expectFile(kMachines / (name + ".inventory"),
                          tests::inventoryText(tests::discover(machine.image).devices));
    }
}

TEST(Text, TheSampleInEveryLanguage)
{
    for (const std::string language : {"en", "de", "zh_CN"})
        tests::expectFile(kMachines / ("sample." + language + ".txt"), textOf(sample(), {}, language));
}

TEST(Text, LongValuesAreWrappedAtTheTerminalsWidth)
{
    for (const std::string language : {"en", "de", "zh_CN"}) {
        std::istringstream lines(textOf(sample(), {80, false}, language));
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(embedded_host::services::columnsOf(line), 80u) << line;
    }

    tests::TableBuilder table;
    table.add(11, 0x0001, 0x05)
        .put(byte(0x04), 3)
        .string("one two three four five six seven")
        .string("Donaudampfschifffahrtsgesellschaft")
        .string("\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97\xE7\xAC\xA6\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97\xE7\xAC\xA6"
                "\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97");
    EXPECT_EQ(textOf(table.dump64(3, 2, 0), {1, false}), "SMBIOS\n"
                                                         "│    3.2.0\n"
                                                         "└─ OEM Strings\n"
                                                         "      Strings  one two three four\n"
                                                         "               five six seven\n"
                                                         "               Donaudampfschifffahr\n"
                                                         "               tsgesellschaft\n"
                                                         "               中文字符中文字符中文\n"
                                                         "               字\n"
                                                         "5 lines not shown\n"
                                                         "(--all)\n");
}

TEST(Text, MemoryArraysTellWhatIsInThem)
{
    tests::TableBuilder table;
    std::uint16_t module = 0x0100;
    const auto array = [&](std::uint16_t handle, std::uint32_t maximum, std::initializer_list<unsigned> sizes) {
        table.add(16, handle, 0x0F).put(byte(0x05), 3).put(dword(0x07), maximum).put(word(0x0D), 4);
        for (const unsigned size : sizes)
            table.add(17, module++, 0x15).put(word(0x04), handle).put(word(0x0C), static_cast<std::uint16_t>(size));
    };
    array(0x0001, 0x2000000, {0x2000, 0, 0x1000, 0x8400});
    array(0x0002, 0x2000000, {0x2000, 0xFFFF});
    array(0x0003, 0, {0, 0});
    array(0x0004, 0x100000, {});
    std::istringstream lines(textOf(table.dump64(3, 2, 0)));
    std::vector<std::string> arrays;
    for (std::string line; std::getline(lines, line);)
        if (const auto found = line.find("Memory Array"); found != std::string::npos)
            arrays.push_back(line.substr(found));
    EXPECT_EQ(arrays,
              (std::vector<std::string>{"Memory Array  System memory, 12.03 GB in 3 of 4 sockets, at most 32 GB",
                                        "Memory Array  System memory, 2 of 2 sockets in use, at most 32 GB",
                                        "Memory Array  System memory, 0 of 2 sockets in use",
                                        "Memory Array  System memory, 4 sockets, at most 1 GB"}));
}

TEST(Text, ColoursChangeNothingElse)
{
    const auto coloured = textOf(sample(), {80, true});
    EXPECT_NE(coloured.find("\x1B[1mMemory Device\x1B"), std::string::npos);
    EXPECT_EQ(std::regex_replace(coloured, std::regex("\x1B\\[[0-9;]*m"), ""), textOf(sample(), {80, false}));
}

TEST(Text, ShowsEveryDeviceOnceWhereverLinksLead)
{
    tests::TableBuilder table;
    constexpr unsigned kDevices = 60000;
    for (unsigned i = 0; i < kDevices; ++i)
        table
            .add(17, static_cast<std::uint16_t>(i % 40000), 0x10)  // many handles twice
            .put(word(0x04), static_cast<std::uint16_t>(i * 7919)) // circles, long chains, and nobody
            .put(word(0x06), static_cast<std::uint16_t>(i * 104729));
    std::istringstream lines(textOf(table.dump64(3, 2, 0)));
    unsigned devices = 0;
    for (std::string line; std::getline(lines, line);)
        devices += line.find("─ Memory Device") != std::string::npos ? 1u : 0u;
    EXPECT_EQ(devices, kDevices);
}

} // namespace
