// Values and the tags that describe them.
#include "orb5.h"
#include "services/decimal.h"

#include <array>
#include <charconv>
#include <limits>

namespace orb5
{

// clang-format off
const DeviceCapability& DeviceCapability::SMBIOS()        { static constexpr DeviceCapability kTag("SMBIOS"); return kTag; }
const DeviceCapability& DeviceCapability::SMBIOS_Struct() { static constexpr DeviceCapability kTag("SMBIOS_Struct"); return kTag; }
const DeviceCapability& DeviceCapability::Chassis()       { static constexpr DeviceCapability kTag("Chassis"); return kTag; }
const DeviceCapability& DeviceCapability::Security()      { static constexpr DeviceCapability kTag("Security"); return kTag; }
const DeviceCapability& DeviceCapability::Other()         { static constexpr DeviceCapability kTag("Other"); return kTag; }
const DeviceCapability& DeviceCapability::NIL()           { static constexpr DeviceCapability kTag("NIL"); return kTag; }

const ChildBusType& ChildBusType::SMBIOS() { static constexpr ChildBusType kTag("SMBIOS"); return kTag; }

const DataType& DataType::STRING()              { static constexpr DataType kTag("STRING"); return kTag; }
const DataType& DataType::STRINGARRAY()         { static constexpr DataType kTag("STRINGARRAY"); return kTag; }
const DataType& DataType::INT32()               { static constexpr DataType kTag("INT32"); return kTag; }
const DataType& DataType::UINT32()              { static constexpr DataType kTag("UINT32"); return kTag; }
const DataType& DataType::BOOLEAN()             { static constexpr DataType kTag("BOOLEAN"); return kTag; }
const DataType& DataType::PERCENT()             { static constexpr DataType kTag("PERCENT"); return kTag; }
const DataType& DataType::DISCRETEMEASUREMENT() { static constexpr DataType kTag("DISCRETEMEASUREMENT"); return kTag; }

const PropertyCategory& PropertyCategory::SysInfo()                { static constexpr PropertyCategory kFlag(1 << 0); return kFlag; }
const PropertyCategory& PropertyCategory::Tier1()                  { static constexpr PropertyCategory kFlag(1 << 1); return kFlag; }
const PropertyCategory& PropertyCategory::Tier2()                  { static constexpr PropertyCategory kFlag(1 << 2); return kFlag; }
const PropertyCategory& PropertyCategory::Tier3()                  { static constexpr PropertyCategory kFlag(1 << 3); return kFlag; }
const PropertyCategory& PropertyCategory::Key()                    { static constexpr PropertyCategory kFlag(1 << 4); return kFlag; }
const PropertyCategory& PropertyCategory::ParentKey()              { static constexpr PropertyCategory kFlag(1 << 5); return kFlag; }
const PropertyCategory& PropertyCategory::Internal()               { static constexpr PropertyCategory kFlag(1 << 6); return kFlag; }
const PropertyCategory& PropertyCategory::RequiredForEnumeration() { static constexpr PropertyCategory kFlag(1 << 7); return kFlag; }
const PropertyCategory& PropertyCategory::Volatile()               { static constexpr PropertyCategory kFlag(1 << 8); return kFlag; }
// clang-format on

namespace
{

Value::Held emptyOf(const DataType& type)
{
    if (type == DataType::STRINGARRAY())
        return std::vector<OrbString>();
    if (type == DataType::INT32())
        return 0;
    if (type == DataType::UINT32())
        return 0u;
    if (type == DataType::BOOLEAN())
        return false;
    if (type == DataType::PERCENT())
        return Value::Percent{0};
    if (type == DataType::DISCRETEMEASUREMENT())
        return OrbDiscreteMeasurement(OrbUnitType::BITS(), 0);
    return OrbString();
}

OrbString decimal(auto integer)
{
    std::array<char, std::numeric_limits<decltype(integer)>::digits10 + 2> text{};
    const char* end = std::to_chars(text.begin(), text.end(), integer).ptr;
    return lum::String(std::string_view(text.begin(), end));
}

/// The text of what a value holds, one overload for each kind.
struct Text
{
    OrbString operator()(const OrbString& text) const { return text; }
    OrbString operator()(int number) const { return decimal(number); }
    OrbString operator()(unsigned number) const { return decimal(number); }
    OrbString operator()(bool flag) const { return flag ? "true" : "false"; }
    OrbString operator()(Value::Percent percent) const
    {
        using namespace embedded_host::services;
        std::array<char, kLongestDecimal + 1> text{};
        char* end = writeDecimal(text.data(), percent.number, 2, Zeros::Drop);
        *end++ = '%';
        return {std::string_view(text.data(), end), lum::Number::real(percent.number, "PERCENT")};
    }
    OrbString operator()(const std::vector<OrbString>& elements) const
    {
        std::string text;
        for (const auto& element : elements)
            text.append(&element == &elements.front() ? "" : ", ").append(element.lumString().bytes());
        return lum::String(text);
    }
    OrbString operator()(const OrbDiscreteMeasurement& measurement) const
    {
        return measurement.toString(OrbUnitMagnitude::AUTOSCALEUNIT());
    }
};

} // namespace

Value::Value(const DataType& type) : held_(emptyOf(type)) {}

Value::Value(double number, const DataType& type) : held_(Percent{number})
{
    if (!(type == DataType::PERCENT()))
        throw OrbException(OrbString("a floating value cannot be of type ") + type.name());
}

void Value::append(const OrbString& element)
{
    auto* elements = std::get_if<std::vector<OrbString>>(&held_);
    if (elements == nullptr)
        throw OrbException("only a STRINGARRAY can take a further element");
    if (elements->empty())
        elements->reserve(8); // most lists grow to a few elements
    elements->push_back(element);
}

unsigned int Value::stringArraySize() const
{
    const auto* elements = std::get_if<std::vector<OrbString>>(&held_);
    return elements == nullptr ? 0 : static_cast<unsigned>(elements->size());
}

OrbString Value::toString() const { return std::visit(Text(), held_); }

} // namespace orb5
