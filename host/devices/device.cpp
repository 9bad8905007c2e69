// Devices under construction, and their way to whoever takes them.
#include "registry.h"

#include <algorithm>

namespace embedded_host
{

namespace
{

/// A device that the module is building.
struct Device : orb5::SysInfoDevice
{
    DeviceRecord record;
};

/// The device that was published last: whatever of its memory the sink left serves the next one.
std::unique_ptr<Device>& spare()
{
    static std::unique_ptr<Device> device;
    return device;
}

DeviceRecord& recordOf(orb5::SysInfoDevice* device) { return static_cast<Device*>(device)->record; }

constexpr std::uint32_t kFirstOther = 0x10000;

void addCapability(DeviceRecord& device, const orb5::DeviceCapability& capability)
{
    const bool known = std::ranges::find(device.capabilities, capability) != device.capabilities.end();
    if (!known && !(capability == orb5::DeviceCapability::NIL()))
        device.capabilities.push_back(capability);
}

} // namespace

void ChildBusIds::add(const orb5::ChildBusType& bus, const lum::String& id)
{
    const auto& number = id.number();
    const bool isHandle = number.unit() == orb5::OrbUnitType::HEXADECIMAL16().name() &&
                          number.integer() < kFirstOther && bus == orb5::ChildBusType::SMBIOS();
    if (isHandle)
        entries_.push_back(static_cast<std::uint32_t>(number.integer()));
    else
        addOther({bus, id});
}

void ChildBusIds::addOther(const ChildBusId& child)
{
    entries_.push_back(static_cast<std::uint32_t>(kFirstOther + others_.size()));
    others_.push_back(child);
}

ChildBusId ChildBusIds::operator[](std::size_t index) const
{
    const auto entry = entries_[index];
    if (entry >= kFirstOther)
        return others_[entry - kFirstOther];
    const orb5::OrbDiscreteMeasurement handle(orb5::OrbUnitType::HEXADECIMAL16(), entry);
    return {orb5::ChildBusType::SMBIOS(), handle.toString(orb5::OrbUnitMagnitude::AUTOSCALEUNIT()).lumString()};
}

void ChildBusIds::clear()
{
    entries_.clear();
    others_.clear();
}

void DeviceRecord::clear()
{
    capabilities.clear();
    uids.clear();
    childBusIds.clear();
    properties.clear();
}

const orb5::Value* DeviceRecord::find(std::string_view propertyName) const
{
    const auto found = std::ranges::find(
        properties, propertyName, [](const auto& held) -> auto& { return held.declaration->name; });
    return found == properties.end() ? nullptr : &found->value;
}

} // namespace embedded_host

namespace orb5
{

using embedded_host::addCapability;
using embedded_host::Device;
using embedded_host::Property;
using embedded_host::recordOf;
using embedded_host::spare;

const unsigned int SysInfoDevice::NullIndex = 0xFFFFFFFF;

DeviceProperty* DeviceProperty::setValue(const Value& value) { return setValue(Value(value)); }

DeviceProperty* DeviceProperty::setValue(Value&& value)
{
    static_cast<Property*>(this)->value = std::move(value);
    return this;
}

SysInfoDevice* SysInfoDevice::createGeneric(const DeviceCapability& capability, const DeviceCapability& second,
                                            const OrbString& name, const OrbString& identifier,
                                            const OrbString& description, const OrbString& uniqueIdentifier)
{
    auto device = spare() ? std::move(spare()) : std::make_unique<Device>();
    device->record.clear();
    device->record.name = name.lumString();
    device->record.identifier = identifier.lumString();
    device->record.description = description.lumString();
    device->record.uid = uniqueIdentifier.lumString();
    addCapability(device->record, capability);
    addCapability(device->record, second);
    return device.release();
}

SysInfoDevice* SysInfoDevice::addProperty(const DeviceProperty* property)
{
    const auto* declared = static_cast<const Property*>(property);
    recordOf(this).properties.emplace_back(declared, declared->value);
    return this;
}

SysInfoDevice* SysInfoDevice::addDeviceCapability(const DeviceCapability& capability)
{
    addCapability(recordOf(this), capability);
    return this;
}

void SysInfoDevice::addChildBusId(const ChildBusType& bus, unsigned int a, unsigned int b, unsigned int c,
                                  unsigned int d, unsigned int e)
{
    std::optional<std::string> id;
    for (const unsigned index : {a, b, c, d, e})
        if (index != NullIndex)
            id = (id ? *id + ":" : "") + std::to_string(index);
    if (id)
        recordOf(this).childBusIds.add(bus, lum::String(*id));
    else
        recordOf(this).childBusIds.addNameless(bus);
}

void SysInfoDevice::addChildBusId(const ChildBusType& bus, const OrbString& id)
{
    recordOf(this).childBusIds.add(bus, id.lumString());
}

void SysInfoDevice::setUID(DEVICE_UNIQUE_IDENTIFIER kind, const OrbString& identifier)
{
    recordOf(this).uids[kind] = identifier.lumString();
}

void SysInfoModule::addDevice(SysInfoDevice* device)
{
    std::unique_ptr<Device> owned(static_cast<Device*>(device));
    auto* sink = embedded_host::devices::registry().sink;
    if (sink == nullptr)
        throw OrbException("a device was added while no discovery was running");
    sink->take(std::move(owned->record));
    spare() = std::move(owned);
}

} // namespace orb5
