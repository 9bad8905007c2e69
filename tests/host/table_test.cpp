// The table library: file layouts, entry points, the walk over structures, saving.
#include "discovery.h"
#include "inventory/json_inventory.h"
#include "smbios2.h"
#include "support/memory_file.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"
#include "table/entry_point.h"
#include "table/library.h"

#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>
#include <numeric>
#include <sys/stat.h>
#include <thread>

namespace
{

using embedded_host::inventory::JsonInventory;
using libsmbios2::Smbios2;
using libsmbios2::Smbios2_SysInfo;
using tests::byte;
using tests::Bytes;
using tests::Firmware;
using tests::readBytes;
using tests::TableBuilder;
using tests::TemporaryFolder;

/// A BIOS and two boards.
TableBuilder smallTable()
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "Zorp");
    table.add(2, 0x0001, 0x08).text(0x04, "One").text(0x07, "S1");
    table.add(2, 0x0002, 0x08).text(0x04, "Two");
    return table.end();
}

bool load(const Bytes& content)
{
    const TemporaryFolder folder;
    return Smbios2::instance().loadTableFromFile(lum::String(folder.file("t", content).string()), false);
}

/// How many structures of the type there are.
unsigned count(unsigned char type)
{
    const void* start = nullptr;
    unsigned found = 0;
    while (Smbios2::instance().readStructure(type, &start, found) == 0)
        ++found;
    return found;
}

const libsmbios2::type_hdr* structure(unsigned char type, unsigned index)
{
    const void* start = nullptr;
    EXPECT_EQ(Smbios2::instance().readStructure(type, &start, index), 0);
    return static_cast<const libsmbios2::type_hdr*>(start);
}

/// A dump with other bytes in its entry point, whose checksums are right again.
Bytes with(Bytes dump, std::size_t offset, const Bytes& bytes)
{
    std::copy(bytes.begin(), bytes.end(), dump.begin() + static_cast<std::ptrdiff_t>(offset));
    tests::mendEntryPoint(dump);
    return dump;
}

/// Another version of these bytes, with which no checksum is right any more.
Bytes spoilt(Bytes bytes, std::size_t offset)
{
    bytes[offset] ^= 1;
    return bytes;
}

TEST(TableFiles, EveryLayoutIsToldByItsContent)
{
    const auto table = smallTable();
    auto shifted = table.dump64(3, 1, 1); // the table may lie anywhere behind the entry point
    shifted.insert(shifted.begin() + 0x20, 0x30, 0xEE);
    const auto slip = with(table.dump32(2, 1), 0x05, {0x1E}); // version 2.1 of the standard gave this length
    const struct
    {
        const char* layout;
        Bytes content;
        const char* version;
        unsigned number;
    } cases[] = {
        {"64-bit", table.dump64(3, 1, 1), "3.1.1", 0x03010100},
        {"64-bit 3.0.0", table.dump64(3, 0, 0), "3.0.0", 0x03000000},
        {"64-bit, table farther on", with(shifted, 0x10, {0x50}), "3.1.1", 0x03010100},
        {"64-bit entry point of an older version", table.dump64(2, 8, 0), "2.8.0", 0x02080000},
        {"32-bit", table.dump32(2, 7), "2.7", 0x02070000},
        {"32-bit, one byte short", slip, "2.1", 0x02010000},
        {"legacy", table.dumpLegacy(2, 1), "2.1", 0x02010000},
        {"raw", table.structures(), "3.0 (assumed)", 0x03000000},
        {"Windows block", table.windowsBlock(3, 2, 1), "3.2.1", 0x03020100},
        {"older Windows block", table.windowsBlock(2, 7, 39), "2.7", 0x02070000},
        {"2.31", table.dump32(2, 31), "2.3", 0x02030000},
        {"2.33", table.dump32(2, 33), "2.3", 0x02030000},
        {"2.51", table.dump32(2, 51), "2.6", 0x02060000},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.layout);
        ASSERT_TRUE(load(each.content));
        EXPECT_EQ(Smbios2::instance().getVersionString().bytes(), each.version);
        EXPECT_EQ(Smbios2::instance().getVersion(), each.number);
        EXPECT_EQ(count(2), 2u);
        EXPECT_STREQ(Smbios2_SysInfo::getString(structure(2, 1), 1), "Two");
    }
}

