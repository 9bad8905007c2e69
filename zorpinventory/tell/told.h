// The texts of a property one by one, each with what it was made from.
#pragma once

#include "document/document.h"

#include <functional>

namespace zorpinventory::tell
{

struct Told
{
    std::string_view text;   ///< with the blanks around it
    std::string_view number; ///< the digits of an amount; empty for none
    std::string_view unit;   ///< of the amount
    std::string_view code;   ///< the digits of an enumeration's code; empty for none
};

/// Calls `use` for the text that a property has, or for each element of its list.
void forEachText(const document::Property& property, const std::function<void(const Told& told)>& use);

} // namespace zorpinventory::tell
