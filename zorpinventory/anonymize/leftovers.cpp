// Looking secrets up in a sorted list.
#include "leftovers.h"

#include <algorithm>
#include <bitset>
#include <cctype>
#include <iterator>
#include <set>

namespace zorpinventory::anonymize
{

namespace
{

char lower(unsigned char byte) { return static_cast<char>(byte < 0x80 ? std::tolower(byte) : byte); }

/// The two orders in which a UUID's bytes are written.
constexpr unsigned char kOrders[][16] = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15},
                                         {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15}};

class Wanted
{
public:
    explicit Wanted(const Secrets& secrets)
    {
        for (const auto& text : secrets.texts)
            std::ranges::transform(text, std::back_inserter(texts_.emplace_back()), lower);
        std::ranges::sort(texts_);
        // Where a secret begins with another one, the other is found anyway. So a text that begins with a secret has
        // none but that one before it in the list.
        std::size_t kept = 0;
        for (auto& text : texts_)
            if (kept == 0 || !text.starts_with(texts_[kept - 1]))
                std::swap(texts_[kept++], text);
        texts_.resize(kept);
        for (const auto& text : texts_)
            pairs_.set(pairAt(text));
        for (const auto& uuid : secrets.uuids)
            for (const auto& order : kOrders) {
                std::string digits;
                for (const auto place : order) {
                    digits += "0123456789abcdef"[uuid[place] >> 4];
                    digits += "0123456789abcdef"[uuid[place] & 0xF];
                }
                uuids_.insert(std::move(digits));
            }
    }

    bool in(const std::string& text) const { return hasText(text) || hasUuid(text); }

private:
    static std::size_t pairAt(std::string_view text)
    {
        return static_cast<unsigned char>(text[0]) | std::size_t{static_cast<unsigned char>(text[1])} << 8;
    }

    bool hasText(std::string_view text) const
    {
        if (texts_.empty())
            return false;
        for (; text.size() >= 2; text.remove_prefix(1)) {
            if (!pairs_[pairAt(text)])
                continue;
            const auto behind = std::ranges::upper_bound(texts_, text);
            if (behind != texts_.begin() && text.starts_with(*std::prev(behind)))
                return true;
        }
        return false;
    }

    bool hasUuid(const std::string& text) const
    {
        constexpr std::size_t kDigits = 32;
        if (uuids_.empty() || text.size() < kDigits)
            return false;
        std::string digits;
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x80 && std::isxdigit(byte) != 0)
                digits += c;
            else if (byte >= 0x80 || std::ispunct(byte) + (byte == ' ') == 0)
                digits += '\0'; // no UUID goes on behind it
        }
        for (std::size_t i = 0; i + kDigits <= digits.size(); ++i)
            if (uuids_.contains(digits.substr(i, kDigits)))
                return true;
        return false;
    }

    std::vector<std::string> texts_;
    std::set<std::string> uuids_;
    std::bitset<0x10000> pairs_; ///< with which secrets begin
};

} // namespace

bool holdsAny(const Secrets& secrets, const std::vector<std::span<const unsigned char>>& pieces)
{
    const Wanted wanted(secrets);
    std::string text;
    for (const auto piece : pieces) {
        text.clear();
        std::ranges::transform(piece, std::back_inserter(text), lower);
        if (wanted.in(text))
            return true;
        // Every second byte, cut where what lies between is not 0.
        for (std::size_t start = 0; start < 2; ++start) {
            text.clear();
            for (std::size_t i = start; i < piece.size(); i += 2) {
                text += lower(piece[i]);
                if (i + 1 < piece.size() && piece[i + 1] != 0)
                    text += '\0';
            }
            if (wanted.in(text))
                return true;
        }
    }
    return false;
}

} // namespace zorpinventory::anonymize