TEST(TableFiles, AFolderOrARawTableTakesTheEntryPointBesideIt)
{
    const TemporaryFolder folder;
    const auto dump = smallTable().dump64(3, 4, 0);
    const auto raw = folder.file("DMI", smallTable().structures());
    const auto version = [](const std::filesystem::path& path) {
        EXPECT_TRUE(Smbios2::instance().loadTableFromFile(lum::String(path.string()), false));
        return std::string(Smbios2::instance().getVersionString().bytes());
    };
    EXPECT_EQ(version(folder.path()), "3.0 (assumed)");
    folder.file("smbios_entry_point", Bytes(dump.begin(), dump.begin() + 0x18));
    EXPECT_EQ(version(folder.path()), "3.4.0");
    EXPECT_EQ(version(raw), "3.4.0");
    folder.file("DMI", tests::TableBuilder().end().structures());
    EXPECT_EQ(version(folder.path()), "3.4.0") << "what the entry point describes needs no recognising";
    folder.file("DMI", smallTable().structures());
    folder.file("smbios_entry_point", "_SM3_ but no more");
    EXPECT_EQ(version(raw), "3.0 (assumed)") << "what is not believed is not used";
    const auto& faults = embedded_host::table::faults();
    ASSERT_EQ(faults.all().size(), 1u);
    EXPECT_EQ(faults.all()[0].kind, embedded_host::table::FaultKind::EntryPoint);
    EXPECT_EQ(faults.sentence(faults.all()[0]), (folder / "smbios_entry_point").string() +
                                                    ": not used, the length byte of its _SM3_ entry point is wrong");
}

TEST(TableFiles, WhatIsNoTableIsRefused)
{
    const auto wide = smallTable().dump64(3, 1, 1);
    const auto narrow = smallTable().dump32(2, 7);
    auto badIntermediate = spoilt(narrow, 0x16);
    tests::mend(badIntermediate, 0, 0x1F, 0x04);
    const std::string text(600, 'x');
    const std::string program = "\x7F"
                                "ELF\x02\x01" +
                                std::string(200, '\0');
    const std::pair<const char*, Bytes> cases[] = {
        {"text", Bytes(text.begin(), text.end())},
        {"program", Bytes(program.begin(), program.end())},
        {"checksum", spoilt(wide, 0x07)},
        {"intermediate checksum", badIntermediate},
        {"length byte of 64-bit", with(wide, 0x06, {0x10})},
        {"length byte of 32-bit", with(narrow, 0x05, {0x20})},
        {"address beyond the file", with(wide, 0x10, {0, 0, 1})},
        {"address beyond 32 bits", with(wide, 0x10, {0x20, 0, 0, 0, 1})},
        {"entry point cut short", Bytes{'_', 'S', 'M', '3', '_', 0, 0x18}},
        {"32-bit entry point cut short", Bytes{'_', 'S', 'M', '_', 0, 0x1F}},
    };
    for (const auto& [what, content] : cases) {
        EXPECT_FALSE(load(content)) << what;
        EXPECT_EQ(count(0), 0u) << what << ": no table stays behind";
    }
    EXPECT_FALSE(Smbios2::instance().loadTableFromFile("/dev/zero", false));
    EXPECT_FALSE(Smbios2::instance().loadTableFromFile("/nonexistent/x", false));
}

