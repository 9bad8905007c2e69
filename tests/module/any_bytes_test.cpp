// Tables of any bytes: what is printed stays valid, the log stays short, and what lies before a fault is published as
// if there were none.
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "support/machine_text.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"
#include "table/image.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{

using embedded_host::DeviceRecord;
using tests::Bytes;

tests::TableBuilder sample() { return tests::readMachine(TESTS_FOLDER "/machines/sample.table").table; }

template <class Inventory, class How>
std::string printed(const std::vector<DeviceRecord>& devices, How how)
{
    tests::TextOutput output;
    Inventory inventory(output, how);
    for (const auto& device : devices)
        inventory.take(embedded_host::DeviceRecord(device));
    inventory.end();
    return output.text();
}

/// One discovery, whose outputs and log are what they should be.
tests::Recorded discoverSoundly(const Bytes& image)
{
    using namespace embedded_host::inventory;
    auto recorded = tests::discover(image);
    const auto document = printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Document);
    EXPECT_EQ(tests::faultInJson(document), "");
    EXPECT_EQ(tests::faultInText(printed<TextInventory>(recorded.devices, Detail::All)), "");
    EXPECT_EQ(tests::faultInLog(recorded.log), "");
    return recorded;
}

struct Place
{
    std::size_t start;
    std::size_t end;
};

/// Where the structures of a sound table lie, by handle.
std::map<std::string, Place> places(const Bytes& table)
{
    std::map<std::string, Place> found;
    for (std::size_t start = 0; start < table.size();) {
        const auto end = *embedded_host::table::endOfStrings(table, start + table[start + 1]);
        const auto handle = embedded_host::table::littleEndian(table, start + 2, 2);
        found[lum::SprintfFormat("0x%04X", static_cast<unsigned>(handle)).bytes()] = {start, end};
        start = end;
    }
    return found;
}

/// A device's structure; none for the root and for groups.
const Place* placeOf(const DeviceRecord& device, const std::map<std::string, Place>& all)
{
    const auto* handle = device.find("smbios2_hdr_handle");
    return handle == nullptr ? nullptr : &all.at(handle->toString().lumString().bytes());
}

TEST(AnyBytes, ACutTakesOnlyWhatLiesBehindIt)
{
    constexpr std::size_t kEntryPoint = 0x20;
    const auto dump = sample().dump64(3, 2, 0);
    const auto structures = places(Bytes(dump.begin() + kEntryPoint, dump.end()));
    const auto whole = tests::discover(dump);
    std::map<std::string, std::string> texts;
    for (const auto& device : whole.devices)
        texts[device.uid] = tests::inventoryText({device});

    for (std::size_t size = 0; size < dump.size(); ++size) {
        SCOPED_TRACE(size);
        const auto recorded = discoverSoundly(Bytes(dump.begin(), dump.begin() + static_cast<std::ptrdiff_t>(size)));
        if (size <= kEntryPoint) {
            EXPECT_TRUE(recorded.devices.empty());
            continue;
        }
        const auto cut = size - kEntryPoint;
        const auto isWhole = [&](const DeviceRecord& device) {
            const auto* place = placeOf(device, structures);
            return place != nullptr && place->end <= cut;
        };
        EXPECT_EQ(std::ranges::count_if(recorded.devices, isWhole), std::ranges::count_if(whole.devices, isWhole));
        for (const auto& device : recorded.devices) {
            const auto text = tests::inventoryText({device});
            if (isWhole(device)) {
                EXPECT_EQ(text, texts[device.uid]);
            } else if (placeOf(device, structures) == nullptr) {
                EXPECT_TRUE(texts[device.uid].starts_with(text)) << device.uid << " names its first members";
            }
        }

        std::vector<std::string> faults;
        for (const auto& [handle, place] : structures)
            if (place.start < cut && cut < place.end)
                faults.push_back(lum::SprintfFormat("structure at offset 0x%zX: ", place.start).bytes());
        const auto told = recorded.messages("Smbios2");
        EXPECT_TRUE(std::ranges::equal(told, faults, [](auto& line, auto& start) { return line.starts_with(start); }));
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
    const auto table = sample();
    for (const auto& image : {table.dump64(3, 2, 0), table.dump32(2, 7), table.dumpLegacy(2, 1), table.structures(),
                              table.windowsBlock(3, 2, 0)})
        for (int i = 0; i < 100; ++i)
            discoverSoundly(mutated(image, random));
}

TEST(AnyBytes, RealMachinesTablesAndTheirMutationsAreToldSoundly)
{
    const std::filesystem::path folder = SHARED_FOLDER "/tables";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no real machines' tables beside the checkout";
    std::mt19937 random(20202);
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path());
        const auto bytes = tests::readBytes(entry.path());
        discoverSoundly(bytes);
        for (int i = 0; i < 20; ++i)
            discoverSoundly(mutated(bytes, random));
    }
}

} // namespace
