// Changes for people: a line each, more where much differs.
#include "diff.h"

#include "identity/identity.h"
#include "knowledge/properties.h"
#include "services/localization.h"
#include "services/messages.h"
#include "services/utf8.h"

#include <algorithm>
#include <map>
#include <set>

namespace zorpinventory::tell
{

using compare::Change;
using compare::Difference;
using compare::What;
using document::Device;
using document::Property;
using embedded_host::services::columnsOf;
using embedded_host::services::message;

namespace
{

constexpr std::size_t kMostUngathered = 8;
constexpr std::size_t kWidestHeadline = 44;
constexpr std::string_view kArrow = " → ";
constexpr std::string_view kGap = "  ";

struct Mark
{
    std::string_view sign;
    std::string_view colour;
};

Mark markOf(What what)
{
    switch (what) {
    case What::Removed:
        return {"−", "\x1B[31m"};
    case What::Added:
        return {"+", "\x1B[32m"};
    case What::Replaced:
        return {"⇄", "\x1B[35m"};
    case What::Moved:
        return {"→", "\x1B[36m"};
    case What::Changed:
        break;
    }
    return {"~", "\x1B[33m"};
}

bool contains(const knowledge::Names& names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

/// One line of the text, in three columns.
struct Line
{
    What what;
    std::string kind;
    std::string headline;
    std::vector<std::string> details;
};

/// The side whose device a line is about: what is there, or what was.
const compare::Side& subject(const Change& change) { return change.what == What::Removed ? change.a : change.b; }

class Text
{
public:
    Text(const std::vector<Change>& changes, Looks looks, bool everything)
        : changes_(changes), looks_(looks), everything_(everything)
    {
        for (const auto& change : changes)
            for (const auto* side : {&change.a, &change.b})
                if (side->device != nullptr && side->place && !change.kind->headline.empty())
                    placesOfName_[{change.type, side->device->text(*change.kind->headline.begin())}].insert(
                        *side->place);
    }

    std::string all();

    /// The change in a few words.
    std::string inShort(const Change& change) const;

private:
    std::string name(const Change& change, const compare::Side& side) const;
    std::string headline(const Change& change) const;
    std::vector<std::string> details(const Change& change) const;
    Line line(const Change& change) const;
    void append(std::string& text, const Line& line, std::size_t kindColumns, std::size_t headlineColumns) const;

    const std::vector<Change>& changes_;
    Looks looks_;
    bool everything_;
    /// The places that go by one name: where they are several, the name alone would mislead.
    std::map<std::pair<unsigned, std::string_view>, std::set<std::string>> placesOfName_;
};

/// By what a person knows the side's device first: its place, most often.
std::string Text::name(const Change& change, const compare::Side& side) const
{
    if (side.device == nullptr || change.kind->headline.empty())
        return {};
    const auto text = side.device->text(*change.kind->headline.begin());
    const auto places = placesOfName_.find({change.type, text});
    const bool ambiguous = places != placesOfName_.end() && places->second.size() > 1;
    return printable(side.place && (ambiguous || text.empty()) ? std::string_view(*side.place) : text);
}

std::string Text::headline(const Change& change) const
{
    const bool isPair = change.a.device != nullptr && change.b.device != nullptr;
    const bool showsBoth = isPair && change.what != What::Added && change.what != What::Removed;
    const auto& side = subject(change);
    std::string text = name(change, side);
    if (showsBoth)
        if (const auto before = name(change, change.a); before != text)
            text = (before.empty() ? message("(none)") : before) + std::string(kArrow) +
                   (text.empty() ? message("(none)") : text);
    for (const auto property : change.kind->headline) {
        if (property == *change.kind->headline.begin() ||
            (showsBoth &&
             std::ranges::find(change.differences, property, &Difference::name) != change.differences.end()))
            continue;
        if (const auto value = side.device->text(property); identity::isReal(property, value))
            text += (text.empty() ? "" : ", ") + printable(value);
    }
    return text;
}

std::string shown(const Property* property)
{
    if (property == nullptr)
        return message("(none)");
    if (const auto* list = std::get_if<document::Texts>(&property->value)) {
        std::string joined;
        for (const auto text : *list)
            joined += (joined.empty() ? "" : " ") + printable(text);
        return joined.empty() ? message("(none)") : joined;
    }
    const auto text = printable(document::textOf(property->value));
    return text.empty() ? message("(none)") : text;
}

/// What came to a list and what went from it: "+ECC −Parity".
std::string listChange(const document::Texts& a, const document::Texts& b)
{
    std::multiset<std::string_view> went(a.begin(), a.end());
    std::vector<std::string_view> came;
    for (const auto text : b) {
        const auto found = went.find(text);
        if (found == went.end())
            came.push_back(text);
        else
            went.erase(found);
    }
    std::string text;
    for (const auto element : went)
        text += (text.empty() ? "−" : " −") + printable(element);
    for (const auto element : came)
        text += (text.empty() ? "+" : " +") + printable(element);
    return text;
}

std::string withLabel(const std::string& name, const std::string& value)
{
    return name.empty() ? value : name + " " + value;
}

std::string detail(const Difference& difference, const std::string& name)
{
    const auto* a = difference.a;
    const auto* b = difference.b;
    if (a != nullptr && b != nullptr && !knowledge::isLink(difference.name)) {
        const auto* listA = std::get_if<document::Texts>(&a->value);
        const auto* listB = std::get_if<document::Texts>(&b->value);
        if (listA != nullptr && listB != nullptr)
            if (const auto text = listChange(*listA, *listB); !text.empty())
                return withLabel(name, text);
    }
    const auto before = shown(a);
    const auto after = shown(b);
    if (before == after && a != nullptr && b != nullptr && a->number != nullptr && b->number != nullptr)
        return withLabel(name, before + " (" + std::string(a->number->value.digits) + std::string(kArrow) +
                                   std::string(b->number->value.digits) + ")");
    return withLabel(name, before + std::string(kArrow) + after);
}

std::string childrenOf(const Device& device)
{
    std::string joined;
    for (const auto& child : device.children)
        joined += (joined.empty() ? "" : " ") + printable(child.id.value_or("null"));
    return joined.empty() ? message("(none)") : joined;
}

std::vector<std::string> Text::details(const Change& change) const
{
    std::vector<std::string> texts;
    const auto& kind = *change.kind;
    const auto isSerial = [&](const Difference& difference) { return contains(kind.serials, difference.name); };
    if (change.what == What::Added || change.what == What::Removed || change.what == What::Moved) {
        for (const auto property : kind.serials) {
            const auto serial = subject(change).device->text(property);
            if (texts.empty() && identity::isReal(property, serial))
                texts.push_back(message("serial %1", printable(serial)));
        }
        if (change.what != What::Moved)
            return texts;
    }
    const auto isHeadline = [&](const Difference& difference) { return contains(kind.headline, difference.name); };
    const bool placeIsShown = !kind.headline.empty() && name(change, change.a) != name(change, change.b);
    const auto add = [&](const Difference& difference, const std::string& title) {
        const bool isShown = placeIsShown && difference.name == *kind.headline.begin();
        if (!isShown)
            texts.push_back(detail(difference, title));
    };
    for (const auto& difference : change.differences)
        if (isSerial(difference))
            texts.push_back(message("serial %1", detail(difference, "")));
    for (const auto& difference : change.differences)
        if (isHeadline(difference) && !isSerial(difference))
            add(difference, "");
    for (const auto& difference : change.differences)
        if (!isHeadline(difference) && !isSerial(difference))
            add(difference, label(difference.name, embedded_host::services::language()));
    if (change.childrenDiffer)
        texts.push_back(message("child links %1",
                                childrenOf(*change.a.device) + std::string(kArrow) + childrenOf(*change.b.device)));
    return texts;
}

Line Text::line(const Change& change) const
{
    return {change.what, kindName(*change.kind), headline(change), details(change)};
}

void Text::append(std::string& text, const Line& line, std::size_t kindColumns, std::size_t headlineColumns) const
{
    const auto [sign, colour] = markOf(line.what);
    std::string left = std::string(sign) + " " + padded(line.kind, kindColumns) + std::string(kGap);
    if (!line.details.empty())
        left += padded(line.headline, headlineColumns) + std::string(kGap);
    else
        left += line.headline;
    while (left.ends_with(' ') && line.details.empty())
        left.pop_back();
    text += looks_.colours ? std::string(colour) + left + "\x1B[0m" : left;
    const std::size_t start = 2 + kindColumns + kGap.size() + headlineColumns + kGap.size();
    std::size_t used = columnsOf(left);
    for (const auto& detail : line.details) {
        const bool isFirst = &detail == &line.details.front();
        const bool isLast = &detail == &line.details.back();
        const auto columns = columnsOf(detail) + (isLast ? 0 : 1);
        if (!isFirst && used + 1 + columns > looks_.columns) {
            text += "\n" + std::string(start, ' ');
            used = start;
        } else if (!isFirst) {
            text += ' ';
            ++used;
        }
        text += detail + (isLast ? "" : ",");
        used += columns;
    }
    text += '\n';
}

/// Whether something in the change tells which parts came or went.
bool isTelling(const Change& change)
{
    const auto& kind = *change.kind;
    return !kind.serials.empty() || !kind.model.empty() ||
           (change.a.device != nullptr && change.b.device != nullptr && change.a.empty != change.b.empty);
}

bool isEmptyAlone(const Change& change)
{
    return (change.b.device == nullptr && change.a.empty) || (change.a.device == nullptr && change.b.empty);
}

std::string Text::all()
{
    enum class Gathered { No, Empty, Alike };
    const auto groupOf = [&](const Change& change) {
        if (everything_)
            return Gathered::No;
        if (isEmptyAlone(change))
            return Gathered::Empty;
        return isTelling(change) ? Gathered::No : Gathered::Alike;
    };
    std::map<std::tuple<Gathered, What, unsigned>, std::size_t> counts;
    for (const auto& change : changes_)
        ++counts[{groupOf(change), change.what, change.type}];

    std::vector<Line> lines;
    std::set<std::tuple<Gathered, What, unsigned>> told;
    for (const auto& change : changes_) {
        const auto group = std::tuple(groupOf(change), change.what, change.type);
        const auto count = counts[group];
        const bool isGathered = (std::get<0>(group) == Gathered::Empty && count > 1) ||
                                (std::get<0>(group) == Gathered::Alike && count > kMostUngathered);
        if (!isGathered) {
            lines.push_back(line(change));
            continue;
        }
        if (!told.insert(group).second)
            continue;
        const bool isRemoved = change.what == What::Removed;
        std::string sentence = message("%1 of them; -v lists them", count);
        if (std::get<0>(group) == Gathered::Empty && change.type == 9)
            sentence = isRemoved ? message("%1 empty slots no longer listed", count)
                                 : message("%1 empty slots newly listed", count);
        else if (std::get<0>(group) == Gathered::Empty)
            sentence = isRemoved ? message("%1 empty sockets no longer listed", count)
                                 : message("%1 empty sockets newly listed", count);
        lines.push_back({change.what, kindName(*change.kind), sentence, {}});
    }

    std::size_t kindColumns = 0;
    std::size_t headlineColumns = 0;
    for (const auto& line : lines) {
        kindColumns = std::max(kindColumns, columnsOf(line.kind));
        if (!line.details.empty())
            headlineColumns = std::max(headlineColumns, std::min(kWidestHeadline, columnsOf(line.headline)));
    }
    std::string text;
    for (const auto& line : lines)
        append(text, line, kindColumns, headlineColumns);
    if (changes_.empty())
        return message("no changes") + "\n";
    return text + (changes_.size() == 1 ? message("1 change") : message("%1 changes", changes_.size())) + "\n";
}

std::string Text::inShort(const Change& change) const
{
    auto text = std::string(markOf(change.what).sign) + " " + kindName(*change.kind);
    if (const auto place = name(change, subject(change)); !place.empty())
        text += " " + place;
    return text;
}

} // namespace

std::string changesInShort(const std::vector<Change>& changes, std::size_t columns)
{
    const Text text(changes, {}, false);
    std::string shown;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const auto longer = shown + (shown.empty() ? "" : ", ") + text.inShort(changes[i]);
        const auto rest = changes.size() - i - 1;
        if (i != 0 && columnsOf(rest == 0 ? longer : message("%1, and %2 more", longer, rest)) > columns)
            return message("%1, and %2 more", shown, rest + 1);
        shown = longer;
    }
    return shown;
}

void diffAsText(embedded_host::writing::Output& output, const std::vector<Change>& changes, const Looks& looks,
                bool everything)
{
    output.write(Text(changes, looks, everything).all());
}

} // namespace zorpinventory::tell
