// Telling what firmware really says of a machine from what its makers never filled in.
#pragma once

#include <string_view>

namespace embedded_host::placeholders
{

/// What a text is meant to be: that decides which words can stand in it for nothing.
enum class Kind {
    Name,   ///< a product, maker, version, family, SKU or name
    Place,  ///< a locator, bank, socket or slot: "DIMM 0" and "System Board" are good ones
    Serial, ///< a serial number, asset tag or part number
    Uuid,   ///< sixteen bytes in hexadecimal, in either byte order, with any punctuation
};

/// The text without the blanks, tabs and line breaks around it.
std::string_view trimmed(std::string_view text);

/// Whether there is nothing in the text but blanks, punctuation, control characters and what is no UTF-8.
bool isBlank(std::string_view text);

/// Whether the text, which is not blank, only says that somebody should have filled it in: "To Be Filled By O.E.M.",
/// "System Product Name", and as a serial number "0123456789". The words decide, since every maker puts them together
/// anew. Not for texts that the firmware's makers did not write, such as the standard's names of values.
bool isPlaceholder(std::string_view text, Kind kind);

/// Whether the text tells something: it is neither blank nor a placeholder.
bool isReal(std::string_view text, Kind kind);

} // namespace embedded_host::placeholders
