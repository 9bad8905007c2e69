// Decoding UTF-8 the way Unicode recommends it for ill-formed input: one replacement for each maximal subpart.
#include "utf8.h"

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

struct Range
{
    char32_t first;
    char32_t last;
};

/// What takes no column: combining marks, joiners and variation selectors (Unicode, general category Mn and Cf, as far
/// as texts about hardware may have them).
constexpr Range kCombining[] = {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F},
                                {0x0E31, 0x0E31}, {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF},
                                {0x1DC0, 0x1DFF}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0x3099, 0x309A},
                                {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF}};

/// What takes two columns (Unicode, East Asian Width W and F).
constexpr Range kWide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},
                           {0x4E00, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
                           {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},   {0x16FE0, 0x18CFF},
                           {0x1B000, 0x1B2FF}, {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
                           {0x20000, 0x3FFFD}};

bool isIn(std::span<const Range> ranges, char32_t code)
{
    return std::ranges::any_of(ranges, [&](const Range& range) { return code >= range.first && code <= range.last; });
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

bool isObeyed(char32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F ||
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

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

/// "\\n", "\\x1B", "\\u202E", or the character itself; returns the end.
static char* writePrintable(char* out, char32_t code)
{
    if (!isObeyed(code))
        return writeUtf8(out, code);
    *out++ = '\\';
    if (code == '\n') {
        *out++ = 'n';
        return out;
    }
    *out++ = code < 0x100 ? 'x' : 'u';
    for (int shift = code < 0x100 ? 4 : 12; shift >= 0; shift -= 4)
        *out++ = "0123456789ABCDEF"[code >> shift & 0xF];
    return out;
}

void appendPrintable(std::string& out, std::string_view text)
{
    for (;;) {
        const auto plain = plainPrefix(text);
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        std::array<char, 6> shown{};
        out.append(shown.begin(), writePrintable(shown.begin(), takeCharacter(text)));
    }
}

} // namespace embedded_host::services
