// Findings and rules, as text and as JSON.
#pragma once

#include "checks/checks.h"
#include "tell/texts.h"
#include "writing/output.h"

namespace zorpinventory::tell
{

/// "warning": the same in every language.
const char* nameOf(checks::Level level);

/// A rule's levels, the most serious first: "warning, note".
std::string levelsOf(const checks::Rule& rule);

/// What was found, in the user's language.
std::string sentence(const checks::Finding& finding);

/// "errors: 1, warnings: 0, notes: 4"
std::string countsText(const checks::Counts& counts);

void findingsAsText(embedded_host::writing::Output& output, std::span<const checks::Finding> findings,
                    const Looks& looks);

/// `source`: empty for this machine.
void findingsAsJson(embedded_host::writing::Output& output, std::span<const checks::Finding> findings,
                    const std::string& source);

void rulesAsText(embedded_host::writing::Output& output, std::span<const checks::Rule* const> rules,
                 const Looks& looks);
void rulesAsJson(embedded_host::writing::Output& output, std::span<const checks::Rule* const> rules);

} // namespace zorpinventory::tell