TEST(TableFiles, APathThatBecomesAPipeIsNotWaitedFor)
{
    const TemporaryFolder folder;
    const auto path = folder / "path";
    const auto regular = folder.file("regular", "content");
    const auto pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink(regular, path);
    const std::jthread swapping([&](const std::stop_token& stop) {
        const auto next = folder / "next";
        for (unsigned turn = 0; !stop.stop_requested(); ++turn) {
            std::filesystem::create_symlink(turn % 2 == 0 ? pipe : regular, next);
            std::filesystem::rename(next, path);
        }
    });
    unsigned read = 0;
    unsigned refused = 0;
    while (read < 2000 || refused < 2000) {
        try {
            read += embedded_host::platform::readFile(path, 100).size() == 7 ? 1u : 0u;
        } catch (const std::system_error& error) {
            ASSERT_EQ(error.code(), std::errc::not_supported);
            ++refused;
        }
    }
}

TEST(TableFiles, WithoutAnEntryPointATableHasToLookLikeOne)
{
    TableBuilder plain; // no word in it
    plain.add(17, 0x0001, 0x28);
    plain.add(16, 0x0002, 0x17);
    const auto image = [](const TableBuilder& table) { return table.structures(); };
    const auto then = [](Bytes bytes, const Bytes& more) {
        bytes.insert(bytes.end(), more.begin(), more.end());
        return bytes;
    };
    const auto named = [](unsigned char type, const char* text, unsigned count) {
        TableBuilder table;
        for (unsigned i = 0; i < count; ++i)
            table.add(type, static_cast<std::uint16_t>(i), 0x08).text(0x04, text);
        return table.structures();
    };
    const Bytes noise{0x9C, 0x03, 0xFF, 0x00, 0x00, 0x7F};
    const struct
    {
        const char* what;
        Bytes bytes;
        bool taken;
    } cases[] = {
        {"whole, without a word", image(TableBuilder(plain).end()), true},
        {"whole, with other letters", then(named(1, "\xE4\xB8\xAD\xE6\x96\x87", 2), image(TableBuilder().end())), true},
        {"broken behind two names", then(named(2, "Zorp", 2), noise), true},
        {"cut in the third structure", then(named(2, "Zorp", 2), {2, 8, 2}), true},
        {"zeros behind the end", then(image(smallTable()), Bytes(0x1000)), true},
        {"zeros alone", Bytes(0x1000), false},
        {"broken behind one name", then(named(2, "Zorp", 1), noise), false},
        {"broken, without a word", then(image(plain), noise), false},
        {"broken, with words that nobody writes", then(named(2, "Z\x1BrpZ", 9), noise), false},
        {"broken, of types that nobody has given out", then(named(84, "Zorp", 9), noise), false},
        {"an end marker inside", then(then(named(2, "Zorp", 1), image(TableBuilder().end())), noise), false},
        {"an end marker with contents", then(image(plain), {127, 6, 0, 0, 0, 0, 0, 0}), false},
        {"an end marker alone", image(TableBuilder().end()), false},
    };
    for (const auto& [what, bytes, taken] : cases) {
        EXPECT_EQ(load(bytes), taken) << what;
        const auto size = bytes.size();
        const Bytes header{0, 3, 2, 0, static_cast<unsigned char>(size), static_cast<unsigned char>(size >> 8), 0, 0};
        EXPECT_EQ(load(then(header, bytes)), taken) << what << ", in a Windows block";
    }
}

TEST(TableFiles, AFileIsReadAsFarAsItHoldsTheTable)
{
    auto dump = smallTable().dump32(2, 7);
    dump.resize(dump.size() - 6 - 4); // the end marker, and a bit of the last board's string
    ASSERT_TRUE(load(dump));
    EXPECT_EQ(count(2), 2u);
    EXPECT_STREQ(Smbios2_SysInfo::getString(structure(2, 1), 1), "T");
    ASSERT_TRUE(load(with(smallTable().dump64(3, 1, 1), 0x0C, {0x30, 0, 0, 0})))
        << "a shorter announced length cuts the table";
    EXPECT_EQ(count(2), 1u);
    EXPECT_TRUE(load(TableBuilder().dump64(3, 1, 1))) << "none at all: saving an empty table makes such a file";
}

/// The faults that loading these bytes logs.
std::vector<std::string> faults(const Bytes& content) { return tests::discover(content).messages("Smbios2"); }

