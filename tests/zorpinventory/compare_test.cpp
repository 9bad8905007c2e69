// What changed: one edit to a machine, and all that is then told.
#include "compare/changes.h"
#include "documents.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace
{

using tests::documentOf;
using tests::Machine;
namespace compare = zorpinventory::compare;
using zorpinventory::compare::Change;
using zorpinventory::compare::Options;
using zorpinventory::compare::What;
using zorpinventory::document::Document;
using zorpinventory::document::read;

constexpr const char* kWhats[] = {"removed", "added", "replaced", "moved", "changed"};

/// "moved 17 A1>B2: t17_asset_tag", one change behind the other. Of what came or went, places are enough.
std::string told(const std::vector<Change>& changes)
{
    std::string text;
    for (const auto& change : changes) {
        const auto place = [](const auto& side) {
            if (side.device == nullptr)
                return std::string("-");
            return side.place.value_or("") + (side.empty ? "(empty)" : "");
        };
        text += (text.empty() ? "" : " | ") + std::string(kWhats[static_cast<int>(change.what)]) + " " +
                std::to_string(change.type) + " " + place(change.a) + ">" + place(change.b);
        if (change.what == What::Added || change.what == What::Removed)
            continue;
        std::string_view separator = ": ";
        for (const auto& difference : change.differences)
            text.append(std::exchange(separator, " ")).append(difference.name);
        if (change.childrenDiffer)
            text.append(separator).append("childBusIds");
    }
    return text;
}

std::string toldOf(const Machine& a, const Machine& b, const Options& options = {})
{
    const auto documentA = documentOf(a.table());
    const auto documentB = documentOf(b.table());
    return told(compare::changes(documentA, documentB, options));
}

/// The changes without their order.
std::multiset<std::string> parts(const std::string& text)
{
    constexpr std::string_view kBetween = " | ";
    std::multiset<std::string> all;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find(kBetween, at), text.size());
        all.insert(text.substr(at, end - at));
        at = end + kBetween.size();
    }
    return all;
}

