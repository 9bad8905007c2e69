// Devices as the embedded host holds them, and whoever takes them.
#pragma once

#include "orb5.h"

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
        : name(propertyName.lumString().bytes()), categories(propertyCategories), type(propertyType),
          capability(propertyCapability)
    {
    }

    std::size_t index = 0; ///< among all declarations, in their order
    std::string name;
    orb5::PropertyCategory categories;
    orb5::DataType type;
    orb5::DeviceCapability capability;
    orb5::Value value{""};
};

/// A property on a device.
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
    std::optional<std::string> id;
};

/// What a device is made of, in the order in which it was added.
struct DeviceRecord
{
    std::string name;
    std::string identifier;
    std::string description;
    std::string uid;
    std::vector<orb5::DeviceCapability> capabilities; ///< without NIL and repeats
    std::map<int, std::string> uids;                  ///< further identifiers by kind
    std::vector<ChildBusId> childBusIds;
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
