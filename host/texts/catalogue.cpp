// Searching a compiled catalogue: its keys are sorted.
#include "catalogue.h"

namespace embedded_host::texts
{

namespace
{

// The places of the numbers in a catalogue's header.
constexpr std::size_t kCount = 8;
constexpr std::size_t kKeys = 12;
constexpr std::size_t kTexts = 16;

} // namespace

std::uint32_t Catalogue::number(std::size_t offset) const
{
    const auto* byte = bytes_.data() + offset;
    return byte[0] | std::uint32_t{byte[1]} << 8 | std::uint32_t{byte[2]} << 16 | std::uint32_t{byte[3]} << 24;
}

/// Each entry of a table is a length and an offset.
std::string_view Catalogue::text(std::size_t table, std::size_t index) const
{
    const std::size_t entry = number(table) + 8 * index;
    const auto place = bytes_.subspan(number(entry + 4), number(entry));
    return {reinterpret_cast<const char*>(place.data()), place.size()};
}

std::string_view Catalogue::find(std::string_view key) const
{
    std::size_t low = 1; // behind the empty key, which is the catalogue's own description
    std::size_t high = number(kCount);
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        const int order = text(kKeys, middle).compare(key);
        if (order == 0)
            return text(kTexts, middle);
        if (order < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return {};
}

} // namespace embedded_host::texts
