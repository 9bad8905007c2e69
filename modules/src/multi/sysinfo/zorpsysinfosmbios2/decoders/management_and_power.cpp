// Types 30, 32, 34, 35, 38 and 39: remote access, boot status, management devices, IPMI and power supplies.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::Value;

void DiscoverOutOfBandRemoteAccess()
{
    forEachStructure(30, [](Structure s, unsigned index) {
        StructureDevice d(s, "OutOfBandRemoteAccess", "Out-of-Band Remote Access", index);
        d.header();
        d.string(t30_manufacturer, byte(0x04));
        d.bits(t30_connections, byte(0x05));
        d.publish();
    });
}

void DiscoverBootInformation()
{
    forEachStructure(32, [](Structure s, unsigned index) {
        StructureDevice d(s, "BootInformation", "Boot Information", index);
        d.header();
        d.enumerated(t32_boot_status, byte(0x0A));
        if (s.has(byte(0x0B)))
            d.set(t32_additional_data, hexBytes(s.at(0x0B), static_cast<unsigned char>(s.length() - 0x0B)));
        d.publish();
    });
}

void DiscoverManagementDevice()
{
    forEachStructure(34, [](Structure s, unsigned index) {
        StructureDevice d(s, "ManagementDevice", "Management Device", index);
        d.header();
        d.string(t34_description, byte(0x04));
        d.enumerated(t34_type, byte(0x05));
        d.show(t34_addr, dword(0x06), discrete(OrbUnitType::HEXADECIMAL32()));
        d.enumerated(t34_addr_type, byte(0x0A));
        d.publish();
    });
}

void DiscoverManagementDeviceComponent()
{
    // Deliberate: handles of 16 bits in the 32-bit form, unlike the links beside them.
    const auto hex32 = discrete(OrbUnitType::HEXADECIMAL32());

    forEachStructure(35, [&](Structure s, unsigned index) {
        StructureDevice d(s, "ManagementDeviceComponent", "Management Device Component", index);
        d.header();
        d.show(t35_management_handle, word(0x05), hex32);
        d.parent(word(0x05));
        d.show(t35_component_handle, word(0x07), hex32);
        d.child(word(0x07));
        d.show(t35_threshold_handle, word(0x09), hex32);
        d.child(word(0x09));
        d.publish();
    });
}

void DiscoverDeviceInformation()
{
    forEachStructure(38, [](Structure s, unsigned index) {
        StructureDevice d(s, "DeviceInformation", "Device Information", index);
        d.header();
        d.enumerated(t38_interface, byte(0x04));
        d.show(t38_revision, byte(0x05),
               [](int raw) { return Value(lum::SprintfFormat("%i.%i", raw >> 4, raw & 0x0F)); });
        d.integer(t38_i2c_slave, byte(0x06));
        d.integer(t38_nv_storage, byte(0x07));
        // Deliberate: the access method is looked up by the structure's index, not by any of its bytes.
        if (s.has(qword(0x08)))
            d.set(t38_access_method,
                  Value(libsmbios2::Smbios2_SysInfo::getLocalizedEnumFieldString(38, 0x08, index, 0, 0)));
        // Deliberate: whole, with its lowest bit, which tells I/O space from memory.
        d.show(t38_base_addr, qword(0x08), discrete(OrbUnitType::HEXADECIMAL64()));
        d.publish();
    });
}

void DiscoverPowerSupply()
{
    // Deliberate: the number counts whole watts, though the standard gives milliwatts.
    const auto watts = measured(OrbUnitType::WATTS(), OrbUnitMagnitude::BASEUNIT());
    // Deliberate: FFFEh shows as a handle but, being no child, is not linked below.
    const auto handle = unknownAt(0xFFFF, asHandle);

    forEachStructure(39, [&](Structure s, unsigned index) {
        StructureDevice d(s, "PowerSupply", "Power Supply", index);
        d.header();
        d.integer(t39_group, byte(0x04));
        d.string(t39_location, byte(0x05));
        d.string(t39_name, byte(0x06));
        d.string(t39_manufacturer, byte(0x07));
        d.string(t39_serial, byte(0x08));
        d.string(t39_asset_tag, byte(0x09));
        d.string(t39_part_num, byte(0x0A));
        d.string(t39_revision, byte(0x0B));
        d.show(t39_max_power, word(0x0C), unknownAt(0x8000, watts));
        d.show(t39_input_vprobe_handle, word(0x10), handle);
        d.show(t39_cooling_dev_handle, word(0x12), handle);
        d.show(t39_input_cprobe_handle, word(0x14), handle);
        d.enumerated(t39_ps_flags_msk1_srt0, word(0x0E).bits(1, 0));
        d.enumerated(t39_ps_flags_msk1_srt1, word(0x0E).bits(1, 1));
        d.enumerated(t39_ps_flags_msk1_srt2, word(0x0E).bits(1, 2));
        d.enumerated(t39_ps_flags_msk4_srt3, word(0x0E).bits(4, 3));
        d.enumerated(t39_ps_flags_msk3_srt7, word(0x0E).bits(3, 7));
        d.enumerated(t39_ps_flags_msk4_srt10, word(0x0E).bits(4, 10));
        d.child(word(0x10));
        d.child(word(0x12));
        d.child(word(0x14));
        d.publish();
    });
}

} // namespace zorpsysinfosmbios2
