// Findings and rules as JSON: names of rules, levels and properties are the same in every language, sentences are the
// user's.
#include "check.h"

#include "json_values.h"
#include "services/messages.h"

namespace zorpinventory::tell
{

using checks::Finding;
using checks::Rule;
using embedded_host::services::message;
using embedded_host::writing::JsonWriter;

namespace
{

void write(JsonWriter& json, const Finding& finding)
{
    json.beginObject();
    json.member("rule", finding.rule->name);
    json.member("level", nameOf(finding.level));
    json.key("type");
    if (finding.type)
        json.number(*finding.type);
    else
        json.null();
    json.key("handle");
    writeOrNull(json, finding.handle ? document::handleText(*finding.handle) : std::string());
    json.key("uid");
    writeOrNull(json, finding.device != nullptr ? finding.device->uid : std::string_view());
    json.key("property");
    writeOrNull(json, finding.property);
    json.member("text", sentence(finding));
    json.member("advice", message(finding.rule->advice));
    json.endObject();
}

} // namespace

void findingsAsJson(embedded_host::writing::Output& output, std::span<const Finding> findings,
                    const std::string& source)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-check-1");
    json.key("source");
    writeOrNull(json, source);
    json.key("findings");
    json.beginArray();
    for (const auto& finding : findings)
        write(json, finding);
    json.endArray();
    json.endObject();
    json.endLine();
}

void rulesAsJson(embedded_host::writing::Output& output, std::span<const Rule* const> rules)
{
    JsonWriter json(output);
    json.beginObject();
    json.member("format", "zorp-rules-1");
    json.key("rules");
    json.beginArray();
    for (const auto* rule : rules) {
        json.beginObject();
        json.member("rule", rule->name);
        json.member("levels", levelsOf(*rule));
        json.member("means", message(rule->means));
        json.member("advice", message(rule->advice));
        json.member("standard", rule->standard);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.endLine();
}

} // namespace zorpinventory::tell
