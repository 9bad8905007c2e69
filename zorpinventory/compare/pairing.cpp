// The steps of pairing. A step is a key and a verb: devices of one type whose keys are the same are joined, those whose
// key nobody else has, or the first with the first. All keys of a round are made before any pair of it, and a pair is
// never taken back.
#include "pairing.h"

#include "knowledge/properties.h"
#include "values.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>

namespace zorpinventory::compare
{

namespace
{

/// The paired devices that a device has links with, each with the link's name: a sum, so that pairs may join it in any
/// order, of 128 bits, so that two companies have the same one only if they are the same.
struct Company
{
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    std::size_t links = 0;

    bool operator==(const Company&) const = default;
    bool operator<(const Company& other) const
    {
        return std::tie(low, high, links) < std::tie(other.low, other.high, other.links);
    }

    void add(const Link& link, std::size_t pair)
    {
        const auto member = std::hash<std::string_view>()(link.name) * 2 + (link.outward ? 1 : 0);
        low += mixed(member ^ mixed(pair));
        high += mixed(mixed(member) + pair);
        ++links;
    }

private:
    /// Spreads a number over all bits; the constants are those of the splitmix generator.
    static std::uint64_t mixed(std::uint64_t x)
    {
        x += 0x9E3779B97F4A7C15;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
        return x ^ (x >> 31);
    }
};

class Pairing
{
public:
    Pairing(Devices& a, Devices& b, const Options& options)
        : sides_{&a, &b}, options_(options), companies_{std::vector<Company>(a.size()), std::vector<Company>(b.size())},
          meetings_{std::vector<Meeting*>(a.size()), std::vector<Meeting*>(b.size())}
    {
    }

    void samePart();
    void samePlace();
    void sameCompany();
    void sameContent();
    void samePosition();

    std::vector<Pair> takePairs() { return std::move(pairs_); }

private:
    using Couples = std::vector<std::pair<std::size_t, std::size_t>>;

    /// Those who are left of both sides with one type, one place and one company.
    struct Meeting
    {
        struct
        {
            std::size_t count = 0;
            std::size_t sum = 0; ///< of the devices' indices: of a single one, that one's
        } of[2];
    };
    using MeetingKey = std::tuple<unsigned, std::string, Company>;

    template <class Key>
    void joinUnique(Step step, Key key);
    template <class Key>
    bool joinInOrder(Step step, unsigned type, Key key);
    std::vector<std::size_t> left(int side, unsigned type) const;
    void join(const Couples& couples, Step step);
    void leaveMeeting(int side, std::size_t device);
    void tellNeighbours(int side, std::size_t device, std::size_t pair);
    std::vector<unsigned> types() const;

    Devices* sides_[2];
    const Options& options_;
    std::vector<Pair> pairs_;

    // What makes it cheap to ask for companies again and again: only those are looked at whose company has changed.
    std::vector<Company> companies_[2];
    std::map<MeetingKey, Meeting> known_;
    std::vector<Meeting*> meetings_[2];                ///< of each device; null before it has any company
    std::vector<std::pair<int, std::size_t>> changed_; ///< devices that have new company
    std::vector<Meeting*> toLookAt_;                   ///< meetings that somebody joined or left
};

void Pairing::tellNeighbours(int side, std::size_t device, std::size_t pair)
{
    for (const auto& link : sides_[side]->links(device)) {
        if (!sides_[side]->isLeft(link.other))
            continue;
        companies_[side][link.other].add({device, link.name, !link.outward}, pair);
        changed_.emplace_back(side, link.other);
    }
}

void Pairing::leaveMeeting(int side, std::size_t device)
{
    auto* meeting = std::exchange(meetings_[side][device], nullptr);
    if (meeting == nullptr)
        return;
    --meeting->of[side].count;
    meeting->of[side].sum -= device;
    toLookAt_.push_back(meeting);
}

void Pairing::join(const Couples& couples, Step step)
{
    for (const auto& [a, b] : couples) {
        sides_[0]->setPartner(a, b);
        sides_[1]->setPartner(b, a);
    }
    for (const auto& [a, b] : couples) {
        leaveMeeting(0, a);
        leaveMeeting(1, b);
        tellNeighbours(0, a, pairs_.size());
        tellNeighbours(1, b, pairs_.size());
        pairs_.push_back({a, b, step});
    }
}

/// Joins the devices whose key nobody else has that is left on either side; an empty key takes no part.
template <class Key>
void Pairing::joinUnique(Step step, Key key)
{
    struct Holders
    {
        std::size_t count[2] = {};
        std::size_t last[2] = {};
    };
    std::map<std::pair<unsigned, std::string>, Holders> holders;
    for (const int side : {0, 1}) {
        for (std::size_t i = 0; i < sides_[side]->size(); ++i) {
            if (!sides_[side]->isLeft(i))
                continue;
            if (auto text = key(*sides_[side], i); !text.empty()) {
                auto& held = holders[{(*sides_[side])[i].type, std::move(text)}];
                ++held.count[side];
                held.last[side] = i;
            }
        }
    }
    Couples couples;
    for (const auto& [unused, held] : holders)
        if (held.count[0] == 1 && held.count[1] == 1)
            couples.emplace_back(held.last[0], held.last[1]);
    join(couples, step);
}

std::vector<std::size_t> Pairing::left(int side, unsigned type) const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < sides_[side]->size(); ++i)
        if ((*sides_[side])[i].type == type && sides_[side]->isLeft(i))
            found.push_back(i);
    return found;
}

