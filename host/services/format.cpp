// Formatting: printf texts, temperatures and dates.
#include "decimal.h"
#include "lum.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace lum
{

String SprintfFormat(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    // A text of nothing but one integer's digits shows that number.
    const std::string_view wanted = format;
    if (wanted == "%u" || wanted == "%d") {
        std::array<char, 12> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): to_chars fills it
        const auto write = [&](auto number) { return std::to_chars(digits.begin(), digits.end(), number).ptr; };
        const int given = va_arg(arguments, int);
        va_end(arguments);
        const bool isSigned = wanted == "%d";
        const char* end = isSigned ? write(given) : write(static_cast<unsigned>(given));
        String text(std::string_view(digits.begin(), end));
        return text.show(isSigned ? Number::real(given, nullptr) : Number::whole(static_cast<unsigned>(given)));
    }
    std::va_list again;
    va_copy(again, arguments);
    std::array<char, 128> few{};
    const int length = std::vsnprintf(few.data(), few.size(), format, arguments);
    va_end(arguments);
    String text(few.data());
    if (length >= static_cast<int>(few.size())) {
        std::string many(static_cast<std::size_t>(length), '\0');
        std::vsnprintf(many.data(), many.size() + 1, format, again);
        text = String(many);
    }
    va_end(again);
    return text;
}

Temperature::Temperature(float value, unsigned char decimals, short /*reserved*/, TEMPERATURE_TYPE /*type*/)
    : value_(value), decimals_(decimals)
{
}

String Temperature::toString(unsigned char maxDecimals, TEMPERATURE_UNIT /*unit*/) const
{
    using namespace embedded_host::services;
    constexpr std::string_view kUnit = " °C";
    std::array<char, kLongestDecimal + kUnit.size()>
        text; // NOLINT(cppcoreguidelines-pro-type-member-init): written below
    char* end = writeDecimal(text.data(), value_, std::min(decimals_, maxDecimals), Zeros::Keep);
    end = std::ranges::copy(kUnit, end).out;
    return String(std::string_view(text.data(), end)).show(Number::real(value_, "CELSIUS"));
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
