// Values in JSON.
#include "json_values.h"

namespace zorpinventory::tell
{

using document::Measurement;
using document::Number;
using document::Numeral;
using document::Texts;
using embedded_host::writing::JsonWriter;

void writeValue(JsonWriter& json, const document::Value& value)
{
    struct Write
    {
        JsonWriter& json;

        void operator()(std::string_view text) const { json.text(text); }
        void operator()(const Numeral& numeral) const { json.number(numeral.digits); }
        void operator()(bool flag) const { json.flag(flag); }
        void operator()(const Texts& list) const
        {
            json.beginArray();
            for (const auto text : list)
                json.text(text);
            json.endArray();
        }
        void operator()(const Measurement& measurement) const
        {
            json.beginObject();
            json.key("value");
            json.number(measurement.value.digits);
            json.member("unit", measurement.unit);
            json.member("text", measurement.text);
            json.endObject();
        }
    };
    std::visit(Write{json}, value);
}

void writeNumber(JsonWriter& json, const Number& number)
{
    json.beginObject();
    if (number.kind == Number::Kind::Codes) {
        json.key("codes");
        json.beginArray();
        for (const auto& code : number.codes)
            json.number(code.digits);
        json.endArray();
    } else {
        json.key(number.kind == Number::Kind::Code ? "code" : "value");
        json.number(number.value.digits);
        if (!number.unit.empty())
            json.member("unit", number.unit);
    }
    json.endObject();
}

void writeChildLinks(JsonWriter& json, const std::vector<document::ChildLink>& children)
{
    json.beginArray();
    for (const auto& child : children) {
        json.beginObject();
        json.member("bus", child.bus);
        json.key("id");
        if (child.id)
            json.text(*child.id);
        else
            json.null();
        json.endObject();
    }
    json.endArray();
}

void writeOrNull(JsonWriter& json, std::string_view text)
{
    if (text.empty())
        json.null();
    else
        json.text(text);
}

} // namespace zorpinventory::tell
