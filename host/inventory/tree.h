// Which device hangs under which.
#pragma once

#include "embedded_host/inventory.h"

#include <cstddef>
#include <string>
#include <unordered_map>

namespace embedded_host::inventory
{

/// A device's place in the tree, devices being told by their index.
struct TreeNode
{
    std::size_t parent;
    std::vector<std::size_t> children; ///< in the order of publication
};

/// Which device is the first to have to do with a name. Nearly all names are handles, which have places of their own:
/// in a large table, looking for texts would take longer than anything else.
class FirstByName
{
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Keeps the device unless the name has one.
    void add(const std::string& name, std::size_t device);

    /// The name's device, or kNone.
    std::size_t find(const std::string& name) const;

private:
    std::vector<std::size_t> byHandle_;
    std::unordered_map<std::string, std::size_t> byText_;
};

/// Places every device once; the first device is the root. A device hangs under the first published device that names
/// it as a child, else under its parent property, else under the root. A device with a type-level identifier moves only
/// by its own parent property: real firmware leaves handle 0, mostly the BIOS, in links that it never filled in. A
/// handle that names nobody counts as no link, and a circle is opened at its first published device.
class TreeBuilder
{
public:
    /// Adds the device published next. Nothing of its child list is kept but who named a child first: hostile lists may
    /// be many times longer than the table that they come from.
    void add(const DeviceRecord& device);

    std::vector<TreeNode> tree() const;

private:
    struct Links
    {
        std::string name;   ///< by which others link to the device; empty when nobody can
        std::string parent; ///< the name of its parent; empty for none
        bool ownParentOnly; ///< it has a type-level identifier
    };
    std::size_t parentOf(std::size_t device) const;

    std::vector<Links> devices_;
    FirstByName namedBy_; ///< as its child
    FirstByName bornBy_;  ///< as its own
};

} // namespace embedded_host::inventory
