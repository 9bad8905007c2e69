// What structures say of each other.
#include "families.h"

#include "knowledge/links.h"
#include "services/messages.h"

#include <limits>
#include <set>
#include <utility>

namespace zorpinventory::checks
{

using document::Device;
using document::handleText;
using embedded_host::services::translatable;
using knowledge::Link;

namespace
{

constexpr unsigned kTypesThatBuildTrees[] = {4, 17, 19, 20};
constexpr unsigned kTypesThatPlaceParts[] = {2, 4, 17, 19, 20};

/// Firmware leaves it in fields that it never filled in.
constexpr unsigned kNeverFilledIn = 0x0000;

/// The handles that a device names in a field, each once.
std::vector<unsigned> handlesOf(const Device& device, const Link& link)
{
    std::vector<unsigned> handles;
    const auto add = [&](std::string_view text) {
        const auto handle = document::handleIn(text);
        if (handle && *handle < knowledge::kFirstNoHandle)
            handles.push_back(*handle);
    };
    if (link.property == knowledge::kChildLinks) {
        for (const auto& child : device.children)
            add(child.id.value_or(""));
    } else if (const auto* property = device.find(link.property)) {
        document::forEachHandle(property->value, add);
    }
    std::ranges::sort(handles);
    handles.erase(std::unique(handles.begin(), handles.end()), handles.end());
    return handles;
}

/// Calls `look(device, link, handle, structures)` for everything that a device names in a field with a meaning.
template <class Look>
void forEachLink(const Inventory& inventory, Look look)
{
    for (const auto& device : inventory.devices())
        for (const auto& link : knowledge::linksOf(device.type))
            for (const auto handle : handlesOf(device, link))
                look(device, link, handle, inventory.withHandle(handle));
}

/// Which of several structures with one handle is meant, nobody knows: one that fits is enough.
bool isAllowed(const Link& link, std::span<const Structure* const> targets)
{
    constexpr std::size_t kMostLookedAt = 64; // a hostile table has thousands, and thousands of links to them
    return targets.size() > kMostLookedAt ||
           std::ranges::any_of(targets, [&](const auto* target) { return link.targets.allow(target->type); });
}

/// Who contains whom, as far as the links mean what they should. Devices are told by their index.
class Containment
{
public:
    explicit Containment(const Inventory& inventory) : inventory_(inventory)
    {
        const auto& devices = inventory.devices();
        forEachLink(inventory, [&](const Device& device, const Link& link, unsigned, auto targets) {
            if (targets.empty() || link.property == kComponents)
                return;
            const auto* other = targets.front()->device;
            if (other == nullptr || !link.targets.allow(other->type))
                return;
            const auto self = static_cast<std::size_t>(&device - devices.data());
            const auto named = static_cast<std::size_t>(other - devices.data());
            const bool isParent = link.names == Link::Names::Parent;
            edges_.emplace_back(isParent ? named : self, isParent ? self : named);
        });
        std::ranges::sort(edges_);
    }

    /// The devices that contain themselves, over others or not, in groups that contain each other: Tarjan's strongly
    /// connected components, with a stack of its own since a firmware's chain may be long.
    std::vector<std::vector<std::size_t>> circles();

private:
    /// A component may well be the management device itself.
    static constexpr std::string_view kComponents = "t35_component_handle";

    using Edges = std::vector<std::pair<std::size_t, std::size_t>>;

