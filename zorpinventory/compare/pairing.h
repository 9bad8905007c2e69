// Who is who: the devices of two documents are paired by what they are, never by handle.
#pragma once

#include "side.h"

namespace zorpinventory::compare
{

struct Pair
{
    std::size_t a;
    std::size_t b;
    Step by;
};

/// Pairs what can be paired, and tells both sides. What is left was removed or added.
std::vector<Pair> paired(Devices& a, Devices& b, const Options& options);

} // namespace zorpinventory::compare
