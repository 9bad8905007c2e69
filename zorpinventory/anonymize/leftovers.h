// The second look at a table that was anonymised: whether anything of what it hid can still be found. Shares nothing
// with the first, so that a slip in one is seen by the other.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace zorpinventory::anonymize
{

struct Secrets
{
    std::vector<std::string> texts; ///< of kShortestSought characters or more
    std::vector<std::vector<unsigned char>> uuids;
};

/// Whether one of the secrets stands in one of these pieces of a table: as ASCII or UTF-16, without case, a UUID with
/// and without punctuation in either byte order.
bool holdsAny(const Secrets& secrets, const std::vector<std::span<const unsigned char>>& pieces);

} // namespace zorpinventory::anonymize
