// Building the tree from child links and parent properties.
#include "tree.h"

#include <algorithm>
#include <optional>
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
    std::string_view text = device.uid.bytes();
    if (!text.starts_with(kPrefix))
        return {};
    text.remove_prefix(kPrefix.size());
    return text.substr(0, text.find(':'));
}

/// The number in a name such as "0x00AB".
std::optional<std::size_t> handleIn(std::string_view name)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    if (name.size() != 6 || !name.starts_with("0x"))
        return std::nullopt;
    std::size_t handle = 0;
    for (const char character : name.substr(2)) {
        const auto digit = kDigits.find(character);
        if (digit == std::string_view::npos)
            return std::nullopt;
        handle = handle << 4 | digit;
    }
    return handle;
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

void FirstByName::add(const std::string& name, std::size_t device)
{
    const auto handle = handleIn(name);
    if (!handle) {
        byText_.emplace(name, device);
        return;
    }
    if (*handle >= byHandle_.size())
        byHandle_.resize(*handle + 1, kNone);
    if (byHandle_[*handle] == kNone)
        byHandle_[*handle] = device;
}

std::size_t FirstByName::find(const std::string& name) const
{
    if (const auto handle = handleIn(name))
        return *handle < byHandle_.size() ? byHandle_[*handle] : kNone;
    const auto found = byText_.find(name);
    return found != byText_.end() ? found->second : kNone;
}

void TreeBuilder::add(const DeviceRecord& device)
{
    const std::size_t index = devices_.size();
    Links links{std::string(nameOf(device)), {}, !device.uids.empty()};
    if (const auto* parent = device.find("smbios2_parent"); parent != nullptr)
        links.parent = parent->toString().lumString().bytes();
    for (std::size_t i = 0; i < device.childBusIds.size(); ++i)
        if (const auto child = device.childBusIds[i]; child.id && *child.id != links.name)
            namedBy_.add(std::string(child.id->bytes()), index);
    bornBy_.add(links.name, index);
    devices_.push_back(std::move(links));
}

std::size_t TreeBuilder::parentOf(std::size_t device) const
{
    const auto& links = devices_[device];
    if (!links.ownParentOnly)
        if (const auto named = namedBy_.find(links.name); named != FirstByName::kNone)
            return named;
    const auto born = bornBy_.find(links.parent);
    return born != FirstByName::kNone && born != device ? born : kRoot;
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