    const Inventory& inventory_;
    Edges edges_; ///< from a container to what is in it, in ascending order
};

std::vector<std::vector<std::size_t>> Containment::circles()
{
    constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();
    struct Visit
    {
        std::size_t device;
        Edges::const_iterator next;
    };
    const auto firstEdge = [&](std::size_t device) {
        return std::as_const(edges_).begin() +
               (std::ranges::lower_bound(edges_, device, {}, &Edges::value_type::first) - edges_.begin());
    };
    const auto count = inventory_.devices().size();
    std::vector<std::size_t> number(count, kNever); // in the order in which they are reached
    std::vector<std::size_t> lowest(count, kNever); // that a device reaches
    std::vector<bool> isOpen(count);
    std::vector<std::size_t> open;
    std::vector<Visit> visits;
    std::vector<std::vector<std::size_t>> circles;
    std::size_t reached = 0;
    const auto enter = [&](std::size_t device) {
        number[device] = lowest[device] = reached++;
        open.push_back(device);
        isOpen[device] = true;
        visits.push_back({device, firstEdge(device)});
    };
    for (const auto& [container, contained] : edges_) {
        if (number[container] != kNever)
            continue;
        enter(container);
        while (!visits.empty()) {
            auto& [device, next] = visits.back();
            if (next != edges_.end() && next->first == device) {
                const auto child = next++->second;
                if (number[child] == kNever)
                    enter(child);
                else if (isOpen[child])
                    lowest[device] = std::min(lowest[device], number[child]);
                continue;
            }
            const auto done = device;
            visits.pop_back();
            if (!visits.empty())
                lowest[visits.back().device] = std::min(lowest[visits.back().device], lowest[done]);
            if (lowest[done] != number[done])
                continue;
            std::vector<std::size_t> group;
            do {
                group.push_back(open.back());
                isOpen[open.back()] = false;
                open.pop_back();
            } while (group.back() != done);
            if (group.size() > 1 || std::ranges::binary_search(edges_, std::pair(done, done))) {
                std::ranges::sort(group);
                circles.push_back(std::move(group));
            }
        }
    }
    std::ranges::sort(circles);
    return circles;
}

} // namespace

const Rule kLinkOfWrongType{
    .name = "link-of-wrong-type",
    .levels = {Level::Error, kTypesThatBuildTrees, Level::Note},
    .means = translatable("a link names a structure of a type that the field cannot mean; with handle 0000h, which "
                          "firmware leaves in fields that it never filled in, only a note, once for each field"),
    .text = translatable("It names %1, which is of %2, where only %3 makes sense."),
    .advice = translatable("Do not trust what belongs to what here; this program does not follow the link."),
    .standard = "every field that holds the handle of another structure",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            std::set<const Link*> isTold; // of those that were never filled in
            forEachLink(inventory, [&](const Device& device, const Link& link, unsigned handle, auto targets) {
                if (targets.empty() || isAllowed(link, targets))
                    return;
                const auto wanted = link.targets.types();
                std::vector<Argument> arguments{handleText(handle), Types{{targets.front()->type}},
                                                Types{{wanted.begin(), wanted.end()}}};
                if (handle != kNeverFilledIn)
                    findings.at(device, link.property, std::move(arguments));
                else if (isTold.insert(&link).second)
                    findings.noteAt(device, link.property, std::move(arguments));
            });
        },
};

const Rule kLinkDangling{
    .name = "link-dangling",
    .levels = {Level::Warning, kTypesThatPlaceParts, Level::Note},
    .means = translatable("a link names a handle that no structure has; of memory devices, the link to their array is "
                          "worth a warning, the one to their error information a note"),
    .text = translatable("It names %1, and no structure has this handle."),
    .advice = translatable("What it belongs to, or what belongs to it, cannot be known. Look for newer firmware."),
    .standard = "every field that holds the handle of another structure",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            // Else the structures that no device was made of are not known.
            if (!inventory.document().detailed())
                return;
            forEachLink(inventory, [&](const Device& device, const Link& link, unsigned handle, auto targets) {
                if (!targets.empty() || handle == kNeverFilledIn)
                    return;
                if (link.common)
                    findings.noteAt(device, link.property, {handleText(handle)});
                else
                    findings.at(device, link.property, {handleText(handle)});
            });
        },
};

const Rule kLinkCircle{
    .name = "link-circle",
    .levels = {Level::Error},
    .means = translatable("devices contain each other"),
    .text = translatable("It is part of what it contains itself: %1."),
    .advice =
        translatable("What contains what cannot be known; trees of these devices differ from program to program."),
    .standard = "every field that holds the handle of another structure",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            constexpr std::size_t kMostTold = 8;
            for (const auto& circle : Containment(inventory).circles()) {
                std::string members;
                for (std::size_t i = 0; i < circle.size() && i < kMostTold; ++i)
                    members += (i == 0 ? "" : ", ") + handleText(inventory.devices()[circle[i]].handle.value_or(0));
                findings.at(inventory.devices()[circle.front()], knowledge::kChildLinks,
                            {members + (circle.size() > kMostTold ? ", …" : "")});
            }
        },
};

} // namespace zorpinventory::checks
