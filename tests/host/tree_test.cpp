// Where devices hang in the text form's tree.
#include "inventory/tree.h"

#include <gtest/gtest.h>

namespace
{

using embedded_host::DeviceRecord;

embedded_host::Property parentProperty("smbios2_parent", orb5::PropertyCategory::Internal(),
                                       orb5::DataType::DISCRETEMEASUREMENT(), orb5::DeviceCapability::SMBIOS_Struct());

struct Case
{
    const char* uid;
    std::vector<const char*> children;
    int parent = -1;
    bool typeLevel = false;
};

/// The parents' indices of a root and these devices after it, the root left out.
std::vector<std::size_t> parents(const std::vector<Case>& cases)
{
    std::vector<DeviceRecord> devices(1);
    devices[0].uid = "SMBIOS";
    devices[0].childBusIds.addNameless(orb5::ChildBusType::SMBIOS());
    for (const auto& each : cases) {
        auto& device = devices.emplace_back();
        device.uid = each.uid;
        for (const char* child : each.children)
            device.childBusIds.add(orb5::ChildBusType::SMBIOS(), child);
        if (each.parent >= 0)
            device.properties.push_back(
                {&parentProperty, orb5::Value(orb5::OrbDiscreteMeasurement(orb5::OrbUnitType::HEXADECIMAL16(),
                                                                           static_cast<std::uint64_t>(each.parent)))});
        if (each.typeLevel)
            device.uids[2] = "SMBIOS:TYPE:0";
    }
    embedded_host::inventory::TreeBuilder builder;
    for (const auto& device : devices)
        builder.add(device);
    const auto tree = builder.tree();
    std::vector<std::size_t> found;
    for (std::size_t i = 1; i < tree.size(); ++i)
        found.push_back(tree[i].parent);
    return found;
}

using Parents = std::vector<std::size_t>;

TEST(Tree, PlacesDevices)
{
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {}}, {"SMBIOS:0x0002", {}}}), (Parents{0, 0}));
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0002"}}, {"SMBIOS:0x0002", {}}}), (Parents{0, 1})) << "named";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {}}, {"SMBIOS:0x0002", {}, 1}}), (Parents{0, 1})) << "by its parent";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {}}, {"SMBIOS:0x0002", {}, 1}, {"SMBIOS:0x0003", {"0x0002"}}}),
              (Parents{0, 3, 0}))
        << "being named comes first";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0003"}}, {"SMBIOS:0x0002", {"0x0003"}}, {"SMBIOS:0x0003", {}}}),
              (Parents{0, 0, 1}))
        << "under the first that names it";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0099"}, 0x98}}), (Parents{0})) << "dangling";
    EXPECT_EQ(parents({{"SMBIOS:0x0010", {}}, {"SMBIOS:0x0010:1", {}}, {"SMBIOS:Group", {"0x0010", "0x0010"}}}),
              (Parents{3, 3, 0}))
        << "all devices of a handle";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0001"}, 1}}), (Parents{0})) << "itself";
}

TEST(Tree, DevicesWithATypeLevelIdentifierMoveOnlyByTheirParent)
{
    EXPECT_EQ(parents({{"SMBIOS:0x0000", {}, -1, true}, {"SMBIOS:0x0001", {"0x0000"}}}), (Parents{0, 0}));
    EXPECT_EQ(parents({{"SMBIOS:0x0003", {}}, {"SMBIOS:0x0002", {}, 3, true}, {"SMBIOS:0x0009", {"0x0002"}}}),
              (Parents{0, 1, 0}));
}

TEST(Tree, CirclesAreOpenedAtTheirFirstDevice)
{
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0002"}}, {"SMBIOS:0x0002", {"0x0001"}}}), (Parents{0, 1}));
    EXPECT_EQ(parents({{"SMBIOS:0x0004", {}, 3},
                       {"SMBIOS:0x0001", {"0x0002"}},
                       {"SMBIOS:0x0002", {"0x0003"}},
                       {"SMBIOS:0x0003", {"0x0001"}}}),
              (Parents{4, 0, 2, 3}));
}

} // namespace
