// What the pairs tell. Nothing is paired here.
#include "changes.h"

#include "knowledge/properties.h"
#include "pairing.h"
#include "values.h"

#include <algorithm>
#include <set>

namespace zorpinventory::compare
{

using document::Property;

namespace
{

class Telling
{
public:
    Telling(const Devices& a, const Devices& b, std::vector<Pair> pairs, const Options& options)
        : a_(a), b_(b), pairs_(std::move(pairs)), options_(options)
    {
    }

    std::vector<Change> all();

private:
    Change changeOf(std::size_t a, std::size_t b) const;
    void tellPair(const Pair& pair);
    void tellAlone(std::size_t a, std::size_t b);

    bool isTold(const knowledge::Kind& kind) const { return options_.all || !kind.followsFromOthers; }
    bool isCompared(std::string_view property) const { return options_.all || compare::isCompared(property, options_); }
    bool isPlaceTakenInOther(const Devices& side, std::size_t device, const Devices& other) const;
    bool isAnotherPart(std::size_t a, std::size_t b) const;
    std::set<std::size_t> linked(const Devices& side, const Property& property) const;
    std::set<std::size_t> children(const Devices& side, std::size_t device) const;
    void addNamed(std::set<std::size_t>& pairs, const Devices& side, std::string_view handle) const;
    bool childrenDiffer(std::size_t a, std::size_t b) const;
    bool same(const Property& a, const Property& b) const;
    void compareProperties(Change& change, bool placeAlone) const;

