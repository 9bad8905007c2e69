// Changes, as text and as JSON.
#pragma once

#include "compare/changes.h"
#include "tell/texts.h"
#include "writing/json_writer.h"

namespace zorpinventory::tell
{

/// What was compared.
struct Compared
{
    std::string source;  ///< empty for this machine
    std::string machine; ///< its key; empty when it has none
    std::string taken;   ///< when, in UTC; empty when nobody knows
};

void diffAsJson(embedded_host::writing::Output& output, const Compared& a, const Compared& b,
                const std::vector<compare::Change>& changes);

/// `everything`: gather nothing.
void diffAsText(embedded_host::writing::Output& output, const std::vector<compare::Change>& changes, const Looks& looks,
                bool everything);

/// The changes as diffAsJson has them: one array.
void writeChanges(embedded_host::writing::JsonWriter& json, const std::vector<compare::Change>& changes);

/// What changed, in so many columns: "− Memory Device A2, ~ BIOS, and 3 more".
std::string changesInShort(const std::vector<compare::Change>& changes, std::size_t columns);

} // namespace zorpinventory::tell
