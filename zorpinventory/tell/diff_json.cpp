// Changes as JSON; labels and kinds in English, whatever the user's language.
#include "diff.h"

#include "json_values.h"
#include "knowledge/properties.h"
#include "texts/translations.h"

namespace zorpinventory::tell
{

using compare::Change;
using compare::What;
using embedded_host::writing::JsonWriter;

namespace
{

const char* nameOf(What what)
{
    switch (what) {
    case What::Removed:
        return "removed";
    case What::Added:
        return "added";
    case What::Replaced:
        return "replaced";
    case What::Moved:
        return "moved";
    case What::Changed:
        break;
    }
    return "changed";
}

void write(JsonWriter& json, const Compared& compared)
{
    json.beginObject();
    for (const auto& [key, text] : {std::pair<const char*, const std::string&>{"source", compared.source},
                                    {"machine", compared.machine},
                                    {"taken", compared.taken}}) {
        json.key(key);
        writeOrNull(json, text);
    }
    json.endObject();
}

/// Writes {"a":…,"b":…} where `one` writes each side.
template <class Side, class One>
void writeSides(JsonWriter& json, const char* key, const Side& a, const Side& b, One one)
{
    json.key(key);
    json.beginObject();
    json.key("a");
    one(a);
    json.key("b");
    one(b);
    json.endObject();
}

void write(JsonWriter& json, const compare::Difference& difference)
{
    const auto side = [&](const char* key, const document::Property* property) {
        json.key(key);
        if (property != nullptr)
            writeValue(json, property->value);
        else
            json.null();
    };
    json.beginObject();
    json.member("name", difference.name);
    json.member("label", label(difference.name, std::string(embedded_host::texts::kEnglish)));
    side("a", difference.a);
    side("b", difference.b);
    const auto number = [](const document::Property* property) {
        return property != nullptr ? property->number : nullptr;
    };
    if (number(difference.a) != nullptr || number(difference.b) != nullptr) {
        writeSides(json, "numbers", number(difference.a), number(difference.b), [&](const document::Number* one) {
            if (one != nullptr)
                writeNumber(json, *one);
            else
                json.null();
        });
    }
    json.endObject();
}

void writeChildren(JsonWriter& json, const Change& change)
{
    const auto side = [&](const char* key, const document::Device* device) {
        json.key(key);
        if (device != nullptr)
            writeChildLinks(json, device->children);
        else
            json.null();
    };
    json.beginObject();
    json.member("name", knowledge::kChildLinks);
    json.member("label", "Child links");
    side("a", change.a.device);
    side("b", change.b.device);
    json.endObject();
}

void write(JsonWriter& json, const Change& change)
{
    json.beginObject();
    json.member("change", nameOf(change.what));
    json.key("type");
    if (change.type == document::kRootType)
        json.null();
    else
        json.number(static_cast<int>(change.type));
    json.member("kind", change.kind->name);
    writeSides(json, "place", change.a, change.b, [&](const compare::Side& side) {
        writeOrNull(json, side.device != nullptr ? side.place.value_or("") : "");
    });
    writeSides(json, "empty", change.a, change.b, [&](const compare::Side& side) {
        if (side.device != nullptr)
            json.flag(side.empty);
        else
            json.null();
    });
    for (const auto& [key, side] : {std::pair{"a", &change.a}, {"b", &change.b}}) {
        json.key(key);
        writeOrNull(json, side->device != nullptr ? side->device->uid : std::string_view());
    }
    json.key("properties");
    json.beginArray();
    if (change.childrenDiffer)
        writeChildren(json, change);
    for (const auto& difference : change.differences)
        write(json, difference);
    json.endArray();
    json.endObject();
}

} // namespace

void diffAsJson(embedded_host::writing::Output& output, const Compared& a, const Compared& b,
                const std::vector<Change>& changes)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-diff-1");
    json.key("a");
    write(json, a);
    json.key("b");
    write(json, b);
    json.key("changes");
    writeChanges(json, changes);
    json.endObject();
    json.endLine();
}

void writeChanges(JsonWriter& json, const std::vector<Change>& changes)
{
    json.beginArray();
    for (const auto& change : changes)
        write(json, change);
    json.endArray();
}

} // namespace zorpinventory::tell
