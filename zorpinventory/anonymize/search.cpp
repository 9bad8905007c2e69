// Texts are found by their first four characters, UUIDs by the last 32 hexadecimal digits.
#include "search.h"

#include "letters.h"

#include <cstring>

namespace zorpinventory::anonymize
{

namespace
{

std::uint32_t fourAt(const char* text)
{
    std::uint32_t four = 0;
    std::memcpy(&four, text, sizeof four);
    return four;
}

int hexadecimal(char small)
{
    if (isDigit(small))
        return small - '0';
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

constexpr bool isPrintable(char c) { return c >= 0x20 && c < 0x7F; }

} // namespace

Uuid uuidOf(std::span<const unsigned char> bytes)
{
    Uuid uuid{};
    for (std::size_t i = 0; i < 16; ++i)
        uuid[i / 8] = uuid[i / 8] << 8 | bytes[i];
    return uuid;
}

std::vector<unsigned char> inOtherOrder(std::span<const unsigned char> uuid)
{
    std::vector<unsigned char> turned(uuid.begin(), uuid.end());
    std::reverse(turned.begin(), turned.begin() + 4);
    std::reverse(turned.begin() + 4, turned.begin() + 6);
    std::reverse(turned.begin() + 6, turned.begin() + 8);
    return turned;
}

void Search::add(std::string_view text, std::string_view replacement)
{
    if (!texts_.insert_or_assign(std::string(text), std::string(replacement)).second)
        return;
    const auto start = fourAt(text.data());
    auto& lengths = lengths_[start];
    if (std::ranges::find(lengths, text.size()) == lengths.end())
        lengths.push_back(text.size());
    starts_->set(filtered(start));
}

void Search::add(std::span<const unsigned char> uuid, std::span<const unsigned char> replacement)
{
    uuids_[uuidOf(inOtherOrder(uuid))] = inOtherOrder(replacement);
    uuids_[uuidOf(uuid)] = {replacement.begin(), replacement.end()};
}

const std::vector<unsigned char>* Search::replacementOf(std::span<const unsigned char> uuid) const
{
    const auto known = uuids_.find(uuidOf(uuid));
    return known == uuids_.end() ? nullptr : &known->second;
}

void Search::find(std::string_view text, std::vector<Occurrence>& found) const
{
    if (!texts_.empty())
        findTexts(text, found);
    if (!uuids_.empty())
        findUuids(text, found);
}

void Search::findTexts(std::string_view text, std::vector<Occurrence>& found) const
{
    std::string word;
    for (std::size_t i = 0; i + kShortestSought <= text.size(); ++i) {
        const auto start = fourAt(text.data() + i);
        if (!starts_->test(filtered(start)))
            continue;
        const auto lengths = lengths_.find(start);
        if (lengths == lengths_.end())
            continue;
        for (const auto length : lengths->second) {
            if (length > text.size() - i)
                continue;
            word.assign(text, i, length);
            if (const auto secret = texts_.find(word); secret != texts_.end())
                found.push_back({i, secret->second});
        }
    }
}

void Search::findUuids(std::string_view text, std::vector<Occurrence>& found) const
{
    constexpr std::size_t kDigits = 32;
    std::array<std::size_t, kDigits> places{}; // of the last digits
    std::size_t digits = 0;
    Uuid last{};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int digit = hexadecimal(text[i]);
        if (digit < 0) {
            if (!isPrintable(text[i]) || isLetterOrDigit(text[i]))
                digits = 0;
            continue;
        }
        last[0] = last[0] << 4 | last[1] >> 60;
        last[1] = last[1] << 4 | static_cast<unsigned>(digit);
        places[digits++ % kDigits] = i;
        if (digits < kDigits)
            continue;
        const auto known = uuids_.find(last);
        if (known == uuids_.end())
            continue;
        const auto begin = places[digits % kDigits];
        std::string replacement(text.substr(begin, i + 1 - begin));
        for (std::size_t d = 0; d < kDigits; ++d) {
            const unsigned byte = known->second[d / 2];
            replacement[places[(digits + d) % kDigits] - begin] =
                "0123456789abcdef"[d % 2 == 0 ? byte >> 4 : byte & 0xF];
        }
        found.push_back({begin, std::move(replacement)});
    }
}

std::string painted(std::string_view text, std::vector<Occurrence>& places, std::size_t& count)
{
    std::string result(text);
    if (places.size() > 1)
        std::ranges::stable_sort(places, [](const Occurrence& a, const Occurrence& b) {
            return a.replacement.size() != b.replacement.size() ? a.replacement.size() > b.replacement.size()
                                                                : a.begin < b.begin;
        });
    // Which place each character belongs to, the innermost one. Places are never shorter than those behind them: so one
    // that begins and ends in the same lies in it as a whole, and any other overlaps one.
    std::vector<std::size_t> owner(places.size() > 1 ? text.size() : 0);
    count = 0;
    for (const auto& [begin, replacement] : places) {
        const auto last = begin + replacement.size() - 1;
        if (!owner.empty() && owner[begin] != owner[last])
            continue;
        ++count;
        if (!owner.empty())
            std::fill(owner.begin() + static_cast<std::ptrdiff_t>(begin),
                      owner.begin() + static_cast<std::ptrdiff_t>(last + 1), count);
        result.replace(begin, replacement.size(), replacement);
    }
    return result;
}

} // namespace zorpinventory::anonymize
