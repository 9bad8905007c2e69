// Whole machines: every device, property and link, in the order in which they are published.
#include "support/expected_file.h"
#include "support/machine_text.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace
{

const std::filesystem::path kMachines = TESTS_FOLDER "/machines";

class Machine : public testing::TestWithParam<const char*>
{
};

TEST_P(Machine, HasItsInventory)
{
    const auto machine = tests::readMachine(kMachines / (GetParam() + std::string(".table")));
    tests::expectFile(kMachines / (GetParam() + std::string(".inventory")),
                      tests::inventoryText(tests::discover(machine.image).devices));
}

INSTANTIATE_TEST_SUITE_P(All, Machine, testing::Values("sample", "sample_lenovo", "sample_dell"),
                         [](const auto& machine) { return std::string(machine.param); });

/// The identifiers of the devices that a link of the given device names, as far as they are published.
void expectChildrenNamed(const tests::Recorded& recorded, const embedded_host::DeviceRecord& device,
                         const std::string& childName)
{
    for (const auto& child : device.childBusIds) {
        const auto found =
            std::ranges::find(recorded.devices, "SMBIOS:" + child.id.value_or(""), &embedded_host::DeviceRecord::uid);
        if (found != recorded.devices.end()) {
            EXPECT_NE(found->name.find(childName), std::string::npos) << device.uid << " names " << found->uid;
        }
    }
}

/// Real machines' tables, when they are beside the checkout: links lead where they say, groups follow their members.
TEST(RealMachines, LinksLeadToPublishedDevices)
{
    const std::filesystem::path folder = SHARED_FOLDER "/tables";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no real machines' tables beside the checkout";
    const std::set<std::string> kGroups{"SMBIOS:Processors", "SMBIOS:Ports", "SMBIOS:Slots", "SMBIOS:OnBoardDevices",
                                        "SMBIOS:OnBoardDevicesExt"};
    unsigned processors = 0;
    unsigned memoryDevices = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dmi")
            continue;
        SCOPED_TRACE(entry.path());
        const auto recorded = tests::discover(tests::readBytes(entry.path()));
        EXPECT_GT(recorded.devices.size(), 5u);
        std::set<std::string> published;
        for (const auto& device : recorded.devices) {
            if (device.find("t4_socket") != nullptr) {
                ++processors;
                expectChildrenNamed(recorded, device, "Cache");
            }
            if (device.find("t17_locator") != nullptr) {
                ++memoryDevices;
                const auto parent = recorded.value(device.uid, "smbios2_parent");
                EXPECT_EQ(recorded.device("SMBIOS:" + parent).name, "Memory Array");
            }
            if (kGroups.contains(device.uid))
                for (const auto& child : device.childBusIds) {
                    EXPECT_TRUE(published.contains("SMBIOS:" + *child.id)) << device.uid << " before " << *child.id;
                }
            published.insert(device.uid);
            for (const auto& property : device.properties) {
                const auto& name = property.declaration->name;
                EXPECT_FALSE(name == "t4_processorid" || name == "t35_description" || name.starts_with("t37_"));
            }
        }
    }
    EXPECT_GT(processors, 10u);
    EXPECT_GT(memoryDevices, 30u);
}

} // namespace
