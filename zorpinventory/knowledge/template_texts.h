// What firmware copied from a sample says of batteries, probes and the like that are not there.
#pragma once

#include <string_view>

namespace zorpinventory::knowledge
{

inline constexpr std::string_view kTemplateTexts[] = {
    "LM78A", "LM78B", "ABC", "DEF", "GHI", "Cooling Dev 1", "-Virtual Battery 0-", "CRB Battery 0",
};

} // namespace zorpinventory::knowledge
