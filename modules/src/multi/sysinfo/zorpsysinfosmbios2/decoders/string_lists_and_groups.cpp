// Types 11 to 14: OEM strings, configuration options, BIOS languages and group associations.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbString;
using orb5::Value;

namespace
{

/// Strings 1 to the count at 04h, as far as they exist. Deliberate: the count is read whatever the length, and blank
/// strings are kept.
Value allStrings(Structure s)
{
    auto list = emptyList();
    for (unsigned number = 1; number <= s[byte(0x04)]; ++number)
        if (const char* text = libsmbios2::Smbios2_SysInfo::getString(s.header(), static_cast<unsigned char>(number)))
            list.append(text);
    return list;
}

/// The same, but blank strings count as absent where they are filtered.
Value filteredStrings(Structure s)
{
    auto list = emptyList();
    for (unsigned number = 1; number <= s[byte(0x04)]; ++number)
        if (OrbString text; getStructureString(s.header(), static_cast<unsigned char>(number), text))
            list.append(text);
    return list;
}

/// A device that has nothing but its strings, the property only when there are any.
void publishStrings(Structure s, StructureDevice d, orb5::DeviceProperty* property)
{
    d.header();
    const auto strings = allStrings(s);
    if (strings.stringArraySize() != 0)
        d.set(property, strings);
    d.publish();
}

} // namespace

void DiscoverOEMStrings()
{
    forEachStructure(11, [](Structure s, unsigned index) {
        publishStrings(s, StructureDevice(s, "OEMStrings", "OEM Strings", index), t11_oemstrings);
    });
}

void DiscoverConfigOptions()
{
    forEachStructure(12, [](Structure s, unsigned index) {
        publishStrings(s, StructureDevice(s, "ConfigOptions", "Config Options", index), t12_configoptions);
    });
}

void DiscoverBIOSLanguages()
{
    forEachStructure(13, [](Structure s, unsigned index) {
        StructureDevice d(s, "BIOSLanguages", "BIOS Languages", index);
        d.header();
        d.string(t13_current, byte(0x15));
        // Deliberate: published also when it is empty, unlike the lists of types 11 and 12.
        d.set(t13_languages, filteredStrings(s));
        d.enumerated(t13_flags_msk1_srt7, byte(0x05).bits(1, 7));
        d.publish();
    });
}

void DiscoverGroup()
{
    forEachStructure(14, [](Structure s, unsigned index) {
        StructureDevice d(s, "Group", "Group", index);
        d.header();
        d.string(t14_group, byte(0x04));
        auto members = emptyList();
        const int count = (s.length() - 5) / 3; // an item type byte and a handle each
        for (int i = 0; i < count; ++i)
            d.member(members, s[word(0x06 + 3 * static_cast<unsigned>(i))]);
        d.set(t14_members, members);
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
