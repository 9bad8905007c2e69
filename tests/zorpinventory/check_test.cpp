// What the table gets wrong: a sound machine, one fault, and all that is then found.
#include "checks/checks.h"
#include "documents.h"
#include "support/expected_file.h"
#include "tell/check.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <set>

namespace
{

using namespace std::chrono_literals;
using tests::byte;
using tests::Bytes;
using tests::dword;
using tests::StructureBuilder;
using tests::word;
using zorpinventory::document::Document;
using zorpinventory::document::read;
namespace checks = zorpinventory::checks;
namespace tell = zorpinventory::tell;

constexpr std::chrono::year_month_day kToday = 2026y / 11 / 23;

/// A machine whose table has no fault, with the structures by their names.
struct Sound
{
    tests::TableBuilder table;
    StructureBuilder& bios = table.add(0, 0x0000, 0x18).text(0x04, "Zorp Firmware Works").text(0x08, "11/04/2019");
    StructureBuilder& system = table.add(1, 0x0001, 0x1B)
                                   .text(0x04, "Halvard")
                                   .text(0x05, "Kvitnes")
                                   .text(0x07, "HI-0042-7719")
                                   .bytes(0x08, {0x3F, 0x0C, 0x1A, 0x77, 0x99, 0xB2})
                                   .put(byte(0x18), 6);
    StructureBuilder& board = table.add(2, 0x0002, 0x11)
                                  .text(0x04, "Halvard")
                                  .text(0x07, "HI-MB-118204")
                                  .put(word(0x0B), 0x0003)
                                  .put(byte(0x0D), 10)
                                  .put(byte(0x0E), 1)
                                  .put(word(0x0F), 0x0004);
    StructureBuilder& chassis = table.add(3, 0x0003, 0x0D)
                                    .text(0x04, "Halvard")
                                    .text(0x07, "HI-CH-7719")
                                    .put(byte(0x05), 3)
                                    .put(dword(0x09), 0x03030303);
    StructureBuilder& processor = table.add(4, 0x0004, 0x30)
                                      .text(0x04, "CPU0")
                                      .put(byte(0x05), 3)
                                      .put(byte(0x06), 1)
                                      .put(byte(0x18), 0x41)
                                      .put(byte(0x19), 1)
                                      .put(word(0x1A), 0x0007)
                                      .put(word(0x1C), 0xFFFF)
                                      .put(word(0x1E), 0xFFFF)
                                      .put(byte(0x23), 8)
                                      .put(byte(0x24), 8)
                                      .put(byte(0x25), 16);
    StructureBuilder& controller =
        table.add(5, 0x0005, 0x12).put(dword(0x04), 0x03030203).put(byte(0x0E), 1).put(word(0x0F), 0x0006);
    StructureBuilder& module = table.add(6, 0x0006, 0x0C).text(0x04, "A1");
    StructureBuilder& cache =
        table.add(7, 0x0007, 0x13).text(0x04, "L1").put(word(0x05), 0x0180).bytes(0x10, {3, 3, 3});
    StructureBuilder& strings = table.add(11, 0x000B, 0x05).put(byte(0x04), 1).string("Büro");
    StructureBuilder& group =
        table.add(14, 0x000E, 0x08).text(0x04, "Firmware").put(byte(0x05), 43).put(word(0x06), 0x002B);
    StructureBuilder& array = table.add(16, 0x0010, 0x17)
                                  .bytes(0x04, {3, 3, 3})
                                  .put(dword(0x07), 0x02000000)
                                  .put(word(0x0B), 0xFFFE)
                                  .put(word(0x0D), 3);
    StructureBuilder& first = addModule(0x0011, "A1", "5E0071C4");
    StructureBuilder& second = addModule(0x0012, "A2", "5E0082D1");
    StructureBuilder& empty = table.add(17, 0x0013, 0x28)
                                  .text(0x10, "A3")
                                  .put(word(0x04), 0x0010)
                                  .put(word(0x06), 0xFFFE)
                                  .put(byte(0x0E), 9)
                                  .put(byte(0x12), 2);
    StructureBuilder& range = table.add(19, 0x0014, 0x0F).put(word(0x0C), 0x0010);
    StructureBuilder& part = table.add(20, 0x0015, 0x13).put(word(0x0C), 0x0011).put(word(0x0E), 0x0014);
    StructureBuilder& battery = table.add(22, 0x0016, 0x1A).text(0x08, "Cell 4").put(byte(0x09), 6);
    StructureBuilder& voltage =
        table.add(26, 0x001A, 0x16).text(0x04, "Vcore").put(byte(0x05), 0x67).put(word(0x14), 1200);
    StructureBuilder& fan =
        table.add(27, 0x001B, 0x0F).put(word(0x04), 0x001C).put(byte(0x06), 0x63).put(word(0x0C), 1200);
    StructureBuilder& heat = table.add(28, 0x001C, 0x16).text(0x04, "CPU").put(byte(0x05), 0x63).put(word(0x14), 400);
    StructureBuilder& manager = table.add(34, 0x0022, 0x0B).put(byte(0x05), 3).put(byte(0x0A), 3);
    StructureBuilder& component =
        table.add(35, 0x0023, 0x0B).put(word(0x05), 0x0022).put(word(0x07), 0x001A).put(word(0x09), 0xFFFF);
    StructureBuilder& supply = table.add(39, 0x0027, 0x16)
                                   .text(0x06, "SP-1600")
                                   .put(word(0x0C), 1600)
                                   .put(word(0x0E), 0x11A2)
                                   .put(word(0x10), 0x001A)
                                   .put(word(0x12), 0x001B)
                                   .put(word(0x14), 0xFFFF);
    StructureBuilder& trusted = table.add(43, 0x002B, 0x1F); // of which no device is made
    StructureBuilder endOfTable{127, 0xFEFF, 4};
    bool hasCount = false;             ///< in an entry point of version 2
    std::function<void(Bytes&)> spoil; ///< what is done to the image at last
    std::string faults;                ///< that the reader of the table met elsewhere, as documents have them

