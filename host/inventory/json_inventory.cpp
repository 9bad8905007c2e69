// The JSON document: which key holds what, in which order.
#include "json_inventory.h"

#include "categories.h"
#include "numbers.h"
#include "services/decimal.h"
#include "table/library.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace embedded_host::inventory
{

namespace
{

void writeCapabilities(writing::JsonWriter& json, const std::vector<orb5::DeviceCapability>& capabilities)
{
    json.beginArray();
    for (const auto& capability : capabilities)
        json.plain(capability.name());
    json.endArray();
}

std::string_view view(const orb5::OrbString& text) { return text.lumString().bytes(); }

/// Writes what a value holds, one overload for each kind.
struct ValueAsJson
{
    writing::JsonWriter& json;

    void operator()(const orb5::OrbString& text) const { json.text(view(text)); }
    void operator()(int number) const { json.number(number); }
    void operator()(unsigned number) const { json.number(number); }
    void operator()(bool flag) const { json.flag(flag); }
    void operator()(orb5::Value::Percent percent) const { json.number(percent.number); }

    void operator()(const std::vector<orb5::OrbString>& elements) const
    {
        json.beginArray();
        for (const auto& element : elements)
            json.text(view(element));
        json.endArray();
    }

    void operator()(const orb5::OrbDiscreteMeasurement& measurement) const
    {
        json.beginObject();
        json.key("value");
        json.number(measurement.value());
        json.key("unit");
        json.plain(measurement.unit().name());
        json.member("text", view(measurement.toString(orb5::OrbUnitMagnitude::AUTOSCALEUNIT())));
        json.endObject();
    }
};

using Kind = lum::Number::Kind;

Kind kindOf(const orb5::OrbString& text) { return text.lumString().number().kind(); }

void writeQuantity(writing::JsonWriter& json, const lum::Number& number)
{
    std::array<char, services::kLongestNumber> digits{};
    json.number(std::string_view(digits.begin(), writeNumber(digits.begin(), number)));
}

/// Writes which numbers the texts of the properties show.
void writeNumbers(writing::JsonWriter& json, const std::vector<HeldProperty>& properties)
{
    json.key("numbers");
    json.beginObject();
    for (const auto& [declaration, value] : properties) {
        const auto* text = std::get_if<orb5::OrbString>(&value.held());
        const auto* list = std::get_if<std::vector<orb5::OrbString>>(&value.held());
        if (text != nullptr && kindOf(*text) != Kind::None) {
            const auto& number = text->lumString().number();
            json.key(declaration->name);
            json.beginObject();
            json.key(number.kind() == Kind::Code ? "code" : "value");
            writeQuantity(json, number);
            if (number.unit() != nullptr) {
                json.key("unit");
                json.plain(number.unit());
            }
            json.endObject();
        } else if (list != nullptr && !list->empty() &&
                   std::ranges::all_of(*list, [](const auto& element) { return kindOf(element) == Kind::Code; })) {
            json.key(declaration->name);
            json.beginObject();
            json.key("codes");
            json.beginArray();
            for (const auto& element : *list)
                writeQuantity(json, element.lumString().number());
            json.endArray();
            json.endObject();
        }
    }
    json.endObject();
}

void writeChild(writing::JsonWriter& json, const ChildBusId& child)
{
    json.beginObject();
    json.key("bus");
    json.plain(child.bus.name());
    json.key("id");
    if (child.id)
        json.text(child.id->bytes());
    else
        json.null();
    json.endObject();
}

void writeDevice(writing::JsonWriter& json, const DeviceRecord& device, bool withNumbers)
{
    json.beginObject();
    json.member("uid", device.uid.bytes());
    json.member("name", device.name.bytes());
    json.member("identifier", device.identifier.bytes());
    json.member("description", device.description.bytes());
    json.key("capabilities");
    writeCapabilities(json, device.capabilities);
    if (!device.uids.empty()) {
        json.key("uids");
        json.beginObject();
        for (const auto& [kind, uid] : device.uids) {
            json.member(std::to_string(kind), uid.bytes());
        }
        json.endObject();
    }
    if (!device.childBusIds.empty()) {
        json.key("childBusIds");
        json.beginArray();
        for (std::size_t i = 0; i < device.childBusIds.size(); ++i)
            writeChild(json, device.childBusIds[i]);
        json.endArray();
    }
    json.key("properties");
    json.beginObject();
    for (const auto& property : device.properties) {
        json.key(property.declaration->name);
        std::visit(ValueAsJson{json}, property.value.held());
    }
    json.endObject();
    if (withNumbers)
        writeNumbers(json, device.properties);
    json.endObject();
}

void writeModule(writing::JsonWriter& json, const ModuleInfo& module)
{
    json.beginObject();
    json.member("name", module.name);
    json.member("version", std::to_string(module.major) + "." + std::to_string(module.minor));
    json.member("build", module.build);
    json.key("capabilities");
    writeCapabilities(json, module.capabilities);
    json.endObject();
}

void writeTable(writing::JsonWriter& json)
{
    const auto table = table::summary();
    if (!table) {
        json.null();
        return;
    }
    json.beginObject();
    json.member("source", table->fromFile ? "file" : "firmware");
    json.member("version", table->version);
    json.key("bytes");
    json.number(table->bytes);
    json.key("structures");
    json.number(table->structures);
    json.endObject();
}

std::string handleText(std::uint16_t handle)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "0x%04X", unsigned{handle});
    return text.data();
}

} // namespace

