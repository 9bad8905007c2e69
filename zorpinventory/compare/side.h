// One of two documents, as it is compared.
#pragma once

#include "changes.h"
#include "identity/identity.h"

#include <map>
#include <tuple>
#include <unordered_map>

namespace zorpinventory::compare
{

inline constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

/// A device that another names, or that names it. Devices are told by their index in the document.
struct Link
{
    std::size_t other;
    std::string_view name;
    bool outward;

    bool operator==(const Link&) const = default;
    bool operator<(const Link& link) const
    {
        return std::tie(other, name, outward) < std::tie(link.other, link.name, link.outward);
    }
};

/// What is compared of a document: its devices but the groups, their places, their links, and whom they are paired
/// with.
class Devices
{
public:
    Devices(const document::Document& document, const Options& options);

    std::size_t size() const { return document_.devices().size(); }
    const document::Device& operator[](std::size_t device) const { return document_.devices()[device]; }
    const knowledge::Kind& kind(std::size_t device) const { return *kinds_[device]; }

    /// Whether its numbers stand beside its texts.
    bool detailed() const { return document_.detailed(); }

    /// Nothing pairs groups.
    bool isCompared(std::size_t device) const { return (*this)[device].type != document::kGroupType; }
    bool isEmpty(std::size_t device) const
    {
        return kind(device).isEmpty != nullptr && kind(device).isEmpty((*this)[device]);
    }

    /// The texts of the device's place as one key; empty when the place is blank.
    const std::string& place(std::size_t device) const { return places_[device]; }

    /// How many devices of the type have the place.
    unsigned countInPlace(unsigned type, const std::string& place) const;

    /// The places of each type, blank ones left out.
    const std::map<unsigned, std::unordered_map<std::string, unsigned>>& placesByType() const { return byPlace_; }

    /// Lets all places of a type count as blank.
    void forgetPlaces(unsigned type);

    /// The device's real serial number; empty when it has none of its own.
    std::string_view serial(std::size_t device) const;

    /// The first device with this handle: "0x0011"; kNobody when there is none.
    std::size_t withHandle(std::string_view handle) const;

    /// The device's links in both directions, each once.
    std::span<const Link> links(std::size_t device) const;

    std::size_t partner(std::size_t device) const { return partners_[device]; }
    void setPartner(std::size_t device, std::size_t partner) { partners_[device] = partner; }
    bool isLeft(std::size_t device) const { return isCompared(device) && partners_[device] == kNobody; }

private:
    void readLinks();

    const document::Document& document_;
    bool ignoreIdentity_;
    identity::Serials serials_;
    std::vector<const knowledge::Kind*> kinds_;
    std::vector<std::string> places_;
    std::map<unsigned, std::unordered_map<std::string, unsigned>> byPlace_;
    std::unordered_map<std::string_view, std::size_t> byUid_;
    std::vector<Link> links_;
    std::vector<std::size_t> firstLink_; ///< of each device, and the end
    std::vector<std::size_t> partners_;
};

/// The texts of a device's place that are not blank, joined by blanks; nothing for a blank place.
std::optional<std::string> placeText(const document::Device& device, const knowledge::Kind& kind);

} // namespace zorpinventory::compare