TEST(Changes, OneEditAndAllThatIsThenTold)
{
    using Edit = void (*)(Machine & a, Machine & b);
    struct Case
    {
        const char* what;
        Edit edit;
        const char* expected;
    };
    const Case cases[] = {
        {"nothing", [](Machine&, Machine&) {}, ""},
        {"handles renumbered", [](Machine&, Machine& b) { b.firstHandle = 0x7A00; }, ""},
        {"structures in another order", [](Machine&, Machine& b) { b.backwards = true; }, ""},
        {"another kind of entry point, whose version has a revision",
         [](Machine&, Machine& b) { b.wideEntryPoint = false; }, ""},
        {"another boot",
         [](Machine&, Machine& b) {
             b.bootState = 4;
             b.bootStatus = "failed";
         },
         ""},
        {"memory mapped elsewhere, which follows from the modules",
         [](Machine&, Machine& b) { b.mappedEnd = 0x02FFFFFF; }, ""},
        {"new firmware", [](Machine&, Machine& b) { b.firmware = "1.3"; }, "changed 0 >: t0_ver"},
        {"a module moved", [](Machine&, Machine& b) { std::swap(b.dimms[0].serial, b.dimms[2].serial); },
         "moved 17 A1>B1"},
        {"two modules swapped", [](Machine&, Machine& b) { std::swap(b.dimms[0].serial, b.dimms[1].serial); },
         "moved 17 A1>A2 | moved 17 A2>A1"},
        {"a module pulled", [](Machine&, Machine& b) { b.dimms[1].serial.clear(); }, "removed 17 A2>A2(empty)"},
        {"an empty socket filled", [](Machine&, Machine& b) { b.dimms[2].serial = "5E00FF01"; },
         "added 17 B1(empty)>B1"},
        {"a module for its like", [](Machine&, Machine& b) { b.dimms[0].serial = "5E00FF01"; },
         "replaced 17 A1>A1: t17_serial"},
        {"a larger module where serial numbers are placeholders",
         [](Machine& a, Machine& b) {
             a.dimms[0].serial = "To Be Filled By O.E.M.";
             b.dimms[0] = {"A1", "Default string", "TM32R4", 32768};
         },
         "replaced 17 A1>A1: t17_sz t17_serial t17_part_num"},
        {"another placeholder for a serial number",
         [](Machine& a, Machine& b) {
             a.dimms[0].serial = "00000000";
             b.dimms[0].serial = "SerNum0";
         },
         "changed 17 A1>A1: t17_serial"},
        {"one of two twins with one serial number pulled",
         [](Machine& a, Machine& b) {
             a.dimms[0].serial = a.dimms[1].serial = b.dimms[0].serial = "5E00AAAA";
             b.dimms[1].serial.clear();
         },
         "removed 17 A2>A2(empty)"},
        {"the twins' sockets differ only by what is in them",
         [](Machine& a, Machine& b) {
             for (auto* machine : {&a, &b})
                 for (auto& dimm : machine->dimms)
                     dimm.locator = "DIMM";
             b.dimms[0].serial = "5E00FF01";
         },
         "replaced 17 DIMM>DIMM: t17_serial"},
        {"sockets without names, the first of two modules pulled",
         [](Machine& a, Machine& b) {
             for (auto* machine : {&a, &b})
                 for (auto& dimm : machine->dimms)
                     dimm.locator = "Not Specified";
             b.dimms[0].serial.clear();
         },
         "removed 17 >(empty)"},
        {"sockets that firmware renamed",
         [](Machine& a, Machine& b) {
             a.dimms.pop_back();
             b.dimms.pop_back();
             for (auto& dimm : b.dimms)
                 dimm.locator.insert(0, "Slot ");
         },
         "changed 17 A1>Slot A1: t17_locator | changed 17 A2>Slot A2: t17_locator | "
         "changed 17 B1(empty)>Slot B1(empty): t17_locator"},
        {"empty sockets that are not listed any more", [](Machine&, Machine& b) { b.dimms.resize(2); },
         "removed 17 B1(empty)>- | removed 17 B2(empty)>- | changed 16 >: t16_num"},
        {"a module moved, and its old socket not listed any more",
         [](Machine&, Machine& b) {
             b.dimms[2].serial = b.dimms[0].serial;
             b.dimms.erase(b.dimms.begin());
         },
         "moved 17 A1>B1 | changed 16 >: t16_num"},
        {"one socket renamed, with its module", [](Machine&, Machine& b) { b.dimms[0].locator = "C1"; },
         "moved 17 A1>C1"},
        {"a processor pulled with its cache", [](Machine&, Machine& b) { b.processors[1].version.clear(); },
         "removed 4 CPU1>CPU1(empty) | removed 7 L1 Level 1 Out of range>-"},
        {"a processor for another, without a serial number",
         [](Machine&, Machine& b) { b.processors[1].version = "Norn N7"; }, "replaced 4 CPU1>CPU1: t4_ver"},
        {"a slot taken", [](Machine&, Machine& b) { b.slots[1].used = true; },
         "added 9 PCIE2 0x0000(empty)>PCIE2 0x0000"},
        {"another machine of the model", [](Machine&, Machine& b) { b.serial = "HI-0042-8801"; },
         "replaced 1 >: t1_serial"},
    };
    for (const auto& [what, edit, expected] : cases) {
        Machine a;
        Machine b;
        edit(a, b);
        EXPECT_EQ(toldOf(a, b), expected) << what;
        b.firstHandle = 0x0300;
        b.backwards = !b.backwards;
        EXPECT_EQ(parts(toldOf(a, b)), parts(expected)) << what << ", and handles and order too";
    }
}

