// Findings for people: those of a rule together, what to do below them.
#include "check.h"

#include "identity/identity.h"
#include "knowledge/properties.h"
#include "services/localization.h"
#include "services/messages.h"

#include <algorithm>

namespace zorpinventory::tell
{

using checks::Finding;
using checks::Level;
using checks::Rule;
using embedded_host::services::message;

namespace
{

/// More findings of a rule than that are counted.
constexpr std::size_t kMostTold = 8;
constexpr std::size_t kIndent = 4;

std::string_view colourOf(Level level)
{
    switch (level) {
    case Level::Error:
        return "\x1B[31m";
    case Level::Warning:
        return "\x1B[33m";
    case Level::Note:
        break;
    }
    return "\x1B[36m";
}

std::string headline(const Rule& rule, std::string_view levels, std::string_view colour)
{
    std::string text(colour);
    text.append(levels).append("  ").append(rule.name).append(colour.empty() ? "" : "\x1B[0m").append("\n");
    return text;
}

/// The paragraph behind its indent.
std::string paragraph(const std::string& text, const Looks& looks, std::size_t indent = kIndent)
{
    return std::string(indent, ' ') + wrapped(text, looks.columns, indent) + "\n";
}

std::string typeText(unsigned type)
{
    const auto& kind = knowledge::kindOf(type);
    return &kind == &knowledge::kUnknownKind ? message("type %1", type)
                                             : message("type %1", type) + " (" + kindName(kind) + ")";
}

struct ArgumentText
{
    std::string operator()(const std::string& text) const { return printable(text); }
    std::string operator()(const checks::Bytes& bytes) const { return sizeText(bytes.number); }
    std::string operator()(const checks::Types& types) const
    {
        std::string joined;
        for (const auto type : types.numbers)
            joined += (joined.empty() ? "" : ", ") + typeText(type);
        return joined;
    }
};

/// By what a person finds the place: "Memory Device A1 (0x0011), Speed".
std::string placeOf(const Finding& finding)
{
    std::string text;
    if (finding.type) {
        const auto& kind = knowledge::kindOf(*finding.type);
        const bool isKnown = &kind != &knowledge::kUnknownKind;
        text = isKnown ? kindName(kind) : message("type %1", *finding.type);
        if (finding.device != nullptr && !kind.headline.empty()) {
            const auto property = *kind.headline.begin();
            const auto name = finding.device->text(property);
            const bool isPlace = std::ranges::find(kind.place, property) != kind.place.end(); // "DIMM A1" is a good one
            if (isPlace ? !name.empty() : identity::isReal(property, name))
                text += " " + printable(name);
        }
    }
    if (finding.handle)
        text += (text.empty() ? "" : " ") + ("(" + document::handleText(*finding.handle) + ")");
    const bool isShown = !finding.property.empty() && finding.property != knowledge::kChildLinks &&
                         !knowledge::isHeader(finding.property);
    if (isShown)
        text += ", " + label(finding.property, embedded_host::services::language());
    return text;
}

} // namespace

const char* nameOf(Level level)
{
    switch (level) {
    case Level::Error:
        return "error";
    case Level::Warning:
        return "warning";
    case Level::Note:
        break;
    }
    return "note";
}

std::string levelsOf(const Rule& rule)
{
    const std::string level = nameOf(rule.levels.level);
    return rule.levels.elsewhere == rule.levels.level ? level : level + ", " + nameOf(rule.levels.elsewhere);
}

std::string sentence(const Finding& finding)
{
    std::vector<std::string> arguments;
    for (const auto& argument : finding.arguments)
        arguments.push_back(std::visit(ArgumentText(), argument));
    return embedded_host::services::messageFrom(finding.rule->text, arguments);
}

std::string countsText(const checks::Counts& counts)
{
    return message("errors: %1, warnings: %2, notes: %3", counts[0], counts[1], counts[2]);
}

void findingsAsText(embedded_host::writing::Output& output, std::span<const Finding> findings, const Looks& looks)
{
    for (std::size_t i = 0; i < findings.size();) {
        const auto& first = findings[i];
        std::size_t end = i;
        while (end < findings.size() && findings[end].rule == first.rule && findings[end].level == first.level)
            ++end;
        output.write(headline(*first.rule, nameOf(first.level), looks.colours ? colourOf(first.level) : ""));
        const auto told = std::min(end, i + kMostTold);
        for (std::size_t each = i; each < told; ++each) {
            const auto place = placeOf(findings[each]);
            output.write(paragraph((place.empty() ? "" : place + ": ") + sentence(findings[each]), looks));
        }
        if (told != end)
            output.write(paragraph(message("%1 more of them; -f json lists all", end - told), looks));
        output.write(paragraph("→ " + message(first.rule->advice), looks));
        i = end;
    }
    output.write((findings.empty() ? message("nothing found") : countsText(checks::counts(findings))) + "\n");
}

void rulesAsText(embedded_host::writing::Output& output, std::span<const Rule* const> rules, const Looks& looks)
{
    for (const auto* rule : rules) {
        output.write(headline(*rule, levelsOf(*rule), looks.colours ? colourOf(rule->levels.level) : ""));
        output.write(paragraph(message(rule->means), looks));
        output.write(paragraph("→ " + message(rule->advice), looks));
        output.write(paragraph(rule->standard, looks));
    }
}

} // namespace zorpinventory::tell
