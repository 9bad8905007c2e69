// What the verbs do.
#include "structure_device.h"

#include "catalogue.h"

namespace zorpsysinfosmbios2
{

using orb5::ChildBusType;
using orb5::DeviceCapability;
using orb5::OrbDiscreteMeasurement;
using orb5::OrbUnitType;
using orb5::Value;

void StructureDevice::header()
{
    set(smbios2_hdr_type, asInteger(s_.type()));
    set(smbios2_hdr_len, Value(OrbDiscreteMeasurement(OrbUnitType::BYTES(), s_.length())));
    set(smbios2_hdr_handle, Value(OrbDiscreteMeasurement(OrbUnitType::HEXADECIMAL16(), s_.handle())));
}

void StructureDevice::child(std::uint16_t handle)
{
    if (handle < kNoChild)
        device_->addChildBusId(ChildBusType::SMBIOS(), handleText(handle));
}

void StructureDevice::member(Value& list, std::uint16_t handle)
{
    child(handle);
    list.append(handleText(handle));
}

void StructureDevice::parent(Field<std::uint16_t> handle)
{
    if (s_.has(handle) && s_[handle] != kNoParent)
        set(smbios2_parent, Value(OrbDiscreteMeasurement(OrbUnitType::HEXADECIMAL16(), s_[handle])));
}

void GroupDevice::open()
{
    if (device_ != nullptr)
        return;
    const auto name = localizedName(key_, defaultName_);
    device_ = orb5::SysInfoDevice::createGeneric(DeviceCapability::Other(), DeviceCapability::NIL(), name, identifier_,
                                                 name, identifier_);
}

void GroupDevice::adopt(Structure s) { device_->addChildBusId(ChildBusType::SMBIOS(), handleText(s.handle())); }

void GroupDevice::publish()
{
    if (device_ != nullptr)
        orb5::SysInfoModule::addDevice(device_);
}

} // namespace zorpsysinfosmbios2