/// Joins the devices of a type with one key, the first with the first; without a key they take no part. Returns
/// whether there were any.
template <class Key>
bool Pairing::joinInOrder(Step step, unsigned type, Key key)
{
    using Held = typename decltype(key(0, std::size_t{0}))::value_type;
    std::map<Held, std::vector<std::size_t>> waiting;
    auto others = left(1, type);
    std::ranges::reverse(others); // the first is taken from the end
    for (const auto other : others)
        if (auto held = key(1, other))
            waiting[std::move(*held)].push_back(other);
    Couples couples;
    for (const auto device : left(0, type)) {
        const auto held = key(0, device);
        const auto found = held ? waiting.find(*held) : waiting.end();
        if (found == waiting.end() || found->second.empty())
            continue;
        couples.emplace_back(device, found->second.back());
        found->second.pop_back();
    }
    join(couples, step);
    return !couples.empty();
}

std::vector<unsigned> Pairing::types() const
{
    std::vector<unsigned> all;
    for (const auto* side : sides_)
        for (std::size_t i = 0; i < side->size(); ++i)
            if (side->isCompared(i))
                all.push_back((*side)[i].type);
    std::ranges::sort(all);
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

void Pairing::samePart()
{
    joinUnique(Step::Part, [](const Devices& side, std::size_t i) {
        std::string key;
        const auto serial = side.serial(i);
        if (serial.empty())
            return key;
        const auto append = [&](std::string_view text) {
            key.append(std::to_string(text.size())).append(":").append(text);
        };
        append(serial);
        for (const auto property : side.kind(i).part)
            append(side[i].text(property));
        return key;
    });
}

void Pairing::samePlace()
{
    // A place that a document has twice names nobody.
    joinUnique(Step::Place, [](const Devices& side, std::size_t i) {
        const auto& place = side.place(i);
        return !place.empty() && side.countInPlace(side[i].type, place) == 1 ? place : std::string();
    });
}

void Pairing::sameCompany()
{
    for (;;) {
        for (const auto& [side, device] : std::exchange(changed_, {})) {
            if (!sides_[side]->isLeft(device))
                continue;
            leaveMeeting(side, device);
            const auto& devices = *sides_[side];
            auto& meeting = known_[MeetingKey(devices[device].type, devices.place(device), companies_[side][device])];
            ++meeting.of[side].count;
            meeting.of[side].sum += device;
            meetings_[side][device] = &meeting;
            toLookAt_.push_back(&meeting);
        }
        Couples couples;
        for (const auto* meeting : std::exchange(toLookAt_, {}))
            if (meeting->of[0].count == 1 && meeting->of[1].count == 1)
                couples.emplace_back(meeting->of[0].sum, meeting->of[1].sum);
        if (couples.empty())
            return;
        std::ranges::sort(couples);
        couples.erase(std::unique(couples.begin(), couples.end()), couples.end());
        join(couples, Step::Company);
    }
}

void Pairing::sameContent()
{
    for (const unsigned type : types()) {
        std::unordered_map<std::string, std::size_t> contents;
        std::unordered_map<std::size_t, std::size_t> contentOf[2]; // by device
        for (const int side : {0, 1}) {
            for (const auto device : left(side, type)) {
                std::string content;
                for (const auto& property : (*sides_[side])[device].properties)
                    if (isCompared(property.name, options_) && !knowledge::isLink(property.name))
                        appendKey(content, property, sides_[0]->detailed() && sides_[1]->detailed());
                contentOf[side][device] = contents.emplace(std::move(content), contents.size()).first->second;
            }
        }
        const bool withCompany = joinInOrder(Step::Content, type, [&](int side, std::size_t device) {
            return std::optional(std::pair(contentOf[side].at(device), companies_[side][device]));
        });
        const bool without = joinInOrder(Step::Content, type, [&](int side, std::size_t device) {
            return std::optional(contentOf[side].at(device));
        });
        if (withCompany || without)
            sameCompany();
    }
}

void Pairing::samePosition()
{
    for (const unsigned type : types())
        joinInOrder(Step::Position, type, [&](int side, std::size_t device) {
            const auto& place = sides_[side]->place(device);
            const bool known = !place.empty() && sides_[0]->countInPlace(type, place) <= 1 &&
                               sides_[1]->countInPlace(type, place) <= 1;
            return known ? std::nullopt : std::optional(place);
        });
}

/// Where no place of a type is in both documents, firmware has renamed them all: then they tell nothing.
void forgetRenamedPlaces(Devices& a, Devices& b)
{
    std::vector<unsigned> renamed;
    for (const auto* side : {&a, &b}) {
        const auto* other = side == &a ? &b : &a;
        for (const auto& [type, places] : side->placesByType())
            if (std::ranges::none_of(places,
                                     [&, of = type](const auto& p) { return other->countInPlace(of, p.first) != 0; }))
                renamed.push_back(type);
    }
    for (const unsigned type : renamed) {
        a.forgetPlaces(type);
        b.forgetPlaces(type);
    }
}

} // namespace

std::vector<Pair> paired(Devices& a, Devices& b, const Options& options)
{
    forgetRenamedPlaces(a, b);
    Pairing pairing(a, b, options);
    pairing.samePart();
    pairing.samePlace();
    pairing.sameCompany();
    pairing.sameContent();
    pairing.samePosition();
    return pairing.takePairs();
}

} // namespace zorpinventory::compare
