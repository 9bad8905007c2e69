// Looking structures up.
#include "inventory.h"

namespace zorpinventory::checks
{

using document::Device;

namespace
{

constexpr std::size_t kTypes = document::kGroupType + 1;
constexpr std::size_t kHandles = 0x10000;
constexpr std::size_t kNoGroup = static_cast<std::size_t>(-1);

} // namespace

/// Counting first, so that no number of devices makes it slow.
template <class T, class GroupOf>
Inventory::Groups<T> Inventory::grouped(const std::vector<T>& all, std::size_t groups, GroupOf groupOf)
{
    Groups<T> result;
    result.starts.resize(groups + 1);
    std::vector<std::size_t> groupOfEach;
    groupOfEach.reserve(all.size());
    for (const auto& one : all) {
        groupOfEach.push_back(groupOf(one));
        if (groupOfEach.back() != kNoGroup)
            ++result.starts[groupOfEach.back() + 1];
    }
    for (std::size_t group = 0; group < groups; ++group)
        result.starts[group + 1] += result.starts[group];
    result.members.resize(result.starts.back());
    auto next = result.starts;
    for (std::size_t i = 0; i < all.size(); ++i)
        if (groupOfEach[i] != kNoGroup)
            result.members[next[groupOfEach[i]]++] = &all[i];
    return result;
}

Inventory::Inventory(const document::Document& document, std::chrono::year_month_day today)
    : document_(document), today_(today)
{
    structures_.reserve(document.devices().size() + document.others().size());
    for (const auto& device : document.devices())
        if (device.handle)
            structures_.push_back({device.type, *device.handle, device.number("smbios2_hdr_len"), &device});
    for (const auto& other : document.others())
        structures_.push_back({other.type, other.handle, other.length, nullptr});

    byType_ = grouped(document.devices(), kTypes, [](const Device& device) { return std::size_t{device.type}; });
    byHandle_ =
        grouped(structures_, kHandles, [](const Structure& structure) { return std::size_t{structure.handle}; });
    byArray_ = grouped(document.devices(), kHandles, [](const Device& device) {
        const auto array = device.type == 17 ? document::handleIn(device.text("t17_physical_handle")) : std::nullopt;
        return array ? std::size_t{*array} : kNoGroup;
    });
}

std::span<const Device* const> Inventory::ofType(unsigned type) const { return byType_[type]; }

std::span<const Structure* const> Inventory::withHandle(unsigned handle) const { return byHandle_[handle]; }

std::span<const Device* const> Inventory::devicesOf(const Device& array) const
{
    if (!array.handle || withHandle(*array.handle).size() != 1)
        return {};
    return byArray_[*array.handle];
}

std::optional<std::uint64_t> positive(std::optional<double> number)
{
    constexpr double kMost = 18446744073709549568.0; // the largest double below 2^64
    return number && *number >= 1 && *number <= kMost ? std::optional(static_cast<std::uint64_t>(*number))
                                                      : std::nullopt;
}

} // namespace zorpinventory::checks
