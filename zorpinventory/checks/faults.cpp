// What the reader of the table met: a rule for each fault that documents name, under its name.
#include "families.h"

#include "services/messages.h"

#include <array>
#include <charconv>

namespace zorpinventory::checks
{

using document::Fault;
using embedded_host::services::translatable;

namespace
{

constexpr unsigned kWherePeopleLook[] = {0, 1, 2, 4, 17};

/// An offset as people see it beside a dump of the bytes: "0x1A2".
std::string offsetOf(const Fault& fault)
{
    std::uint64_t offset = 0;
    const auto digits = fault.offset.digits;
    std::from_chars(digits.data(), digits.data() + digits.size(), offset);
    std::array<char, 16> text{};
    constexpr int kHexadecimal = 16;
    const auto* end = std::to_chars(text.begin(), text.end(), offset, kHexadecimal).ptr;
    std::string upper = "0x";
    for (const char* digit = text.begin(); digit != end; ++digit)
        upper += *digit >= 'a' ? static_cast<char>(*digit - 'a' + 'A') : *digit;
    return upper;
}

/// A structure that was dropped has no device; one of the same handle would be another.
void aboutTable(const Inventory& inventory, Findings& findings)
{
    for (const auto& fault : inventory.document().faults())
        if (fault.name == findings.rule().name)
            findings.aboutTable(fault.handle, {offsetOf(fault), std::string(fault.text)});
}

void atStructure(const Inventory& inventory, Findings& findings)
{
    for (const auto& fault : inventory.document().faults()) {
        if (fault.name != findings.rule().name)
            continue;
        const auto structures =
            fault.handle ? inventory.withHandle(*fault.handle) : std::span<const Structure* const>();
        if (structures.empty())
            findings.aboutTable(fault.handle, {offsetOf(fault)});
        else
            findings.at(*structures.front(), {}, {offsetOf(fault)});
    }
}

constexpr const char* kNewerFirmware =
    translatable("Look for newer firmware. If the table was saved to a file, save it again: the file may be cut.");

} // namespace

const Rule kHeaderCut{
    .name = "header-cut",
    .levels = {Level::Error},
    .means = translatable("the table ends inside a structure's header"),
    .text = translatable("The table ends at offset %1, inside the header of a structure; the structure is lost."),
    .advice = kNewerFirmware,
    .standard = "Structure header format",
    .look = aboutTable,
};

const Rule kLengthBelowHeader{
    .name = "length-below-header",
    .levels = {Level::Error},
    .means = translatable("a structure is shorter than its own header"),
    .text =
        translatable("The structure at offset %1 claims to be shorter than its header; what follows cannot be read."),
    .advice = kNewerFirmware,
    .standard = "Structure header format, Length (01h)",
    .look = aboutTable,
};

const Rule kAreaPastEnd{
    .name = "area-past-end",
    .levels = {Level::Error},
    .means = translatable("a structure runs past the end of the table"),
    .text = translatable("The structure at offset %1 runs past the end of the table; it is lost."),
    .advice = kNewerFirmware,
    .standard = "Structure header format, Length (01h)",
    .look = aboutTable,
};

const Rule kStringsPastEnd{
    .name = "strings-past-end",
    .levels = {Level::Error},
    .means = translatable("the strings of a structure run past the end of the table"),
    .text = translatable("The strings of the structure at offset %1 run past the end of the table; they are cut."),
    .advice = kNewerFirmware,
    .standard = "Text strings",
    .look = atStructure,
};

const Rule kSizeUnrealistic{
    .name = "size-unrealistic",
    .levels = {Level::Error},
    .means = translatable("a memory size that no memory has"),
    .text = translatable("It claims a memory size that no memory has."),
    .advice = translatable("Go by the memory arrays and memory devices instead: these structures are obsolete."),
    .standard = "Memory Controller (type 5), Maximum Memory Module Size (08h); Memory Module (type 6), Installed Size "
                "(09h) and Enabled Size (0Ah)",
    .look = atStructure,
};

const Rule kCountDiffers{
    .name = "count-differs",
    .levels = {Level::Error},
    .means = translatable("there are fewer structures than the entry point announces"),
    .text = translatable("The table ends at offset %1, before all structures that its entry point announces."),
    .advice = kNewerFirmware,
    .standard = "SMBIOS 2.1 (32-bit) entry point, Number of SMBIOS Structures (1Ch)",
    .look = aboutTable,
};

const Rule kEntryPoint{
    .name = "entry-point",
    .levels = {Level::Warning},
    .means = translatable("an entry point is not to be believed, and was passed over"),
    .text = translatable("An entry point or a source of the table was passed over: %2"),
    .advice =
        translatable("What is told comes from another place. Where something is missing, look for newer firmware."),
    .standard = "SMBIOS 2.1 (32-bit) entry point and SMBIOS 3.0 (64-bit) entry point",
    .look = aboutTable,
};

const Rule kLengthDiffers{
    .name = "length-differs",
    .levels = {Level::Warning},
    .means = translatable("there are fewer bytes than announced"),
    .text = translatable("There are fewer bytes than announced: %2"),
    .advice = kNewerFirmware,
    .standard = "SMBIOS 2.1 (32-bit) entry point, Structure Table Length (16h)",
    .look = aboutTable,
};

const Rule kEndMissing{
    .name = "end-missing",
    .levels = {Level::Warning},
    .means = translatable("the table has no end marker"),
    .text =
        translatable("The table has no end marker; it ends with its last byte, and nobody knows whether it is whole."),
    .advice = kNewerFirmware,
    .standard = "End-of-Table (type 127)",
    .look = aboutTable,
};

const Rule kStringMissing{
    .name = "string-missing",
    .levels = {Level::Warning, kWherePeopleLook, Level::Note},
    .means = translatable("a structure asks for a string that it does not have"),
    .text = translatable("It asks for strings that it does not have; these texts are missing."),
    .advice =
        translatable("Nothing can be done but newer firmware; the other texts of the structure can be relied on."),
    .standard = "Text strings",
    .look = atStructure,
};

} // namespace zorpinventory::checks
