// Texts in JSON.
#include "json_writer.h"

#include "services/utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace embedded_host::inventory
{

namespace
{

/// Which bytes stand for themselves in a JSON text.
constexpr auto kPlain = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte)
        plain[byte] = byte != '"' && byte != '\\';
    return plain;
}();

bool isPlain(char byte) { return kPlain[static_cast<unsigned char>(byte)]; }

void appendEscape(std::string& out, char32_t code)
{
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(code));
    out += escape.data();
}

void appendQuoted(std::string& out, std::string_view text)
{
    out += '"';
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const auto character = services::takeCharacter(text);
        if (character.code == '"' || character.code == '\\')
            (out += '\\') += static_cast<char>(character.code);
        else if (character.code == '\n')
            out += "\\n";
        else if (character.code == '\t')
            out += "\\t";
        else if (services::isObeyed(character.code))
            appendEscape(out, character.code);
        else
            services::appendUtf8(out, character.code);
    }
    out += '"';
}

} // namespace

void JsonWriter::text(std::string_view value)
{
    quoted_.clear();
    appendQuoted(quoted_, value);
    Prefix(rapidjson::kStringType);
    std::memcpy(buffer_.Push(quoted_.size()), quoted_.data(), quoted_.size());
}

} // namespace embedded_host::inventory
