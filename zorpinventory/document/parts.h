// A document taken apart, so that what two of them have in common need not be kept twice.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorpinventory::document
{

/// A document without the blanks between its words and without the name of its source. Put together it is `before`, the
/// devices with commas between them, and `after`.
struct Parts
{
    std::string before;
    std::vector<std::string> devices;
    std::string after;
};

/// Takes a document apart. Its text is one that `read` has read.
Parts partsOf(std::string_view text);

} // namespace zorpinventory::document
