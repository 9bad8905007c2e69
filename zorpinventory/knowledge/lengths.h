// How short structures may be.
#pragma once

#include <algorithm>

namespace zorpinventory::knowledge
{

struct ShortestLength
{
    unsigned type;
    unsigned bytes; ///< of the formatted area, in the first version of the standard that has the type
};

/// Types without a row have no length of their own, or firmware is not agreed about it.
inline constexpr ShortestLength kShortestLengths[] = {
    {0, 0x12},  {1, 0x08},  {2, 0x08},  {3, 0x09},  {4, 0x1A},  {5, 0x0F},  {6, 0x0C},  {7, 0x0F},
    {8, 0x09},  {9, 0x0D},  {11, 0x05}, {12, 0x05}, {13, 0x16}, {14, 0x05}, {15, 0x14}, {16, 0x0F},
    {17, 0x15}, {18, 0x17}, {19, 0x0F}, {20, 0x13}, {21, 0x07}, {22, 0x10}, {23, 0x0D}, {24, 0x05},
    {25, 0x09}, {26, 0x14}, {27, 0x0C}, {28, 0x14}, {29, 0x14}, {30, 0x06}, {32, 0x0B}, {33, 0x1F},
    {34, 0x0B}, {35, 0x0B}, {36, 0x10}, {38, 0x10}, {39, 0x10}, {41, 0x0B}, {43, 0x1F},
};
static_assert(std::ranges::is_sorted(kShortestLengths, {}, &ShortestLength::type));

/// In bytes; 0 where nothing is known.
constexpr unsigned shortestLengthOf(unsigned type)
{
    const auto* found = std::ranges::lower_bound(kShortestLengths, type, {}, &ShortestLength::type);
    return found != std::end(kShortestLengths) && found->type == type ? found->bytes : 0;
}

} // namespace zorpinventory::knowledge
