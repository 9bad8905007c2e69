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

void addCapability(DeviceRecord& device, const orb5::DeviceCapability& capability)
{
    const bool known = std::ranges::find(device.capabilities, capability) != device.capabilities.end();
    if (!known && !(capability == orb5::DeviceCapability::NIL()))
        device.capabilities.push_back(capability);
}

} // namespace

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
    device->record.name = name.lumString().bytes();
    device->record.identifier = identifier.lumString().bytes();
    device->record.description = description.lumString().bytes();
    device->record.uid = uniqueIdentifier.lumString().bytes();
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
    recordOf(this).childBusIds.push_back({bus, id});
}

void SysInfoDevice::addChildBusId(const ChildBusType& bus, const OrbString& id)
{
    recordOf(this).childBusIds.push_back({bus, id.lumString().bytes()});
}

void SysInfoDevice::setUID(DEVICE_UNIQUE_IDENTIFIER kind, const OrbString& identifier)
{
    recordOf(this).uids[kind] = identifier.lumString().bytes();
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
