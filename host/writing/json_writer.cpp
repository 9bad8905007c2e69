// Texts in JSON.
#include "json_writer.h"

#include "services/utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace embedded_host::writing
{

namespace
{

/// The most that one byte can become: \u001b.
constexpr std::size_t kLongest = 6;

/// How a character that does not stand for itself is written.
std::string written(char32_t code)
{
    if (code == '"' || code == '\\')
        return {'\\', static_cast<char>(code)};
    if (code == '\n')
        return "\\n";
    if (code == '\t')
        return "\\t";
    std::string text;
    if (services::isObeyed(code)) {
        std::array<char, kLongest + 1> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(code));
        text = escape.data();
    } else {
        services::appendUtf8(text, code);
    }
    return text;
}

/// Writes the text in quotes; returns the end.
char* quote(std::string_view text, char* out)
{
    *out++ = '"';
    for (;;) {
        const auto plain = services::plainPrefix(text);
        std::memcpy(out, text.data(), plain);
        out += plain;
        text.remove_prefix(plain);
        if (text.empty())
            break;
        out = std::ranges::copy(written(services::takeCharacter(text)), out).out;
    }
    *out++ = '"';
    return out;
}

} // namespace

void JsonWriter::text(std::string_view value)
{
    Prefix(rapidjson::kStringType);
    const std::size_t room = kLongest * value.size() + 2;
    char* start = buffer_.Push(room);
    const char* end = quote(value, start);
    buffer_.Pop(room - static_cast<std::size_t>(end - start));
}

void JsonWriter::plain(std::string_view value)
{
    Prefix(rapidjson::kStringType);
    char* out = buffer_.Push(value.size() + 2);
    *out++ = '"';
    std::memcpy(out, value.data(), value.size());
    out[value.size()] = '"';
}

} // namespace embedded_host::writing
