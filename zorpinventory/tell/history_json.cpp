// The history for programs.
#include "history.h"

#include "diff.h"
#include "json_values.h"

namespace zorpinventory::tell
{

using embedded_host::writing::JsonWriter;
using embedded_host::writing::Output;

void recordAsJson(JsonWriter& json, const RecordChanges& record)
{
    json.beginObject();
    json.member("machine", record.record.machine);
    json.key("number");
    json.number(record.record.number);
    json.member("taken", record.record.taken);
    json.key("source");
    writeOrNull(json, record.record.source);
    json.key("since");
    if (record.before)
        json.number(record.before->number);
    else
        json.null();
    json.key("changes");
    writeChanges(json, record.changes);
    json.endObject();
}

void machinesAsJson(Output& output, const std::vector<history::Machine>& machines)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-machines-1");
    json.key("machines");
    json.beginArray();
    for (const auto& machine : machines) {
        json.beginObject();
        json.member("machine", machine.name);
        json.key("records");
        json.number(machine.records);
        json.member("first", machine.first);
        json.member("last", machine.last);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.endLine();
}

void staysAsJson(Output& output, const std::string& serial, const std::vector<history::Stay>& stays)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-part-1");
    json.member("serial", serial);
    json.key("stays");
    json.beginArray();
    for (const auto& stay : stays) {
        json.beginObject();
        json.member("machine", stay.machine);
        json.key("type");
        json.number(stay.type);
        json.member("kind", knowledge::kindOf(stay.type).name);
        json.key("place");
        writeOrNull(json, stay.place.value_or(""));
        json.member("from", stay.from);
        json.member("to", stay.to);
        json.key("still");
        json.flag(stay.still);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.endLine();
}

} // namespace zorpinventory::tell
