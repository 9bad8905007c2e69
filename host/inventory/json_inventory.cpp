// The JSON document: which key holds what, in which order.
#include "json_inventory.h"

#include "categories.h"

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
    void operator()(unsigned number) const { json.number(std::uint64_t{number}); }
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

void writeChild(writing::JsonWriter& json, const ChildBusId& child)
{
    json.beginObject();
    json.key("bus");
    json.plain(child.bus.name());
    json.key("id");
    if (child.id)
        json.text(*child.id);
    else
        json.null();
    json.endObject();
}

void writeDevice(writing::JsonWriter& json, const DeviceRecord& device)
{
    json.beginObject();
    json.member("uid", device.uid);
    json.member("name", device.name);
    json.member("identifier", device.identifier);
    json.member("description", device.description);
    json.key("capabilities");
    writeCapabilities(json, device.capabilities);
    if (!device.uids.empty()) {
        json.key("uids");
        json.beginObject();
        for (const auto& [kind, uid] : device.uids) {
            json.member(std::to_string(kind), uid);
        }
        json.endObject();
    }
    if (!device.childBusIds.empty()) {
        json.key("childBusIds");
        json.beginArray();
        for (const auto& child : device.childBusIds)
            writeChild(json, child);
        json.endArray();
    }
    json.key("properties");
    json.beginObject();
    for (const auto& property : device.properties) {
        json.key(property.declaration->name);
        std::visit(ValueAsJson{json}, property.value.held());
    }
    json.endObject();
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

} // namespace

void JsonInventory::beginDocument()
{
    begun_ = true;
    writer_.beginObject();
    writer_.member("format", "zorp-sysinfo-1");
    writer_.key("module");
    writeModule(writer_, moduleInfo());
    writer_.key("devices");
    output_.write(writer_.written());
    output_.write(":[");
}

void JsonInventory::take(DeviceRecord&& device)
{
    if (layout_ == Layout::Document) {
        const bool first = !begun_;
        if (first)
            beginDocument();
        output_.write(first ? "\n" : ",\n");
    }
    writer_.clear();
    writeDevice(writer_, device);
    output_.write(writer_.written());
    if (layout_ == Layout::Lines)
        output_.write("\n");
}

void JsonInventory::end()
{
    if (layout_ == Layout::Lines)
        return;
    const bool empty = !begun_;
    if (empty)
        beginDocument();
    output_.write(empty ? "]}\n" : "\n]}\n");
}

void writeCatalogueAsJson(writing::Output& output)
{
    writing::JsonWriter json;
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
    output.write(json.written());
    output.write("\n");
}

} // namespace embedded_host::inventory
