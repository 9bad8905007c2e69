// Building the tree from child links and parent properties.
#include "tree.h"

#include <algorithm>
#include <string_view>

namespace embedded_host::inventory
{

namespace
{

constexpr std::size_t kRoot = 0;
constexpr std::string_view kPrefix = "SMBIOS:";

/// How others link to a device: its identifier without "SMBIOS:" and without an instance number.
std::string_view nameOf(const DeviceRecord& device)
{
    std::string_view text = device.uid;
    if (!text.starts_with(kPrefix))
        return {};
    text.remove_prefix(kPrefix.size());
    return text.substr(0, text.find(':'));
}

/// Hangs one device of every circle under the root.
void openCircles(std::vector<TreeNode>& tree)
{
    constexpr std::size_t kUnseen = 0;
    std::vector<std::size_t> seenFrom(tree.size(), kUnseen); // the device from which a walk to the root came by, + 1
    seenFrom[kRoot] = 1;
    for (std::size_t start = 1; start < tree.size(); ++start) {
        std::size_t at = start;
        for (; seenFrom[at] == kUnseen; at = tree[at].parent)
            seenFrom[at] = start + 1;
        if (seenFrom[at] != start + 1)
            continue;
        std::size_t first = at;
        for (std::size_t i = tree[at].parent; i != at; i = tree[i].parent)
            first = std::min(first, i);
        tree[first].parent = kRoot;
    }
}

} // namespace

void TreeBuilder::add(const DeviceRecord& device)
{
    const std::size_t index = devices_.size();
    Links links{std::string(nameOf(device)), {}, !device.uids.empty()};
    if (const auto* parent = device.find("smbios2_parent"); parent != nullptr)
        links.parent = parent->toString().lumString().bytes();
    for (const auto& child : device.childBusIds)
        if (child.id && *child.id != links.name)
            namedBy_.emplace(*child.id, index);
    bornBy_.emplace(links.name, index);
    devices_.push_back(std::move(links));
}

std::size_t TreeBuilder::parentOf(std::size_t device) const
{
    const auto& links = devices_[device];
    if (!links.ownParentOnly)
        if (const auto named = namedBy_.find(links.name); named != namedBy_.end())
            return named->second;
    const auto born = bornBy_.find(links.parent);
    return born != bornBy_.end() && born->second != device ? born->second : kRoot;
}

std::vector<TreeNode> TreeBuilder::tree() const
{
    std::vector<TreeNode> tree(devices_.size());
    if (tree.empty())
        return tree;
    for (std::size_t i = 1; i < tree.size(); ++i)
        tree[i].parent = parentOf(i);
    tree[kRoot].parent = kRoot;
    openCircles(tree);
    for (std::size_t i = 1; i < tree.size(); ++i)
        tree[tree[i].parent].children.push_back(i);
    return tree;
}

} // namespace embedded_host::inventory
