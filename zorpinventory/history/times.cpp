// Reading and writing times.
#include "times.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace zorpinventory::history
{

namespace
{

bool fits(std::string_view text, std::string_view pattern)
{
    return std::ranges::equal(text, pattern, [](char c, char p) { return p == '0' ? c >= '0' && c <= '9' : c == p; });
}

unsigned number(std::string_view digits)
{
    unsigned value = 0;
    for (const char digit : digits)
        value = value * 10 + static_cast<unsigned>(digit - '0');
    return value;
}

} // namespace

std::string now()
{
    const auto time = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::string text(sizeof "2026-11-01T08:30:00Z", '\0');
    text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&time)));
    return text;
}

std::optional<std::string> timeFrom(std::string_view text, Of day)
{
    constexpr std::string_view kDay = "0000-00-00";
    constexpr std::string_view kTime = "0000-00-00T00:00:00Z";
    const bool isTime = fits(text, kTime);
    if (!isTime && !fits(text, kDay))
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(number(text.substr(0, 4)))),
                                           std::chrono::month(number(text.substr(5, 2))),
                                           std::chrono::day(number(text.substr(8, 2))));
    if (!date.ok())
        return std::nullopt;
    if (!isTime)
        return std::string(text) + (day == Of::DaysBegin ? "T00:00:00Z" : "T23:59:59Z");
    const bool isOfDay = number(text.substr(11, 2)) < 24 && number(text.substr(14, 2)) < 60 && text[17] < '6';
    return isOfDay ? std::optional<std::string>(text) : std::nullopt;
}

} // namespace zorpinventory::history