    StructureBuilder& addModule(std::uint16_t handle, const char* locator, const char* serial)
    {
        return table.add(17, handle, 0x28)
            .text(0x10, locator)
            .text(0x17, "Tindrel")
            .text(0x18, serial)
            .put(word(0x04), 0x0010)
            .put(word(0x06), 0xFFFE)
            .put(word(0x0C), 16384)
            .put(byte(0x0E), 9)
            .put(byte(0x12), 0x1A)
            .put(word(0x15), 3200)
            .put(word(0x20), 3200);
    }

    std::string document() const
    {
        auto all = table;
        all.add(endOfTable);
        auto image = hasCount ? all.dump32(3, 0) : all.dump64(3, 0, 0);
        if (spoil)
            spoil(image);
        auto text = tests::detailedText(image);
        constexpr std::string_view kFaults = "\"faults\":[";
        return text.insert(text.find(kFaults) + kFaults.size(), faults);
    }
};

/// Level, rule, structure, property and text of each finding.
std::string told(const std::vector<checks::Finding>& findings)
{
    std::string text;
    for (const auto& finding : findings) {
        text += (text.empty() ? "" : " | ") + std::string(tell::nameOf(finding.level)) + " " + finding.rule->name;
        text += finding.type ? " " + std::to_string(*finding.type) : " -";
        text += finding.handle ? " " + zorpinventory::document::handleText(*finding.handle) : " -";
        text += " " + std::string(finding.property.empty() ? "-" : finding.property) + ": " + tell::sentence(finding);
    }
    return text;
}

Document documentOf(const Sound& machine) { return read(machine.document(), "a test's document"); }

struct Case
{
    const char* what;
    void (*edit)(Sound& machine);
    const char* expected;
};

constexpr Case kCases[] = {
    {"nothing", [](Sound&) {}, ""},
    {"nothing, with an entry point that counts", [](Sound& m) { m.hasCount = true; }, ""},
    {"a table that is cut in a header",
     [](Sound& m) { m.spoil = [](Bytes& image) { image.resize(image.size() - 4); }; },
     "error header-cut - - -: The table ends at offset 0x2F2, inside the header of a structure; the structure is "
     "lost."},
    {"a structure whose length is less than its header's", [](Sound& m) { m.endOfTable.put(byte(0x01), 3); },
     "error length-below-header - 0xFEFF -: The structure at offset 0x2F2 claims to be shorter than its header; what "
     "follows cannot be read."},
    {"a structure that runs past the end", [](Sound& m) { m.endOfTable.put(byte(0x01), 7); },
     "error area-past-end - 0xFEFF -: The structure at offset 0x2F2 runs past the end of the table; it is lost."},
    {"strings without an end",
     [](Sound& m) {
         m.endOfTable.string("cut");
         m.spoil = [](Bytes& image) { image.resize(image.size() - 2); };
     },
     "error strings-past-end 127 0xFEFF -: The strings of the structure at offset 0x2F2 run past the end of the table; "
     "they are cut."},
    {"a memory controller for modules of 2^40 MB", [](Sound& m) { m.controller.put(byte(0x08), 40); },
     "error size-unrealistic 5 0x0005 -: It claims a memory size that no memory has."},
    {"an entry point that counts one more",
     [](Sound& m) {
         m.hasCount = true;
         m.spoil = [](Bytes& image) {
             ++image[0x1C];
             tests::mendEntryPoint(image);
         };
     },
     "error count-differs - - -: The table ends at offset 0x2F8, before all structures that its entry point "
     "announces."},
    {"an entry point that is not believed, before one that is",
     [](Sound& m) { m.faults = R"({"offset":0,"handle":null,"fault":"entry-point","text":"a checksum is wrong"})"; },
     "warning entry-point - - -: An entry point or a source of the table was passed over: a checksum is wrong"},
    {"a file that is shorter than its entry point says",
     [](Sound& m) { m.faults = R"({"offset":0,"handle":null,"fault":"length-differs","text":"760 of 1016"})"; },
     "warning length-differs - - -: There are fewer bytes than announced: 760 of 1016"},
    {"no end marker", [](Sound& m) { m.endOfTable.put(byte(0x00), 126); },
     "warning end-missing - - -: The table has no end marker; it ends with its last byte, and nobody knows whether it "
     "is whole."},
    {"a string that is missing where people look", [](Sound& m) { m.processor.put(byte(0x20), 9); },
     "warning string-missing 4 0x0004 -: It asks for strings that it does not have; these texts are missing."},
    {"a string that is missing elsewhere", [](Sound& m) { m.supply.put(byte(0x07), 9); },
     "note string-missing 39 0x0027 -: It asks for strings that it does not have; these texts are missing."},
    {"two structures with one handle", [](Sound& m) { m.battery.put(word(0x02), 0x0027); },
     "error handle-twice 22 0x0027 smbios2_hdr_handle: 1 more with this handle: type 39 (Power Supply). What names one "
     "of them may mean the other."},
    {"a structure without a device that has another's handle", [](Sound& m) { m.table.add(43, 0x0016, 0x1F); },
     "error handle-twice 22 0x0016 smbios2_hdr_handle: 1 more with this handle: type 43. What names one of them may "
     "mean the other."},
    {"inactive structures with one handle", [](Sound& m) { m.table.add(126, 0x0016, 4); }, ""},
    {"a battery shorter than any", [](Sound& m) { m.battery.cut(0x0F); },
     "error structure-too-short 22 0x0016 smbios2_hdr_len: It has 15 bytes; in no version of the standard has it had "
     "fewer than 16."},
    {"a structure without a device that is too short", [](Sound& m) { m.trusted.cut(0x10); },
     "error structure-too-short 43 0x002B -: It has 16 bytes; in no version of the standard has it had fewer than 31."},
    {"a cache link to a port",
     [](Sound& m) {
         m.table.add(8, 0x0008, 9).put(byte(0x08), 1);
         m.processor.put(word(0x1C), 0x0008);
     },
     "error link-of-wrong-type 4 0x0004 childBusIds: It names 0x0008, which is of type 8 (Port), where only type 7 "
     "(Cache) makes sense."},
    {"a cooling device whose probe is a voltage probe", [](Sound& m) { m.fan.put(word(0x04), 0x001A); },
     "note link-of-wrong-type 27 0x001B t27_probe_handle: It names 0x001A, which is of type 26 (Voltage Probe), where "
     "only type 28 (Temperature Probe) makes sense."},
    {"error handles that were never filled in",
     [](Sound& m) {
         m.first.put(word(0x06), 0);
         m.second.put(word(0x06), 0);
         m.array.put(word(0x0B), 0);
     },
     "note link-of-wrong-type 16 0x0010 t16_error_handle: It names 0x0000, which is of type 0 (BIOS), where only type "
     "18 (32-bit Memory Error), type 33 (64-bit Memory Error) makes sense. | note link-of-wrong-type 17 0x0011 "
     "t17_err_info_handle: It names 0x0000, which is of type 0 (BIOS), where only type 18 (32-bit Memory Error), type "
     "33 (64-bit Memory Error) makes sense."},
    {"a member of a board that is not there", [](Sound& m) { m.board.put(word(0x0F), 0x00EE); },
     "warning link-dangling 2 0x0002 t2_members: It names 0x00EE, and no structure has this handle."},
    {"an array that is not there",
     [](Sound& m) {
         m.empty.put(word(0x04), 0x00EE);
         m.array.put(word(0x0D), 2);
     },
     "warning link-dangling 17 0x0013 t17_physical_handle: It names 0x00EE, and no structure has this handle."},
    {"error information that is not there", [](Sound& m) { m.empty.put(word(0x06), 0x00EE); },
     "note link-dangling 17 0x0013 t17_err_info_handle: It names 0x00EE, and no structure has this handle."},
    {"an enclosure that was never filled in", [](Sound& m) { m.board.put(word(0x0B), 0); },
     "note link-of-wrong-type 2 0x0002 smbios2_parent: It names 0x0000, which is of type 0 (BIOS), where only type 2 "
     "(Base Board), type 3 (Enclosure) makes sense."},
    {"a board in its own enclosure", [](Sound& m) { m.board.put(word(0x0F), 0x0003); },
     "error link-circle 2 0x0002 childBusIds: It is part of what it contains itself: 0x0002, 0x0003."},
    {"a board that contains itself", [](Sound& m) { m.board.put(word(0x0F), 0x0002); },
     "error link-circle 2 0x0002 childBusIds: It is part of what it contains itself: 0x0002."},
    {"two groups in each other",
     [](Sound& m) {
         m.group.put(word(0x06), 0x000F);
         m.table.add(14, 0x000F, 0x08).text(0x04, "Other").put(word(0x06), 0x000E);
     },
     "error link-circle 14 0x000E childBusIds: It is part of what it contains itself: 0x000E, 0x000F."},
    {"a component that is the management device itself", [](Sound& m) { m.component.put(word(0x07), 0x0022); }, ""},
    {"more memory than the array takes", [](Sound& m) { m.array.put(dword(0x07), 0x01000000); },
     "warning memory-over-maximum 16 0x0010 t16_max_sz: 32 GB are fitted in an array that claims to hold 16 GB at "
     "most."},
    {"a maximum that stands elsewhere",
     [](Sound& m) {
         m.array.put(dword(0x07), 0x80000000).cut(0x0F);
         m.first.put(word(0x0C), 0x7FFF).put(dword(0x1C), 0x00300000);
         m.second.put(word(0x0C), 0x7FFF).put(dword(0x1C), 0x00300000);
     },
     ""},
    {"flash memory, in KB",
     [](Sound& m) {
         m.array.put(byte(0x05), 5).put(dword(0x07), 1024);
         for (auto* device : {&m.first, &m.second})
             device->put(word(0x0C), 0x8000 + 512);
     },
     ""},
    {"more cores enabled than there are", [](Sound& m) { m.processor.put(byte(0x24), 9); },
     "warning cores-miscounted 4 0x0004 t4_core_enabled: It claims 8 cores, 9 of them enabled, and 16 threads."},
    {"fewer threads than cores", [](Sound& m) { m.processor.put(byte(0x25), 7); },
     "warning cores-miscounted 4 0x0004 t4_thread_cnt: It claims 8 cores, 8 of them enabled, and 7 threads."},
    {"cores that nobody counted", [](Sound& m) { m.processor.put(byte(0x23), 0).put(byte(0x25), 0); }, ""},
    {"255 cores or more, in a structure that cannot tell",
     [](Sound& m) { m.processor.put(byte(0x23), 8).put(byte(0x24), 0xFF).cut(0x28); }, ""},
    {"a form factor that the standard does not have", [](Sound& m) { m.first.put(byte(0x0E), 0x77); },
     "warning code-out-of-range 17 0x0011 t17_form_factor: It has the code 119, to which the standard gives no "
     "meaning."},
    {"a probe's status that the standard does not have", [](Sound& m) { m.heat.put(byte(0x05), 0x03); },
     "note code-out-of-range 28 0x001C t28_loc_and_status_msk3_srt5: It has the code 0, to which the standard gives no "
     "meaning."},
    {"a code in a table of a later standard",
     [](Sound& m) {
         m.first.put(byte(0x0E), 0x77);
         m.spoil = [](Bytes& image) {
             image[0x08] = 10;
             tests::mendEntryPoint(image);
         };
     },
     "note code-out-of-range 17 0x0011 t17_form_factor: It has the code 119, to which the standard gives no meaning."},
    {"a date in words", [](Sound& m) { m.bios.text(0x08, "November 2019"); },
     "warning date-unreadable 0 0x0000 t0_date: \"November 2019\" is no date of the form mm/dd/yyyy."},
    {"a 31st of February", [](Sound& m) { m.bios.text(0x08, "02/31/2019"); },
     "warning date-unreadable 0 0x0000 t0_date: \"02/31/2019\" is no date of the form mm/dd/yyyy."},
    {"a day first", [](Sound& m) { m.bios.text(0x08, "31/01/2019"); },
     "warning date-unreadable 0 0x0000 t0_date: \"31/01/2019\" is no date of the form mm/dd/yyyy."},
    {"a short date of this century", [](Sound& m) { m.bios.text(0x08, "11/04/19"); }, ""},
    {"today", [](Sound& m) { m.bios.text(0x08, "11/23/2026"); }, ""},
    {"tomorrow", [](Sound& m) { m.bios.text(0x08, "11/24/2026"); },
     "warning date-in-future 0 0x0000 t0_date: 11/24/2026 (mm/dd/yyyy) has not come yet."},
    {"a date before the first table", [](Sound& m) { m.bios.text(0x08, "12/31/94"); },
     "note date-unlikely 0 0x0000 t0_date: 12/31/94 (mm/dd/yyyy) lies before 1995, when there were no such tables."},
    {"a UUID that was never filled in", [](Sound& m) { m.system.bytes(0x08, Bytes(16, 0xFF)); },
     "warning uuid-placeholder 1 0x0001 t1_uuid: The UUID was never filled in; it tells no machine from another."},
    {"a structure without a UUID", [](Sound& m) { m.system.cut(0x08); }, ""},
    {"two modules with one serial number", [](Sound& m) { m.second.text(0x18, "5E0071C4"); },
     "warning serial-repeated 17 0x0011 t17_serial: 2 parts of this kind carry the serial number 5E0071C4."},
    {"two modules with a placeholder for a serial number",
     [](Sound& m) {
         for (auto* device : {&m.first, &m.second})
             device->text(0x18, "SerNum0");
     },
     ""},
    {"control characters, in lists too",
     [](Sound& m) {
         m.strings.put(byte(0x04), 2).string("\x1B[2J");
         m.chassis.text(0x04, "Halvard\xC2\x85");
     },
     "warning control-characters 3 0x0003 t3_manufacturer: There are control characters in it. | warning "
     "control-characters 11 0x000B t11_oemstrings: There are control characters in it."},
    {"bytes that are no UTF-8", [](Sound& m) { m.first.text(0x10, "A1\xFF"); },
     "warning not-utf-8 17 0x0011 t17_locator: There are bytes in it that are no UTF-8."},
    {"texts that were never filled in",
     [](Sound& m) {
         m.system.text(0x05, "System Product Name").text(0x06, "Default string");
         m.chassis.text(0x06, "Default string").text(0x08, "Default string");
     },
     "note placeholder 1 0x0001 t1_product: Never filled in: System Product Name, Default string. | note placeholder 3 "
     "0x0003 t3_version: Never filled in: Default string."},
    {"a probe of a sample", [](Sound& m) { m.voltage.text(0x04, "LM78A").put(word(0x14), 0x8000); },
     "note template-device 26 0x001A -: No text and no measured value in it is of a real device."},
    {"a battery of a sample", [](Sound& m) { m.battery.text(0x05, "-Virtual Battery 0-").text(0x08, "CRB Battery 0"); },
     "note template-device 22 0x0016 -: No text and no measured value in it is of a real device."},
    {"one socket more than the array has", [](Sound& m) { m.array.put(word(0x0D), 4); },
     "note memory-devices-miscounted 16 0x0010 t16_num: It claims 4 memory devices; 3 name it."},
    {"modules of two sizes and types", [](Sound& m) { m.second.put(word(0x0C), 8192).put(byte(0x12), 0x22); },
     "note memory-mixed 16 0x0010 -: Its modules differ: 8 GB, 16 GB; DDR4, DDR5."},
    {"modules of two speeds", [](Sound& m) { m.second.put(word(0x15), 2666).put(word(0x20), 2666); },
     "note memory-mixed 16 0x0010 -: Its modules differ: 2666 MT/s, 3200 MT/s."},
    {"one speed, rounded in two ways",
     [](Sound& m) {
         m.first.put(word(0x15), 2666).put(word(0x20), 2667);
         m.second.put(word(0x15), 2667).put(word(0x20), 2666);
     },
     ""},
    {"a module below its speed", [](Sound& m) { m.first.put(word(0x20), 2933); },
     "note memory-below-speed 17 0x0011 t17_config_mem_clock_speed: It runs at 2933 MT/s and could do 3200."},
    {"a clock beside transfers", [](Sound& m) { m.first.put(word(0x20), 1600); }, ""},
};

TEST(Check, OneFaultAndAllThatIsThenFound)
{
    std::set<std::string> found;
    for (const auto& [what, edit, expected] : kCases) {
        Sound machine;
        edit(machine);
        const auto document = documentOf(machine);
        const auto findings = checks::findings(document, kToday);
        EXPECT_EQ(told(findings), expected) << what;
        for (const auto& finding : findings)
            found.insert(finding.rule->name);
    }
    for (const auto* rule : checks::rules())
        EXPECT_TRUE(found.contains(rule->name)) << "no case finds " << rule->name;
}

/// The rules as the manual page has them.
std::string rulesInManual()
{
    constexpr std::size_t kColumns = 78;
    std::string page;
    for (const auto* rule : checks::rules()) {
        page += ".It Cm " + std::string(rule->name) + " Pq " + tell::levelsOf(*rule) + "\n";
        std::string text = std::string(rule->means) + ". " + rule->advice + " Field: " + rule->standard + ". ";
        text[0] = static_cast<char>(std::toupper(text[0]));
        // Every sentence begins a line.
        for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
            end = text.find_first_of(".?", at);
            while (text[end + 1] != ' ')
                end = text.find_first_of(".?", end + 1);
            page += tell::wrapped(text.substr(at, end + 1 - at), kColumns, 0) + "\n";
            end += 2;
        }
    }
    return page;
}

