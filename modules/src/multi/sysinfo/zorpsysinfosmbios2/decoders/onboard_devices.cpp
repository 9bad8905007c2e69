// Types 10 and 41: devices on the system board, several in one structure or one in each, each type with its group.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using orb5::OrbString;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

/// Stores the string in `name`, or the usual name where there is none. Returns whether there was one.
bool takeName(Structure s, unsigned char number, OrbString& name)
{
    if (getStructureString(s.header(), number, name))
        return true;
    name = localizedName("OnBoardDevice", "On Board Device");
    return false;
}

/// One device of a type 10 structure: a type byte and the number of its description.
void publishEntry(Structure s, unsigned entry, GroupDevice& group)
{
    const auto kind = byte(0x04 + 2 * entry);
    const auto text = [&](unsigned char width, unsigned char shift) {
        // Deliberate: the texts belong to offset 04h, wherever the entry lies.
        return Value(libsmbios2::Smbios2_SysInfo::getLocalizedEnumFieldString(10, 0x04, s[kind], width, shift));
    };

    OrbString name;
    const bool described = takeName(s, s[byte(0x05 + 2 * entry)], name);
    StructureDevice d(s, name, entry);
    d.header();
    d.set(t10_devs_msk1_srt7, text(1, 7));
    d.set(t10_devs_msk7_srt0, text(7, 0));
    if (described)
        d.set(t10_description, Value(name));
    // Deliberate: the structure's handle once for each entry; so every entry finds its parent.
    group.adopt(s);
    d.publish();
}

} // namespace

void DiscoverOnBoardDevices()
{
    GroupDevice devices("OnBoardDevices", "On Board Devices", "SMBIOS:OnBoardDevices");
    forEachStructure(10, [&](Structure s, unsigned) {
        const int entries = (s.length() - 4) / 2; // a type byte and a string number each
        for (int entry = 0; entry < entries; ++entry) {
            devices.open();
            publishEntry(s, static_cast<unsigned>(entry), devices);
        }
    });
    devices.publish();
}

void DiscoverOnBoardDevicesExt()
{
    GroupDevice devices("OnBoardDevicesExt", "On Board Devices (Extended Information)", "SMBIOS:OnBoardDevicesExt");
    forEachStructure(41, [&](Structure s, unsigned) {
        OrbString name;
        takeName(s, s[byte(0x04)], name);
        StructureDevice d(s, name);
        devices.open();
        d.header();
        d.string(t41_designation, byte(0x04));
        d.enumerated(t41_dev_type_msk1_srt7, byte(0x05).bits(1, 7));
        d.enumerated(t41_dev_type_msk7_srt0, byte(0x05).bits(7, 0));
        d.show(t41_dev_type_instance, byte(0x06), discrete(OrbUnitType::HEXADECIMAL8()));
        d.show(t41_pci_segment_grpid, word(0x07), discrete(OrbUnitType::HEXADECIMAL16()));
        // Deliberate: bus and device FFh are shown; only slots take them for no location.
        d.integer(t41_pci_busid, byte(0x09));
        d.show(t41_pci_device, byte(0x0A), [](unsigned raw) { return Value(raw >> 3); });
        d.show(t41_pci_function, byte(0x0A), [](unsigned raw) { return Value(raw & 7); });
        devices.adopt(s);
        d.publish();
    });
    devices.publish();
}

} // namespace zorpsysinfosmbios2
