// Places and links of one document.
#include "side.h"

#include "knowledge/properties.h"

#include <algorithm>

namespace zorpinventory::compare
{

using document::Device;

namespace
{

/// Appends one of several texts, so that {"A", ""} and {"", "A"} stay two lists.
void appendElement(std::string& key, std::string_view text)
{
    key += std::to_string(text.size());
    key += ':';
    key += text;
}

bool equalWithoutCase(std::string_view a, std::string_view b)
{
    const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::ranges::equal(a, b, {}, small, small);
}

bool namesNoPlace(std::string_view text)
{
    return text.empty() ||
           std::ranges::any_of(knowledge::kNoPlaces, [&](auto word) { return equalWithoutCase(word, text); });
}

bool isBlankPlace(const Device& device, const knowledge::Kind& kind)
{
    return std::ranges::all_of(kind.place, [&](auto property) { return namesNoPlace(device.text(property)); });
}

} // namespace

std::optional<std::string> placeText(const Device& device, const knowledge::Kind& kind)
{
    if (isBlankPlace(device, kind))
        return std::nullopt;
    std::string joined;
    for (const auto property : kind.place) {
        const auto text = device.text(property);
        if (!joined.empty() && !text.empty())
            joined += ' ';
        joined += text;
    }
    return joined;
}

Devices::Devices(const document::Document& document, const Options& options)
    : document_(document), ignoreIdentity_(options.ignoreIdentity), serials_(document),
      places_(document.devices().size()), partners_(document.devices().size(), kNobody)
{
    kinds_.reserve(size());
    for (std::size_t i = 0; i < size(); ++i) {
        const auto& device = (*this)[i];
        kinds_.push_back(&knowledge::kindOf(device.type));
        byUid_.emplace(device.uid, i);
        if (isBlankPlace(device, kind(i)))
            continue;
        for (const auto property : kind(i).place)
            appendElement(places_[i], device.text(property));
        ++byPlace_[device.type][places_[i]];
    }
    readLinks();
}

unsigned Devices::countInPlace(unsigned type, const std::string& place) const
{
    const auto places = byPlace_.find(type);
    if (places == byPlace_.end())
        return 0;
    const auto found = places->second.find(place);
    return found != places->second.end() ? found->second : 0;
}

void Devices::forgetPlaces(unsigned type)
{
    for (std::size_t i = 0; i < size(); ++i)
        if ((*this)[i].type == type)
            places_[i].clear();
    byPlace_.erase(type);
}

std::string_view Devices::serial(std::size_t device) const
{
    return ignoreIdentity_ ? std::string_view() : serials_.of((*this)[device]);
}

std::size_t Devices::withHandle(std::string_view handle) const
{
    // Type 35 shows its handles with eight digits.
    constexpr std::string_view kLong = "0x0000";
    std::string uid = "SMBIOS:";
    if (handle.size() == kLong.size() + 4 && handle.starts_with(kLong))
        uid.append("0x").append(handle.substr(kLong.size()));
    else
        uid.append(handle);
    const auto found = byUid_.find(uid);
    return found != byUid_.end() && isCompared(found->second) ? found->second : kNobody;
}

void Devices::readLinks()
{
    std::vector<std::pair<std::size_t, Link>> all; // from whom
    const auto add = [&](std::size_t from, std::string_view name, std::string_view handle) {
        const auto to = withHandle(handle);
        if (to == kNobody)
            return;
        all.push_back({from, {to, name, true}});
        all.push_back({to, {from, name, false}});
    };
    for (std::size_t i = 0; i < size(); ++i) {
        if (!isCompared(i))
            continue;
        for (const auto& child : (*this)[i].children)
            if (child.id)
                add(i, knowledge::kChildLinks, *child.id);
        for (const auto& property : (*this)[i].properties)
            if (knowledge::isLink(property.name))
                document::forEachHandle(property.value, [&](auto handle) { add(i, property.name, handle); });
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());

    links_.reserve(all.size());
    for (const auto& [from, link] : all) {
        firstLink_.resize(from + 1, links_.size());
        links_.push_back(link);
    }
    firstLink_.resize(size() + 1, links_.size());
}

std::span<const Link> Devices::links(std::size_t device) const
{
    return std::span(links_).subspan(firstLink_[device], firstLink_[device + 1] - firstLink_[device]);
}

} // namespace zorpinventory::compare
