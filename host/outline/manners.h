// How the text form treats single properties: what stands in a headline, and what says nothing to a person.
#pragma once

#include "placeholders/placeholders.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace embedded_host::outline
{

/// What a property tells beside its own row.
enum class Role : unsigned char {
    None,
    Vacancy,      ///< whether its socket is empty
    ModuleSize,   ///< the same, and what a socket adds to its memory array
    ArrayMaximum, ///< from here on told in the headline alone: how much memory an array can take
    ArraySockets, ///< how many sockets it has
    RangeStart,   ///< the first kilobyte of a range of memory
    RangeEnd,     ///< the last one
};

inline constexpr std::size_t kNotInHeadline = static_cast<std::size_t>(-1);

struct Manner
{
    std::size_t headline = kNotInHeadline; ///< the order in which headlines show what they show
    Role role = Role::None;
    placeholders::Kind kind = placeholders::Kind::Place; ///< of a text that firmware's makers wrote
    bool isLink = false;                                 ///< what is no code in it is a handle; the tree shows these
    std::span<const unsigned char> usual;                ///< codes that are so on nearly every machine
    std::string_view nothing;                            ///< a text that stands for no value
    std::string_view repeats;                            ///< the property whose value it mostly has
};

/// The manner of the property of this name.
Manner mannerOf(std::string_view property);

} // namespace embedded_host::outline
