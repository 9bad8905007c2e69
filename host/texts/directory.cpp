// All enumeration texts in one directory, sorted and checked while compiling.
#include "caches.h"
#include "legacy_memory.h"
#include "management_and_power.h"
#include "memory_errors.h"
#include "onboard_devices.h"
#include "peripherals_and_security.h"
#include "physical_memory.h"
#include "platform_identity.h"
#include "ports_and_slots.h"
#include "probes_and_cooling.h"
#include "processors.h"
#include "string_lists.h"
#include "system_event_log.h"

#include <array>

namespace embedded_host::texts
{

namespace
{

template <std::size_t... Sizes>
consteval auto merged(const FieldTexts (&... families)[Sizes])
{
    std::array<FieldTexts, (Sizes + ...)> all{};
    auto* next = all.begin();
    ((next = std::ranges::copy(families, next).out), ...);
    std::ranges::sort(all, {}, &FieldTexts::key);
    return all;
}

constexpr auto kDirectory =
    merged(kPlatformIdentityFields, kProcessorsFields, kLegacyMemoryFields, kCachesFields, kPortsAndSlotsFields,
           kOnboardDevicesFields, kStringListsFields, kSystemEventLogFields, kPhysicalMemoryFields, kMemoryErrorsFields,
           kPeripheralsAndSecurityFields, kProbesAndCoolingFields, kManagementAndPowerFields);

static_assert(std::ranges::adjacent_find(kDirectory, std::ranges::greater_equal{}, &FieldTexts::key) ==
                  kDirectory.end(),
              "a field has two tables");
static_assert(std::ranges::all_of(kDirectory, [](const FieldTexts& field) { return ascending(field.texts); }),
              "a table of texts is not in ascending order");

/// Where each type's fields begin; the next type's are their end.
constexpr auto kFirstOfType = [] {
    std::array<std::uint8_t, 257> first{};
    static_assert(kDirectory.size() <= 0xFF);
    for (std::size_t type = 0; type < first.size(); ++type)
        while (first[type] < kDirectory.size() && kDirectory[first[type]].type < type)
            ++first[type];
    return first;
}();

} // namespace

const FieldTexts* findField(unsigned type, unsigned offset, unsigned width, unsigned shift)
{
    if ((type | offset | width | shift) > 0xFF)
        return nullptr;
    const auto key = type << 24 | offset << 16 | width << 8 | shift;
    const std::span fields(&kDirectory[kFirstOfType[type]], &kDirectory[kFirstOfType[type + 1]]);
    const auto found = std::ranges::find(fields, key, &FieldTexts::key);
    return found != fields.end() ? &*found : nullptr;
}

const char* findText(const FieldTexts& field, unsigned value)
{
    // Most tables have every value from their first on.
    const std::size_t place = value - field.texts.front().first;
    if (place < field.texts.size() && field.texts[place].first == value)
        return field.texts[place].text;
    const auto found = std::ranges::lower_bound(field.texts, value, {}, &EnumText::last);
    return found != field.texts.end() && found->first <= value ? found->text : nullptr;
}

} // namespace embedded_host::texts
