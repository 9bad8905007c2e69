// Tables of any bytes: what is printed stays valid, the log stays short, and what lies before a fault is published as
// if there were none.
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "support/machine_text.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{

using embedded_host::DeviceRecord;
using tests::Bytes;

tests::TableBuilder sample() { return tests::readMachine(TESTS_FOLDER "/machines/sample.table").table; }

/// One discovery, whose outputs and log are what they should be.
tests::Recorded discoverSoundly(const Bytes& image)
{
    using namespace embedded_host::inventory;
    auto recorded = tests::discover(image);
    const auto document = tests::printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Document);
    EXPECT_EQ(tests::faultInJson(document), "");
    EXPECT_EQ(tests::faultInText(tests::printed<TextInventory>(recorded.devices, Detail::All)), "");
    EXPECT_EQ(tests::faultInLog(recorded.log), "");
    return recorded;
}

/// Where each structure ends, by the identifier of its first device.
std::map<std::string, std::size_t> ends(const tests::TableBuilder& table)
{
    std::map<std::string, std::size_t> found;
    std::size_t end = 0;
    for (const auto& structure : table.all()) {
        const auto bytes = structure.image();
        end += bytes.size();
        found[std::string(lum::SprintfFormat("SMBIOS:0x%02X%02X", bytes[3], bytes[2]).bytes())] = end;
    }
    return found;
}

TEST(AnyBytes, ACutTakesOnlyWhatLiesBehindIt)
{
    constexpr std::size_t kEntryPoint = 0x20;
    const auto dump = sample().dump64(3, 2, 0);
    const auto structures = ends(sample());
    const auto whole = tests::discover(dump);
    for (std::size_t cut = 1; kEntryPoint + cut < dump.size(); ++cut) {
        SCOPED_TRACE(cut);
        const auto end = dump.begin() + static_cast<std::ptrdiff_t>(kEntryPoint + cut);
        const auto textOfUncut = [&](const std::vector<DeviceRecord>& devices) {
            std::vector<DeviceRecord> uncut;
            std::ranges::copy_if(devices, std::back_inserter(uncut), [&](const DeviceRecord& device) {
                const auto structure = structures.find(std::string(device.uid.bytes()));
                return structure != structures.end() && structure->second <= cut;
            });
            return tests::inventoryText(uncut);
        };
        ASSERT_EQ(textOfUncut(discoverSoundly(Bytes(dump.begin(), end)).devices), textOfUncut(whole.devices));
    }
}

/// Changes bytes, and takes or doubles stretches of them, so that all behind is somewhere else.
Bytes mutated(Bytes bytes, std::mt19937& random)
{
    const auto below = [&](std::size_t limit) { return static_cast<std::ptrdiff_t>(random() % (limit + 1)); };
    for (auto changes = below(20); changes >= 0 && !bytes.empty(); --changes) {
        const auto at = bytes.begin() + below(bytes.size() - 1);
        const Bytes stretch(at, at + std::min(below(40), bytes.end() - at));
        switch (random() % 4) {
        case 0:
            bytes.insert(at, stretch.begin(), stretch.end());
            break;
        case 1:
            bytes.erase(at, at + static_cast<std::ptrdiff_t>(stretch.size()));
            break;
        default:
            *at = static_cast<unsigned char>(random());
        }
    }
    return bytes;
}

TEST(AnyBytes, MutatedTablesAreToldSoundly)
{
    std::mt19937 random(20201);
    std::vector<Bytes> images;
    for (const auto& [layout, image] : sample().layouts())
        images.push_back(image);
    if (const std::filesystem::path real = SHARED_FOLDER "/tables"; std::filesystem::exists(real))
        for (const auto& entry : std::filesystem::recursive_directory_iterator(real))
            if (entry.path().extension() == ".dmi")
                images.push_back(tests::readBytes(entry.path()));
    constexpr int kMutationsOfEach = 3;
    for (const auto& image : images) {
        discoverSoundly(image);
        for (int i = 0; i < kMutationsOfEach; ++i)
            discoverSoundly(mutated(image, random));
    }
}

} // namespace
