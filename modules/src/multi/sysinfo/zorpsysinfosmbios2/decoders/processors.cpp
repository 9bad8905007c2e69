// Type 4: processors, and the group that gathers them.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

struct Family
{
    unsigned code;
    const char* name;
};

/// Families that a byte cannot tell (Processor Family 2) and that are named here.
constexpr Family kFamilies[] = {
    {0x0104, "SH-3"},    {0x0105, "SH-4"}, {0x0118, "ARM"},     {0x0119, "StrongARM"}, {0x012C, "6x86"},
    {0x012D, "MediaGX"}, {0x012E, "MII"},  {0x0140, "WinChip"}, {0x015E, "DSP"},       {0x01F4, "Video Processor"},
};

/// The name of a family; null when it has none.
const char* findWalkingDown(unsigned code)
{
    // Deliberate: the walk stops at the first row below the code, though rows rise; only the first row is ever found.
    for (const auto& family : kFamilies) {
        if (family.code == code)
            return family.name;
        if (code > family.code)
            return nullptr;
    }
    return nullptr;
}

Value family2(unsigned code)
{
    const char* name = findWalkingDown(code);
    return name != nullptr ? Value(name) : Value(lum::SprintfFormat("Family %04X", code));
}

/// The voltage in tenths of a volt, or the voltages that the socket can supply.
Value voltage(Structure s)
{
    constexpr unsigned char kInTenths = 0x80;
    const auto raw = s[byte(0x11)];
    if ((raw & kInTenths) == 0)
        return Value(knownBits(s, byte(0x11)).toString());
    const float volts = static_cast<float>(raw & ~kInTenths) / 10.0F;
    return measured(OrbUnitType::VOLTS(), OrbUnitMagnitude::BASEUNIT(), 1)(volts);
}

/// A count in a byte, or in a word further on when the byte says FFh and the structure has the word.
void addCount(StructureDevice& d, Structure s, orb5::DeviceProperty* property, Field<std::uint8_t> narrow,
              Field<std::uint16_t> wide)
{
    constexpr unsigned kSeeWide = 0xFF;
    const unsigned count = s[narrow] == kSeeWide && s.has(wide) ? s[wide] : s[narrow];
    d.show(property, narrow, [=](unsigned) { return unknownAt(0, formatted("%u"))(count); });
}

} // namespace

void DiscoverProcessors()
{
    constexpr unsigned char kSeeFamily2 = 0xFE;
    const auto megahertz = measured(OrbUnitType::HERTZ(), OrbUnitMagnitude::MEGA());

    GroupDevice processors("Processors", "Processors", "SMBIOS:Processors");
    forEachStructure(4, [&](Structure s, unsigned index) {
        processors.open();
        StructureDevice d(s, "Processor", "Processor", index);
        d.header();
        d.string(t4_socket, byte(0x04));
        d.enumerated(t4_type, byte(0x05));
        if (s.has(word(0x28)) && s[byte(0x06)] == kSeeFamily2)
            d.show(t4_family, word(0x28), family2);
        else
            d.enumerated(t4_family, byte(0x06));
        d.string(t4_manufacturer, byte(0x07));
        d.string(t4_ver, byte(0x10));
        d.show(t4_voltage, byte(0x11), [&](unsigned) { return voltage(s); });
        // Deliberate: a speed of 0, the standard's unknown, shows as 0 Hz.
        d.show(t4_ext_clock, word(0x12), megahertz);
        d.show(t4_max_speed, word(0x14), megahertz);
        d.show(t4_cur_speed, word(0x16), megahertz);
        d.enumerated(t4_status_msk1_srt6, byte(0x18).bits(1, 6));
        d.integer(t4_status_internal, byte(0x18));
        d.enumerated(t4_status_msk3_srt0, byte(0x18).bits(3, 0));
        d.enumerated(t4_upgrade, byte(0x19));
        d.string(t4_serial, byte(0x20));
        d.string(t4_asset_tag, byte(0x21));
        d.string(t4_part_num, byte(0x22));
        d.child(word(0x1A)); // L1, L2 and L3 cache
        d.child(word(0x1C));
        d.child(word(0x1E));
        addCount(d, s, t4_core_cnt, byte(0x23), word(0x2A));
        addCount(d, s, t4_core_enabled, byte(0x24), word(0x2C));
        addCount(d, s, t4_thread_cnt, byte(0x25), word(0x2E));
        d.bits(t4_characteristics, word(0x26));
        processors.adopt(s);
        d.publish();
    });
    processors.publish();
}

} // namespace zorpsysinfosmbios2
