// The device of a structure under construction, with the verbs that decoders speak in, and groups of such devices.
#pragma once

#include "construction.h"
#include "fields.h"
#include "renderings.h"

#include <utility>

namespace zorpsysinfosmbios2
{

/// Handles from here up name no child: FFFEh is "not provided", FFFFh "none". Only the latter names no parent.
constexpr std::uint16_t kNoChild = 0xFFFE;
constexpr std::uint16_t kNoParent = 0xFFFF;

/// The device of one structure. The verbs that take a field do nothing when the structure is too short for it; `set`
/// and `setIf` leave that to the caller.
class StructureDevice
{
public:
    /// A device with the key's localized name, described by default name and index.
    StructureDevice(Structure s, const char* key, const char* defaultName, unsigned index)
        : s_(s), device_(createNamedStructureDevice(key, defaultName, s.handle(), index,
                                                    orb5::DeviceCapability::SMBIOS_Struct()))
    {
    }

    /// A device with a name of its own in all its texts.
    StructureDevice(Structure s, const orb5::OrbString& name, unsigned instance = 0)
        : s_(s), device_(createStructureDevice(orb5::DeviceCapability::SMBIOS_Struct(), name, name, name, s.handle(),
                                               instance))
    {
    }

    /// Type, length and handle.
    void header();

    void set(orb5::DeviceProperty* property, orb5::Value value)
    {
        device_->addProperty(property->setValue(std::move(value)));
    }

    /// The property takes the value in any case, the device only when it is wanted.
    void setIf(bool wanted, orb5::DeviceProperty* property, orb5::Value value)
    {
        property->setValue(std::move(value));
        if (wanted)
            device_->addProperty(property);
    }

    template <class T, class Rendering>
    void show(orb5::DeviceProperty* property, Field<T> field, Rendering render)
    {
        if (s_.has(field))
            set(property, render(s_[field]));
    }

    template <class T>
    void integer(orb5::DeviceProperty* property, Field<T> field)
    {
        show(property, field, asInteger);
    }

    template <class T>
    void enumerated(orb5::DeviceProperty* property, Field<T> field)
    {
        if (s_.has(field))
            set(property, orb5::Value(enumText(s_, field)));
    }

    /// The list of a bit field's texts, also when it is empty.
    template <class T>
    void bits(orb5::DeviceProperty* property, Field<T> field)
    {
        if (s_.has(field))
            set(property, knownBits(s_, field));
    }

    /// The string whose number the field holds; nothing when there is none.
    void string(orb5::DeviceProperty* property, Field<std::uint8_t> number)
    {
        if (s_.has(number))
            addStringProperty(s_.header(), s_[number], device_, property);
    }

    /// Names a child, unless the handle is FFFEh or FFFFh.
    void child(std::uint16_t handle);
    void child(Field<std::uint16_t> handle)
    {
        if (s_.has(handle))
            child(s_[handle]);
    }

    /// Names a child likewise, and appends every handle to the list, FFFEh and FFFFh too.
    void member(orb5::Value& list, std::uint16_t handle);

    /// Names the parent. Deliberate: only FFFFh names none; FFFEh is a parent, though never a child.
    void parent(Field<std::uint16_t> handle);

    void capability(const orb5::DeviceCapability& capability) { device_->addDeviceCapability(capability); }

    /// Gives the identifier that all devices of this type share.
    void typeIdentifier(const char* identifier) { device_->setUID(orb5::SysInfoDevice::TYPE_LEVEL, identifier); }

    /// Hands the device to the framework.
    void publish() { orb5::SysInfoModule::addDevice(device_); }

private:
    Structure s_;
    orb5::SysInfoDevice* device_;
};

/// A device that stands for all structures of a type. It is made with the first of them and published after the last.
class GroupDevice
{
public:
    GroupDevice(const char* key, const char* defaultName, const char* identifier)
        : key_(key), defaultName_(defaultName), identifier_(identifier)
    {
    }

    /// Makes the device, unless it is there.
    void open();

    /// Names the structure's device as a child.
    void adopt(Structure s);

    /// Publishes the device, if it was ever made.
    void publish();

private:
    const char* key_;
    const char* defaultName_;
    const char* identifier_;
    orb5::SysInfoDevice* device_ = nullptr;
};

/// Calls `decode(structure, index)` for every structure of the type, in table order.
template <class Decode>
void forEachStructure(unsigned char type, Decode decode)
{
    const void* start = nullptr;
    for (unsigned index = 0; libsmbios2::Smbios2::instance().readStructure(type, &start, index) == 0; ++index)
        decode(Structure(start), index);
}

/// The name of a device key in the user's language.
inline orb5::OrbString localizedName(const lum::String& key, const char* defaultName)
{
    lum::String name;
    return getLocalizedDeviceName(name, key, defaultName);
}

} // namespace zorpsysinfosmbios2