void JsonInventory::beginDocument()
{
    begun_ = true;
    json_.beginObject();
    if (details_.source)
        json_.member("source", *details_.source);
    json_.member("format", "zorp-sysinfo-1");
    json_.key("module");
    writeModule(json_, moduleInfo());
    if (details_.wanted) {
        json_.key("table");
        writeTable(json_);
    }
    beginList("devices");
    if (root_) {
        beginElement();
        writeDevice(json_, *root_, details_.wanted);
    }
}

void JsonInventory::beginList(std::string_view name)
{
    json_.key(name);
    json_.beginArray();
    listIsEmpty_ = true;
}

void JsonInventory::beginElement()
{
    if (layout_ == Layout::Document)
        json_.newLine();
    listIsEmpty_ = false;
}

void JsonInventory::endList()
{
    if (layout_ == Layout::Document && !listIsEmpty_)
        json_.endLine();
    json_.endArray();
}

void JsonInventory::take(DeviceRecord&& device)
{
    if (layout_ == Layout::Lines) {
        writeDevice(json_, device, details_.wanted);
        json_.endLine();
        return;
    }
    // The firmware's table is read only when the root has been published.
    if (details_.wanted && !begun_ && !root_) {
        root_ = std::move(device);
        return;
    }
    if (!begun_)
        beginDocument();
    beginElement();
    writeDevice(json_, device, details_.wanted);
}

void JsonInventory::writeOthers()
{
    beginList("others");
    for (const auto& structure : table::structuresWithoutDevice()) {
        beginElement();
        json_.beginObject();
        json_.key("type");
        json_.number(structure.type);
        json_.member("handle", handleText(structure.handle));
        json_.key("offset");
        json_.number(structure.offset);
        json_.key("length");
        json_.number(structure.length);
        json_.endObject();
    }
    endList();
}

void JsonInventory::writeFaults()
{
    beginList("faults");
    for (const auto& fault : table::faults().all()) {
        beginElement();
        json_.beginObject();
        json_.key("offset");
        json_.number(fault.offset);
        json_.key("handle");
        if (fault.hasHandle)
            json_.plain(handleText(fault.handle));
        else
            json_.null();
        json_.member("fault", nameOf(fault.kind));
        json_.member("text", table::faults().sentence(fault));
        json_.endObject();
    }
    endList();
}

void JsonInventory::end()
{
    if (layout_ == Layout::Lines)
        return;
    if (!begun_)
        beginDocument();
    endList();
    if (details_.wanted) {
        writeOthers();
        writeFaults();
    }
    json_.endObject();
    json_.endLine();
}

void writeFailure(writing::Output& output, const std::string& source, const std::string& why)
{
    writing::JsonWriter json(output);
    json.beginObject();
    json.member("source", source);
    json.member("error", why);
    json.endObject();
    json.endLine();
}

void writeCatalogueAsJson(writing::Output& output)
{
    writing::JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-catalogue-1");
    json.key("properties");
    json.beginArray();
    for (const auto* property : declaredProperties()) {
        json.beginObject();
        json.member("name", property->name);
        json.member("type", property->type.name());
        json.key("categories");
        json.beginArray();
        for (const auto* category : categoryNames(property->categories))
            json.text(category);
        json.endArray();
        json.member("capability", property->capability.name());
        json.endObject();
    }
    json.endArray();
    json.key("texts");
    json.beginArray();
    for (const auto& text : declaredTexts())
        json.text(text);
    json.endArray();
    json.endObject();
    json.endLine();
}

} // namespace embedded_host::inventory