TEST(Walk, EndsWhereTheEntryPointSays)
{
    TableBuilder table;
    table.add(2, 0x0001, 0x08);
    table.end(0x0002);
    table.add(2, 0x0003, 0x08);

    ASSERT_TRUE(load(table.dump64(3, 0, 0)));
    EXPECT_EQ(count(2), 1u) << "a 64-bit table ends at its end marker";
    ASSERT_TRUE(load(table.dump32(2, 7)));
    EXPECT_EQ(count(2), 2u) << "a 32-bit table at its structure count";

    const auto counted = [&](unsigned char structures) { return with(table.dump32(2, 7), 0x1C, {structures}); };
    ASSERT_TRUE(load(counted(1)));
    EXPECT_EQ(count(127), 0u);
    ASSERT_TRUE(load(counted(0)));
    EXPECT_EQ(count(2), 1u) << "a count of 0 is none";
    EXPECT_EQ(faults(counted(9)), std::vector<std::string>{
                                      "the table ends at offset 0x1A after 3 structures; its entry point announced 9"});
}

using Texts = std::vector<std::string>;

std::string handleText(std::uint16_t handle)
{
    return orb5::OrbDiscreteMeasurement(orb5::OrbUnitType::HEXADECIMAL16(), handle)
        .toString(orb5::OrbUnitMagnitude::AUTOSCALEUNIT())
        .getUTF8Buffer();
}

/// The faults that a discovery of these bytes met: "strings-past-end 30 0x0001".
Texts records(const Bytes& content)
{
    tests::discover(content);
    Texts lines;
    for (const auto& fault : embedded_host::table::faults().all())
        lines.push_back(std::string(nameOf(fault.kind)) + " " + std::to_string(fault.offset) + " " +
                        (fault.hasHandle ? handleText(fault.handle) : "null"));
    return lines;
}

TEST(Walk, EveryFaultIsARecordAndALineWithItsOffset)
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "Zorp");
    table.add(2, 0x00AB, 0x08).text(0x04, "Board"); // from 1Eh to 2Dh
    const auto wide = [&](unsigned char length, std::size_t cut) {
        auto dump = table.dump64(3, 0, 0);
        dump[0x20 + 0x1E + 1] = length;
        dump.resize(dump.size() - cut);
        return dump;
    };
    const char* const kNoEnd = "the table has no end marker (type 127); it ends with its last byte";
    const struct
    {
        Bytes content;
        Texts records;
        Texts log;
    } cases[] = {
        {smallTable().dump64(3, 0, 0), {}, {}},
        {smallTable().dump32(2, 7), {}, {}},
        {wide(8, 0), {"end-missing 0 null"}, {kNoEnd}},
        {wide(3, 0),
         {"length-below-header 30 0x00AB"},
         {"structure at offset 0x1E: its length is 3, less than its header; the table ends here"}},
        {wide(0x10, 0),
         {"area-past-end 30 0x00AB"},
         {"structure at offset 0x1E: its formatted area of 16 bytes runs past the end of the table at 0x2D; dropped"}},
        {wide(8, 1),
         {"strings-past-end 30 0x00AB", "end-missing 0 null"},
         {"structure at offset 0x1E: its strings run past the end of the table at 0x2C; cut there", kNoEnd}},
        {wide(8, 13),
         {"header-cut 30 null"},
         {"structure at offset 0x1E: only 2 bytes of its header lie in the table; dropped"}},
        {with(table.dump32(2, 7), 0x20 + 0x1F, {3}),
         {"length-below-header 30 0x00AB", "count-differs 30 null"},
         {"structure at offset 0x1E: its length is 3, less than its header; the table ends here",
          "the table ends at offset 0x1E after 1 structures; its entry point announced 2"}},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(records(each.content), each.records);
        EXPECT_EQ(faults(each.content), each.log);
    }
}

