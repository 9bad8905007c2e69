// Types 21 to 24: pointing devices, batteries, system reset and hardware security.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbString;
using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

/// The smart battery's own text where the enumerated chemistry is unknown, else the enumeration's.
void addChemistry(StructureDevice& d, Structure s)
{
    constexpr unsigned kUnknown = 2;
    OrbString own;
    if (s[byte(0x09)] == kUnknown && s.has(byte(0x14)) && getStructureString(s.header(), s[byte(0x14)], own))
        d.set(t22_chemistry, Value(own));
    else
        d.enumerated(t22_chemistry, byte(0x09));
}

Value capacity(Structure s)
{
    const std::uint32_t designed = s[word(0x0A)];
    const std::uint32_t multiplier = s.has(byte(0x15)) ? s[byte(0x15)] : 1;
    if (designed == 0)
        return Value("UNKNOWN");
    // Deliberate: a multiplier of 0 counts as it stands and shows 0 Wh.
    return measured(OrbUnitType::WATTHOURS(), OrbUnitMagnitude::MILLI())(designed * multiplier);
}

/// The smart battery's packed date, where no string is named for the date and the date is one.
void addManufactureDate(StructureDevice& d, Structure s)
{
    constexpr unsigned kFirstYear = 1980;
    if (!s.has(word(0x12)) || s[byte(0x06)] != 0)
        return;
    const unsigned packed = s[word(0x12)];
    const unsigned day = packed & 0x1F;
    const unsigned month = packed >> 5 & 0x0F;
    const unsigned year = kFirstYear + (packed >> 9);
    if (month < 1 || month > 12 || day < 1)
        return;
    const lum::DateTime date(static_cast<unsigned short>(year), static_cast<unsigned char>(month),
                             static_cast<unsigned char>(day), 0, 0, 0, 0, '+', 0);
    d.set(t22_sbds_date, Value(date.dateStampString()));
}

} // namespace

void DiscoverPointingDevice()
{
    forEachStructure(21, [](Structure s, unsigned index) {
        StructureDevice d(s, "PointingDevice", "Pointing Device", index);
        d.header();
        d.enumerated(t21_type, byte(0x04));
        d.enumerated(t21_interface, byte(0x05));
        d.integer(t21_num_buttons, byte(0x06));
        d.publish();
    });
}

void DiscoverBattery()
{
    const auto millivolts = measured(OrbUnitType::VOLTS(), OrbUnitMagnitude::MILLI());

    forEachStructure(22, [&](Structure s, unsigned index) {
        StructureDevice d(s, "Battery", "Battery", index);
        d.header();
        d.string(t22_location, byte(0x04));
        d.string(t22_manufacturer, byte(0x05));
        d.string(t22_manufacture_date, byte(0x06));
        d.string(t22_serial, byte(0x07));
        d.string(t22_name, byte(0x08));
        addChemistry(d, s);
        d.show(t22_capacity, word(0x0A), [&](unsigned) { return capacity(s); });
        d.show(t22_voltage, word(0x0C), unknownAt(0, millivolts));
        d.string(t22_sbds_version, byte(0x0E));
        // Deliberate: FFh, the standard's unknown, shows as 255%.
        d.show(t22_max_err, byte(0x0F), percent);
        // Deliberate: the bytes in stored order, the low one first.
        d.show(t22_sbds_serial, word(0x10), [&](unsigned) { return hexBytes(s.at(0x10), 2); });
        addManufactureDate(d, s);
        d.string(t22_sbds_chemistry, byte(0x14));
        d.show(t22_oem_flags, dword(0x16), discrete(OrbUnitType::HEXADECIMAL32()));
        d.publish();
    });
}

void DiscoverSystemReset()
{
    // Deliberate: numbers, though the properties are declared as texts.
    const auto count = unknownAt(0xFFFF, asInteger);

    forEachStructure(23, [&](Structure s, unsigned index) {
        StructureDevice d(s, "SystemReset", "System Reset", index);
        d.header();
        d.show(t23_reset_cnt, word(0x05), count);
        d.show(t23_reset_lim, word(0x07), count);
        d.show(t23_watchdog_interval, word(0x09), count);
        d.show(t23_timeout, word(0x0B), count);
        d.enumerated(t23_flags_msk1_srt5, byte(0x04).bits(1, 5));
        d.enumerated(t23_flags_msk2_srt3, byte(0x04).bits(2, 3));
        d.enumerated(t23_flags_msk2_srt1, byte(0x04).bits(2, 1));
        d.enumerated(t23_flags_msk1_srt0, byte(0x04).bits(1, 0));
        d.publish();
    });
}

void DiscoverHardwareSecurity()
{
    forEachStructure(24, [](Structure s, unsigned index) {
        StructureDevice d(s, "HardwareSecurity", "Hardware Security", index);
        d.capability(orb5::DeviceCapability::Security());
        d.header();
        d.enumerated(t24_flags_msk2_srt0, byte(0x04).bits(2, 0));
        d.enumerated(t24_flags_msk2_srt2, byte(0x04).bits(2, 2));
        d.enumerated(t24_flags_msk2_srt4, byte(0x04).bits(2, 4));
        d.enumerated(t24_flags_msk2_srt6, byte(0x04).bits(2, 6));
        d.integer(t24_hw_security_byte, byte(0x04));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
