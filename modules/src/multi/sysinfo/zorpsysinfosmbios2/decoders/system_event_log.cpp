// Type 15: the system event log, where it lies and whether it is valid or full.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

void DiscoverSystemLog()
{
    // Deliberate: the area's length too is a hexadecimal number, not a size.
    const auto hex16 = discrete(orb5::OrbUnitType::HEXADECIMAL16());

    forEachStructure(15, [&](Structure s, unsigned index) {
        StructureDevice d(s, "SystemLog", "System Log", index);
        d.header();
        d.show(t15_area_len, word(0x04), hex16);
        d.show(t15_header_start, word(0x06), hex16);
        d.show(t15_data_start, word(0x08), hex16);
        d.enumerated(t15_method, byte(0x0A));
        // Deliberate order: the header format before the status bits.
        d.enumerated(t15_hdr_fmt, byte(0x14));
        d.enumerated(t15_status_msk1_srt0, byte(0x0B).bits(1, 0));
        d.enumerated(t15_status_msk1_srt1, byte(0x0B).bits(1, 1));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
