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

/// What a link to this device says: its identifier without "SMBIOS:" and without an instance number.
std::string_view linkText(const DeviceRecord& device)
{
    std::string_view text = device.uid;
    if (!text.starts_with(kPrefix))
        return {};
    text.remove_prefix(kPrefix.size());
    return text.substr(0, text.find(':'));
}

std::string parentLink(const DeviceRecord& device)
{
    const auto* parent = device.find("smbios2_parent");
    return parent == nullptr ? std::string() : parent->toString().lumString().bytes();
}

/// The first published device that names each link text as its child, and the first that bears it.
struct Links
{
    std::unordered_map<std::string_view, std::size_t> namedBy;
    std::unordered_map<std::string_view, std::size_t> bornBy;

    explicit Links(std::span<const DeviceRecord> devices)
    {
        for (std::size_t i = 0; i < devices.size(); ++i) {
            bornBy.emplace(linkText(devices[i]), i);
            for (const auto& child : devices[i].childBusIds)
                if (child.id)
                    addName(*child.id, i, linkText(devices[i]));
        }
    }

private:
    void addName(std::string_view child, std::size_t by, std::string_view self)
    {
        if (child != self)
            namedBy.emplace(child, by);
    }
};

std::size_t parentOf(const DeviceRecord& device, std::size_t self, const Links& links)
{
    if (device.uids.empty())
        if (const auto named = links.namedBy.find(linkText(device)); named != links.namedBy.end())
            return named->second;
    const auto born = links.bornBy.find(parentLink(device));
    return born != links.bornBy.end() && born->second != self ? born->second : kRoot;
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

std::vector<TreeNode> treeOf(std::span<const DeviceRecord> devices)
{
    std::vector<TreeNode> tree(devices.size());
    if (devices.empty())
        return tree;
    const Links links(devices);
    for (std::size_t i = 1; i < devices.size(); ++i)
        tree[i].parent = parentOf(devices[i], i, links);
    tree[kRoot].parent = kRoot;
    openCircles(tree);
    for (std::size_t i = 1; i < devices.size(); ++i)
        tree[tree[i].parent].children.push_back(i);
    return tree;
}

} // namespace embedded_host::inventory
