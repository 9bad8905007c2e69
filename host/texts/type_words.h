// The words that users of the field know for groups of structure types.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace embedded_host::texts
{

struct TypeWord
{
    std::string_view word;
    std::array<unsigned char, 5> types;
    std::size_t count;

    constexpr std::span<const unsigned char> all() const { return std::span(types).first(count); }
};

inline constexpr TypeWord kTypeWords[] = {
    {"bios", {0, 13}, 2},
    {"system", {1, 12, 15, 23, 32}, 5},
    {"baseboard", {2, 10, 41}, 3},
    {"chassis", {3}, 1},
    {"processor", {4}, 1},
    {"memory", {5, 6, 16, 17}, 4},
    {"cache", {7}, 1},
    {"connector", {8}, 1},
    {"slot", {9}, 1},
};

} // namespace embedded_host::texts
