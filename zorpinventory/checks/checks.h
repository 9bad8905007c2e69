// What the firmware's table gets wrong.
#pragma once

#include "rule.h"

#include <array>

namespace zorpinventory::checks
{

/// All rules, in the order in which their findings are told.
std::span<const Rule* const> rules();

/// Rules by their names that are not asked.
using Ignored = std::span<const std::string>;

/// All that the rules find: most serious first, then in the order of the rules, then in the document's order.
/// `today`: the day after which a date lies in the future.
std::vector<Finding> findings(const document::Document& document, std::chrono::year_month_day today,
                              Ignored ignored = {});

/// How many findings there are of each level, in the order of the levels.
using Counts = std::array<std::size_t, std::size(kLevels)>;
Counts counts(std::span<const Finding> findings);

} // namespace zorpinventory::checks
