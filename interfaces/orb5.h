// The device API: the module's life, its devices and their properties, values with units.
//
// Any operation may throw `OrbException`. Used from one thread only.
#pragma once

#include "lum.h"

#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace orb5
{

/// The device API's text, UTF-8.
class OrbString
{
public:
    OrbString() = default;
    OrbString(const char* utf8) : text_(utf8) {}
    OrbString(const lum::String& text) : text_(text) {}
    /// A text that shows a number.
    OrbString(std::string_view utf8, const lum::Number& number) : text_(utf8) { text_.show(number); }

    OrbString& operator+=(const OrbString& other)
    {
        text_ += other.text_;
        return *this;
    }

    const lum::String& lumString() const { return text_; }

    /// NUL-terminated, valid while this object lives.
    const char* getUTF8Buffer() const { return text_.bytes().data(); }

    friend OrbString operator+(OrbString left, const OrbString& right)
    {
        left += right;
        return left;
    }

private:
    lum::String text_;
};

/// A failure of the device API.
class OrbException
{
public:
    explicit OrbException(OrbString text) : text_(std::move(text)) {}

    /// A sentence that says what failed and why.
    const OrbString& toString() const { return text_; }

private:
    OrbString text_;
};

/// A named constant; values compare equal when they are the same constant.
template <class Kind>
class Tag
{
public:
    /// The constant's own name, as inventories and catalogues print it. Valid for the process's life.
    const char* name() const { return name_; }

    friend bool operator==(const Tag& a, const Tag& b) { return a.name_ == b.name_; }

protected:
    constexpr explicit Tag(const char* name) : name_(name) {}

private:
    const char* name_;
};

/// What a device or a property has to do with.
class DeviceCapability : public Tag<DeviceCapability>
{
public:
    static const DeviceCapability& SMBIOS();
    static const DeviceCapability& SMBIOS_Struct();
    static const DeviceCapability& Chassis();
    static const DeviceCapability& Security();
    static const DeviceCapability& Other();
    static const DeviceCapability& NIL(); ///< none

private:
    using Tag::Tag;
};

/// The bus on which a device names its children.
class ChildBusType : public Tag<ChildBusType>
{
public:
    static const ChildBusType& SMBIOS();

private:
    using Tag::Tag;
};

/// What kind of thing a value is.
class DataType : public Tag<DataType>
{
public:
    static const DataType& STRING();
    static const DataType& STRINGARRAY();
    static const DataType& INT32();
    static const DataType& UINT32();
    static const DataType& BOOLEAN();
    static const DataType& PERCENT();
    static const DataType& DISCRETEMEASUREMENT();

private:
    using Tag::Tag;
};

/// A set of flags that say for whom a property is and how it is used.
class PropertyCategory
{
public:
    static const PropertyCategory& SysInfo();
    static const PropertyCategory& Tier1();
    static const PropertyCategory& Tier2();
    static const PropertyCategory& Tier3();
    static const PropertyCategory& Key();
    static const PropertyCategory& ParentKey();
    static const PropertyCategory& Internal();
    static const PropertyCategory& RequiredForEnumeration();
    static const PropertyCategory& Volatile();

    /// The union of both.
    PropertyCategory operator|(const PropertyCategory& other) const
    {
        return PropertyCategory(static_cast<std::uint16_t>(flags_ | other.flags_));
    }

    /// Whether every flag of `other` is in this set.
    bool contains(const PropertyCategory& other) const { return (flags_ & other.flags_) == other.flags_; }

private:
    constexpr explicit PropertyCategory(std::uint16_t flags) : flags_(flags) {}

    std::uint16_t flags_;
};

/// The unit of a measurement. The HEXADECIMAL units mark a number shown in hexadecimal, at least that many bits wide.
class OrbUnitType : public Tag<OrbUnitType>
{
public:
    static const OrbUnitType& HERTZ();
    static const OrbUnitType& BITS();
    static const OrbUnitType& BYTES();
    static const OrbUnitType& AMPS();
    static const OrbUnitType& VOLTS();
    static const OrbUnitType& WATTS();
    static const OrbUnitType& WATTHOURS();
    static const OrbUnitType& SECONDS();
    static const OrbUnitType& RPM();
    static const OrbUnitType& HEXADECIMAL8();
    static const OrbUnitType& HEXADECIMAL16();
    static const OrbUnitType& HEXADECIMAL32();
    static const OrbUnitType& HEXADECIMAL64();

    /// How measurements in this unit are scaled and shown.
    struct Traits;
    const Traits& traits() const { return *traits_; }

private:
    constexpr OrbUnitType(const char* name, const Traits& traits) : Tag(name), traits_(&traits) {}

    const Traits* traits_;
};

/// The scale of a measurement: steps of 1000, for BYTES of 1024.
class OrbUnitMagnitude : public Tag<OrbUnitMagnitude>
{
public:
    static const OrbUnitMagnitude& NANO();
    static const OrbUnitMagnitude& MILLI();
    static const OrbUnitMagnitude& BASEUNIT();
    static const OrbUnitMagnitude& KILO();
    static const OrbUnitMagnitude& MEGA();
    static const OrbUnitMagnitude& NOTSET();        ///< as chosen before, else the base unit
    static const OrbUnitMagnitude& AUTOSCALEUNIT(); ///< the largest scale in which the value is at least 1

    /// Steps above the base unit; 0 for NOTSET and AUTOSCALEUNIT, which are no scales.
    int steps() const { return steps_; }

private:
    constexpr OrbUnitMagnitude(const char* name, int steps) : Tag(name), steps_(steps) {}

    int steps_;
};

/// An unsigned 64-bit quantity with a unit.
class OrbDiscreteMeasurement
{
public:
    OrbDiscreteMeasurement(const OrbUnitType& unit, std::uint64_t value) : unit_(unit), value_(value) {}

    /// "27 B", "4.55 KB", "0x0010": at most two decimals, trailing zeros dropped.
    OrbString toString(const OrbUnitMagnitude& magnitude) const;

    const OrbUnitType& unit() const { return unit_; }
    std::uint64_t value() const { return value_; }

private:
    OrbUnitType unit_;
    std::uint64_t value_;
};

/// A floating quantity with a unit, given in one magnitude and shown in another.
class OrbNonDiscreteMeasurement
{
public:
    /// `decimals` 0 drops trailing zeros when the value is shown, 1 keeps them.
    OrbNonDiscreteMeasurement(const OrbUnitType& unit, double value, const OrbUnitMagnitude& given,
                              const OrbUnitMagnitude& shown, int decimals)
        : unit_(unit), value_(value), given_(given), shown_(shown), keepZeros_(decimals != 0)
    {
    }

    /// "3.2 GHz", "1.20 V". NOTSET shows the magnitude chosen at construction.
    OrbString toString(int precision, const OrbUnitMagnitude& magnitude) const;

private:
    OrbUnitType unit_;
    double value_;
    OrbUnitMagnitude given_;
    OrbUnitMagnitude shown_;
    bool keepZeros_;
};

/// What a property holds on a device.
class Value
{
public:
    /// An empty value of the type: no text, no elements, 0 or false.
    explicit Value(const DataType& type);
    explicit Value(int number) : held_(number) {}
    explicit Value(unsigned int number) : held_(number) {}
    explicit Value(bool flag) : held_(flag) {}
    /// A number of a floating type; PERCENT is the only one.
    Value(double number, const DataType& type);
    explicit Value(const char* text) : held_(OrbString(text)) {}
    explicit Value(OrbString text) : held_(std::move(text)) {}
    explicit Value(const lum::String& text) : held_(std::in_place_type<OrbString>, text) {}
    explicit Value(const OrbDiscreteMeasurement& measurement) : held_(measurement) {}

    /// Adds one element to a STRINGARRAY; throws on a value of another type.
    void append(const OrbString& element);

    /// Elements of a STRINGARRAY, 0 for a value of another type.
    unsigned int stringArraySize() const;

    /// The value as text; the elements of a STRINGARRAY joined by ", ".
    OrbString toString() const;

    struct Percent
    {
        double number;
    };
    using Held =
        std::variant<OrbString, int, unsigned int, bool, Percent, std::vector<OrbString>, OrbDiscreteMeasurement>;

    /// What is held, for whoever stores or shows values.
    const Held& held() const { return held_; }

private:
    Held held_;
};

/// A declared property, shared by every device that carries it.
class DeviceProperty
{
public:
    /// Stores a copy of the value until the next call. Returns this property.
    DeviceProperty* setValue(const Value& value);
    DeviceProperty* setValue(Value&& value);

    DeviceProperty(const DeviceProperty&) = delete;
    DeviceProperty& operator=(const DeviceProperty&) = delete;

protected:
    DeviceProperty() = default;
    ~DeviceProperty() = default;
};

/// A device on its way to the framework. It belongs to the module until `SysInfoModule::addDevice` takes it.
class SysInfoDevice
{
public:
    /// Kinds of further identifiers.
    enum DEVICE_UNIQUE_IDENTIFIER { TYPE_LEVEL = 2 };

    /// The index that means that none is given.
    static const unsigned int NullIndex;

    /// Makes a device. `second` may be NIL. Never null.
    static SysInfoDevice* createGeneric(const DeviceCapability& capability, const DeviceCapability& second,
                                        const OrbString& name, const OrbString& identifier,
                                        const OrbString& description, const OrbString& uniqueIdentifier);

    /// Records the property with a copy of its present value. Returns this device.
    SysInfoDevice* addProperty(const DeviceProperty* property);

    /// Adds a further capability. Returns this device.
    SysInfoDevice* addDeviceCapability(const DeviceCapability& capability);

    /// Names a child by five bus coordinates, each `NullIndex` where there is none.
    void addChildBusId(const ChildBusType& bus, unsigned int a, unsigned int b, unsigned int c, unsigned int d,
                       unsigned int e);

    /// Names a child by its text on the bus: for SMBIOS the handle's text, what follows "SMBIOS:" in the child's
    /// unique identifier.
    void addChildBusId(const ChildBusType& bus, const OrbString& id);

    /// Gives the device a further identifier of this kind.
    void setUID(DEVICE_UNIQUE_IDENTIFIER kind, const OrbString& identifier);

    SysInfoDevice(const SysInfoDevice&) = delete;
    SysInfoDevice& operator=(const SysInfoDevice&) = delete;

protected:
    SysInfoDevice() = default;
    ~SysInfoDevice() = default;
};

/// A text that the framework keeps in the current language.
class LocalizedString
{
public:
    /// The text, valid for the process's life.
    const OrbString& localizedString() const;

    LocalizedString(const LocalizedString&) = delete;
    LocalizedString& operator=(const LocalizedString&) = delete;

protected:
    LocalizedString() = default;
    ~LocalizedString() = default;
};

/// What diagnostics modules of every kind may ask for.
class DiagModule
{
public:
    /// Declares a localized text by its key. It lives as long as the process.
    static LocalizedString* createLocalizedString(const OrbString& key);
};

/// The life of a system-information module: everything is set before `start`, devices are added during it.
class SysInfoModule
{
public:
    /// Hands over the command line as `main` got it. Throws when it is wrong.
    static void setCmdLineArgs(int argc, const char* const* argv);

    static void setVersion(unsigned int major, unsigned int minor, const OrbString& build);
    static void setModuleCapabilities(const DeviceCapability& capability);

    /// Sets what `start` calls, once for each discovery.
    static void setDiscoverDevicesCallback(void (*discover)());

    /// Does what the command line asks for and returns when the module's work is over.
    static int start();

    /// Declares a property. It lives as long as the process.
    static DeviceProperty* createDeviceProperty(const OrbString& name, const PropertyCategory& categories,
                                                const DataType& type, const DeviceCapability& capability);

    /// Publishes a finished device and takes ownership of it. Called during a discovery only.
    static void addDevice(SysInfoDevice* device);
};

} // namespace orb5
