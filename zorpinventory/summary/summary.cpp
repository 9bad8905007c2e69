// The facts, with what is known of the values' oddities.
#include "summary.h"

#include <algorithm>
#include <set>

namespace zorpinventory::summary
{

using document::Device;
using document::Document;

namespace
{

/// A type has few devices on any machine whose summary matters.
std::vector<const Device*> ofType(const Document& document, unsigned type)
{
    std::vector<const Device*> found;
    for (const auto& device : document.devices())
        if (device.type == type)
            found.push_back(&device);
    return found;
}

/// The text where it tells something, with single blanks: makers fill names up to columns.
std::string real(const Device* device, std::string_view property)
{
    const auto text = device != nullptr ? device->text(property) : std::string_view();
    std::string told;
    if (!identity::isReal(property, text))
        return told;
    for (const char c : text)
        if (c != ' ' || !told.ends_with(' '))
            told += c;
    return told;
}

Count positive(std::optional<double> number)
{
    constexpr double kMost = 18446744073709549568.0; // the largest double below 2^64
    return number && *number >= 1 && *number <= kMost ? Count(static_cast<std::uint64_t>(*number)) : std::nullopt;
}

/// "2017-01-31" for "01/31/2017"; other texts as they are.
std::string isoDate(const std::string& date)
{
    constexpr std::string_view kPattern = "00/00/0000";
    const auto fits = [](char c, char pattern) { return pattern == '0' ? c >= '0' && c <= '9' : c == pattern; };
    if (!std::ranges::equal(date, kPattern, fits))
        return date;
    return date.substr(6) + "-" + date.substr(0, 2) + "-" + date.substr(3, 2);
}

Thing systemOf(const Device* system, const Device* board, const identity::Serials& serials)
{
    Thing thing{real(system, "t1_manufacturer"), real(system, "t1_product"), real(system, "t1_ver"), {}};
    if (thing.maker.empty())
        thing.maker = real(board, "t2_manufacturer");
    if (thing.product.empty()) {
        thing.product = real(board, "t2_product");
        thing.version = {}; // of something else
    }
    if (system != nullptr)
        thing.serial = serials.of(*system);
    return thing;
}

Thing boardOf(const Device* board, const identity::Serials& serials)
{
    Thing thing{real(board, "t2_manufacturer"), real(board, "t2_product"), real(board, "t2_ver"), {}};
    if (board != nullptr)
        thing.serial = serials.of(*board);
    return thing;
}

std::string processorName(const Device& device)
{
    if (auto version = real(&device, "t4_ver"); !version.empty())
        return version;
    const auto family = real(&device, "t4_family");
    return family.starts_with("Family ") || family == "Other" || family == "Out of range" ? std::string() : family;
}

void addProcessors(Summary& summary, const Document& document)
{
    // The status byte: CPU Socket Populated in bit 6, CPU Status in bits 0 to 2.
    std::vector<const Device*> populated;
    std::vector<const Device*> unknown;
    for (const auto* device : ofType(document, 4)) {
        const auto status = device->number("t4_status_internal");
        const auto bits = status && *status >= 0 && *status <= 0xFF ? static_cast<unsigned>(*status) : 0;
        if ((bits & 0x40U) != 0)
            populated.push_back(device);
        else if ((bits & 0x07U) == 0)
            unknown.push_back(device);
    }
    const auto& counted = populated.empty() ? unknown : populated;
    std::uint64_t cores = 0;
    std::uint64_t threads = 0;
    bool coresKnown = !counted.empty();
    bool threadsKnown = coresKnown;
    for (const auto* device : counted) {
        const auto name = processorName(*device);
        const auto like = std::ranges::find(summary.processors, name, &Processor::name);
        if (like != summary.processors.end())
            ++like->count;
        else
            summary.processors.push_back({name, 1});
        const auto add = [&](std::uint64_t& sum, bool& known, std::string_view property) {
            const auto count = positive(device->number(property));
            known = known && count;
            sum += count.value_or(0);
        };
        add(cores, coresKnown, "t4_core_cnt");
        add(threads, threadsKnown, "t4_thread_cnt");
    }
    if (coresKnown)
        summary.cores = cores;
    if (threadsKnown)
        summary.threads = threads;
}

bool isSystemMemory(const Device& array)
{
    constexpr double kSystemMemory = 3;
    const auto use = array.number("t16_use");
    return use ? *use == kSystemMemory : array.text("t16_use") == "System memory";
}

/// The array's maximum; 2 TiB is what structures that cannot say more have instead of it.
Count maximumOf(const Device& array)
{
    constexpr std::uint64_t kSeeElsewhere = std::uint64_t{1} << 41;
    constexpr double kLengthWithExtended = 0x17;
    const auto most = positive(array.number("t16_max_sz"));
    const auto length = array.number("smbios2_hdr_len");
    return most == kSeeElsewhere && length && *length < kLengthWithExtended ? std::nullopt : most;
}

/// Transfers are what the standard calls MT/s, whatever the text says.
Count megatransfers(const Device& device, std::string_view property)
{
    constexpr double kMega = 1e6;
    const auto hertz = device.number(property);
    return hertz ? positive(*hertz / kMega) : std::nullopt;
}

Module moduleOf(const Device& device, const identity::Serials& serials, bool withBank)
{
    const auto bank = device.text("t17_bank_locator");
    const auto locator = device.text("t17_locator");
    Module module;
    module.locator = withBank && !bank.empty() ? std::string(bank) + " " + std::string(locator) : std::string(locator);
    module.size = real(&device, "t17_sz");
    module.type = real(&device, "t17_mem_type");
    if (module.type == "Other" || module.type == "Out of range")
        module.type.clear();
    module.configured = megatransfers(device, "t17_config_mem_clock_speed");
    module.possible = megatransfers(device, "t17_speed");
    module.maker = real(&device, "t17_manufacturer");
    module.part = real(&device, "t17_part_num");
    module.serial = serials.of(device);
    return module;
}

void addMemory(Memory& memory, const Document& document, const identity::Serials& serials)
{
    std::set<std::string_view> others; // arrays that are not used as system memory
    bool mostKnown = true;
    std::uint64_t most = 0;
    for (const auto* array : ofType(document, 16)) {
        if (!isSystemMemory(*array)) {
            others.insert(array->uid);
            continue;
        }
        const auto maximum = maximumOf(*array);
        mostKnown = mostKnown && maximum;
        most += maximum.value_or(0);
    }
    if (mostKnown && most != 0)
        memory.mostBytes = most;

    std::vector<const Device*> occupied;
    for (const auto* device : ofType(document, 17)) {
        if (others.contains("SMBIOS:" + std::string(device->text("t17_physical_handle"))))
            continue;
        ++memory.sockets;
        if (!knowledge::emptySocket(*device))
            occupied.push_back(device);
    }
    memory.occupied = static_cast<unsigned>(occupied.size());

    std::map<std::string_view, unsigned> locators;
    for (const auto* device : occupied)
        ++locators[device->text("t17_locator")];
    const bool withBank = locators.size() < occupied.size();
    std::uint64_t bytes = 0;
    bool bytesKnown = !occupied.empty();
    for (const auto* device : occupied) {
        const auto size = positive(device->number("t17_sz"));
        bytesKnown = bytesKnown && size;
        bytes += size.value_or(0);
        memory.modules.push_back(moduleOf(*device, serials, withBank));
    }
    if (bytesKnown)
        memory.bytes = bytes;
}

void addSupplies(Summary& summary, const Document& document)
{
    const auto ratingOf = [](const Device& device, std::string_view property) {
        const auto text = device.text(property);
        return text == "UNKNOWN" || device.number(property) == 0 ? std::string() : std::string(text);
    };
    for (const auto* device : ofType(document, 22))
        if (!identity::isTemplate(*device))
            summary.batteries.push_back(
                {real(device, "t22_manufacturer"), real(device, "t22_name"), ratingOf(*device, "t22_capacity")});
    for (const auto* device : ofType(document, 39))
        if (!identity::isTemplate(*device))
            summary.powerSupplies.push_back(
                {real(device, "t39_manufacturer"),
                 real(device, real(device, "t39_name").empty() ? "t39_part_num" : "t39_name"),
                 ratingOf(*device, "t39_max_power")});
}

} // namespace

Summary summaryOf(const Document& document)
{
    const identity::Serials serials(document);
    const auto* board = identity::firstOf(document, 2);
    const auto* firmware = identity::firstOf(document, 0);
    Summary summary;
    summary.key = identity::keyOf(document);
    summary.system = systemOf(identity::firstOf(document, 1), board, serials);
    summary.chassis = real(identity::firstOf(document, 3), "t3_type_msk7_srt0");
    if (summary.chassis == "Other" || summary.chassis == "Out of range")
        summary.chassis.clear();
    summary.board = boardOf(board, serials);
    summary.firmware = {real(firmware, "t0_vendor"), real(firmware, "t0_ver"), isoDate(real(firmware, "t0_date"))};
    addProcessors(summary, document);
    addMemory(summary.memory, document, serials);
    for (const auto* slot : ofType(document, 9)) {
        constexpr double kInUse = 4;
        summary.freeSlots += knowledge::emptySlot(*slot) ? 1U : 0U;
        summary.usedSlots += slot->number("t9_usage_internal") == kInUse ? 1U : 0U;
    }
    addSupplies(summary, document);
    return summary;
}

std::vector<Module> gathered(const std::vector<Module>& modules)
{
    std::vector<Module> all;
    for (const auto& module : modules) {
        const auto like = std::ranges::find_if(all, [&](const Module& other) {
            return module.size == other.size && module.type == other.type && module.configured == other.configured &&
                   module.possible == other.possible && module.maker == other.maker && module.part == other.part;
        });
        if (like == all.end()) {
            all.push_back(module);
        } else {
            ++like->count;
            like->serial.clear();
        }
    }
    return all;
}

} // namespace zorpinventory::summary
