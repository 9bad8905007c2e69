// lum::String.
#include "lum.h"

namespace lum
{

String& String::trim()
{
    constexpr const char* kWhiteSpace = " \t\n\v\f\r";
    bytes_.erase(bytes_.find_last_not_of(kWhiteSpace) + 1);
    bytes_.erase(0, bytes_.find_first_not_of(kWhiteSpace));
    return *this;
}

void String::remove(unsigned pos, unsigned count)
{
    if (pos < bytes_.size())
        bytes_.erase(pos, count);
}

} // namespace lum
