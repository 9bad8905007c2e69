// Handles and lengths of structures.
#include "families.h"

#include "knowledge/lengths.h"
#include "services/messages.h"

namespace zorpinventory::checks
{

using embedded_host::services::translatable;

namespace
{

/// Makers number what carries nothing as they like.
bool carriesNothing(const Structure& structure)
{
    constexpr unsigned kInactive = 126;
    constexpr unsigned kEndOfTable = 127;
    return structure.type == kInactive || structure.type == kEndOfTable;
}

} // namespace

const Rule kHandleTwice{
    .name = "handle-twice",
    .levels = {Level::Error},
    .means = translatable("two structures have one handle"),
    .text = translatable("%1 more with this handle: %2. What names one of them may mean the other."),
    .advice = translatable("Look for newer firmware. Until then do not trust what belongs to what here."),
    .standard = "Structure header format, Handle (02h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            std::vector<bool> isTold(0x10000); // by handle
            for (const auto& structure : inventory.structures()) {
                const auto all = inventory.withHandle(structure.handle);
                if (all.size() < 2 || carriesNothing(structure) || isTold[structure.handle])
                    continue;
                isTold[structure.handle] = true;
                std::size_t others = 0;
                Types types;
                for (const auto* other : all) {
                    if (other == &structure || carriesNothing(*other))
                        continue;
                    ++others;
                    if (std::ranges::find(types.numbers, other->type) == types.numbers.end())
                        types.numbers.push_back(other->type);
                }
                if (others != 0)
                    findings.at(structure, "smbios2_hdr_handle", {std::to_string(others), types});
            }
        },
};

const Rule kStructureTooShort{
    .name = "structure-too-short",
    .levels = {Level::Error},
    .means = translatable("a structure is shorter than its type has been in any version of the standard"),
    .text = translatable("It has %1 bytes; in no version of the standard has it had fewer than %2."),
    .advice = translatable("Look for newer firmware; what the structure is too short for is missing, or wrong."),
    .standard = "Structure header format, Length (01h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto& structure : inventory.structures()) {
                const auto shortest = knowledge::shortestLengthOf(structure.type);
                if (structure.length && *structure.length >= 0 && *structure.length < shortest)
                    findings.at(structure, "smbios2_hdr_len",
                                {std::to_string(static_cast<unsigned>(*structure.length)), std::to_string(shortest)});
            }
        },
};

} // namespace zorpinventory::checks
