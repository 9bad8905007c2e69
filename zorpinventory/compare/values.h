// When two values are the same.
#pragma once

#include "changes.h"

namespace zorpinventory::compare
{

/// Whether the property is compared where pairs are made and, unless everything is, where they are told.
bool isCompared(std::string_view property, const Options& options);

/// Whether two values of one property are the same. Where both have a number, it decides.
bool sameValue(const document::Property& a, const document::Property& b);

/// Appends what tells the value from others of the same property: two values that are the same append the same, as
/// long as both come from documents that tell numbers, or `numbers` is false.
void appendKey(std::string& key, const document::Property& property, bool numbers);

} // namespace zorpinventory::compare
