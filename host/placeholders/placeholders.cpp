// Reading texts word by word, and the patterns that stand in the place of numbers.
#include "placeholders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace embedded_host::placeholders
{

namespace
{

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

/// Bytes of other scripts' characters count as letters: no word has them, so they make a text real.
constexpr bool isLetter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return isSmall(c) || isCapital(c) || (byte >= 0x80 && byte != 0xC0 && byte != 0xC1 && byte < 0xF5);
}

constexpr char toSmall(char c) { return isCapital(c) ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool isHexadecimal(char c) { return isDigit(c) || (toSmall(c) >= 'a' && toSmall(c) <= 'f'); }

/// A word in small letters, as a number of two halves: whole words are compared at once, and nothing is copied.
using Word = std::array<std::uint64_t, 2>;

/// What is too long for a known word is none of them.
constexpr Word wordOf(std::string_view written)
{
    Word word{};
    if (written.size() <= sizeof word)
        for (const char c : written)
            word = {word[0] << 8 | word[1] >> 56, word[1] << 8 | static_cast<unsigned char>(toSmall(c))};
    return word;
}

template <std::size_t count>
consteval std::array<Word, count> sorted(const std::string_view (&texts)[count])
{
    std::array<Word, count> words{};
    std::ranges::transform(texts, words.begin(), wordOf);
    std::ranges::sort(words);
    return words;
}

/// Names of things: alone they are no name, but they may well be a place.
constexpr auto kThings =
    sorted({"array",    "asset",   "bank",   "base",        "baseboard", "batt",      "battery",     "bios",
            "board",    "chassis", "config", "cpu",         "dev",       "device",    "dimm",        "enclosure",
            "family",   "field",   "info",   "information", "location",  "mainboard", "manufacture", "manufacturer",
            "memory",   "mfg",     "module", "motherboard", "name",      "num",       "number",      "o.e.m",
            "odm",      "oem",     "part",   "partnum",     "power",     "processor", "product",     "psu",
            "ser",      "serial",  "sernum", "sku",         "smbios",    "sn",        "sodimm",      "spaces",
            "standard", "string",  "supply", "system",      "tag",       "type",      "vendor",      "version"});

/// Words that say that nothing is there.
constexpr auto kNothings =
    sorted({"applicable", "available", "be",     "by",   "default",   "define",   "defined", "empty",
            "enter",      "fill",      "filled", "here", "installed", "invalid",  "known",   "n/a",
            "na",         "no",        "none",   "not",  "null",      "provided", "reserve", "reserved",
            "set",        "specified", "tbd",    "to",   "undefined", "unknow",   "unknown"});

constexpr auto kNoSerials = sorted({"00-00", "1234-b0", "48spaces", "abcd", "eval", "fake", "iatpass"});

using Uuid = std::array<unsigned char, 16>;

/// Its bytes in the order in which they are written, with any punctuation; nothing for another text.
constexpr std::optional<Uuid> uuidOf(std::string_view text)
{
    Uuid uuid{};
    std::size_t digits = 0;
    for (const char c : text) {
        if (!isLetter(c) && !isDigit(c))
            continue;
        if (!isHexadecimal(c) || digits == 2 * uuid.size())
            return std::nullopt;
        auto& byte = uuid[digits++ / 2];
        byte = static_cast<unsigned char>(byte << 4 | (isDigit(c) ? c - '0' : toSmall(c) - 'a' + 10));
    }
    return digits == 2 * uuid.size() ? std::optional(uuid) : std::nullopt;
}

constexpr std::array kNoUuids = {
    *uuidOf("03000200040005000006000700080009"), *uuidOf("123456781234567890abcddeefaabbcc"),
    *uuidOf("000102030405060708090a0b0c0d0e0f"), *uuidOf("10000000000080000040000000000000"),
    *uuidOf("ffffff00ffffffffffffffffffffffff"), *uuidOf("4c4c454400002010802080c04f202020"),
    *uuidOf("6ab5b300538d10149fb5b0684d007b53")};

bool startsWith(std::string_view text, std::string_view small)
{
    return text.size() >= small.size() && std::ranges::equal(text.substr(0, small.size()), small, {}, toSmall);
}

/// Takes off what is neither a letter nor a digit at the start; what a reader of UTF-8 puts for bytes that are none
/// counts as punctuation.
void skipPunctuation(std::string_view& text)
{
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    while (!text.empty()) {
        if (text.starts_with(kReplacement))
            text.remove_prefix(kReplacement.size());
        else if (isLetter(text.front()) || isDigit(text.front()))
            return;
        else
            text.remove_prefix(1);
    }
}

std::string_view withoutPunctuationAtTheEnds(std::string_view text)
{
    skipPunctuation(text);
    while (!text.empty() && !isLetter(text.back()) && !isDigit(text.back()))
        text.remove_suffix(1);
    return text;
}

/// The length of the word at the start of a text: letters or digits, up to a capital behind a small letter.
std::size_t wordLength(std::string_view text)
{
    for (const std::string_view abbreviation : {"o.e.m", "n/a"})
        if (startsWith(text, abbreviation))
            return abbreviation.size();
    const bool digits = isDigit(text.front());
    std::size_t end = 1;
    while (end < text.size() && (digits ? isDigit(text[end]) : isLetter(text[end])) &&
           !(isSmall(text[end - 1]) && isCapital(text[end])))
        ++end;
    return end;
}

bool isNumbering(std::string_view word, std::string_view rest)
{
    return isDigit(word.front()) ? word.size() <= 3 : word.size() == 1 && !rest.empty() && isDigit(rest.front());
}

/// Whether all words of a text are among the known ones; numbers beside them do not count.
bool saysNothing(std::string_view text, Kind kind)
{
    if (text.size() >= 6 && std::ranges::all_of(text, isHexadecimal) && std::ranges::any_of(text, isDigit))
        return false; // "41C1D5BE" is a number that was filled in
    bool things = false;
    bool nothings = false;
    for (skipPunctuation(text); !text.empty(); skipPunctuation(text)) {
        const auto written = text.substr(0, wordLength(text));
        text.remove_prefix(written.size());
        if (isNumbering(written, text))
            continue;
        const auto word = wordOf(written);
        if (std::ranges::binary_search(kNothings, word))
            nothings = true;
        else if (std::ranges::binary_search(kThings, word))
            things = true;
        else
            return false;
    }
    return nothings || (things && kind != Kind::Place);
}

/// "0123456789", "1234", "9876543": counted up from 0 or 1, or down from 9.
bool isCounted(std::string_view digits)
{
    if (digits.size() < 4 || std::string_view("019").find(digits.front()) == std::string_view::npos)
        return false;
    const bool upwards = digits.front() != '9';
    for (std::size_t i = 1; i < digits.size(); ++i) {
        const int step = upwards ? (digits[i] - digits[i - 1] + 10) % 10 : digits[i - 1] - digits[i];
        if (!isDigit(digits[i]) || step != 1)
            return false;
    }
    return true;
}

/// What makers put in the place of a number that is to follow.
bool isNoSerial(std::string_view text)
{
    text = withoutPunctuationAtTheEnds(text);
    if (text.empty())
        return false;
    const bool same = std::ranges::all_of(text, [&](char c) { return c == text.front(); });
    if (same && (text.front() == '0' || text.size() >= 4))
        return true;
    constexpr std::size_t kMostLetters = 8;
    std::size_t letters = 0;
    while (letters < text.size() && letters < kMostLetters && isLetter(text[letters]))
        ++letters;
    auto digits = text.substr(letters);
    if (letters != 0 && digits.starts_with('-'))
        digits.remove_prefix(1);
    return isCounted(digits) || std::ranges::binary_search(kNoSerials, wordOf(text));
}

bool isNoUuid(std::string_view text)
{
    const auto written = uuidOf(text);
    if (!written)
        return false;
    // The other byte order has the first three groups turned round.
    auto turned = *written;
    std::reverse(turned.begin(), turned.begin() + 4);
    std::reverse(turned.begin() + 4, turned.begin() + 6);
    std::reverse(turned.begin() + 6, turned.begin() + 8);
    const bool repeated = std::ranges::all_of(turned, [&](auto byte) { return byte == turned.front(); });
    const auto known = [](const Uuid& uuid) { return std::ranges::find(kNoUuids, uuid) != kNoUuids.end(); };
    return repeated || known(*written) || known(turned);
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isBlank(std::string_view text)
{
    skipPunctuation(text);
    return text.empty();
}

bool isPlaceholder(std::string_view text, Kind kind)
{
    text = trimmed(text);
    if (kind == Kind::Uuid)
        return isNoUuid(text) || isNoSerial(text);
    return saysNothing(text, kind) || (kind == Kind::Serial && isNoSerial(text));
}

bool isReal(std::string_view text, Kind kind) { return !isBlank(text) && !isPlaceholder(text, kind); }

} // namespace embedded_host::placeholders
