// Formatting: decimal numbers, printf texts, temperatures and dates.
#include "decimal.h"
#include "lum.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace embedded_host::services
{

std::string decimal(double number, int decimals, Zeros trailing)
{
    // Whole numbers, nearly all that there are, need no floating point.
    constexpr double kExact = 0x1p53;
    if (trailing == Zeros::Drop && std::fabs(number) < kExact && std::trunc(number) == number && !std::signbit(number))
        return std::to_string(static_cast<std::int64_t>(number));

    // The largest double has 309 digits before the point.
    std::array<char, 400> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): to_chars fills it
    const auto end =
        std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, std::min(decimals, 80)).ptr;
    std::string text(digits.begin(), end);
    if (trailing == Zeros::Drop && text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    return text;
}

} // namespace embedded_host::services

namespace lum
{

using embedded_host::services::decimal;
using embedded_host::services::Zeros;

String SprintfFormat(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return String(text);
}

Temperature::Temperature(float value, unsigned char decimals, short /*reserved*/, TEMPERATURE_TYPE /*type*/)
    : value_(value), decimals_(decimals)
{
}

String Temperature::toString(unsigned char maxDecimals, TEMPERATURE_UNIT /*unit*/) const
{
    return String(decimal(value_, std::min(decimals_, maxDecimals), Zeros::Keep) + " °C");
}

DateTime::DateTime(unsigned short year, unsigned char month, unsigned char day, unsigned char /*hour*/,
                   unsigned char /*minute*/, unsigned char /*second*/, unsigned int /*fraction*/, char /*zoneSign*/,
                   unsigned short /*zoneOffset*/)
    : year_(year), month_(month), day_(day)
{
}

String DateTime::dateStampString() const
{
    return SprintfFormat("%04u-%02u-%02u", unsigned{year_}, unsigned{month_}, unsigned{day_});
}

} // namespace lum
