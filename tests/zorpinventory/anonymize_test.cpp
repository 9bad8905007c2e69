// Anonymised tables: nothing secret is left, and everything else is.
#include "anonymize/anonymize.h"
#include "anonymize/fields.h"
#include "compare/changes.h"
#include "document/problem.h"
#include "documents.h"
#include "support/memory_file.h"
#include "support/recorded_session.h"
#include "table/library.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using tests::byte;
using tests::Bytes;
using tests::TableBuilder;
using tests::word;
using zorpinventory::anonymize::anonymized;
using zorpinventory::anonymize::Fate;
using zorpinventory::anonymize::kStringFields;
using zorpinventory::anonymize::Wishes;

const Bytes kKey(16, 0x5A);

Bytes copyOf(const Bytes& table, const Wishes& wishes = {})
{
    const tests::MemoryFile file(table);
    return anonymized(file.path(), wishes).dump;
}

std::string lower(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string wide(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result.append({c, '\0'});
    return result;
}

Bytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

bool holds(const Bytes& bytes, const std::string& secret)
{
    const auto content = lower({bytes.begin(), bytes.end()});
    const auto ending = wide(secret);
    return content.find(lower(secret)) != std::string::npos ||
           content.find(lower(ending.substr(0, ending.size() - 1))) != std::string::npos;
}

/// The machine's tables as they stand on this disk: the samples', and real ones where there are any.
std::vector<std::filesystem::path> savedTables()
{
    std::vector<std::filesystem::path> paths;
    for (const std::filesystem::path folder : {MACHINES_FOLDER, SHARED_FOLDER "/tables", SHARED_FOLDER "/tables/pairs"})
        if (exists(folder))
            for (const auto& file : std::filesystem::directory_iterator(folder))
                if (file.path().extension() == ".dmi")
                    paths.push_back(file.path());
    std::ranges::sort(paths);
    return paths;
}

/// What the module makes of a table: devices with their numbers, structures without a device, faults.
std::string inventoryOf(const Bytes& table)
{
    std::ostringstream text;
    text << tests::inventoryText(tests::discover(table).devices);
    for (const auto& [offset, type, length, handle] : embedded_host::table::structuresWithoutDevice())
        text << "other " << offset << " " << int{type} << " " << int{length} << " " << handle << "\n";
    for (const auto& fault : embedded_host::table::faults().all())
        text << "fault " << nameOf(fault.kind) << " " << fault.offset << " " << fault.handle << " " << fault.first
             << "\n";
    return text.str();
}

/// The text with one digit for all digits, one letter for all small letters and another one for all capitals.
std::string kinds(std::string text)
{
    for (char& c : text)
        if (const auto byte = static_cast<unsigned char>(c); byte < 0x80 && std::isalnum(byte) != 0)
            c = std::isdigit(byte) != 0 ? '0' : std::islower(byte) != 0 ? 'a' : 'A';
    return text;
}

const std::string kUuid = "\x33\x22\x11\x3c\x5d\x44\x77\x66\x88\x99\xAA\xBB\xCC\x0D\xEE\x1F";
const char* const kUuidTexts[] = {"3322113c5d4477668899aabbcc0dee1f", "3C112233-445D-6677-8899-AABBCC0DEE1F",
                                  "33 22 11 3c 5d 44 77 66-88 99 aa bb cc 0d ee 1f",
                                  "{3c112233445d66778899aabbcc0dee1f}"};

TEST(Anonymize, NothingOfWhatWasPlantedIsLeft)
{
    std::vector<std::string> secrets;
    TableBuilder table;
    std::size_t planted = 0;
    std::uint16_t handle = 0;
    unsigned next = 4711;
    // Every secret field has a secret of its own.
    for (const unsigned char type : Bytes{1, 2, 3, 4, 17, 22, 39}) {
        auto& structure = table.add(type, handle++, 0x40);
        for (const auto& field : kStringFields)
            if (field.type == type && field.fate == Fate::Secret) {
                secrets.push_back("Geheim-" + std::to_string(next += 7919));
                structure.text(field.offset, "  " + secrets.back() + " ");
                ++planted;
            }
        if (type == 1)
            structure.bytes(0x08, bytesOf(kUuid));
    }
    const auto fields = secrets;
    secrets.insert(secrets.end(), std::begin(kUuidTexts), std::end(kUuidTexts));
    const auto secret = [&] { return secrets[planted++ % secrets.size()]; };
    // Every other field has one of them in the middle of its text, in capitals too.
    for (const auto& field : kStringFields)
        if (field.fate == Fate::Harmless || field.fate == Fate::Replaced) {
            auto text = "Bay/" + secret() + "\xC3\xA9" + lower(secret()) + ".";
            auto& structure = table.add(field.type, handle++, 0x40).text(std::max<unsigned>(field.offset, 0x04), text);
            structure.string("nobody names " + secret());
        }
    // Structures that only makers know, and some that nobody has given out.
    for (const unsigned char type : Bytes{42, 46, 84, 126, 128, 131, 208, 255}) {
        const auto ascii = secret();
        const auto twoBytes = wide(secret());
        auto& structure = table.add(type, handle++, 0xF0).bytes(0x05, bytesOf(ascii)).bytes(0x61, bytesOf(twoBytes));
        structure.bytes(0xE0, bytesOf(kUuid)).string(secret() + secret());
        ++planted;
    }
    table.end();

    for (auto& [layout, bytes] : table.layouts()) {
        SCOPED_TRACE(layout);
        auto image = bytes;
        for (const auto& left : {secret(), wide(secret())}) // behind the end marker
            image.insert(image.end(), left.begin(), left.end());
        if (layout == "64") {
            tests::put(image, tests::dword(0x0C), image.size() - 0x20);
            tests::mendEntryPoint(image);
        }
        for (const bool keepMakers : {false, true}) {
            const auto copy = copyOf(image, {.key = {}, .keepMakers = keepMakers});
            for (const auto& each : secrets)
                EXPECT_FALSE(holds(copy, each)) << each;
            const Bytes uuid = bytesOf(kUuid);
            EXPECT_EQ(std::search(copy.begin(), copy.end(), uuid.begin(), uuid.end()), copy.end());
            EXPECT_EQ(kinds(inventoryOf(copy)), kinds(inventoryOf(image)));
        }
    }
    RecordProperty("planted", static_cast<int>(planted));
}

TEST(Anonymize, BytesThatNoStructureHoldsAreGone)
{
    TableBuilder table;
    table.add(2, 0x0002, 0x0F).text(0x07, "SC-77120");
    const auto sound = table.structures().size();
    auto bytes = TableBuilder(table).end().dump64(3, 2, 0);
    const std::string left = "left by the last BIOS";
    const auto withTail = [&](Bytes dump, const Bytes& header) {
        dump.resize(0x20 + sound);
        dump.insert(dump.end(), header.begin(), header.end());
        dump.insert(dump.end(), left.begin(), left.end());
        tests::put(dump, tests::dword(0x0C), dump.size() - 0x20);
        tests::mendEntryPoint(dump);
        return dump;
    };
    for (const Bytes& header : {Bytes{127, 4, 9, 9, 0, 0}, Bytes{7, 3, 9, 9}, Bytes{7, 0xF0, 9, 9}, Bytes{}}) {
        const auto copy = copyOf(withTail(bytes, header));
        EXPECT_FALSE(holds(copy, left.substr(4)));
        EXPECT_TRUE(std::equal(header.begin(), header.end(), copy.begin() + 0x20 + static_cast<std::ptrdiff_t>(sound)));
    }
    // What entry points have room for.
    auto narrow = table.dump32(2, 7);
    std::ranges::copy(std::string_view("Left!"), narrow.begin() + 0x0B);
    tests::mendEntryPoint(narrow);
    EXPECT_FALSE(holds(copyOf(narrow), "left"));
    auto later = table.dump64(3, 2, 0);
    later[0x06] = 0x20;
    std::ranges::copy(std::string_view("appended"), later.begin() + 0x18);
    tests::mendEntryPoint(later);
    EXPECT_FALSE(holds(copyOf(later), "appe"));
}

TEST(Anonymize, FaultsStay)
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "Zorp");
    table.add(2, 0x00AB, 0x08).text(0x04, "Board").put(byte(0x06), 9);
    table.add(6, 0x0006, 0x0B).put(byte(0x09), 0x28);
    table.add(131, 0x0007, 0x0B).put(byte(0x0A), 5);
    for (const auto& [layout, whole] : TableBuilder(table).end().layouts())
        for (std::size_t cut = 0; cut < 30; ++cut) {
            Bytes bytes(whole.begin(), whole.end() - static_cast<std::ptrdiff_t>(cut));
            if (layout == "raw" && cut < 2)
                continue; // without its end it looks like a table all the same
            const bool isBlock = layout.starts_with("windows");
            const auto sameButForBlocks = [&](std::string text) {
                // A dump of what came without an entry point has none that promises a length.
                const auto line = text.find("fault length-differs");
                if (isBlock && line != std::string::npos)
                    text.erase(line, text.find('\n', line) + 1 - line);
                return text;
            };
            EXPECT_EQ(sameButForBlocks(inventoryOf(copyOf(bytes))), sameButForBlocks(inventoryOf(bytes)))
                << layout << " without its last " << cut;
        }
}

