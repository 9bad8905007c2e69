// Where devices hang in the text form's tree.
#include "outline/tree.h"

#include <gtest/gtest.h>

namespace
{

struct Case
{
    const char* uid;
    std::vector<const char*> children;
    const char* parent = "";
    bool typeLevel = false;
};

/// The parents' indices of a root and these devices after it, the root left out.
std::vector<std::size_t> parents(const std::vector<Case>& cases)
{
    embedded_host::outline::TreeBuilder builder;
    builder.add("SMBIOS", false, "");
    for (const auto& each : cases) {
        builder.add(each.uid, each.typeLevel, each.parent);
        for (const char* child : each.children)
            builder.addChild(child);
    }
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
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {}}, {"SMBIOS:0x0002", {}, "0x0001"}}), (Parents{0, 1})) << "by its parent";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {}}, {"SMBIOS:0x0002", {}, "0x0001"}, {"SMBIOS:0x0003", {"0x0002"}}}),
              (Parents{0, 3, 0}))
        << "being named comes first";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0003"}}, {"SMBIOS:0x0002", {"0x0003"}}, {"SMBIOS:0x0003", {}}}),
              (Parents{0, 0, 1}))
        << "under the first that names it";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0099"}, "0x0098"}}), (Parents{0})) << "dangling";
    EXPECT_EQ(parents({{"SMBIOS:0x0010", {}}, {"SMBIOS:0x0010:1", {}}, {"SMBIOS:Group", {"0x0010", "0x0010"}}}),
              (Parents{3, 3, 0}))
        << "all devices of a handle";
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0001"}, "0x0001"}}), (Parents{0})) << "itself";
}

TEST(Tree, DevicesWithATypeLevelIdentifierMoveOnlyByTheirParent)
{
    EXPECT_EQ(parents({{"SMBIOS:0x0000", {}, "", true}, {"SMBIOS:0x0001", {"0x0000"}}}), (Parents{0, 0}));
    EXPECT_EQ(parents({{"SMBIOS:0x0003", {}}, {"SMBIOS:0x0002", {}, "0x0003", true}, {"SMBIOS:0x0009", {"0x0002"}}}),
              (Parents{0, 1, 0}));
}

TEST(Tree, CirclesAreOpenedAtTheirFirstDevice)
{
    EXPECT_EQ(parents({{"SMBIOS:0x0001", {"0x0002"}}, {"SMBIOS:0x0002", {"0x0001"}}}), (Parents{0, 1}));
    EXPECT_EQ(parents({{"SMBIOS:0x0004", {}, "0x0003"},
                       {"SMBIOS:0x0001", {"0x0002"}},
                       {"SMBIOS:0x0002", {"0x0003"}},
                       {"SMBIOS:0x0003", {"0x0001"}}}),
              (Parents{4, 0, 2, 3}));
}

} // namespace