TEST(Faults, FewerBytesThanPromisedAreOne)
{
    const auto table = smallTable();
    const auto cut = [](Bytes bytes) {
        bytes.resize(bytes.size() - 6);
        return bytes;
    };
    const Texts fewer{"length-differs 0 null", "end-missing 0 null"};
    EXPECT_EQ(records(cut(table.windowsBlock(3, 2, 0))), fewer);
    EXPECT_EQ(records(cut(with(table.dump32(2, 7), 0x1C, {0}))), fewer) << "without a count, too";
    EXPECT_EQ(records(cut(table.dump32(2, 7))), (Texts{"length-differs 0 null", "count-differs 59 null"}));
    EXPECT_EQ(records(cut(table.dump64(3, 2, 0))), Texts{"end-missing 0 null"}) << "an upper bound";

    const TemporaryFolder folder;
    const auto narrow = table.dump32(2, 7);
    folder.file("smbios_entry_point", Bytes(narrow.begin(), narrow.begin() + 0x1F));
    folder.file("DMI", cut(table.structures()));
    tests::discover({{"LoadTable", folder.path().string()}});
    EXPECT_EQ(embedded_host::table::faults().all()[0].kind, embedded_host::table::FaultKind::LengthDiffers);
}

TEST(Faults, AStructureTellsOnceThatStringsAreMissing)
{
    TableBuilder table;
    auto& board = table.add(2, 0x0002, 0x0B).text(0x04, "One");
    for (const unsigned offset : {0x05u, 0x06u, 0x08u})
        board.put(byte(offset), offset == 0x06 ? 9 : 7); // 7, 9 and again 7
    table.add(2, 0x0002, 0x08).put(byte(0x07), 1);
    table.add(11, 0x000B, 0x05).put(byte(0x04), 2).string("only one");
    const auto told = records(table.end().dump64(3, 2, 0));
    EXPECT_EQ(told, (Texts{"string-missing 0 0x0002", "string-missing 16 0x0002", "string-missing 26 0x000B"}));
    const auto& all = embedded_host::table::faults();
    EXPECT_EQ(all.sentence(all.all()[0]), "it asks for string 7 and 1 more that its set does not have");
    EXPECT_EQ(all.sentence(all.all()[1]), "it asks for string 1, which its set does not have");
    EXPECT_EQ(faults(table.dump64(3, 2, 0)), Texts{});
}

TEST(Faults, ASizeThatNoMemoryHasBelongsToItsStructureWhateverIsLogged)
{
    TableBuilder table; // all of one handle, and one text of the log
    table.add(6, 0x0006, 0x0B).put(byte(0x09), 0x28).put(byte(0x0A), 0x28);
    table.add(5, 0x0006, 0x09).put(byte(0x08), 0x28);
    table.add(6, 0x0006, 0x0B).put(byte(0x09), 0x0A).put(byte(0x0A), 0x28);
    const auto before = lum::LogFactory::getPriority();
    lum::LogFactory::setPriority(5);
    const auto told = records(table.end().dump64(3, 2, 0));
    lum::LogFactory::setPriority(before);
    EXPECT_EQ(told, (Texts{"size-unrealistic 13 0x0006", "size-unrealistic 0 0x0006", "size-unrealistic 0 0x0006",
                           "size-unrealistic 24 0x0006"}));
    const auto& all = embedded_host::table::faults();
    EXPECT_EQ(all.sentence(all.all()[1]), "its memory size of 2 to the power of 40 MB is not realistic (message 758)");
}

TEST(Others, AreTheStructuresThatNoDeviceWasMadeOf)
{
    TableBuilder table;
    table.add(126, 0x0007, 0x06);                                  // 0, of no known type
    table.add(2, 0x0007, 0x08);                                    // 8, the same handle twice
    table.add(131, 0x0007, 0x0B).text(0x0A, "IBM System Metrics"); // 18
    table.add(131, 0x0007, 0x0B).text(0x0A, "Quillet");            // 49, of another shape
    table.add(10, 0x0007, 0x08);                                   // 69, two devices
    table.add(10, 0x0007, 0x04);                                   // 79, none
    table.add(8, 0x0007, 0x09);                                    // 85, with a group behind it
    table.add(0, 0x0007, 0x18).text(0x04, "LENOVO");               // 96
    const auto others = [&](const tests::Settings& settings) {
        tests::discover(table, settings);
        std::string text;
        for (const auto& [offset, type, length, handle] : embedded_host::table::structuresWithoutDevice())
            text += std::to_string(offset) + ":" + std::to_string(type) + "/" + std::to_string(length) + " ";
        return text;
    };
    table.end();
    EXPECT_EQ(others({}), "0:126/6 49:131/11 79:10/4 128:127/4 ");
    EXPECT_EQ(others({{"verbose", "no"}}), "0:126/6 49:131/11 69:10/8 79:10/4 85:8/9 128:127/4 ");
}

