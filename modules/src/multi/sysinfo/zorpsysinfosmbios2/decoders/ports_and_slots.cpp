// Types 8 and 9: port connectors and system slots, each type with its group.
#include "catalogue.h"
#include "decoders.h"
#include "vocabulary/structure_device.h"

namespace zorpsysinfosmbios2
{

using libsmbios2::Smbios2_SysInfo;
using orb5::OrbUnitType;
using orb5::Value;

namespace
{

/// The text of what the structure is, where the standard defines one, else the localized name of its kind.
orb5::OrbString nameByKind(Structure s, Field<std::uint8_t> kind, const char* key)
{
    if (s.has(kind) &&
        Smbios2_SysInfo::isDefinedEnum(Smbios2_SysInfo::getEnumFieldString(s.type(), kind.offset, s[kind], 0, 0)))
        return enumText(s, kind);
    return localizedName(key, key);
}

Value slotFlags(Structure s)
{
    auto list = knownBits(s, byte(0x0B));
    appendKnownBits(list, s.type(), 0x0C, s[byte(0x0C)]);
    return list;
}

/// Where on the PCI bus the slot is: all four properties, or none when bus and device/function are both FFh.
void addPciLocation(StructureDevice& d, Structure s)
{
    constexpr unsigned kNowhere = 0xFF;
    const unsigned bus = s[byte(0x0F)];
    const unsigned deviceAndFunction = s[byte(0x10)];
    if (!s.has(byte(0x10)) || (bus == kNowhere && deviceAndFunction == kNowhere))
        return;
    d.show(t9_pci_segment_grpid, word(0x0D), discrete(OrbUnitType::HEXADECIMAL16()));
    d.integer(t9_pci_busid, byte(0x0F));
    d.set(t9_pci_device, Value(deviceAndFunction >> 3));
    d.set(t9_pci_function, Value(deviceAndFunction & 7));
}

} // namespace

void DiscoverPorts()
{
    GroupDevice ports("Ports", "Ports", "SMBIOS:Ports");
    forEachStructure(8, [&](Structure s, unsigned) {
        ports.open();
        StructureDevice d(s, nameByKind(s, byte(0x08), "Port"));
        d.header();
        // Deliberate order: both designators before both connectors.
        d.string(t8_designation, byte(0x04));
        d.string(t8_external_designator, byte(0x06));
        d.enumerated(t8_connector, byte(0x05));
        d.enumerated(t8_external_connector, byte(0x07));
        d.enumerated(t8_type, byte(0x08));
        ports.adopt(s);
        d.publish();
    });
    ports.publish();
}

void DiscoverSlots()
{
    GroupDevice slots("Slots", "Slots", "SMBIOS:Slots");
    forEachStructure(9, [&](Structure s, unsigned) {
        slots.open();
        StructureDevice d(s, nameByKind(s, byte(0x05), "Slot"));
        d.header();
        d.string(t9_designation, byte(0x04));
        // Deliberate order: the raw type before its text, the raw usage after.
        d.integer(t9_type_internal, byte(0x05));
        d.enumerated(t9_type, byte(0x05));
        d.enumerated(t9_buswidth, byte(0x06));
        d.enumerated(t9_usage, byte(0x07));
        d.integer(t9_usage_internal, byte(0x07));
        d.enumerated(t9_len, byte(0x08));
        d.show(t9_slotid, word(0x09), discrete(OrbUnitType::HEXADECIMAL16()));
        // Deliberate: both bytes are examined whatever the length; only the property is gated.
        const auto flags = slotFlags(s);
        if (s.has(byte(0x0C)))
            d.set(t9_flags, flags);
        addPciLocation(d, s);
        slots.adopt(s);
        d.publish();
    });
    slots.publish();
}

} // namespace zorpsysinfosmbios2
