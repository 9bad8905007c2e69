// Decoding UTF-8 the way Unicode recommends it for ill-formed input: one replacement for each maximal subpart.
#include "utf8.h"

#include "unicode_ranges.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

namespace embedded_host::services
{

namespace
{

constexpr char32_t kReplacement = 0xFFFD;

/// What the first byte of a sequence says of the bytes that follow it (Unicode, table 3-7).
struct Lead
{
    unsigned length;            ///< of the whole sequence; 0 for a byte that starts none
    unsigned char lowestSecond; ///< the second byte's range is narrower for some first bytes
    unsigned char highestSecond;
};

Lead leadOf(unsigned char first)
{
    if (first < 0x80)
        return {1, 0, 0};
    if (first < 0xC2 || first > 0xF4)
        return {0, 0, 0};
    if (first < 0xE0)
        return {2, 0x80, 0xBF};
    if (first < 0xF0)
        return {3, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF)};
    return {4, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF)};
}

bool isIn(std::span<const Range> ranges, char32_t code)
{
    const auto range = std::ranges::lower_bound(ranges, code, {}, &Range::last);
    return range != ranges.end() && code >= range->first;
}

constexpr auto kPlain = [] {
    std::array<bool, 256> plain{};
    for (unsigned byte = 0x20; byte < 0x7F; ++byte)
        plain[byte] = byte != '"' && byte != '\\';
    return plain;
}();

constexpr bool isPlain(char byte) { return kPlain[static_cast<unsigned char>(byte)]; }

/// isPlain of eight bytes at once. Each term has a byte's highest bit set when that byte is not plain; a carry out of
/// one byte only sets bits above it, and then the answer is no already.
constexpr bool arePlain(std::uint64_t bytes)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kHighest = 0x80 * kOnes;
    constexpr auto isZero = [](std::uint64_t value) { return (value - kOnes) & ~value; };
    const std::uint64_t found = bytes | (bytes - 0x20 * kOnes) | isZero(bytes ^ 0x7F * kOnes) |
                                isZero(bytes ^ '"' * kOnes) | isZero(bytes ^ '\\' * kOnes);
    return (found & kHighest) == 0;
}

bool isEscaped(char32_t code) { return isObeyed(code) || isHidden(code); }

int digitsOfEscape(char32_t code) { return code < 0x100 ? 2 : code < 0x10000 ? 4 : 8; }

} // namespace

std::size_t plainPrefix(std::string_view text)
{
    std::size_t count = 0;
    for (std::uint64_t eight = 0; text.size() - count >= sizeof eight; count += sizeof eight) {
        std::memcpy(&eight, text.data() + count, sizeof eight);
        if (!arePlain(eight))
            break;
    }
    while (count < text.size() && isPlain(text[count]))
        ++count;
    return count;
}

std::size_t copyPlainPrefix(std::string_view text, char* out)
{
    constexpr std::size_t kStep = sizeof(std::uint64_t);
    const auto copyEight = [&](std::size_t from) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, text.data() + from, kStep);
        std::memcpy(out + from, &eight, kStep);
        return arePlain(eight);
    };
    std::size_t count = 0;
    if (text.size() >= kStep) {
        while (count + kStep <= text.size() && copyEight(count))
            count += kStep;
        // The last bytes, together with some before them.
        if (count + kStep > text.size() && copyEight(text.size() - kStep))
            return text.size();
    }
    for (; count < text.size() && isPlain(text[count]); ++count)
        out[count] = text[count];
    return count;
}

char32_t takeCharacter(std::string_view& text)
{
    const auto take = [&](std::size_t count, char32_t code) {
        text.remove_prefix(count);
        return code;
    };

    const auto first = static_cast<unsigned char>(text.front());
    const Lead lead = leadOf(first);
    if (lead.length == 0)
        return take(1, kReplacement);
    if (lead.length == 1)
        return take(1, first);

    char32_t code = first & (0x7Fu >> lead.length);
    for (std::size_t i = 1; i < lead.length; ++i) {
        const unsigned next = i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
        const bool fits = i == 1 ? next >= lead.lowestSecond && next <= lead.highestSecond : (next & 0xC0) == 0x80;
        if (!fits)
            return take(i, kReplacement);
        code = code << 6 | (next & 0x3Fu);
    }
    return take(lead.length, code);
}

std::size_t characterEnd(std::string_view text, std::size_t bytes)
{
    if (bytes >= text.size())
        return text.size();
    // Cut before a first byte whose sequence could reach behind the end.
    for (std::size_t back = 1; back <= 3 && back < bytes; ++back)
        if (static_cast<unsigned char>(text[bytes - back]) >= 0xC0)
            return bytes - back;
    return bytes;
}

bool isObeyed(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isHidden(char32_t code) { return code >= kHidden[0].first && isIn(kHidden, code); }

std::size_t columnsOf(char32_t code)
{
    if (code < kCombining[0].first)
        return 1;
    if (isIn(kCombining, code))
        return 0;
    return isIn(kWide, code) ? 2 : 1;
}

std::size_t columnsOf(std::string_view text)
{
    std::size_t columns = 0;
    for (;;) {
        const auto plain = plainPrefix(text);
        columns += plain;
        text.remove_prefix(plain);
        if (text.empty())
            return columns;
        columns += columnsOf(takeCharacter(text));
    }
}

char* writeUtf8(char* out, char32_t code)
{
    const auto add = [&](char32_t byte) { *out++ = static_cast<char>(byte); };
    const auto follow = [&](unsigned shift) { add(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        add(code);
    } else if (code < 0x800) {
        add(0xC0 | code >> 6);
        follow(0);
    } else if (code < 0x10000) {
        add(0xE0 | code >> 12);
        follow(6);
        follow(0);
    } else {
        add(0xF0 | code >> 18);
        follow(12);
        follow(6);
        follow(0);
    }
    return out;
}

char* writePrintable(char* out, char32_t code)
{
    if (!isEscaped(code))
        return writeUtf8(out, code);
    *out++ = '\\';
    if (code == '\n') {
        *out++ = 'n';
        return out;
    }
    const int digits = digitsOfEscape(code);
    *out++ = digits == 2 ? 'x' : digits == 4 ? 'u' : 'U';
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        *out++ = "0123456789ABCDEF"[code >> shift & 0xF];
    return out;
}

std::size_t columnsPrinted(char32_t code)
{
    if (!isEscaped(code))
        return columnsOf(code);
    return code == '\n' ? 2 : 2 + static_cast<std::size_t>(digitsOfEscape(code));
}

void appendPrintable(std::string& out, std::string_view text)
{
    for (;;) {
        const auto plain = plainPrefix(text);
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        std::array<char, kMostPrinted> shown{};
        out.append(shown.begin(), writePrintable(shown.begin(), takeCharacter(text)));
    }
}

std::string printable(std::string_view text)
{
    std::string shown;
    appendPrintable(shown, text);
    return shown;
}

} // namespace embedded_host::services