TEST(Walk, StringSets)
{
    const auto texts = [](const std::vector<const char*>& strings) {
        TableBuilder table;
        auto& bios = table.add(0, 0, 0x04);
        for (const char* text : strings)
            bios.string(text);
        EXPECT_TRUE(load(table.dump64(3, 0, 0)));
        std::string joined;
        for (unsigned number = 0; number < 256; ++number)
            if (const char* text = Smbios2_SysInfo::getString(structure(0, 0), static_cast<unsigned char>(number)))
                joined += std::to_string(number) + text + " ";
        return joined;
    };
    EXPECT_EQ(texts({}), "");
    EXPECT_EQ(texts({"A", "BC"}), "1A 2BC ");
    EXPECT_EQ(texts({"A", "", "B"}), "1A ") << "two NUL bytes end the set";
    EXPECT_EQ(texts({"", "A"}), "") << "an empty text ends the numbering";
    EXPECT_TRUE(texts(std::vector<const char*>(256, "A")).starts_with("1A ")) << "0 is none";
}

TEST(LiveTable, NoneAndABrokenOneAreToldApart)
{
    const Firmware firmware;
    auto& library = Smbios2::instance();
    const auto populate = [&] {
        embedded_host::table::beginDiscovery();
        errno = 0;
        EXPECT_EQ(library.isPresent(), 0);
        const auto result = library.populateTable(false);
        EXPECT_NE(errno, 0);
        return result;
    };
    EXPECT_EQ(populate(), libsmbios2::POPULATE_TABLE_NONE);
    firmware.folder().file("smbios_entry_point", "_SM3_ and nothing right after it");
    EXPECT_EQ(populate(), libsmbios2::POPULATE_TABLE_MALFORMED);
}

TEST(LiveTable, ARefreshReadsTheFirmwareAgain)
{
    const Firmware firmware;
    auto& library = Smbios2::instance();
    embedded_host::table::beginDiscovery();
    firmware.offer(smallTable().dump64(3, 3, 0));
    EXPECT_EQ(library.populateTable(false), libsmbios2::POPULATE_TABLE_READ);
    firmware.offer(smallTable().dump64(3, 4, 0));
    EXPECT_EQ(library.populateTable(false), libsmbios2::POPULATE_TABLE_IN_MEMORY);
    EXPECT_EQ(library.getVersionString().bytes(), "3.3.0");
    EXPECT_EQ(library.populateTable(true), libsmbios2::POPULATE_TABLE_READ);
    EXPECT_EQ(library.getVersionString().bytes(), "3.4.0");
    std::filesystem::remove(firmware.folder() / "smbios_entry_point");
    EXPECT_EQ(library.populateTable(true), libsmbios2::POPULATE_TABLE_NONE);
    EXPECT_EQ(library.populateTable(false), libsmbios2::POPULATE_TABLE_NONE) << "no table is in memory";
}

TEST(LiveTable, TheMachinesMemoryIsReadFromACharacterDeviceOnly)
{
    const Firmware firmware;
    auto log = tests::discover(tests::Settings{}).messages("Smbios2");
    ASSERT_EQ(log.size(), 1u);
    EXPECT_TRUE(log[0].ends_with("mem: No such file or directory; name a saved table with LoadTable")) << log[0];
    firmware.folder().file("mem", Bytes(0x100000));
    log = tests::discover(tests::Settings{}).messages("Smbios2");
    ASSERT_EQ(log.size(), 1u);
    EXPECT_TRUE(log[0].ends_with("mem: No such device")) << log[0];
}

