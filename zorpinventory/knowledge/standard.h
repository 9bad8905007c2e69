// Which versions of the SMBIOS standard are known.
#pragma once

#include <charconv>
#include <string_view>

namespace zorpinventory::knowledge
{

/// The newest version whose values have names.
inline constexpr int kNewestMajor = 3;
inline constexpr int kNewestMinor = 9;

/// Whether a table's version, such as "3.1.1", is newer than that. A version that cannot be read is not.
inline bool isNewerThanKnown(std::string_view version)
{
    int major = 0;
    int minor = 0;
    const auto* end = version.data() + version.size();
    const auto* point = std::from_chars(version.data(), end, major).ptr;
    if (point != end && *point == '.')
        std::from_chars(point + 1, end, minor);
    return major > kNewestMajor || (major == kNewestMajor && minor > kNewestMinor);
}

} // namespace zorpinventory::knowledge
