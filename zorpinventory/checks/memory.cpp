// Memory arrays and what is fitted in them.
#include "families.h"

#include "knowledge/kinds.h"
#include "services/messages.h"

#include <cmath>
#include <limits>
#include <map>

namespace zorpinventory::checks
{

using document::Device;
using embedded_host::services::translatable;

namespace
{

/// The module's size in bytes. One that firmware gives in KB has 32 MB too much in the document, and nothing tells it
/// from a real one of 32 to 64 MB: the smaller is meant here.
std::optional<std::uint64_t> sizeOf(const Device& device)
{
    constexpr std::uint64_t kKilobytesFlag = std::uint64_t{32} << 20;
    const auto size = positive(device.number("t17_sz"));
    const bool mayBeKilobytes = size && *size >= kKilobytesFlag && *size < 2 * kKilobytesFlag;
    return mayBeKilobytes ? std::optional(*size - kKilobytesFlag) : size;
}

/// Million transfers a second; nothing where they are not known.
std::optional<std::uint64_t> speedOf(const Device& device, std::string_view property)
{
    constexpr double kMega = 1e6;
    const auto hertz = device.number(property);
    return hertz ? positive(std::round(*hertz / kMega)) : std::nullopt;
}

/// 2666 and 2667 are one speed, rounded in two ways.
bool areAlike(std::uint64_t a, std::uint64_t b) { return a - b + 1 <= 2; }

/// The array's maximum in bytes. 2 TiB is what structures that cannot say more have instead of it.
std::optional<std::uint64_t> maximumOf(const Device& array)
{
    constexpr std::uint64_t kSeeElsewhere = std::uint64_t{1} << 41;
    constexpr double kLengthWithExtended = 0x17;
    const auto most = positive(array.number("t16_max_sz"));
    const bool seesElsewhere =
        most == kSeeElsewhere && array.number("smbios2_hdr_len").value_or(0) < kLengthWithExtended;
    return seesElsewhere ? std::nullopt : most;
}

/// Kinds of memory that are known: not Other, not Unknown.
std::optional<unsigned> memoryTypeOf(const Device& device)
{
    constexpr double kFirstKnown = 3;
    constexpr double kLast = 0xFF;
    const auto code = device.number("t17_mem_type");
    return code && *code >= kFirstKnown && *code <= kLast ? std::optional(static_cast<unsigned>(*code)) : std::nullopt;
}

/// The first few of the values.
std::string joined(const std::map<std::uint64_t, std::string>& values)
{
    constexpr std::size_t kMost = 8;
    std::string text;
    std::size_t told = 0;
    for (const auto& [number, value] : values) {
        if (told++ == kMost)
            return text + ", …";
        text += (text.empty() ? "" : ", ") + value;
    }
    return text;
}

} // namespace

const Rule kMemoryOverMaximum{
    .name = "memory-over-maximum",
    .levels = {Level::Warning},
    .means = translatable("the modules of a memory array are larger than its maximum"),
    .text = translatable("%1 are fitted in an array that claims to hold %2 at most."),
    .advice = translatable("Most often the firmware is older than the modules: look for a newer one. What is fitted "
                           "counts."),
    .standard = "Physical Memory Array (type 16), Maximum Capacity (07h) and Extended Maximum Capacity (0Fh)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto* array : inventory.ofType(16)) {
                std::uint64_t fitted = 0;
                for (const auto* device : inventory.devicesOf(*array)) {
                    const auto room = std::numeric_limits<std::uint64_t>::max() - fitted;
                    fitted += std::min(room, sizeOf(*device).value_or(0));
                }
                if (const auto most = maximumOf(*array); most && fitted > *most)
                    findings.at(*array, "t16_max_sz", {Bytes{fitted}, Bytes{*most}});
            }
        },
};

const Rule kMemoryDevicesMiscounted{
    .name = "memory-devices-miscounted",
    .levels = {Level::Note},
    .means = translatable("a memory array does not have as many memory devices as it says"),
    .text = translatable("It claims %1 memory devices; %2 name it."),
    .advice = translatable("Count the memory devices themselves; a few firmwares list no empty sockets."),
    .standard = "Physical Memory Array (type 16), Number of Memory Devices (0Dh)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto* array : inventory.ofType(16)) {
                const auto claimed = array->number("t16_num");
                const auto count = inventory.devicesOf(*array).size();
                const bool isKnown = array->handle && inventory.withHandle(*array->handle).size() == 1;
                if (isKnown && claimed && *claimed != static_cast<double>(count))
                    findings.at(*array, "t16_num", {std::string(array->text("t16_num")), std::to_string(count)});
            }
        },
};

const Rule kMemoryMixed{
    .name = "memory-mixed",
    .levels = {Level::Note},
    .means = translatable("modules of several sizes, types or speeds in one memory array"),
    .text = translatable("Its modules differ: %1."),
    .advice = translatable("This works, but the slowest module sets the pace, and channels may be used unevenly."),
    .standard = "Memory Device (type 17), Size (0Ch), Memory Type (12h) and Speed (15h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto* array : inventory.ofType(16)) {
                std::map<std::uint64_t, std::string> sizes;
                std::map<std::uint64_t, std::string> speeds;
                std::map<std::uint64_t, std::string> types;
                for (const auto* device : inventory.devicesOf(*array)) {
                    if (knowledge::emptySocket(*device))
                        continue;
                    const auto size = positive(device->number("t17_sz"));
                    if (size && size == sizeOf(*device))
                        sizes.emplace(*size, device->text("t17_sz"));
                    if (const auto code = memoryTypeOf(*device))
                        types.emplace(*code, device->text("t17_mem_type"));
                    const auto speed = speedOf(*device, "t17_speed");
                    if (speed && !speeds.contains(*speed - 1) && !speeds.contains(*speed + 1))
                        speeds.emplace(*speed, std::to_string(*speed) + " MT/s");
                }
                std::string told;
                for (const auto* values : {&sizes, &types, &speeds})
                    if (values->size() > 1)
                        told += (told.empty() ? "" : "; ") + joined(*values);
                if (!told.empty())
                    findings.at(*array, {}, {told});
            }
        },
};

const Rule kMemoryBelowSpeed{
    .name = "memory-below-speed",
    .levels = {Level::Note},
    .means = translatable("a module runs slower than it could"),
    .text = translatable("It runs at %1 MT/s and could do %2."),
    .advice = translatable("Often the processor, or the number of modules on a channel, sets the limit; otherwise look "
                           "at the memory settings of the firmware."),
    .standard = "Memory Device (type 17), Configured Memory Speed (20h) and Speed (15h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto* device : inventory.ofType(17)) {
                const auto possible = speedOf(*device, "t17_speed");
                const auto configured = speedOf(*device, "t17_config_mem_clock_speed");
                if (!possible || !configured || *configured >= *possible || areAlike(*configured, *possible))
                    continue;
                // Some firmware gives one as the clock, which is half of the transfers.
                if (!areAlike(2 * *configured, *possible))
                    findings.at(*device, "t17_config_mem_clock_speed",
                                {std::to_string(*configured), std::to_string(*possible)});
            }
        },
};

} // namespace zorpinventory::checks