TEST(LiveTable, AWrongAddressInTheEfiSystemTableDoesNotEndTheSearch)
{
    const Firmware firmware;
    embedded_host::firmwarePlaces().memory = "/dev/zero";
    const auto systab = firmware.folder().file("systab", "SMBIOS3=0xFFFFFFFFFFFFF000\nSMBIOS=0xF0000\n").string();
    const auto log = tests::discover(tests::Settings{}).messages("Smbios2");
    ASSERT_EQ(log.size(), 3u);
    EXPECT_TRUE(log[0].starts_with(systab + ": the entry point that SMBIOS3 names is not used, ")) << log[0];
    EXPECT_EQ(log[1], systab + ": the entry point that SMBIOS names is not used, it is no entry point");
    EXPECT_TRUE(
        log[2].ends_with("/dev/zero: no entry point from 0xF0000 to 0xFFFFF; name a saved table with LoadTable"))
        << log[2];
}

TEST(LiveTable, AMemoryScanTakesTheBestEntryPointThatHolds)
{
    using embedded_host::table::scanForEntryPoint;
    const auto table = smallTable();
    const auto memory = [](std::initializer_list<std::pair<std::size_t, Bytes>> parts) {
        Bytes bytes(0x200);
        for (const auto& [offset, dump] : parts)
            std::copy_n(dump.begin(), 0x20, bytes.begin() + static_cast<std::ptrdiff_t>(offset));
        return bytes;
    };
    Texts passedOver;
    const auto versionIn = [&](const Bytes& bytes) {
        embedded_host::table::Faults faults;
        const auto found = scanForEntryPoint(bytes, "/dev/mem", 0xF0000, faults);
        passedOver.clear();
        for (const auto& fault : faults.all())
            passedOver.push_back(faults.sentence(fault));
        return found ? found->version.text() : "(none)";
    };
    const auto wide = table.dump64(3, 1, 1);
    const auto broken = spoilt(wide, 0x05);
    const auto narrow = table.dump32(2, 7);
    const auto legacy = table.dumpLegacy(2, 1);
    EXPECT_EQ(versionIn(memory({{0x10, legacy}, {0x40, narrow}, {0x1E0, wide}})), "3.1.1");
    EXPECT_EQ(versionIn(memory({{0x10, broken}, {0x80, narrow}})), "2.7") << "what does not hold is passed over";
    EXPECT_EQ(
        passedOver,
        Texts{"/dev/mem: the entry point at 0xF0010 is not used, the checksum of its _SM3_ entry point is wrong"});
    EXPECT_EQ(versionIn(memory({{0x10, legacy}})), "2.1");
    EXPECT_EQ(versionIn(memory({{0x18, wide}})), "(none)") << "not on a boundary of 16 bytes";
}

TEST(LiveTable, DiscoveriesOfOneProcessLeaveNothingBehind)
{
    const Firmware firmware;
    firmware.offer(smallTable().dump64(3, 3, 0));
    const TemporaryFolder folder;
    const auto path = folder.file("t.dmi", smallTable().dump32(2, 7)).string();
    const auto discovered = [](const tests::Settings& settings) {
        return tests::inventoryText(tests::discover(settings).devices);
    };
    const auto live = discovered({});
    const auto loaded = discovered({{"LoadTable", path}});
    EXPECT_NE(live, loaded);
    EXPECT_EQ(discovered({}), live);
    EXPECT_EQ(discovered({{"LoadTable", path}}), loaded);
    std::filesystem::remove(path);
    EXPECT_EQ(discovered({{"LoadTable", path}}), "");
    EXPECT_EQ(discovered({}), live);
}

