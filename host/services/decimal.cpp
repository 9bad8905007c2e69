// Numbers in decimal.
#include "decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace embedded_host::services
{

char* writeDecimal(char* out, double number, int decimals, Zeros trailing)
{
    char* const limit = out + kLongestDecimal;
    // Whole numbers, nearly all that there are, need no floating point.
    constexpr double kExact = 0x1p53;
    if (trailing == Zeros::Drop && std::fabs(number) < kExact && std::trunc(number) == number && !std::signbit(number))
        return std::to_chars(out, limit, static_cast<std::int64_t>(number)).ptr;

    char* end = std::to_chars(out, limit, number, std::chars_format::fixed, std::min(decimals, 80)).ptr;
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
