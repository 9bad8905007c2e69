// How the standard's value tables are written down: one sorted list of texts for each enumerated field.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

namespace embedded_host::texts
{

/// The text of one value, or of all values from `first` to `last`.
struct EnumText
{
    std::uint8_t first;
    std::uint8_t last;
    const char* text;

    constexpr EnumText(unsigned value, const char* meaning) : EnumText(value, value, meaning) {}
    constexpr EnumText(unsigned from, unsigned to, const char* meaning)
        : first(static_cast<std::uint8_t>(from)), last(static_cast<std::uint8_t>(to)), text(meaning)
    {
    }
};

/// The texts of one field of one structure type. Width 0 is the whole field; otherwise `width` bits from `shift` up.
struct FieldTexts
{
    std::uint8_t type;
    std::uint8_t offset;
    std::uint8_t width;
    std::uint8_t shift;
    std::span<const EnumText> texts;
    std::uint8_t firstCode = 0; ///< of the field's values, where a list counts them on from another field's

    constexpr std::uint32_t key() const
    {
        return std::uint32_t{type} << 24 | std::uint32_t{offset} << 16 | std::uint32_t{width} << 8 | shift;
    }
};

/// Whether values rise strictly and no range overlaps the next, as the search needs it.
constexpr bool ascending(std::span<const EnumText> texts)
{
    return std::ranges::all_of(texts, [](const EnumText& t) { return t.first <= t.last; }) &&
           std::ranges::adjacent_find(texts, [](const EnumText& a, const EnumText& b) { return a.last >= b.first; }) ==
               texts.end();
}

/// The texts of a field; null when there is no table for it.
const FieldTexts* findField(unsigned type, unsigned offset, unsigned width, unsigned shift);

/// The text of a value; null when the table has none.
const char* findText(const FieldTexts& field, unsigned value);

} // namespace embedded_host::texts
