// Values, as far as they tell something of the machine.
#include "values.h"

#include "knowledge/properties.h"

#include <algorithm>

namespace zorpinventory::compare
{

using document::Property;
using document::Texts;
using document::Value;

namespace
{

/// "3.0.0" is "3.0": entry points of 3.x name a revision, others do not.
std::string_view withoutRevision(std::string_view version)
{
    constexpr std::string_view kNone = ".0";
    if (version.ends_with(kNone) && std::ranges::count(version, '.') == 2)
        version.remove_suffix(kNone.size());
    return version;
}

std::string_view comparedText(const Property& property)
{
    const auto text = document::textOf(property.value);
    return property.name == "smbios2_version" ? withoutRevision(text) : text;
}

/// The elements of a list that count, each without the blanks around it.
std::vector<std::string_view> elements(const Property& property)
{
    std::vector<std::string_view> all;
    for (const auto text : std::get<Texts>(property.value))
        if (property.name != knowledge::kBoardFeatures || !knowledge::isHandle(text))
            all.push_back(document::trimmed(text));
    return all;
}

/// The number that decides; the codes of a list that is not compared whole do not.
const document::Number* numberOf(const Property& property)
{
    return property.name != knowledge::kBoardFeatures ? property.number : nullptr;
}

bool isList(const Property& property) { return std::holds_alternative<Texts>(property.value); }

} // namespace

bool isCompared(std::string_view property, const Options& options)
{
    return knowledge::isCompared(property) && !(options.ignoreIdentity && knowledge::isIdentity(property));
}

bool sameValue(const Property& a, const Property& b)
{
    const auto* numberA = numberOf(a);
    const auto* numberB = numberOf(b);
    if (numberA != nullptr && numberB != nullptr)
        return *numberA == *numberB;
    if (isList(a) || isList(b))
        return isList(a) && isList(b) && elements(a) == elements(b);
    const auto* measuredA = std::get_if<document::Measurement>(&a.value);
    const auto* measuredB = std::get_if<document::Measurement>(&b.value);
    if (measuredA != nullptr && measuredB != nullptr)
        return measuredA->value == measuredB->value && measuredA->unit == measuredB->unit;
    return comparedText(a) == comparedText(b);
}

void appendKey(std::string& key, const Property& property, bool numbers)
{
    const auto append = [&](char mark, std::string_view text) {
        key += mark;
        key += std::to_string(text.size());
        key += ':';
        key += text;
    };
    append('p', property.name);
    if (const auto* number = numberOf(property); numbers && number != nullptr) {
        append('n', number->value.digits);
        append('u', number->unit);
        for (const auto& code : number->codes)
            append('c', code.digits);
    } else if (isList(property)) {
        for (const auto text : elements(property))
            append('e', text);
    } else if (const auto* measured = std::get_if<document::Measurement>(&property.value)) {
        append('n', measured->value.digits);
        append('u', measured->unit);
    } else {
        append('t', comparedText(property));
    }
}

} // namespace zorpinventory::compare
