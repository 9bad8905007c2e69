// The rules, checked with RapidJSON's eyes: what the host itself decodes with shall not judge the host.
#include "output_rules.h"

#include <algorithm>
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
    rapidjson::BaseReaderHandler<> ignored;
    const auto parsed = rapidjson::Reader().Parse<rapidjson::kParseValidateEncodingFlag>(stream, ignored);
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
