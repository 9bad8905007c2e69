// Devices as the embedded host holds them, and whoever takes them.
#pragma once

#include "orb5.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace embedded_host
{

/// A declared property, with the value that was set on it last.
struct Property : orb5::DeviceProperty
{
    Property(const orb5::OrbString& propertyName, const orb5::PropertyCategory& propertyCategories,
             const orb5::DataType& propertyType, const orb5::DeviceCapability& propertyCapability)
        : text(propertyName.lumString()), name(text.bytes()), categories(propertyCategories), type(propertyType),
          capability(propertyCapability)
    {
    }

    std::size_t index = 0; ///< among all declarations, in their order
    const lum::String text;
    const std::string_view name;
    orb5::PropertyCategory categories;
    orb5::DataType type;
    orb5::DeviceCapability capability;
    orb5::Value value{""};
};

/// A property on a device. The texts in its value tell which number they show: `lumString().number()`.
struct HeldProperty
{
    HeldProperty(const Property* property, const orb5::Value& present) : declaration(property), value(present) {}

    const Property* declaration;
    orb5::Value value;
};

/// A child named on a bus; no identifier when the five bus coordinates were all left open.
struct ChildBusId
{
    orb5::ChildBusType bus;
    std::optional<lum::String> id;
};

/// The children that a device names. A group names one for every two bytes of some tables, so handles are kept as
/// numbers.
class ChildBusIds
{
public:
    void add(const orb5::ChildBusType& bus, const lum::String& id);
    void addNameless(const orb5::ChildBusType& bus) { addOther({bus, std::nullopt}); }
    void clear();

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    ChildBusId operator[](std::size_t index) const;

private:
    void addOther(const ChildBusId& child);

    std::deque<std::uint32_t> entries_; ///< handles; from 10000h up the places of the others
    std::vector<ChildBusId> others_;
};

/// What a device is made of, in the order in which it was added.
struct DeviceRecord
{
    lum::String name;
    lum::String identifier;
    lum::String description;
    lum::String uid;
    std::vector<orb5::DeviceCapability> capabilities; ///< without NIL and repeats
    std::map<int, lum::String> uids;                  ///< further identifiers by kind
    ChildBusIds childBusIds;
    std::vector<HeldProperty> properties;

    /// The value of a property; null when the device does not have it.
    const orb5::Value* find(std::string_view propertyName) const;

    /// Empties all lists, but keeps their memory.
    void clear();
};

/// Takes the devices of a discovery, one by one, as the module publishes them.
class DeviceSink
{
public:
    virtual ~DeviceSink() = default;
    /// The record may be moved from; what is left of it serves the next device.
    virtual void take(DeviceRecord&& device) = 0;
};

/// What the module said of itself.
struct ModuleInfo
{
    std::string name;
    unsigned major = 0;
    unsigned minor = 0;
    std::string build;
    std::vector<orb5::DeviceCapability> capabilities;
};

/// The module as it registered itself so far.
const ModuleInfo& moduleInfo();

/// All declarations, in the order in which they were made.
std::vector<const Property*> declaredProperties();

/// The keys of all declared localized texts, likewise.
std::vector<std::string> declaredTexts();

} // namespace embedded_host
