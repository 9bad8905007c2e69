// Characters as anonymising sees them: ASCII alone has letters and digits.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace zorpinventory::anonymize
{

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isLetterOrDigit(char c) { return isDigit(c) || isSmall(c) || isCapital(c); }

constexpr char toSmall(char c) { return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c; }
constexpr char toCapital(char c) { return isSmall(c) ? static_cast<char>(c - 'a' + 'A') : c; }

inline std::string inSmallLetters(std::string_view text)
{
    std::string small(text);
    std::ranges::transform(small, small.begin(), toSmall);
    return small;
}

inline std::size_t lettersAndDigits(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count_if(text, isLetterOrDigit));
}

/// Shorter secrets stand elsewhere by chance.
constexpr std::size_t kShortestSought = 4;

} // namespace zorpinventory::anonymize