/// Strings of the first structure of the type, in the copy of a table.
std::string stringsOf(const Bytes& copy, unsigned char type)
{
    tests::discover(copy);
    const void* start = nullptr;
    if (libsmbios2::Smbios2::instance().readStructure(type, &start, 0) != 0)
        return "(none)";
    std::string all;
    for (unsigned char number = 1; number < 9; ++number)
        if (const auto* text =
                libsmbios2::Smbios2_SysInfo::getString(static_cast<const libsmbios2::type_hdr*>(start), number))
            all += std::string(all.empty() ? "" : "|") + text;
    return all;
}

TEST(Anonymize, WhatBelongedTogetherStillDoes)
{
    TableBuilder table;
    table.add(1, 0x0001, 0x1B).text(0x04, "Maker of ABC7351").text(0x07, "ABC7351");
    table.add(2, 0x0002, 0x0F).text(0x05, "abc7351").text(0x07, "/ABC7351/CN-7788/").text(0x08, "Default string");
    table.add(3, 0x0003, 0x15).text(0x07, "ABC7351").text(0x08, "  ");
    table.add(17, 0x0017, 0x28).text(0x10, "Slot of /abc7351/cn-7788/").text(0x18, "A1").text(0x1A, "A1");
    table.add(11, 0x0011, 0x05).put(byte(0x04), 2).string("tag=ABC7351").string("To Be Filled By O.E.M.");
    table.end();
    const auto copy = copyOf(table.dump64(3, 2, 0));
    const auto system = stringsOf(copy, 1);
    ASSERT_EQ(system.size(), std::string("Maker of ABC7351|ABC7351").size());
    const auto tag = system.substr(17);
    EXPECT_EQ(system.substr(0, 17), "Maker of ABC7351|") << "what the machine is called stays";
    EXPECT_NE(tag, "ABC7351");
    EXPECT_EQ(kinds(tag), "AAA0000");
    const auto board = stringsOf(copy, 2);
    EXPECT_EQ(board.substr(0, 7), lower(tag));
    EXPECT_EQ(board.substr(8, 9), "/" + tag + "/");
    EXPECT_EQ(kinds(board.substr(17, 8)), "AA-0000/");
    EXPECT_EQ(board.substr(26), "Default string");
    EXPECT_EQ(stringsOf(copy, 3), tag + "|  ");
    const auto module = stringsOf(copy, 17);
    EXPECT_EQ(module.substr(0, 25), "Slot of " + lower(board.substr(8, 17)));
    EXPECT_TRUE(module.ends_with("|A1")) << module << ": too short to be looked for elsewhere";
    const auto listed = stringsOf(copy, 11);
    EXPECT_EQ(listed.substr(3), "=" + tag + "|To Be Filled By O.E.M.");
    EXPECT_NE(listed.substr(0, 3), "tag");
}

