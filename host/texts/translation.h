// One entry of a language's catalogue.
#pragma once

#include <string_view>

namespace embedded_host::texts
{

struct Translation
{
    std::string_view key;
    std::string_view text;
};

} // namespace embedded_host::texts
