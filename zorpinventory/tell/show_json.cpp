// What was chosen, as the document has it.
#include "show.h"

#include "json_values.h"

namespace zorpinventory::tell
{

using document::Device;
using embedded_host::writing::JsonWriter;

namespace
{

void write(JsonWriter& json, const document::Texts& texts)
{
    json.beginArray();
    for (const auto text : texts)
        json.text(text);
    json.endArray();
}

void write(JsonWriter& json, const Device& device, const Shown& shown)
{
    json.beginObject();
    json.member("uid", device.uid);
    json.member("name", device.name);
    json.member("identifier", device.identifier);
    json.member("description", device.description);
    json.key("capabilities");
    write(json, device.capabilities);
    if (!device.uids.empty()) {
        json.key("uids");
        json.beginObject();
        for (const auto& [level, uid] : device.uids) {
            json.textKey(level);
            json.text(uid);
        }
        json.endObject();
    }
    if (!device.children.empty()) {
        json.key("childBusIds");
        writeChildLinks(json, device.children);
    }
    json.key("properties");
    json.beginObject();
    for (const auto& property : device.properties) {
        if (!shown.choice.has(property))
            continue;
        json.textKey(property.name);
        writeValue(json, property.value);
    }
    json.endObject();
    if (shown.document.detailed()) {
        json.key("numbers");
        json.beginObject();
        for (const auto& property : device.properties) {
            if (property.number == nullptr || !shown.choice.has(property))
                continue;
            json.textKey(property.name);
            writeNumber(json, *property.number);
        }
        json.endObject();
    }
    json.endObject();
}

template <class Write>
void forEachDevice(const Shown& shown, Write write)
{
    const auto& devices = shown.document.devices();
    for (std::size_t i = 0; i < devices.size(); ++i)
        if (shown.devices[i])
            write(devices[i]);
}

} // namespace

void showAsJson(embedded_host::writing::Output& output, const Shown& shown)
{
    JsonWriter json(output);
    const auto& module = shown.document.module();
    json.beginObject();
    json.member("format", document::kFormat);
    json.key("module");
    json.beginObject();
    json.member("name", module.name);
    json.member("version", module.version);
    json.member("build", module.build);
    json.key("capabilities");
    write(json, module.capabilities);
    json.endObject();
    json.key("devices");
    json.beginArray();
    bool isEmpty = true;
    forEachDevice(shown, [&](const Device& device) {
        json.newLine();
        write(json, device, shown);
        isEmpty = false;
    });
    if (!isEmpty)
        json.endLine();
    json.endArray();
    json.endObject();
    json.endLine();
}

void showAsLines(embedded_host::writing::Output& output, const Shown& shown)
{
    JsonWriter json(output);
    forEachDevice(shown, [&](const Device& device) {
        write(json, device, shown);
        json.endLine();
    });
}

} // namespace zorpinventory::tell
