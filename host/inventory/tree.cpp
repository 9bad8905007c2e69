// Building the tree from child links and parent properties.
#include "tree.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

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

/// The first published device that names each as its child, and the first that bears each name.
struct Directory
{
    std::unordered_map<std::string_view, std::size_t> namedBy;
    std::unordered_map<std::string_view, std::size_t> bornBy;

    explicit Directory(std::span<const Links> devices)
    {
        for (std::size_t i = 0; i < devices.size(); ++i) {
            bornBy.emplace(devices[i].name, i);
            for (const auto& child : devices[i].children)
                if (child != devices[i].name)
                    namedBy.emplace(child, i);
        }
    }
};

std::size_t parentOf(const Links& device, std::size_t self, const Directory& directory)
{
    if (!device.ownParentOnly)
        if (const auto named = directory.namedBy.find(device.name); named != directory.namedBy.end())
            return named->second;
    const auto born = directory.bornBy.find(device.parent);
    return born != directory.bornBy.end() && born->second != self ? born->second : kRoot;
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

Links::Links(const DeviceRecord& device) : name(nameOf(device)), ownParentOnly(!device.uids.empty())
{
    for (const auto& child : device.childBusIds)
        if (child.id)
            children.push_back(*child.id);
    if (const auto* link = device.find("smbios2_parent"); link != nullptr)
        parent = link->toString().lumString().bytes();
}

std::vector<TreeNode> treeOf(std::span<const Links> devices)
{
    std::vector<TreeNode> tree(devices.size());
    if (devices.empty())
        return tree;
    const Directory directory(devices);
    for (std::size_t i = 1; i < devices.size(); ++i)
        tree[i].parent = parentOf(devices[i], i, directory);
    tree[kRoot].parent = kRoot;
    openCircles(tree);
    for (std::size_t i = 1; i < devices.size(); ++i)
        tree[tree[i].parent].children.push_back(i);
    return tree;
}

} // namespace embedded_host::inventory