TEST(LiveTable, IsToldInADocumentThoughItIsReadBehindTheRoot)
{
    const Firmware firmware;
    const auto document = [] {
        const tests::MemoryFile noSettings;
        return tests::printedOf<JsonInventory>(
            [&](auto& inventory) {
                embedded_host::discover({{}, noSettings.path()}, inventory);
            },
            JsonInventory::Layout::Document, embedded_host::inventory::JsonDetails{true, std::nullopt});
    };
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);
    const auto tells = [](const std::string& text, const char* part) { return text.find(part) != std::string::npos; };

    firmware.offer(smallTable().dump64(3, 3, 0));
    auto told = document();
    EXPECT_TRUE(tells(told, R"("table":{"source":"firmware","version":"3.3.0","bytes":65,"structures":4},"devices":[
{"uid":"SMBIOS",)"))
        << told;
    std::filesystem::remove(firmware.folder() / "DMI");
    told = document();
    EXPECT_TRUE(tells(told, R"("table":null,"devices":[
{"uid":"SMBIOS",)"))
        << told;
    EXPECT_TRUE(told.ends_with("\n],\"others\":[],\"faults\":[]}\n")) << told;
    std::filesystem::remove(firmware.folder() / "smbios_entry_point");
    told = document();
    EXPECT_TRUE(told.ends_with(R"("table":null,"devices":[],"others":[],"faults":[]})"
                               "\n"))
        << told;
}

TEST(Saving, ASavedTableLoadsToTheSameDevices)
{
    auto contents = smallTable().layouts();
    auto large = smallTable();
    large.add(11, 0x0B, 0x05).put(byte(0x04), 1).string(std::string(0x10000, 'x'));
    contents["older Windows block that no 32-bit entry point can describe"] = large.windowsBlock(2, 7, 0);
    contents["64-bit with an entry point revision of 0"] = with(smallTable().dump64(3, 0, 0), 0x0A, {0});
    for (const auto& [layout, content] : contents) {
        SCOPED_TRACE(layout);
        const TemporaryFolder folder;
        const auto saved = folder / "saved.dmi";
        const auto first = tests::discover(content, {{"SaveTable", saved.string()}});
        const auto second = tests::discover({{"LoadTable", saved.string()}});
        EXPECT_EQ(tests::inventoryText(first.devices), tests::inventoryText(second.devices));
        struct stat status = {};
        ASSERT_EQ(stat(saved.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600u);
    }
}

TEST(Saving, WhatIsNoDumpIsNotOverwritten)
{
    const TemporaryFolder folder;
    const auto image = smallTable().dump64(3, 1, 1);
    const auto save = [&](const std::filesystem::path& target) {
        return tests::discover(image, {{"SaveTable", target.string()}}).messages("Smbios2");
    };
    const auto text = folder.file("notes.txt", "important");
    const auto bare = folder.file("smbios_entry_point", Bytes(image.begin(), image.begin() + 0x18));
    const auto dump = folder.file("old.dmi", smallTable().dump32(2, 7));
    const auto link = folder / "link.dmi";
    std::filesystem::create_symlink(dump, link);
    const std::pair<std::filesystem::path, const char*> refused[] = {
        {text, "overwritten, it exists and is not an SMBIOS dump"},
        {bare, "overwritten, it exists and is not an SMBIOS dump"},
        {link, "overwritten, it is a symbolic link"},
        {folder.path(), "overwritten, it is not a regular file"},
        {folder.path() / "no" / "such.dmi", "written, No such file or directory"},
    };
    for (const auto& [target, why] : refused) {
        EXPECT_EQ(save(target), std::vector<std::string>{target.string() + ": not " + why});
        errno = EDOM;
        EXPECT_FALSE(Smbios2::instance().saveTableToFile(lum::String(target.string())));
        EXPECT_EQ(errno, EDOM) << "the module still tells it of a failed populateTable";
    }
    EXPECT_EQ(readBytes(text).size(), 9u);
    EXPECT_EQ(readBytes(dump), smallTable().dump32(2, 7));

    EXPECT_EQ(save(dump), std::vector<std::string>{}) << "a dump is replaced";
    EXPECT_EQ(readBytes(dump), image);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 4) << "nothing half-written stays";
}

} // namespace