TEST(Changes, IdentityIsIgnoredWhenTwoMachinesOfOneModelAreCompared)
{
    Machine a;
    Machine b;
    b.serial = "HI-0042-8801";
    b.uuid = "3F0C1A770000";
    b.dimms[0] = {"A1", "5E0082D1"}; // the number that A2 has in the other machine
    b.dimms[1] = {"A2", "5E00AB04", "TM32R4", 32768};
    EXPECT_EQ(toldOf(a, b, {.ignoreIdentity = true}), "replaced 17 A2>A2: t17_sz t17_part_num");
}

TEST(Changes, AllComparesWhatOnlyFollowsFromOthersToo)
{
    Machine a;
    Machine b;
    b.mappedEnd = 0x02FFFFFF;
    b.bootState = 4;
    EXPECT_EQ(toldOf(a, b, {.all = true}), "changed 3 >: t3_boot_state | changed 19 >: t19_end");
    b = {};
    b.firstHandle = 0x0011;
    EXPECT_NE(toldOf(a, b, {.all = true}), "") << "handles as they are written";
}

/// The changes as they would be told from the other side.
std::vector<std::string> mirrorable(const std::vector<Change>& changes, bool mirrored)
{
    std::vector<std::string> all;
    for (const auto& change : changes) {
        auto what = change.what;
        auto a = &change.a;
        auto b = &change.b;
        if (mirrored) {
            std::swap(a, b);
            if (what == What::Added || what == What::Removed)
                what = what == What::Added ? What::Removed : What::Added;
        }
        std::string text = kWhats[static_cast<int>(what)];
        for (const auto* side : {a, b})
            text += " " + std::string(side->device != nullptr ? side->device->uid : "-");
        std::vector<std::string_view> names;
        for (const auto& difference : change.differences)
            names.push_back(difference.name);
        std::ranges::sort(names);
        for (const auto name : names)
            text.append(" ").append(name);
        all.push_back(std::move(text));
    }
    std::ranges::sort(all);
    return all;
}

/// Tables of tests' machines, some bytes of each replaced.
std::vector<std::string> mutatedDocuments(unsigned count)
{
    std::vector<tests::Bytes> tables{Machine().table()};
    for (const char* name : {"sample", "sample_dell", "sample_lenovo"})
        tables.push_back(tests::readBytes(MACHINES_FOLDER "/" + std::string(name) + ".dmi"));
    std::mt19937 random(20);
    std::vector<std::string> documents;
    for (unsigned i = 0; i < count; ++i) {
        auto table = tables[i % tables.size()];
        for (auto edits = random() % 12; edits-- > 0;)
            table[0x20 + random() % (table.size() - 0x20)] =
                static_cast<unsigned char>(random() % 4 == 0 ? random() : random() % 8);
        documents.push_back(tests::documentText(table));
    }
    return documents;
}

bool hasUniqueUids(const Document& document)
{
    std::set<std::string_view> uids;
    return std::ranges::all_of(document.devices(), [&](const auto& device) { return uids.insert(device.uid).second; });
}

TEST(Changes, HoldForWhateverTablesSay)
{
    const auto documents = mutatedDocuments(120);
    std::optional<Document> before;
    unsigned shuffled = 0;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        auto document = read(documents[i], "a");
        const auto again = read(documents[i], "b");
        ASSERT_EQ(told(compare::changes(document, again)), "") << "to itself, " << documents[i];
        ASSERT_EQ(told(compare::changes(document, again, {.all = true})), "") << "to itself, " << documents[i];
        if (hasUniqueUids(document)) {
            ++shuffled;
            const auto other = read(tests::shuffledAndRenumbered(documents[i], static_cast<unsigned>(i)), "c");
            ASSERT_EQ(told(compare::changes(document, other)), "") << "in another order, " << documents[i];
        }
        if (before) {
            ASSERT_EQ(mirrorable(compare::changes(*before, document), false),
                      mirrorable(compare::changes(document, *before), true))
                << documents[i - 1] << documents[i];
        }
        before = std::move(document);
    }
    EXPECT_GT(shuffled, documents.size() / 2);
}

} // namespace
