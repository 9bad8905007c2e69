// Whole machines: every device, property and link, in the order in which they are published.
#include "support/expected_file.h"
#include "support/machine_text.h"
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

const std::filesystem::path kMachines = TESTS_FOLDER "/machines";

TEST(Machines, HaveTheirInventories)
{
    for (const std::string name : {"sample", "sample_lenovo", "sample_dell"}) {
        const auto machine = tests::readMachine(kMachines / (name + ".table"));
        tests::expectFile(kMachines / (name + ".inventory"),
                          tests::inventoryText(tests::discover(machine.image).devices));
    }
}

} // namespace
