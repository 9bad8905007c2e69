// Types 131 and 208: structures of two makers. Deliberate: their devices have no header properties, and a structure of
// another shape is passed over but keeps its index, so the numbers in the devices' texts can have gaps.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

#include <cstring>

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitType;

namespace
{

bool isSystemMetrics(Structure s)
{
    constexpr unsigned kLength = 0x0B;
    if (s.length() != kLength)
        return false;
    const char* description = libsmbios2::Smbios2_SysInfo::getString(s.header(), s[byte(0x0A)]);
    return description != nullptr && (std::strcmp(description, "IBM System Metrics") == 0 ||
                                      std::strcmp(description, "Lenovo System Metrics") == 0);
}

} // namespace

void DiscoverLenovoSystemMetrics()
{
    forEachStructure(131, [](Structure s, unsigned index) {
        if (!isSystemMetrics(s))
            return;
        StructureDevice d(s, "LenovoSystemMetrics", "System Metrics", index);
        d.string(t131_ln_description, byte(0x0A));
        d.show(t131_ln_nvram_ptr, dword(0x04), discrete(OrbUnitType::HEXADECIMAL32()));
        d.show(t131_ln_buffer_len, word(0x08), discrete(OrbUnitType::BYTES()));
        d.publish();
    });
}

void DiscoverDellRevisionsAndIDs()
{
    constexpr unsigned kShortest = 0x08;
    const auto hex8 = discrete(OrbUnitType::HEXADECIMAL8());
    const auto hex16 = discrete(OrbUnitType::HEXADECIMAL16());

    forEachStructure(208, [&](Structure s, unsigned index) {
        if (s.length() < kShortest)
            return;
        StructureDevice d(s, "DellRevisionsAndIDs", "Revisions and IDs", index);
        d.show(t208_dl_major_revision, byte(0x04), hex8);
        d.show(t208_dl_minor_revision, byte(0x05), hex8);
        d.show(t208_dl_system_id, byte(0x06), hex8);
        d.show(t208_dl_hardware_revision, byte(0x07), hex8);
        d.show(t208_dl_system_id_extension, word(0x08), hex16);
        d.string(t208_dl_manufacturer_date, byte(0x0A));
        d.string(t208_dl_first_power_on_date, byte(0x0B));
        d.show(t208_dl_system_revision, byte(0x0C), hex8);
        d.show(t208_dl_system_family, byte(0x0D), hex8);
        d.show(t208_dl_system_properties, word(0x0E), hex16);
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
