// Types 5 and 6: memory controllers and modules as older boards describe them.
#include "catalogue.h"
#include "decoders.h"
#include "logging.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;

namespace
{

/// A size of 2^exponent megabytes. An exponent that no 32-bit size has is logged under the code instead.
void addSize(StructureDevice& d, Structure s, orb5::DeviceProperty* property, unsigned exponent, const char* code)
{
    if (exponent < 32) {
        // Deliberate: a signed 32-bit size, so 2^31 MB shows as a negative one.
        const auto megabytes = static_cast<std::int32_t>(std::uint32_t{1} << exponent);
        d.set(property, measured(OrbUnitType::BYTES(), OrbUnitMagnitude::MEGA())(megabytes));
    } else if (auto* logger = loggerFor(4)) {
        constexpr const char* kFormat =
            "Unrealistically large memory size for SMBIOS device with handle %04Xh, it is %i";
        logger->log(4, lum::LoggerStream() + code +
                           lum::SprintfFormat(kFormat, unsigned{s.handle()}, static_cast<int>(exponent)));
    }
}

/// A type 6 size: an exponent, or one of three reasons why there is none.
void addModuleSize(StructureDevice& d, Structure s, orb5::DeviceProperty* property, Field<std::uint8_t> field,
                   const char* code)
{
    constexpr unsigned kWithoutDoubleBank = 0x7F;
    constexpr unsigned kNotDeterminable = 0x7D; // 7Eh: installed but not enabled, 7Fh: not installed
    if (!s.has(field))
        return;
    const unsigned exponent = s[field] & kWithoutDoubleBank;
    if (exponent >= kNotDeterminable)
        d.set(property, orb5::Value("UNKNOWN"));
    else
        addSize(d, s, property, exponent, code);
}

} // namespace

void DiscoverMemoryController()
{
    forEachStructure(5, [](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryController", "Memory Controller", index);
        d.header();
        d.enumerated(t5_err_method, byte(0x04));
        d.bits(t5_err_correct, byte(0x05));
        d.enumerated(t5_support_interleave, byte(0x06));
        d.enumerated(t5_current_interleave, byte(0x07));
        if (s.has(byte(0x08)))
            addSize(d, s, t5_max_mod_sz, s[byte(0x08)], "699 ");
        d.bits(t5_mem_speeds, word(0x09));
        d.bits(t5_mem_types, word(0x0B));
        d.bits(t5_voltage, byte(0x0D));
        d.integer(t5_num_slots, byte(0x0E));
        if (s.has(byte(0x0E))) {
            auto members = emptyList();
            // Deliberate: the count alone says how many handles are read, whatever the length.
            for (unsigned i = 0; i < s[byte(0x0E)]; ++i)
                d.member(members, s[word(0x0F + 2 * i)]);
            d.set(t5_members, members);
        }
        d.publish();
    });
}

void DiscoverMemoryModule()
{
    const auto nanoseconds = measured(OrbUnitType::SECONDS(), OrbUnitMagnitude::NANO());

    forEachStructure(6, [&](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryModule", "Memory Module", index);
        d.header();
        d.string(t6_socket_designation, byte(0x04));
        // Deliberate: a speed of 0, the standard's unknown, shows as 0 s.
        d.show(t6_speed, byte(0x06), nanoseconds);
        d.bits(t6_type, word(0x07));
        addModuleSize(d, s, t6_installed_sz, byte(0x09), "758 ");
        d.enumerated(t6_installed_sz_msk1_srt7, byte(0x09).bits(1, 7));
        // Deliberate: the double-bank bit of the enabled size is dropped and shown nowhere.
        addModuleSize(d, s, t6_enabled_sz, byte(0x0A), "775 ");
        d.show(t6_err_status, byte(0x0B), discrete(OrbUnitType::HEXADECIMAL8()));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
