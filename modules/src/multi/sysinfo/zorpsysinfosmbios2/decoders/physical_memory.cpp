// Types 16 and 17: memory arrays and memory devices.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using libsmbios2::Smbios2;
using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

constexpr unsigned kSmbios23 = 0x02030000;

Value bytesIn(const OrbUnitMagnitude& magnitude, double number)
{
    return measured(OrbUnitType::BYTES(), magnitude)(number);
}

Value maximumCapacity(Structure s)
{
    constexpr std::uint32_t kSeeExtended = 0x80000000;
    const auto kilobytes = s[dword(0x07)];
    if (kilobytes == kSeeExtended && s.has(qword(0x0F)))
        return bytesIn(OrbUnitMagnitude::BASEUNIT(), static_cast<double>(s[qword(0x0F)]));
    return bytesIn(OrbUnitMagnitude::KILO(), kilobytes);
}

/// What the socket holds.
Value socketSize(Structure s)
{
    constexpr unsigned kEmpty = 0;
    constexpr unsigned kUnknown = 0xFFFF;
    constexpr unsigned kSeeExtended = 0x7FFF;
    constexpr unsigned kInKilobytes = 0x8000;
    const unsigned size = s[word(0x0C)];
    if (size == kEmpty)
        return Value(notInstalled->localizedString());
    if (size == kUnknown)
        return Value("UNKNOWN");
    if (size == kSeeExtended && s.has(dword(0x1C)))
        return bytesIn(OrbUnitMagnitude::MEGA(), s[dword(0x1C)]);
    // Deliberate: bit 15, which says that the unit is KB, stays in the number: 8200h shows 33280 KB.
    return bytesIn((size & kInKilobytes) != 0 ? OrbUnitMagnitude::KILO() : OrbUnitMagnitude::MEGA(), size);
}

} // namespace

void DiscoverMemoryArray()
{
    forEachStructure(16, [](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryArray", "Memory Array", index);
        d.header();
        d.enumerated(t16_location, byte(0x04));
        d.enumerated(t16_use, byte(0x05));
        d.enumerated(t16_err_correct, byte(0x06));
        d.show(t16_max_sz, dword(0x07), [&](std::uint32_t) { return maximumCapacity(s); });
        d.show(t16_error_handle, word(0x0B), asHandle);
        d.integer(t16_num, word(0x0D));
        d.child(word(0x0B));
        d.publish();
    });
}

void DiscoverMemoryDevice()
{
    const auto bits = unknownAt(0xFFFF, measured(OrbUnitType::BITS(), OrbUnitMagnitude::BASEUNIT()));
    // Deliberate: a speed of 0, the standard's unknown, shows as 0 Hz.
    const auto megahertz = measured(OrbUnitType::HERTZ(), OrbUnitMagnitude::MEGA());
    const auto millivolts = unknownAt(0, measured(OrbUnitType::VOLTS(), OrbUnitMagnitude::MILLI()));

    forEachStructure(17, [&](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryDevice", "Memory Device", index);
        d.header();
        d.show(t17_physical_handle, word(0x04), asHandle);
        d.show(t17_err_info_handle, word(0x06), asHandle);
        // Deliberate: ungated, so a structure cut short before its size still has this property.
        d.set(t17_socket_populated, Value(s[word(0x0C)] != 0));
        d.show(t17_total_width, word(0x08), bits);
        d.show(t17_data_width, word(0x0A), bits);
        // Deliberate: the property takes the size in any case, the device only when it is long enough.
        d.setIf(s.has(word(0x0C)), t17_sz, socketSize(s));
        d.enumerated(t17_form_factor, byte(0x0E));
        d.integer(t17_device_set, byte(0x0F));
        d.string(t17_locator, byte(0x10));
        d.enumerated(t17_mem_type, byte(0x12));
        if (s.has(word(0x13))) {
            const auto details = knownBits(s, word(0x13));
            d.setIf(details.stringArraySize() != 0, t17_type_detail, details);
        }
        d.string(t17_bank_locator, byte(0x11));
        if (Smbios2::instance().getVersion() >= kSmbios23) {
            d.show(t17_speed, word(0x15), megahertz);
            d.string(t17_manufacturer, byte(0x17));
            d.string(t17_serial, byte(0x18));
            d.string(t17_asset_tag, byte(0x19));
            d.string(t17_part_num, byte(0x1A));
        }
        d.show(t17_config_mem_clock_speed, word(0x20), megahertz);
        d.show(t17_min_voltage, word(0x22), millivolts);
        d.show(t17_max_voltage, word(0x24), millivolts);
        d.show(t17_conf_voltage, word(0x26), millivolts);
        d.parent(word(0x04));
        d.child(word(0x06));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
