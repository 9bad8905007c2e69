// The rules, checked with RapidJSON's eyes: what the host itself decodes with shall not judge the host.
#include "output_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace tests
{

namespace
{

constexpr std::size_t kMostLogLines = 50;

std::string at(std::size_t offset, const std::string& what) { return what + " at offset " + std::to_string(offset); }

bool drivesTerminals(unsigned code)
{
    return (code < 0x20 && code != '\n') || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E ||
           code == 0x200F || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// The digits that matter: without sign, point and exponent, and no zero at either end.
std::string digitsOf(std::string_view number)
{
    std::string digits(number.substr(0, number.find_first_of("eE")));
    std::erase_if(digits, [](char character) { return character == '-' || character == '.'; });
    digits.erase(0, digits.find_first_not_of('0'));
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

/// Whether a number is whole and fits 64 bits, or the one behind them, or is a double with no more digits than it takes
/// to tell it from others.
bool readsBack(std::string_view text)
{
    const char* const end = text.data() + text.size();
    const auto isRead = [&](auto number) {
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        return error == std::errc() && stop == end;
    };
    if (text.find_first_of(".eE") == std::string_view::npos)
        return isRead(std::uint64_t{}) || isRead(std::int64_t{}) || text == "18446744073709551616";
    double number = 0;
    std::from_chars(text.data(), end, number);
    std::array<char, 32> shortest{};
    const auto last = std::to_chars(shortest.begin(), shortest.end(), number, std::chars_format::scientific).ptr;
    return isRead(number) && digitsOf(text) == digitsOf({shortest.data(), last});
}

/// Takes everything but numbers that do not read back.
struct JsonRules : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonRules>
{
    static bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        return readsBack({text, length});
    }
};

} // namespace

std::string faultInText(std::string_view text)
{
    rapidjson::MemoryStream stream(text.data(), text.size());
    while (stream.Tell() < text.size()) {
        const auto offset = stream.Tell();
        unsigned code = 0;
        if (!rapidjson::UTF8<>::Decode(stream, &code))
            return at(offset, "ill-formed UTF-8");
        if (drivesTerminals(code))
            return at(offset, "a control character");
    }
    return {};
}

std::string faultInJson(std::string_view document)
{
    rapidjson::MemoryStream stream(document.data(), document.size());
    constexpr unsigned kFlags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    JsonRules rules;
    const auto parsed = rapidjson::Reader().Parse<kFlags>(stream, rules);
    if (parsed.Code() == rapidjson::kParseErrorTermination)
        return at(parsed.Offset(), "a number that does not read back");
    return parsed.IsError() ? at(parsed.Offset(), "no JSON") : faultInText(document);
}

std::string faultInLog(std::vector<LogLine> lines)
{
    if (lines.size() > kMostLogLines)
        return std::to_string(lines.size()) + " log lines";
    std::ranges::sort(lines, {}, &LogLine::text);
    const auto twice = std::ranges::adjacent_find(lines, {}, &LogLine::text);
    return twice == lines.end() ? "" : "logged twice: " + twice->text;
}

} // namespace tests
