// Types 0 to 3: BIOS, system, base boards and enclosures.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using libsmbios2::Smbios2_SysInfo;
using orb5::DeviceCapability;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

/// Major and minor in two bytes: "1.12".
Value release(Structure s, unsigned offset)
{
    return Value(asInteger(s[byte(offset)]).toString() + "." + asInteger(s[byte(offset + 1)]).toString());
}

Value biosCharacteristics(Structure s)
{
    auto list = knownBits(s, qword(0x0A));
    appendKnownBits(list, 0, 0x12, s[word(0x12)]); // extension bytes 1 and 2
    return list;
}

/// The bytes in stored order. Deliberate: no regrouping into the mixed-endian form, a hyphen after every byte.
Value uuid(Structure s) { return hexBytes(s.at(0x08), 16); }

/// The enclosure's class for the framework, as the text of one of four chassis types.
Value chassisClass(Structure s)
{
    constexpr unsigned kOther = 1;
    constexpr unsigned kDesktop = 3;
    constexpr unsigned kLaptop = 9;
    constexpr unsigned kAllInOne = 13;
    constexpr unsigned char kLockBit = 0x80;

    unsigned chassis = kDesktop;
    switch (s[byte(0x05)] & ~kLockBit) {
    case 1: // other
    case 2: // unknown
        chassis = kOther;
        break;
    case 8:  // portable
    case 9:  // laptop
    case 10: // notebook
    case 11: // hand held
    case 14: // sub notebook
    case 16: // lunch box
        chassis = kLaptop;
        break;
    case 13:
        chassis = kAllInOne;
        break;
    default: // Deliberate: towers, racks and everything else count as desktops.
        break;
    }
    // Deliberate: always English.
    return Value(Smbios2_SysInfo::getEnumFieldString(3, 0x05, chassis, 7, 0));
}

} // namespace

void DiscoverBIOS()
{
    forEachStructure(0, [](Structure s, unsigned index) {
        StructureDevice d(s, "BIOS", "BIOS", index);
        d.header();
        d.string(t0_vendor, byte(0x04));
        d.string(t0_ver, byte(0x05));
        d.string(t0_date, byte(0x08));
        // Deliberate: from here on nothing asks for the length, so the shortest structure has these properties too.
        d.set(t0_start, asHandle(s[word(0x06)]));
        d.set(t0_sz, discrete(OrbUnitType::BYTES())((s[byte(0x09)] + std::uint64_t{1}) * 0x10000));
        d.set(t0_characteristics, biosCharacteristics(s));
        d.set(t0_version, release(s, 0x14));
        d.set(t0_fwversion, release(s, 0x16));
        d.typeIdentifier("SMBIOS:TYPE:0");
        d.publish();
    });
}

void DiscoverSystem()
{
    forEachStructure(1, [](Structure s, unsigned index) {
        StructureDevice d(s, "System", "System", index);
        d.header();
        d.string(t1_manufacturer, byte(0x04));
        d.string(t1_product, byte(0x05));
        d.string(t1_ver, byte(0x06));
        d.string(t1_serial, byte(0x07));
        // Deliberate: ungated, and published even when all bytes are 00h or FFh.
        d.set(t1_uuid, uuid(s));
        d.enumerated(t1_wakeup, byte(0x18));
        d.string(t1_sku, byte(0x19));
        d.string(t1_family, byte(0x1A));
        d.typeIdentifier("SMBIOS:TYPE:1");
        d.publish();
    });
}

void DiscoverBaseBoard()
{
    // Deliberate: one list serves all boards and is emptied only between features and members, so the features of every
    // board but the first begin with the members of the board before.
    auto list = emptyList();
    forEachStructure(2, [&](Structure s, unsigned index) {
        StructureDevice d(s, "BaseBoard", "Base Board", index);
        d.header();
        d.string(t2_manufacturer, byte(0x04));
        d.string(t2_product, byte(0x05));
        d.string(t2_ver, byte(0x06));
        d.string(t2_serial, byte(0x07));
        d.string(t2_asset_tag, byte(0x08));
        // Deliberate: every feature that the standard knows is listed, whichever bits are set.
        appendKnownBits(list, 2, 0x09, 0xFF);
        if (s.has(byte(0x09)))
            d.set(t2_features, list);
        d.string(t2_location, byte(0x0A));
        d.integer(t2_type_int, byte(0x0D));
        d.enumerated(t2_type, byte(0x0D));
        d.parent(word(0x0B));

        list = emptyList();
        // Deliberate: the count alone says how many handles are read, whatever the length.
        const unsigned members = s.has(byte(0x0E)) ? s[byte(0x0E)] : 0;
        for (unsigned i = 0; i < members; ++i)
            d.member(list, s[word(0x0F + 2 * i)]);
        d.set(t2_members, list);
        d.typeIdentifier("SMBIOS:TYPE:2");
        d.publish();
    });
}

void DiscoverEnclosure()
{
    const auto handleSized = discrete(OrbUnitType::HEXADECIMAL16());

    forEachStructure(3, [&](Structure s, unsigned index) {
        StructureDevice d(s, "Enclosure", "Enclosure", index);
        d.header();
        d.string(t3_manufacturer, byte(0x04));
        d.enumerated(t3_type_msk1_srt7, byte(0x05).bits(1, 7));
        d.capability(DeviceCapability::Chassis());
        if (s.has(byte(0x05)))
            d.set(ChassisType, chassisClass(s));
        d.enumerated(t3_type_msk7_srt0, byte(0x05).bits(7, 0));
        d.string(t3_version, byte(0x06));
        d.string(t3_serial, byte(0x07));
        d.string(t3_asset_tag, byte(0x08));
        d.enumerated(t3_boot_state, byte(0x09));
        d.enumerated(t3_ps_state, byte(0x0A));
        d.enumerated(t3_therm_state, byte(0x0B));
        d.enumerated(t3_sec_status, byte(0x0C));
        // Deliberate: 32 bits in the 16-bit form, so small values show four digits.
        d.show(t3_oem_defined, dword(0x0D), handleSized);
        d.show(t3_height, byte(0x11), unknownAt(0, formatted("%i U")));
        d.show(t3_power_cords, byte(0x12), unknownAt(0, formatted("%d")));
        // Deliberate: always at 18h, however many contained elements there are.
        d.string(t3_sku, byte(0x18));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
