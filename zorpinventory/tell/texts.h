// How values are shown to a person.
#pragma once

#include "document/document.h"
#include "knowledge/kinds.h"

#include <cstdint>
#include <string>

namespace zorpinventory::tell
{

/// Where the text is read.
struct Looks
{
    std::size_t columns = 80;
    bool colours = false;
};

/// The property's label in a language: "Serial number".
std::string label(std::string_view property, const std::string& language);

/// Whether modules declare a property of this name.
bool isDeclared(std::string_view property);

/// The kind's name in the user's language.
std::string kindName(const knowledge::Kind& kind);

/// The name of a device, which the document has in English, in the user's language.
std::string deviceName(std::string_view name);

/// A size in the largest unit that leaves it at 1 or more: "1.5 TB", by steps of 1024.
std::string sizeText(std::uint64_t bytes);

/// A firmware's text as a terminal may show it.
std::string printable(std::string_view text);

/// The text on lines of at most so many columns, each but the first behind so many blanks. Scripts without blanks go on
/// anywhere; a word that is longer than a line stays whole.
std::string wrapped(std::string_view text, std::size_t columns, std::size_t indent);

/// The text, filled up with blanks to so many columns.
std::string padded(std::string text, std::size_t columns);

} // namespace zorpinventory::tell
