// Texts and numbers in JSON.
#include "json_writer.h"

#include "services/decimal.h"
#include "services/utf8.h"

namespace embedded_host::writing
{

namespace
{

/// The most that one byte can become: \u001b.
constexpr std::size_t kLongest = 6;

/// Writes a character that does not stand for itself; returns the end.
char* escape(char32_t code, char* out)
{
    if (code != '"' && code != '\\' && !services::isObeyed(code))
        return services::writeUtf8(out, code);
    *out++ = '\\';
    switch (code) {
    case '\n':
        *out++ = 'n';
        break;
    case '\t':
        *out++ = 't';
        break;
    case '"':
    case '\\':
        *out++ = static_cast<char>(code);
        break;
    default:
        *out++ = 'u';
        for (int shift = 12; shift >= 0; shift -= 4)
            *out++ = "0123456789abcdef"[code >> shift & 0xF];
    }
    return out;
}

} // namespace

void JsonWriter::text(std::string_view value)
{
    constexpr std::size_t kPiece = 0x1000;
    static_assert(kPiece + kLongest + 2 < Output::kMostRoom);
    auto piece = value.substr(0, kPiece);
    char* out = beginValue(piece.size() + kLongest + 2);
    *out++ = '"';
    for (;;) {
        const auto plain = services::copyPlainPrefix(piece, out);
        out += plain;
        value.remove_prefix(plain);
        if (value.empty())
            break;
        if (plain < piece.size())
            out = escape(services::takeCharacter(value), out);
        output_.wrote(out);
        piece = value.substr(0, kPiece);
        out = output_.room(piece.size() + kLongest + 1);
    }
    *out++ = '"';
    output_.wrote(out);
}

void JsonWriter::number(double value)
{
    char* out = beginValue(services::kLongestNumber);
    output_.wrote(services::writeNumber(out, value));
}

} // namespace embedded_host::writing
