// What a number is exactly, and how it is written.
#include "numbers.h"

#include "services/decimal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace embedded_host::inventory
{

namespace
{

/// A number as its decimal digits, times 10 to the power of `tens`, times 2 to the power of `twos`.
struct Exact
{
    bool negative;
    std::uint64_t digits;
    int tens;
    int twos;
};

/// The decimal number of fewest digits that reads back as the same float or double.
template <std::floating_point Given>
Exact fewestDigits(Given number)
{
    std::array<char, 32> text{}; // "3.2769e+03"
    const char* const end =
        std::to_chars(text.begin(), text.end(), std::fabs(number), std::chars_format::scientific).ptr;
    const char* const mark = std::find<const char*>(text.begin(), end, 'e');
    Exact exact{std::signbit(number), 0, 0, 0};
    for (const char* digit = text.begin(); digit != mark; ++digit)
        if (*digit != '.')
            exact.digits = 10 * exact.digits + static_cast<std::uint64_t>(*digit - '0');
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, end, exact.tens);
    exact.tens -= std::max(0, static_cast<int>(mark - text.begin()) - 2);
    return exact;
}

/// What was meant by a real quantity. A fraction that a float holds was given as one: 1.2 as a float is another number
/// than 1.2 as a double.
Exact exact(const lum::Number& number)
{
    const double given = number.given();
    const auto single = static_cast<float>(given);
    const bool wasFloat = std::trunc(given) != given && double{single} == given;
    Exact exact = wasFloat ? fewestDigits(single) : fewestDigits(given);
    exact.tens += number.tens();
    exact.twos = number.twos();
    return exact;
}

/// The absolute value, when no digit lies behind the point and it fits.
std::optional<std::uint64_t> whole(const Exact& exact)
{
    if (exact.tens < 0 || exact.twos < 0)
        return std::nullopt;
    std::uint64_t value = exact.digits;
    const auto multiply = [&](std::uint64_t factor, int times) {
        for (; times > 0; --times) {
            if (value > std::numeric_limits<std::uint64_t>::max() / factor)
                return false;
            value *= factor;
        }
        return true;
    };
    return multiply(10, exact.tens) && multiply(2, exact.twos) ? std::optional(value) : std::nullopt;
}

/// The nearest double.
double nearest(const Exact& exact)
{
    const std::string text = std::to_string(exact.digits) + "e" + std::to_string(exact.tens);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return std::ldexp(exact.negative ? -value : value, exact.twos);
}

} // namespace

double amount(const lum::Number& number)
{
    return number.kind() == lum::Number::Kind::Real ? nearest(exact(number)) : static_cast<double>(number.integer());
}

char* writeNumber(char* out, const lum::Number& number)
{
    char* const limit = out + services::kLongestNumber;
    if (number.kind() != lum::Number::Kind::Real)
        return std::to_chars(out, limit, number.integer()).ptr;
    const auto value = exact(number);
    const auto inFull = whole(value);
    if (!inFull)
        return services::writeNumber(out, nearest(value));
    if (value.negative && *inFull != 0)
        *out++ = '-';
    return std::to_chars(out, limit, *inFull).ptr;
}

} // namespace embedded_host::inventory
