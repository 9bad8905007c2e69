// Which device hangs under which.
#pragma once

#include "by_handle.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace embedded_host::outline
{

/// A device is told by its index, in the order of publication.
using DeviceIndex = std::uint32_t;
inline constexpr DeviceIndex kNoDevice = std::numeric_limits<DeviceIndex>::max();

/// A device's place in the tree.
struct TreeNode
{
    DeviceIndex parent;
    DeviceIndex firstChild; ///< kNoDevice when there is none
    DeviceIndex next;       ///< the parent's next child, likewise
};

/// Places every device once; the first device is the root. A device hangs under the first published device that names
/// it as a child, else under its parent property, else under the root. A device with a type-level identifier moves only
/// by its own parent property: real firmware leaves handle 0, mostly the BIOS, in links that it never filled in. A
/// handle that names nobody counts as no link, and a circle is opened at its first published device.
class TreeBuilder
{
public:
    /// Adds the device published next: its unique identifier, whether it has a type-level one too, and the handle of
    /// its parent, empty for none.
    void add(std::string_view uid, bool hasTypeLevelUid, std::string_view parent);

    /// Adds a child, by its handle, to the device that was added last. Nothing is kept but who named a child first:
    /// hostile lists may be many times longer than the table that they come from.
    void addChild(std::string_view handle);

    std::size_t size() const { return devices_.size(); }

    std::vector<TreeNode> tree() const;

private:
    /// By which devices link to each other: nearly always the number of a handle; other texts have numbers above.
    using Name = std::uint32_t;
    static constexpr Name kNobody = 0x7FFFFFFF;

    struct Links
    {
        Name name : 31;         ///< by which others link to the device
        Name ownParentOnly : 1; ///< it has a type-level identifier
        Name parent;            ///< the name of its parent
    };

    /// Which device is the first to have to do with a name.
    class First
    {
    public:
        void add(Name name, DeviceIndex device);
        DeviceIndex find(Name name) const;

    private:
        ByHandle<DeviceIndex> byHandle_; ///< one more than the device's index; 0 for none
        std::map<Name, DeviceIndex> others_;
    };

    Name nameFor(std::string_view text);
    DeviceIndex parentOf(DeviceIndex device) const;

    std::map<std::string, Name, std::less<>> otherNames_;
    std::deque<Links> devices_;
    First namedBy_; ///< as its child
    First bornBy_;  ///< as its own
};

/// Leaves nothing in the tree but the wanted devices, those on their way to the root, and the root.
void restrictTo(std::vector<TreeNode>& tree, const std::vector<bool>& wanted);

} // namespace embedded_host::outline
