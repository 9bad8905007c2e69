// What the fields that name other structures may mean.
#pragma once

#include "properties.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <span>

namespace zorpinventory::knowledge
{

/// Types of structures, few enough to stand in a table; none for any.
class AnyOf
{
public:
    constexpr AnyOf() = default;
    constexpr AnyOf(std::initializer_list<unsigned> types)
    {
        for (const auto type : types)
            types_[count_++] = type;
    }
    constexpr std::span<const unsigned> types() const { return {types_.data(), count_}; }
    constexpr bool allow(unsigned type) const
    {
        return count_ == 0 || std::ranges::find(types(), type) != types().end();
    }

private:
    std::array<unsigned, 10> types_{};
    std::size_t count_ = 0;
};

/// A property that names structures.
struct Link
{
    enum class Names { Parent, Children };

    unsigned type;             ///< of the structure that has it
    std::string_view property; ///< childBusIds where no property has it
    Names names;               ///< whether the device is named as a child of the other, or names it as one
    AnyOf targets;
    bool common = false; ///< firmware gets it wrong so often that nobody can be told to look
};

inline constexpr Link kLinks[] = {
    {2, "smbios2_parent", Link::Names::Parent, {2, 3}},
    {2, "t2_members", Link::Names::Children, {}},
    {4, kChildLinks, Link::Names::Children, {7}},
    {5, "t5_members", Link::Names::Children, {6}},
    {14, "t14_members", Link::Names::Children, {}},
    {16, "t16_error_handle", Link::Names::Children, {18, 33}},
    {17, "t17_physical_handle", Link::Names::Parent, {16}},
    {17, "t17_err_info_handle", Link::Names::Children, {18, 33}, true},
    {19, "t19_array_handle", Link::Names::Parent, {16}},
    {20, "t20_device_handle", Link::Names::Parent, {17}},
    {20, "t20_array_mapped_handle", Link::Names::Parent, {19}},
    {27, "t27_probe_handle", Link::Names::Children, {28}},
    {35, "t35_management_handle", Link::Names::Parent, {34}},
    {35, "t35_component_handle", Link::Names::Children, {26, 27, 28, 29, 34, 35, 36, 37, 38, 39}},
    {35, "t35_threshold_handle", Link::Names::Children, {36}},
    {39, "t39_input_vprobe_handle", Link::Names::Children, {26}},
    {39, "t39_cooling_dev_handle", Link::Names::Children, {27}},
    {39, "t39_input_cprobe_handle", Link::Names::Children, {29}},
};
static_assert(std::ranges::is_sorted(kLinks, {}, &Link::type));

/// The links of a type's structures.
constexpr std::span<const Link> linksOf(unsigned type)
{
    const auto* first = std::ranges::lower_bound(kLinks, type, {}, &Link::type);
    return {first, std::ranges::upper_bound(kLinks, type, {}, &Link::type)};
}

/// From here on handles name nobody: FFFEh is "not provided", FFFFh "none".
inline constexpr unsigned kFirstNoHandle = 0xFFFE;

} // namespace zorpinventory::knowledge