TEST(Check, TheManualSaysOfEachRuleWhatItMeansAndWhatToDo)
{
    constexpr std::string_view kBegin = ".\\\" The rules, made from the program's list.\n";
    constexpr std::string_view kEnd = ".El\n";
    const std::filesystem::path path = MANUAL_PAGE;
    std::ifstream file(path);
    std::string page{std::istreambuf_iterator<char>(file), {}};
    const auto begin = page.find(kBegin);
    ASSERT_NE(begin, std::string::npos);
    page.replace(begin + kBegin.size(), page.find(kEnd, begin) - begin - kBegin.size(), rulesInManual());
    tests::expectFile(path, page);
}

TEST(Check, FindingsDoNotDependOnTheOrderOfTheDevices)
{
    for (const auto& [what, edit, expected] : kCases) {
        Sound machine;
        edit(machine);
        auto text = machine.document();
        const auto toldOf = [](const std::string& document) {
            std::multiset<std::string> all;
            const auto read = zorpinventory::document::read(document, "a test's document");
            for (const auto& finding : checks::findings(read, kToday))
                all.insert(std::string(finding.rule->name) + " " + tell::nameOf(finding.level));
            return all;
        };
        EXPECT_EQ(toldOf(text), toldOf(tests::shuffled(text, 7))) << what;
    }
}

