// Finding many secrets in a text at once.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zorpinventory::anonymize
{

/// A place in a text, and what is to stand there.
struct Occurrence
{
    std::size_t begin;
    std::string replacement; ///< as long as the place

    std::size_t end() const { return begin + replacement.size(); }
};

/// Sixteen bytes, as two numbers.
using Uuid = std::array<std::uint64_t, 2>;

Uuid uuidOf(std::span<const unsigned char> bytes);

/// The bytes with the first three groups turned round, as the other byte order has them.
std::vector<unsigned char> inOtherOrder(std::span<const unsigned char> uuid);

/// Secrets, and what stands for each. Texts are in small letters throughout.
class Search
{
public:
    /// A text of kShortestSought characters or more.
    void add(std::string_view text, std::string_view replacement);

    /// A UUID, in both byte orders.
    void add(std::span<const unsigned char> uuid, std::span<const unsigned char> replacement);

    /// Appends all places at which a secret stands in a text, one inside another too.
    void find(std::string_view text, std::vector<Occurrence>& found) const;

    /// What stands for a UUID in either byte order; null for bytes that are no secret.
    const std::vector<unsigned char>* replacementOf(std::span<const unsigned char> uuid) const;

    bool knowsUuids() const { return !uuids_.empty(); }

private:
    void findTexts(std::string_view text, std::vector<Occurrence>& found) const;
    void findUuids(std::string_view text, std::vector<Occurrence>& found) const;

    static constexpr std::size_t kFilter = std::size_t{1} << 18;
    static std::size_t filtered(std::uint32_t start) { return start * std::uint32_t{0x9E3779B1} >> 14; }

    std::unordered_map<std::string, std::string> texts_;
    std::unordered_map<std::uint32_t, std::vector<std::size_t>>
        lengths_; ///< of the secrets with these four characters first
    std::unique_ptr<std::bitset<kFilter>> starts_ = std::make_unique<std::bitset<kFilter>>();
    std::map<Uuid, std::vector<unsigned char>> uuids_;
};

/// The text with the places replaced: the longest first, one inside another as itself, and of two that overlap the
/// longer, or else the first, alone. Counts the places.
std::string painted(std::string_view text, std::vector<Occurrence>& places, std::size_t& count);

} // namespace zorpinventory::anonymize
