// Types 18, 19, 20 and 33: memory errors, and the address ranges of memory arrays and devices.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitType;

namespace
{

constexpr std::uint64_t kUnknown32 = 0x80000000;
constexpr std::uint64_t kUnknown64 = 0x8000000000000000;

} // namespace

void Discover32bitMemoryError()
{
    const auto hex32 = discrete(OrbUnitType::HEXADECIMAL32());

    forEachStructure(18, [&](Structure s, unsigned index) {
        StructureDevice d(s, "32bitMemoryError", "32-bit Memory Error", index);
        d.header();
        // Deliberate order: the numbers before the three texts.
        d.show(t18_syndrome, dword(0x07), unknownAt(0, hex32));
        d.show(t18_array_address, dword(0x0B), unknownAt(kUnknown32, hex32));
        d.show(t18_device_address, dword(0x0F), unknownAt(kUnknown32, hex32));
        d.show(t18_resolution, dword(0x13), unknownAt(kUnknown32, hex32));
        d.enumerated(t18_err_type, byte(0x04));
        d.enumerated(t18_granularity, byte(0x05));
        d.enumerated(t18_operation, byte(0x06));
        d.publish();
    });
}

void Discover64bitMemoryError()
{
    const auto hex32 = discrete(OrbUnitType::HEXADECIMAL32());
    const auto hex64 = discrete(OrbUnitType::HEXADECIMAL64());

    forEachStructure(33, [&](Structure s, unsigned index) {
        StructureDevice d(s, "64bitMemoryError", "64-bit Memory Error", index);
        d.header();
        // Deliberate order: the numbers before the three texts.
        d.show(t33_syndrome, dword(0x07), unknownAt(0, hex32));
        d.show(t33_array_err_address, qword(0x0B), unknownAt(kUnknown64, hex64));
        d.show(t33_device_err_address, qword(0x13), unknownAt(kUnknown64, hex64));
        d.show(t33_err_resolution, dword(0x1B), unknownAt(kUnknown32, hex32));
        d.enumerated(t33_err_type, byte(0x04));
        d.enumerated(t33_err_granularity, byte(0x05));
        d.enumerated(t33_err_operation, byte(0x06));
        d.publish();
    });
}

// Deliberate, for both ranges: kilobytes as they are stored, in hexadecimal; FFFFFFFFh, which refers to the extended
// addresses, is shown and not followed.
void DiscoverMemoryArrayMappedAddress()
{
    const auto hex32 = discrete(OrbUnitType::HEXADECIMAL32());

    forEachStructure(19, [&](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryArrayMappedAddress", "Memory Array Mapped Address", index);
        d.header();
        d.show(t19_start, dword(0x04), hex32);
        d.show(t19_end, dword(0x08), hex32);
        d.show(t19_array_handle, word(0x0C), asHandle);
        d.parent(word(0x0C));
        d.integer(t19_partition_width, byte(0x0E));
        d.publish();
    });
}

void DiscoverMemoryDeviceMappedAddress()
{
    const auto hex32 = discrete(OrbUnitType::HEXADECIMAL32());
    const auto position = unknownAt(0xFF, formatted("%d"));

    forEachStructure(20, [&](Structure s, unsigned index) {
        StructureDevice d(s, "MemoryDeviceMappedAddress", "Memory Device Mapped Address", index);
        d.header();
        d.show(t20_start, dword(0x04), hex32);
        d.show(t20_end, dword(0x08), hex32);
        d.show(t20_device_handle, word(0x0C), asHandle);
        // Deliberate: a child of its memory device; the array's range is only shown.
        d.parent(word(0x0C));
        d.show(t20_array_mapped_handle, word(0x0E), asHandle);
        d.show(t20_row_position, byte(0x10), position);
        d.show(t20_interleave_position, byte(0x11), position);
        d.show(t20_interleave_depth, byte(0x12), position);
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