TEST(Anonymize, MakersStructuresKeepWhatIsShownOfThem)
{
    TableBuilder table;
    table.add(0, 0x0000, 0x18).text(0x04, "LENOVO");
    table.add(131, 0x0001, 0x0B)
        .put(tests::dword(0x04), 0x11223344)
        .text(0x0A, "Lenovo System Metrics")
        .string("Quillet");
    table.add(208, 0x0002, 0x14).bytes(0x04, Bytes(0x10, 1)).string("20190930");
    table.add(200, 0x0003, 0x06).bytes(0x04, {1, 2}).string("Tindrel");
    table.end();
    const auto image = table.dump64(3, 2, 0);
    const auto copy = copyOf(image);
    EXPECT_EQ(kinds(inventoryOf(copy)), kinds(inventoryOf(image)));
    EXPECT_TRUE(stringsOf(copy, 131).starts_with("Lenovo System Metrics|"));
    EXPECT_FALSE(holds(copy, "Quillet") || holds(copy, "20190930") || holds(copy, "Tindrel"));
    const Bytes planted{0x0F, 0x20};
    EXPECT_EQ(std::search(copy.begin(), copy.end(), planted.begin(), planted.end()), copy.end());
    EXPECT_EQ(copyOf(image, {.key = {}, .keepMakers = true}), image);
}

