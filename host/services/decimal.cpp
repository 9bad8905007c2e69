// Numbers in decimal.
#include "decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace embedded_host::services
{

namespace
{

/// Writes a number that is not negative without floating point, where it is certain that this rounds the same: it is
/// not near the middle of two numbers that can be written. Returns null where it is not certain.
char* writeExactly(char* out, double number, int decimals)
{
    constexpr std::array<std::uint64_t, 10> kPowers = {1,       10,        100,        1'000,       10'000,
                                                       100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};
    constexpr double kMost = 0x1p40; // the product below is then right to 2^-13
    if (decimals < 0 || static_cast<std::size_t>(decimals) >= kPowers.size())
        return nullptr;
    const auto power = kPowers[static_cast<std::size_t>(decimals)];
    const double product = number * static_cast<double>(power);
    if (!(product < kMost))
        return nullptr;
    const double whole = std::floor(product);
    const double rest = product - whole;
    if (std::fabs(rest - 0.5) < 0x1p-10)
        return nullptr;
    const auto rounded = static_cast<std::uint64_t>(whole) + (rest > 0.5 ? 1 : 0);
    out = std::to_chars(out, out + kLongestDecimal, rounded / power).ptr;
    if (decimals == 0)
        return out;
    *out = '.';
    auto digits = rounded % power;
    for (int place = decimals; place > 0; --place, digits /= 10)
        out[place] = static_cast<char>('0' + digits % 10);
    return out + 1 + decimals;
}

} // namespace

char* writeDecimal(char* out, double number, int decimals, Zeros trailing)
{
    decimals = std::min(decimals, 80);
    char* end = std::signbit(number) ? nullptr : writeExactly(out, number, decimals);
    if (end == nullptr)
        end = std::to_chars(out, out + kLongestDecimal, number, std::chars_format::fixed, decimals).ptr;
    if (trailing == Zeros::Drop && std::find(out, end, '.') != end) {
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.')
            --end;
    }
    return end;
}

char* writeNumber(char* out, double number)
{
    char* const limit = out + kLongestNumber;
    const double size = std::fabs(number);
    if (size == 0 || (size >= 1e-6 && size < 1e21))
        return std::to_chars(out, limit, size == 0 ? 0 : number, std::chars_format::fixed).ptr;
    char* const end = std::to_chars(out, limit, number, std::chars_format::scientific).ptr;
    // ECMAScript fills no exponent up with zeros.
    char* const exponent = std::find(out, end, 'e') + 2;
    return *exponent == '0' ? std::copy(exponent + 1, end, exponent) : end;
}

} // namespace embedded_host::services
