// The summary as JSON; what is not known is null.
#include "summary.h"

#include "check.h"
#include "json_values.h"

namespace zorpinventory::tell
{

using embedded_host::writing::JsonWriter;

namespace
{

void member(JsonWriter& json, const char* key, const std::string& text)
{
    json.key(key);
    writeOrNull(json, text);
}

void member(JsonWriter& json, const char* key, const summary::Count& count)
{
    json.key(key);
    if (count)
        json.number(*count);
    else
        json.null();
}

void member(JsonWriter& json, const char* key, unsigned count)
{
    json.key(key);
    json.number(count);
}

void beginObject(JsonWriter& json, const char* key)
{
    json.key(key);
    json.beginObject();
}

template <class Elements, class Write>
void array(JsonWriter& json, const char* key, const Elements& elements, Write write)
{
    json.key(key);
    json.beginArray();
    for (const auto& element : elements) {
        json.beginObject();
        write(element);
        json.endObject();
    }
    json.endArray();
}

void writeThing(JsonWriter& json, const summary::Thing& thing)
{
    member(json, "maker", thing.maker);
    member(json, "product", thing.product);
    member(json, "version", thing.version);
    member(json, "serial", thing.serial);
}

const char* nameOf(identity::Key::From from)
{
    switch (from) {
    case identity::Key::From::Serial:
        return "serial";
    case identity::Key::From::Uuid:
        return "uuid";
    case identity::Key::From::Board:
        return "board";
    default:
        return "";
    }
}

} // namespace

void summaryAsJson(embedded_host::writing::Output& output, const summary::Summary& summary, const std::string& source)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-summary-1");
    member(json, "source", source);
    beginObject(json, "identity");
    member(json, "key", summary.key.text);
    member(json, "from", std::string(nameOf(summary.key.from)));
    json.endObject();
    beginObject(json, "system");
    writeThing(json, summary.system);
    member(json, "chassis", summary.chassis);
    json.endObject();
    beginObject(json, "board");
    writeThing(json, summary.board);
    json.endObject();
    beginObject(json, "firmware");
    member(json, "vendor", summary.firmware.vendor);
    member(json, "version", summary.firmware.version);
    member(json, "date", summary.firmware.date);
    json.endObject();
    array(json, "processors", summary.processors, [&](const auto& processor) {
        member(json, "name", processor.name);
        member(json, "count", processor.count);
    });
    member(json, "cores", summary.cores);
    member(json, "threads", summary.threads);
    beginObject(json, "memory");
    member(json, "bytes", summary.memory.bytes);
    member(json, "occupied", summary.memory.occupied);
    member(json, "sockets", summary.memory.sockets);
    member(json, "maximum", summary.memory.mostBytes);
    array(json, "devices", summary.memory.modules, [&](const auto& module) {
        member(json, "locator", module.locator);
        member(json, "size", module.size);
        member(json, "type", module.type);
        member(json, "configured", module.configured);
        member(json, "speed", module.possible);
        member(json, "maker", module.maker);
        member(json, "part", module.part);
        member(json, "serial", module.serial);
    });
    json.endObject();
    beginObject(json, "slots");
    member(json, "used", summary.usedSlots);
    member(json, "free", summary.freeSlots);
    json.endObject();
    for (const auto& [key, supplies] :
         {std::pair<const char*, const std::vector<summary::Supply>&>{"batteries", summary.batteries},
          {"powerSupplies", summary.powerSupplies}}) {
        array(json, key, supplies, [&](const auto& supply) {
            member(json, "maker", supply.maker);
            member(json, "name", supply.name);
            member(json, "rating", supply.rating);
        });
    }
    beginObject(json, "findings");
    for (const auto level : checks::kLevels) {
        json.key(nameOf(level));
        json.number(summary.findings[static_cast<std::size_t>(level)]);
    }
    json.endObject();
    if (const auto& since = summary.sinceRecord) {
        beginObject(json, "history");
        member(json, "record", summary::Count(static_cast<std::uint64_t>(since->number)));
        member(json, "taken", since->taken);
        member(json, "changes", summary::Count(since->changes));
        json.endObject();
    }
    json.endObject();
    json.endLine();
}

} // namespace zorpinventory::tell