    const Devices& a_;
    const Devices& b_;
    std::vector<Pair> pairs_;
    const Options& options_;
    std::vector<Change> changes_;
};

bool contains(const knowledge::Names& names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

Change Telling::changeOf(std::size_t a, std::size_t b) const
{
    Change change;
    const auto fill = [&](Side& side, const Devices& devices, std::size_t device) {
        if (device == kNobody)
            return;
        change.kind = &devices.kind(device);
        change.type = devices[device].type;
        side = {&devices[device], placeText(devices[device], *change.kind), devices.isEmpty(device)};
    };
    fill(change.a, a_, a);
    fill(change.b, b_, b);
    return change;
}

/// The handle's device by its pair, which both sides know it by: that of the second side. Whoever has no partner is
/// told as added or removed, not here.
void Telling::addNamed(std::set<std::size_t>& pairs, const Devices& side, std::string_view handle) const
{
    const auto device = side.withHandle(handle);
    if (device == kNobody || side.partner(device) == kNobody)
        return;
    pairs.insert(&side == &a_ ? side.partner(device) : device);
}

std::set<std::size_t> Telling::linked(const Devices& side, const Property& property) const
{
    std::set<std::size_t> pairs;
    document::forEachHandle(property.value, [&](auto handle) { addNamed(pairs, side, handle); });
    return pairs;
}

std::set<std::size_t> Telling::children(const Devices& side, std::size_t device) const
{
    std::set<std::size_t> pairs;
    for (const auto& child : side[device].children)
        if (child.id)
            addNamed(pairs, side, *child.id);
    return pairs;
}

bool Telling::childrenDiffer(std::size_t a, std::size_t b) const
{
    if (!options_.all)
        return children(a_, a) != children(b_, b);
    return !std::ranges::equal(a_[a].children, b_[b].children,
                               [](const auto& x, const auto& y) { return x.bus == y.bus && x.id == y.id; });
}

bool Telling::same(const Property& a, const Property& b) const
{
    if (knowledge::isLink(a.name) && !options_.all)
        return linked(a_, a) == linked(b_, b);
    return sameValue(a, b);
}

/// Adds the properties that differ, in the first side's order, then those that only the second side has. A link that a
/// side does not have names nobody.
void Telling::compareProperties(Change& change, bool placeAlone) const
{
    const auto counts = [&](const Property& property) {
        return isCompared(property.name) && (!placeAlone || contains(change.kind->place, property.name));
    };
    const auto namesNobody = [&](const Devices& side, const Property& property) {
        return knowledge::isLink(property.name) && !options_.all && linked(side, property).empty();
    };
    const auto ofA = change.a.device != nullptr ? change.a.device->properties : std::span<const Property>();
    const auto ofB = change.b.device != nullptr ? change.b.device->properties : std::span<const Property>();
    const bool isPair = change.a.device != nullptr && change.b.device != nullptr;
    std::vector<bool> met(ofB.size());
    std::size_t next = 0; // where the other side most likely has the same property
    for (const auto& property : ofA) {
        auto at = next < ofB.size() && ofB[next].name == property.name
                      ? next
                      : static_cast<std::size_t>(std::ranges::find(ofB, property.name, &Property::name) - ofB.begin());
        const auto* other = at < ofB.size() ? &ofB[at] : nullptr;
        if (other != nullptr) {
            met[at] = true;
            next = at + 1;
        }
        // Most are the same, which is asked faster than whether it counts.
        if ((other != nullptr ? !same(property, *other) : !isPair || !namesNobody(a_, property)) && counts(property))
            change.differences.push_back({property.name, &property, other});
    }
    for (std::size_t i = 0; i < ofB.size(); ++i)
        if (!met[i] && counts(ofB[i]) && (!isPair || !namesNobody(b_, ofB[i])))
            change.differences.push_back({ofB[i].name, nullptr, &ofB[i]});
}

bool Telling::isPlaceTakenInOther(const Devices& side, std::size_t device, const Devices& other) const
{
    const auto& place = side.place(device);
    return !place.empty() && other.countInPlace(side[device].type, place) != 0;
}

/// Whether a pair that was not made by the part is another part on the second side.
bool Telling::isAnotherPart(std::size_t a, std::size_t b) const
{
    const auto serialA = a_.serial(a);
    const auto serialB = b_.serial(b);
    if (!serialA.empty() && !serialB.empty())
        return serialA != serialB;
    return std::ranges::any_of(a_.kind(a).model, [&](auto name) {
        const auto* ofA = a_[a].find(name);
        const auto* ofB = b_[b].find(name);
        return ofA != nullptr && ofB != nullptr && identity::isReal(name, document::textOf(ofA->value)) &&
               identity::isReal(name, document::textOf(ofB->value)) && !sameValue(*ofA, *ofB);
    });
}

void Telling::tellAlone(std::size_t a, std::size_t b)
{
    auto change = changeOf(a, b);
    if (!isTold(*change.kind))
        return;
    const bool isRemoved = b == kNobody;
    const auto& [side, device, other] = isRemoved ? std::tie(a_, a, b_) : std::tie(b_, b, a_);
    // Who came to the empty place, or went from it, tells of it.
    if (side.isEmpty(device) && isPlaceTakenInOther(side, device, other))
        return;
    change.what = isRemoved ? What::Removed : What::Added;
    change.childrenDiffer = !side[device].children.empty();
    compareProperties(change, false);
    changes_.push_back(std::move(change));
}

void Telling::tellPair(const Pair& pair)
{
    const auto& [a, b, by] = pair;
    auto change = changeOf(a, b);
    if (!isTold(*change.kind))
        return;
    change.pairedBy = by;
    const bool bothEmpty = change.a.empty && change.b.empty;
    if (bothEmpty && isPlaceTakenInOther(a_, a, b_) && isPlaceTakenInOther(b_, b, a_))
        return;
    compareProperties(change, bothEmpty && !options_.all);
    change.childrenDiffer = (!bothEmpty || options_.all) && childrenDiffer(a, b);

    if (change.a.empty != change.b.empty) {
        change.what = change.a.empty ? What::Added : What::Removed;
    } else if (by == Step::Part && a_.place(a) != b_.place(b)) {
        change.what = What::Moved;
        std::erase_if(change.differences,
                      [&](const auto& difference) { return contains(change.kind->place, difference.name); });
    } else if (by != Step::Part && !bothEmpty && isAnotherPart(a, b)) {
        change.what = What::Replaced;
    } else if (change.differences.empty() && !change.childrenDiffer) {
        return;
    }
    changes_.push_back(std::move(change));
}

std::vector<Change> Telling::all()
{
    for (const auto& pair : pairs_)
        tellPair(pair);
    for (std::size_t i = 0; i < a_.size(); ++i)
        if (a_.isLeft(i))
            tellAlone(i, kNobody);
    for (std::size_t i = 0; i < b_.size(); ++i)
        if (b_.isLeft(i))
            tellAlone(kNobody, i);

    const auto rank = [](const Change& change) {
        const auto first = std::ranges::find(knowledge::kFirstTypes, change.type) - std::begin(knowledge::kFirstTypes);
        const auto* place = change.what != What::Added ? change.a.device : change.b.device;
        return std::tuple(change.what, first, change.type, place);
    };
    std::ranges::sort(changes_, {}, rank);
    return std::move(changes_);
}

} // namespace

std::vector<Change> changes(const document::Document& a, const document::Document& b, const Options& options)
{
    Devices devicesA(a, options);
    Devices devicesB(b, options);
    auto pairs = paired(devicesA, devicesB, options);
    return Telling(devicesA, devicesB, std::move(pairs), options).all();
}

} // namespace zorpinventory::compare