/// A document of `count` devices that `one` makes.
Document documentOf(unsigned count, const std::function<std::string(unsigned)>& one)
{
    std::string text = R"({"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2"},"devices":[)";
    for (unsigned i = 0; i < count; ++i)
        text += (i == 0 ? "" : ",") + one(i);
    return read(text + "]}", "a test's document");
}

std::string device(unsigned handle, const std::string& properties, const std::string& numbers = "")
{
    return R"({"uid":"SMBIOS:)" + zorpinventory::document::handleText(handle) + R"(","name":"","properties":{)" +
           properties + R"(},"numbers":{)" + numbers + "}}";
}

TEST(Check, TakesWhateverTheReaderTakes)
{
    // Boards one in the other, the first in the last.
    constexpr unsigned kBoards = 20000;
    const auto boards = documentOf(kBoards, [](unsigned i) {
        return device(i, R"("smbios2_hdr_type":2,"t2_members":[")" +
                             zorpinventory::document::handleText((i + 1) % kBoards) + "\"]");
    });
    EXPECT_EQ(told(checks::findings(boards, kToday)),
              "error link-circle 2 0x0000 childBusIds: It is part of what it contains itself: 0x0000, 0x0001, 0x0002, "
              "0x0003, 0x0004, 0x0005, 0x0006, 0x0007, ….");
    // Everybody has the handle that everybody names: what costs the square of their number is noticed here.
    constexpr unsigned kTwins = 20000;
    const auto twins = documentOf(kTwins, [](unsigned) {
        return device(1, R"("smbios2_hdr_type":17,"t17_physical_handle":"0x0001","t17_err_info_handle":"0x0002")");
    });
    EXPECT_EQ(checks::counts(checks::findings(twins, kToday)), (checks::Counts{1, 0, kTwins}));
    // Values of every kind where others belong.
    for (const std::string value : {"\"\"", "\"0x\"", "\"0x12345\"", "-1", "1e300", "true", "[]", "[\"0x0001\"]",
                                    R"({"value":-1e300,"unit":"","text":"-"})"}) {
        for (const int type : {0, 1, 2, 3, 4, 5, 7, 14, 16, 17, 19, 20, 22, 26, 27, 35, 39, 127, 255}) {
            const auto document = documentOf(3, [&](unsigned i) {
                std::string properties = "\"smbios2_hdr_type\":" + std::to_string(type);
                std::string numbers;
                const auto add = [&](std::string_view name) {
                    properties.append(",\"").append(name).append("\":").append(value);
                    numbers.append(numbers.empty() ? "\"" : ",\"").append(name).append(R"(":{"code":1e300})");
                };
                for (const auto* name :
                     {"smbios2_hdr_len", "smbios2_parent", "t0_date", "t1_uuid", "t1_serial", "t4_status_internal",
                      "t4_core_cnt", "t4_core_enabled", "t4_thread_cnt", "t16_max_sz", "t16_num", "t17_physical_handle",
                      "t17_sz", "t17_mem_type", "t17_speed", "t17_config_mem_clock_speed", "t22_capacity", "t26_max"})
                    add(name);
                return device(i % 2, properties, numbers);
            });
            for (const auto& finding : checks::findings(document, kToday))
                EXPECT_FALSE(tell::sentence(finding).empty());
        }
    }
}

} // namespace
