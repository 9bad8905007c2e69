// Types 26 to 29: voltage, temperature and current probes, and cooling devices.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::DeviceProperty;
using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

constexpr std::uint64_t kUnknownReading = 0x8000;

/// The three kinds of probe have one layout; these are the properties that one of them fills.
struct Probe
{
    DeviceProperty *description, *status, *location;
    DeviceProperty *max, *min, *resolution, *tolerance, *accuracy, *oemFlags, *nominal;
};

void addPlace(StructureDevice& d, const Probe& probe)
{
    d.enumerated(probe.status, byte(0x05).bits(3, 5));
    d.enumerated(probe.location, byte(0x05).bits(5, 0));
}

/// The readings. Deliberate: words are unsigned, so what the standard reads as a negative one shows as a large one.
template <class Level, class Step, class Nominal>
void addReadings(StructureDevice& d, const Probe& probe, Level level, Step step, Nominal nominal)
{
    d.show(probe.max, word(0x06), unknownAt(kUnknownReading, level));
    d.show(probe.min, word(0x08), unknownAt(kUnknownReading, level));
    d.show(probe.resolution, word(0x0A), unknownAt(kUnknownReading, step));
    d.show(probe.tolerance, word(0x0C), unknownAt(kUnknownReading, level));
    // Deliberate: the standard's hundredths of a percent, undivided.
    d.show(probe.accuracy, word(0x0E), unknownAt(kUnknownReading, percent));
    d.show(probe.oemFlags, dword(0x10), discrete(OrbUnitType::HEXADECIMAL32()));
    d.show(probe.nominal, word(0x14), unknownAt(kUnknownReading, nominal));
}

/// A voltage or current probe: readings in thousandths of the unit, the resolution in tenths of those.
void discoverElectricalProbe(unsigned char type, const char* key, const char* defaultName, const OrbUnitType& unit,
                             const Probe& probe)
{
    const auto thousandths = measured(unit, OrbUnitMagnitude::MILLI());
    const auto withBothDecimals = measured(unit, OrbUnitMagnitude::MILLI(), 1);
    const auto tenths = [=](double raw) { return withBothDecimals(raw / 10.0); };

    forEachStructure(type, [&](Structure s, unsigned index) {
        StructureDevice d(s, key, defaultName, index);
        d.header();
        d.string(probe.description, byte(0x04));
        addPlace(d, probe);
        addReadings(d, probe, thousandths, tenths, thousandths);
        d.publish();
    });
}

/// A temperature, the raw number being so many parts of a degree Celsius.
auto celsius(double parts, unsigned char decimals)
{
    return [=](double raw) {
        const lum::Temperature temperature(static_cast<float>(raw / parts), decimals, 0, lum::TEMPERATURE_TYPE(0));
        return Value(temperature.toString(9, lum::TEMPERATURE_UNIT(0)));
    };
}

} // namespace

void DiscoverVoltageProbe()
{
    const Probe probe{t26_description,
                      t26_loc_and_status_msk3_srt5,
                      t26_loc_and_status_msk5_srt0,
                      t26_max,
                      t26_min,
                      t26_resolution,
                      t26_tolerance,
                      t26_accuracy,
                      t26_oem_flags,
                      t26_nominal};
    discoverElectricalProbe(26, "VoltageProbe", "Voltage Probe", OrbUnitType::VOLTS(), probe);
}

void DiscoverCoolingDevice()
{
    const auto rpm = measured(OrbUnitType::RPM(), OrbUnitMagnitude::BASEUNIT());

    forEachStructure(27, [&](Structure s, unsigned index) {
        StructureDevice d(s, "CoolingDevice", "Cooling Device", index);
        d.header();
        d.enumerated(t27_type_and_status_msk3_srt5, byte(0x06).bits(3, 5));
        d.enumerated(t27_type_and_status_msk5_srt0, byte(0x06).bits(5, 0));
        d.show(t27_probe_handle, word(0x04), asHandle);
        d.child(word(0x04));
        d.show(t27_group, byte(0x07), exceptAt(0, "NONE", formatted("%u")));
        d.show(t27_oem_flags, dword(0x08), discrete(OrbUnitType::HEXADECIMAL32()));
        d.show(t27_speed, word(0x0C), unknownAt(kUnknownReading, rpm));
        d.string(t27_description, byte(0x0E));
        d.publish();
    });
}

void DiscoverTemperatureProbe()
{
    const Probe probe{t28_description,
                      t28_loc_and_status_msk3_srt5,
                      t28_loc_and_status_msk5_srt0,
                      t28_max,
                      t28_min,
                      t28_resolution,
                      t28_tolerance,
                      t28_accuracy,
                      t28_oem_flags,
                      t28_nominal};

    forEachStructure(28, [&](Structure s, unsigned index) {
        StructureDevice d(s, "TemperatureProbe", "Temperature Probe", index);
        d.header();
        // Deliberate order: the place before the description, unlike the other two kinds of probe.
        addPlace(d, probe);
        d.string(probe.description, byte(0x04));
        // Deliberate: the nominal value alone shows whole degrees.
        addReadings(d, probe, celsius(10.0, 1), celsius(1000.0, 3), celsius(10.0, 0));
        d.publish();
    });
}

void DiscoverCurrentProbe()
{
    const Probe probe{t29_description,
                      t29_loc_and_status_msk3_srt5,
                      t29_loc_and_status_msk5_srt0,
                      t29_max,
                      t29_min,
                      t29_resolution,
                      t29_tolerance,
                      t29_accuracy,
                      t29_oem_flags,
                      t29_nominal};
    discoverElectricalProbe(29, "CurrentProbe", "Current Probe", OrbUnitType::AMPS(), probe);
}

} // namespace zorpsysinfosmbios2
