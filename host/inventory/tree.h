// Which device hangs under which.
#pragma once

#include "embedded_host/inventory.h"

#include <cstddef>
#include <span>

namespace embedded_host::inventory
{

/// What a device says of its place.
struct Links
{
    explicit Links(const DeviceRecord& device);

    std::string name;                  ///< by which others link to it; empty when nobody can
    std::string parent;                ///< the name of its parent; empty for none
    std::vector<std::string> children; ///< the names of its children
    bool ownParentOnly;                ///< it has a type-level identifier
};

/// A device's place in the tree, devices being told by their index.
struct TreeNode
{
    std::size_t parent;
    std::vector<std::size_t> children; ///< in the order of publication
};

/// Places every device once; the first device is the root. A device hangs under the first published device that names
/// it as a child, else under its parent property, else under the root. A device with a type-level identifier moves only
/// by its own parent property: real firmware leaves handle 0, mostly the BIOS, in links that it never filled in. A
/// handle that names nobody counts as no link, and a circle is opened at its first published device.
std::vector<TreeNode> treeOf(std::span<const Links> devices);

} // namespace embedded_host::inventory
