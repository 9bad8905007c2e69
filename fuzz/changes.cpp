// What changed between two documents: whatever they say, both are read or refused with a sentence, a document does not
// differ from itself, wherever its devices stand, and the changes from one to the other are the reverse of those back.
#include "compare/changes.h"
#include "compare/values.h"
#include "document/problem.h"
#include "fuzzing.h"
#include "knowledge/properties.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <optional>
#include <set>

namespace
{

using namespace zorpinventory;
using compare::Change;
using compare::Options;
using compare::What;
using document::Document;

std::optional<Document> readOrRefused(std::string text)
{
    try {
        return document::read(std::move(text), "document");
    } catch (const Problem& problem) {
        fuzz::expect(std::string_view(problem.what()).starts_with("cannot read document: "),
                     "a problem without a place");
        return std::nullopt;
    }
}

/// A change without its order, as it is told, or as it is seen from the other side.
std::multiset<std::string> unordered(const std::vector<Change>& changes, bool mirrored)
{
    std::multiset<std::string> all;
    for (const auto& change : changes) {
        const auto& a = mirrored ? change.b : change.a;
        const auto& b = mirrored ? change.a : change.b;
        auto what = change.what;
        if (mirrored && (what == What::Added || what == What::Removed))
            what = what == What::Added ? What::Removed : What::Added;
        std::string text = std::to_string(static_cast<int>(what));
        for (const auto* side : {&a, &b})
            text.append(" ").append(side->device != nullptr ? side->device->uid : "-");
        std::set<std::string_view> names;
        for (const auto& difference : change.differences)
            names.insert(difference.name);
        for (const auto name : names)
            text.append(" ").append(name);
        all.insert(std::move(text));
    }
    return all;
}

/// Whether each device can be told from all others, by its name and by what it says.
bool hasNoTwins(const Document& document)
{
    std::set<std::string_view> uids;
    std::set<std::string> contents;
    return std::ranges::all_of(document.devices(), [&](const auto& device) {
        auto content = std::to_string(device.type);
        for (const auto& property : device.properties)
            if (knowledge::isCompared(property.name) && !knowledge::isIdentity(property.name) &&
                !knowledge::isLink(property.name))
                compare::appendKey(content, property, document.detailed());
        return uids.insert(device.uid).second && contents.insert(std::move(content)).second;
    });
}

/// A document does not differ from itself with its devices the other way round.
void turnRound(const std::string& text, const Options& options)
{
    rapidjson::Document json;
    json.Parse(text.data(), text.size());
    if (json.HasParseError())
        return; // a number too large for it
    // A document that was read has them.
    auto& devices = json.FindMember("devices")->value;
    const auto written = [&] {
        rapidjson::StringBuffer buffer;
        rapidjson::Writer writer(buffer);
        json.Accept(writer);
        return document::read({buffer.GetString(), buffer.GetSize()}, "written");
    };
    const auto before = written();
    std::reverse(devices.Begin(), devices.End());
    fuzz::expect(compare::changes(before, written(), options).empty(), "a document differs from itself turned round");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static std::string before;
    fuzz::Input input(data, size);
    const unsigned choice = fuzz::takeChoice(input);
    const std::string text(input.begin(), input.end());
    const auto a = readOrRefused(text);
    if (!a)
        return 0;
    const Options options{(choice & 1) != 0, (choice & 2) != 0};
    fuzz::expect(compare::changes(*a, *readOrRefused(text), options).empty(), "a document differs from itself");
    if (!options.all && hasNoTwins(*a))
        turnRound(text, options);

    const auto b = readOrRefused(before.empty() ? text : before);
    fuzz::expect(unordered(compare::changes(*a, *b, options), false) ==
                     unordered(compare::changes(*b, *a, options), true),
                 "the way back is another way");
    before = text;
    return 0;
}
