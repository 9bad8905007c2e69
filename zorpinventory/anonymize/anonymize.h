// A table that may be shown to others: bytes in, bytes out.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace zorpinventory::anonymize
{

using Bytes = std::vector<unsigned char>;

struct Wishes
{
    std::optional<Bytes> key; ///< equal secrets of tables with one key become equal; else the key is a fresh one
    bool keepMakers = false;  ///< leave what the makers' own structures hold, but for the secrets in it
};

/// How many of what were replaced.
struct Replaced
{
    std::size_t serials = 0;       ///< serial numbers and asset tags
    std::size_t uuids = 0;         ///< of systems
    std::size_t batteries = 0;     ///< numbers and dates of batteries
    std::size_t listed = 0;        ///< strings of types 11 and 12
    std::size_t makers = 0;        ///< strings of makers' structures
    std::size_t elsewhere = 0;     ///< places at which secrets stood beside their own
    std::size_t makersCleared = 0; ///< makers' structures
};

struct Anonymized
{
    Bytes dump; ///< with the same structures, lengths, handles and order as the table
    Replaced replaced;
};

/// Reads a saved table in any layout and replaces what tells one machine from another of its model. Throws Problem,
/// also when a secret would still be in the result.
Anonymized anonymized(const std::filesystem::path& table, const Wishes& wishes);

/// Writes such a dump: whole or not at all. What is no dump is never replaced, a dump only when it may be. Throws
/// Problem.
void write(const Bytes& dump, const std::filesystem::path& path, bool mayReplace);

} // namespace zorpinventory::anonymize
