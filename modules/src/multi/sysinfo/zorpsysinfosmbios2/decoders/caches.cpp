// Type 7: caches.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;

namespace
{

/// "L1 Cache" to "L8 Cache"; "L? Cache" for a structure too short to tell.
orb5::OrbString cacheName(Structure s)
{
    char name[] = "L? Cache";
    if (s.has(word(0x05)))
        name[1] = static_cast<char>('1' + (s[byte(0x05)] & 7));
    lum::String key(name);
    key.remove(2, 1);
    return localizedName(key, name);
}

orb5::Value cacheSize(unsigned raw)
{
    // Deliberate: bit 15, which says that the unit is 64 KB, stays in the count: 8010h shows 32784 times 64 KB.
    const unsigned kilobytes = (raw & 0x8000) != 0 ? raw * 64 : raw;
    return measured(OrbUnitType::BYTES(), OrbUnitMagnitude::KILO())(kilobytes);
}

} // namespace

void DiscoverCache()
{
    const auto nanoseconds = measured(OrbUnitType::SECONDS(), OrbUnitMagnitude::NANO());

    forEachStructure(7, [&](Structure s, unsigned) {
        StructureDevice d(s, cacheName(s));
        d.header();
        d.string(t7_socket_designation, byte(0x04));
        d.enumerated(t7_cache_cfg_msk2_srt8, word(0x05).bits(2, 8));
        d.enumerated(t7_cache_cfg_msk1_srt7, word(0x05).bits(1, 7));
        d.enumerated(t7_cache_cfg_msk2_srt5, word(0x05).bits(2, 5));
        d.enumerated(t7_cache_cfg_msk1_srt3, word(0x05).bits(1, 3));
        d.enumerated(t7_cache_cfg_msk3_srt0, word(0x05).bits(3, 0));
        d.show(t7_max_cache_sz, word(0x07), cacheSize);
        d.show(t7_installed_sz, word(0x09), cacheSize);
        d.bits(t7_supported_sram, word(0x0B));
        d.bits(t7_current_sram, word(0x0D));
        d.show(t7_speed, byte(0x0F), unknownAt(0, nanoseconds));
        // Deliberate order: the system cache type before the error correction.
        d.enumerated(t7_type, byte(0x11));
        d.enumerated(t7_error_correction, byte(0x10));
        d.enumerated(t7_associativity, byte(0x12));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
