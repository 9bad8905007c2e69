// Texts that firmware's makers left as they were, and bytes that are no text.
#include "families.h"

#include "identity/identity.h"
#include "knowledge/placeholders.h"
#include "services/messages.h"
#include "services/utf8.h"

#include <set>

namespace zorpinventory::checks
{

using document::Device;
using document::Property;
using embedded_host::services::translatable;

namespace
{

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
bool isAsciiControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

/// The characters of a text that are controls, or stand for bytes that are no UTF-8.
bool hasControl(std::string_view text)
{
    if (std::ranges::any_of(text, isAsciiControl))
        return true;
    if (std::ranges::all_of(text, isAscii))
        return false;
    constexpr char32_t kFirst = 0x80;
    constexpr char32_t kLast = 0x9F;
    while (!text.empty())
        if (const auto code = embedded_host::services::takeCharacter(text); code >= kFirst && code <= kLast)
            return true;
    return false;
}

bool hasReplacement(std::string_view text) { return text.find("\uFFFD") != std::string_view::npos; }

/// Calls `found(device, property)` for every property with a text that is like that. Only firmware's strings can be.
template <class IsLike, class Found>
void forEachText(const Inventory& inventory, IsLike isLike, Found found)
{
    for (const auto& device : inventory.devices()) {
        for (const auto& property : device.properties) {
            const auto* text = std::get_if<std::string_view>(&property.value);
            const auto* list = std::get_if<document::Texts>(&property.value);
            if ((text != nullptr && isLike(*text)) || (list != nullptr && std::ranges::any_of(*list, isLike)))
                found(device, property);
        }
    }
}

} // namespace

const Rule kUuidPlaceholder{
    .name = "uuid-placeholder",
    .levels = {Level::Warning},
    .means = translatable("the system's UUID is none, or one that many machines have"),
    .text = translatable("The UUID was never filled in; it tells no machine from another."),
    .advice =
        translatable("Know the machine by its serial number instead; many makers have a tool that sets the UUID."),
    .standard = "System Information (type 1), UUID (08h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            constexpr double kLengthWithUuid = 0x18;
            for (const auto* system : inventory.ofType(1)) {
                const auto uuid = system->text("t1_uuid");
                if (!uuid.empty() && system->number("smbios2_hdr_len").value_or(0) >= kLengthWithUuid &&
                    !identity::isReal("t1_uuid", uuid))
                    findings.at(*system, "t1_uuid");
            }
        },
};

const Rule kSerialRepeated{
    .name = "serial-repeated",
    .levels = {Level::Warning},
    .means = translatable("several parts of one kind carry the same serial number"),
    .text = translatable("%2 parts of this kind carry the serial number %1."),
    .advice = translatable("Read the number from the part itself; programs know such parts by their places only."),
    .standard = "Serial Number of types 1, 2, 3, 4, 17, 22 and 39",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            const identity::Serials serials(inventory.document());
            std::set<std::pair<unsigned, std::string_view>> told;
            for (const auto& device : inventory.devices()) {
                const auto [serial, property, carriers] = serials.written(device);
                if (carriers > 1 && told.emplace(device.type, serial).second)
                    findings.at(device, property, {std::string(serial), std::to_string(carriers)});
            }
        },
};

const Rule kControlCharacters{
    .name = "control-characters",
    .levels = {Level::Warning},
    .means = translatable("control characters in a text"),
    .text = translatable("There are control characters in it."),
    .advice = translatable("Nothing needs to be done here; other programs may show rubbish, or act on them."),
    .standard = "Text strings",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            forEachText(inventory, hasControl,
                        [&](const Device& device, const Property& property) { findings.at(device, property.name); });
        },
};

const Rule kNotUtf8{
    .name = "not-utf-8",
    .levels = {Level::Warning},
    .means = translatable("bytes in a text that are no UTF-8"),
    .text = translatable("There are bytes in it that are no UTF-8."),
    .advice = translatable("Nothing needs to be done here; each such place is shown as U+FFFD."),
    .standard = "Text strings",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            forEachText(inventory, hasReplacement,
                        [&](const Device& device, const Property& property) { findings.at(device, property.name); });
        },
};

const Rule kPlaceholder{
    .name = "placeholder",
    .levels = {Level::Note},
    .means = translatable("texts about the system, board or enclosure that were never filled in"),
    .text = translatable("Never filled in: %1."),
    .advice = translatable("Do not sort machines by these texts; many makers have a tool that sets them."),
    .standard = "System Information (type 1), Baseboard Information (type 2), System Enclosure (type 3)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const unsigned type : {1U, 2U, 3U}) {
                for (const auto* device : inventory.ofType(type)) {
                    std::vector<std::string_view> texts;
                    std::string_view first;
                    for (const auto& property : device->properties) {
                        const auto text = document::textOf(property.value);
                        if (!std::ranges::binary_search(knowledge::kFilledIn, property.name) ||
                            !identity::isPlaceholder(property.name, text))
                            continue;
                        first = first.empty() ? property.name : first;
                        if (std::ranges::find(texts, text) == texts.end())
                            texts.push_back(text);
                    }
                    std::string told;
                    for (const auto text : texts)
                        told.append(told.empty() ? "" : ", ").append(text);
                    if (!texts.empty())
                        findings.at(*device, first, {told});
                }
            }
        },
};

const Rule kTemplateDevice{
    .name = "template-device",
    .levels = {Level::Note},
    .means = translatable("a probe, cooling device, power supply or battery that no hardware stands behind"),
    .text = translatable("No text and no measured value in it is of a real device."),
    .advice = translatable("Pass over it, as the summary does."),
    .standard = "types 22, 26 to 29 and 39",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto& device : inventory.devices())
                if (identity::isTemplate(device))
                    findings.at(device, {});
        },
};

} // namespace zorpinventory::checks
