// A language's texts, as gettext's tools compile them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace embedded_host::texts
{

/// A message catalogue in gettext's binary form (MO, little-endian), compiled into the program. It comes from our own
/// build, so it is believed.
class Catalogue
{
public:
    constexpr Catalogue(std::string_view language, std::span<const unsigned char> bytes)
        : language_(language), bytes_(bytes)
    {
    }

    std::string_view language() const { return language_; }

    /// The text of a key; empty when the catalogue has none.
    std::string_view find(std::string_view key) const;

private:
    std::uint32_t number(std::size_t offset) const;
    std::string_view text(std::size_t table, std::size_t index) const;

    std::string_view language_;
    std::span<const unsigned char> bytes_;
};

/// All catalogues of the program, English first.
std::span<const Catalogue> catalogues();

} // namespace embedded_host::texts