TEST(Anonymize, EveryFieldThatIsShownAsAStringIsDecided)
{
    using zorpinventory::anonymize::isMakers;
    using zorpinventory::anonymize::kEveryString;
    for (unsigned type = 0; type < 127; ++type) {
        if (isMakers(static_cast<unsigned char>(type)))
            continue;
        TableBuilder table; // one structure for each byte that may name a string
        for (unsigned offset = 0x04; offset < 0x60; ++offset)
            table.add(static_cast<unsigned char>(type), static_cast<std::uint16_t>(offset), 0x60)
                .put(byte(offset), 1)
                .string("Mark " + std::to_string(offset));
        for (const auto& device : tests::discover(table.end().dump64(3, 2, 0)).devices)
            for (const auto& [declaration, value] : device.properties) {
                const std::string text = value.toString().getUTF8Buffer();
                const auto mark = text.find("Mark ");
                if (mark == std::string::npos)
                    continue;
                const auto offset = std::stoul(text.substr(mark + 5));
                const auto field = std::ranges::find_if(kStringFields, [&](const auto& row) {
                    return row.type == type && (row.offset == offset || row.offset == kEveryString);
                });
                const std::string_view name = declaration->name;
                ASSERT_NE(field, std::end(kStringFields)) << name << " at " << offset << " is not decided";
                const bool isSecret = name.ends_with("_serial") || name.ends_with("_asset_tag");
                EXPECT_EQ(field->fate == Fate::Secret, isSecret) << name;
            }
    }
}

TEST(Anonymize, RealTablesShowTheSame)
{
    for (const auto& path : savedTables()) {
        const auto table = tests::readBytes(path);
        EXPECT_EQ(kinds(inventoryOf(copyOf(table))), kinds(inventoryOf(table))) << path;
    }
}

/// What changed, without texts.
std::string changed(const Bytes& a, const Bytes& b)
{
    const auto documentA = tests::documentOf(a);
    const auto documentB = tests::documentOf(b);
    std::string told;
    for (const auto& change : zorpinventory::compare::changes(documentA, documentB)) {
        told += std::to_string(static_cast<int>(change.what)) + " " + std::to_string(change.type);
        for (const auto* side : {&change.a, &change.b})
            told +=
                side->device == nullptr ? " -" : " " + std::string(side->device->uid) + (side->empty ? " empty" : "");
        for (const auto& difference : change.differences)
            told.append(" ").append(difference.name);
        told += "\n";
    }
    return told;
}

TEST(Anonymize, WithOneKeyTheSameHasChanged)
{
    tests::Machine before;
    auto after = before;
    std::swap(after.dimms[0].serial, after.dimms[1].serial);
    after.dimms[2].serial = "5E009999";
    after.serial = "HI-0042-7720";
    std::map<std::string, std::pair<Bytes, Bytes>> pairs{{"made up", {before.table(), after.table()}}};
    for (const auto& path : savedTables())
        if (const auto name = path.string(); name.ends_with(".a.dmi"))
            pairs[name] = {tests::readBytes(path), tests::readBytes(name.substr(0, name.size() - 5) + "b.dmi")};
    const Wishes wishes{.key = kKey};
    for (const auto& [name, pair] : pairs) {
        const auto expected = changed(pair.first, pair.second);
        EXPECT_EQ(changed(copyOf(pair.first, wishes), copyOf(pair.second, wishes)), expected) << name;
    }
    const auto table = before.table();
    EXPECT_EQ(copyOf(table, wishes), copyOf(table, wishes));
    EXPECT_NE(copyOf(table), copyOf(table)) << "without one, nothing can be found out by trying";
}

TEST(Anonymize, AKeyWithWhichSecretsMeetHandsOverNothing)
{
    tests::Machine machine;
    machine.dimms.clear();
    for (unsigned i = 0; i < 600; ++i) // of 26 thousand that there are
        machine.dimms.push_back({"D" + std::to_string(i), "K" + std::to_string(100 + i)});
    const auto table = machine.table();
    EXPECT_THROW(copyOf(table, {.key = kKey}), zorpinventory::Problem);
    const auto copy = copyOf(table);
    EXPECT_EQ(kinds(inventoryOf(copy)), kinds(inventoryOf(table)));
    for (const auto& dimm : machine.dimms)
        EXPECT_FALSE(holds(copy, dimm.serial)) << dimm.serial;

    machine = {};
    machine.serial = "\xE5\xBC\xA0\xE4\xB8\x89\xE7\x9A\x84"; // nothing to put in the place of these letters
    EXPECT_THROW(copyOf(machine.table()), zorpinventory::Problem);
}

} // namespace
