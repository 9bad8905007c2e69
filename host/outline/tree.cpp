// Building the tree from child links and parent properties.
#include "tree.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace embedded_host::outline
{

namespace
{

constexpr DeviceIndex kRoot = 0;
constexpr std::size_t kHandles = 0x10000;
constexpr std::string_view kPrefix = "SMBIOS:";

/// How others link to a device: its identifier without "SMBIOS:" and without an instance number.
std::string_view nameOf(std::string_view uid)
{
    if (!uid.starts_with(kPrefix))
        return {};
    uid.remove_prefix(kPrefix.size());
    return uid.substr(0, uid.find(':'));
}

/// The handle in a name such as "0x00AB".
std::optional<std::uint16_t> handleIn(std::string_view name)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    if (name.size() != 6 || !name.starts_with("0x"))
        return std::nullopt;
    unsigned handle = 0;
    for (const char character : name.substr(2)) {
        const auto digit = kDigits.find(character);
        if (digit == std::string_view::npos)
            return std::nullopt;
        handle = handle << 4 | static_cast<unsigned>(digit);
    }
    return static_cast<std::uint16_t>(handle);
}

/// Hangs one device of every circle under the root.
void openCircles(std::vector<TreeNode>& tree)
{
    // The device from which a walk to the root came by first. No walk starts from the root.
    std::vector<DeviceIndex> seenFrom(tree.size(), kNoDevice);
    seenFrom[kRoot] = kRoot;
    for (DeviceIndex start = 1; start < tree.size(); ++start) {
        DeviceIndex at = start;
        for (; seenFrom[at] == kNoDevice; at = tree[at].parent)
            seenFrom[at] = start;
        if (seenFrom[at] != start)
            continue;
        DeviceIndex first = at;
        for (DeviceIndex i = tree[at].parent; i != at; i = tree[i].parent)
            first = std::min(first, i);
        tree[first].parent = kRoot;
    }
}

} // namespace

void TreeBuilder::First::add(Name name, DeviceIndex device)
{
    if (name >= kHandles)
        others_.emplace(name, device);
    else if (auto& first = byHandle_[static_cast<std::uint16_t>(name)]; first == 0)
        first = device + 1;
}

DeviceIndex TreeBuilder::First::find(Name name) const
{
    if (name >= kHandles) {
        const auto found = others_.find(name);
        return found != others_.end() ? found->second : kNoDevice;
    }
    const auto* first = byHandle_.find(static_cast<std::uint16_t>(name));
    return first != nullptr && *first != 0 ? *first - 1 : kNoDevice;
}

TreeBuilder::Name TreeBuilder::nameFor(std::string_view text)
{
    if (const auto handle = handleIn(text))
        return *handle;
    if (text.empty())
        return kNobody;
    const auto found = otherNames_.find(text);
    if (found != otherNames_.end())
        return found->second;
    const auto name = static_cast<Name>(kHandles + otherNames_.size());
    otherNames_.emplace(text, name);
    return name;
}

void TreeBuilder::add(std::string_view uid, bool hasTypeLevelUid, std::string_view parent)
{
    const auto index = static_cast<DeviceIndex>(devices_.size());
    const Name name = nameFor(nameOf(uid));
    if (name != kNobody)
        bornBy_.add(name, index);
    devices_.push_back({name & kNobody, hasTypeLevelUid ? 1u : 0u, nameFor(parent)});
}

void TreeBuilder::addChild(std::string_view handle)
{
    if (const Name named = nameFor(handle); named != devices_.back().name && named != kNobody)
        namedBy_.add(named, static_cast<DeviceIndex>(devices_.size() - 1));
}

DeviceIndex TreeBuilder::parentOf(DeviceIndex device) const
{
    const auto& links = devices_[device];
    if (links.ownParentOnly == 0)
        if (const auto named = namedBy_.find(links.name); named != kNoDevice)
            return named;
    const auto born = bornBy_.find(links.parent);
    return born != kNoDevice && born != device ? born : kRoot;
}

std::vector<TreeNode> TreeBuilder::tree() const
{
    std::vector<TreeNode> tree(devices_.size(), {kRoot, kNoDevice, kNoDevice});
    for (DeviceIndex i = 1; i < tree.size(); ++i)
        tree[i].parent = parentOf(i);
    if (!tree.empty())
        openCircles(tree);
    for (auto i = static_cast<DeviceIndex>(tree.size()); i > 1; --i) {
        auto& node = tree[i - 1];
        node.next = std::exchange(tree[node.parent].firstChild, i - 1);
    }
    return tree;
}

void restrictTo(std::vector<TreeNode>& tree, const std::vector<bool>& wanted)
{
    std::vector<bool> shown(tree.size());
    shown[kRoot] = true;
    for (DeviceIndex i = 0; i < tree.size(); ++i)
        for (DeviceIndex at = i; wanted[i] && !shown[at]; at = tree[at].parent)
            shown[at] = true;
    for (auto& node : tree)
        node.firstChild = node.next = kNoDevice;
    for (auto i = static_cast<DeviceIndex>(tree.size()); i > 1; --i)
        if (shown[i - 1])
            tree[i - 1].next = std::exchange(tree[tree[i - 1].parent].firstChild, i - 1);
}

} // namespace embedded_host::outline
