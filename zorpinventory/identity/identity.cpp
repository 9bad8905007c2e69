// Real texts and keys.
#include "identity.h"

#include "knowledge/placeholders.h"
#include "placeholders/placeholders.h"

#include <algorithm>

namespace zorpinventory::identity
{

using document::Device;
using embedded_host::placeholders::Kind;

namespace
{

Kind kindOfText(std::string_view property)
{
    if (property == "t1_uuid")
        return Kind::Uuid;
    const bool isNumber =
        property.ends_with("_serial") || property.ends_with("_asset_tag") || property.ends_with("_part_num");
    return isNumber ? Kind::Serial : Kind::Name;
}

/// The serial number as it is written, with its property: the first real one, repeated or not.
Serials::Written writtenSerial(const Device& device)
{
    const auto& kind = knowledge::kindOf(device.type);
    if (kind.isEmpty != nullptr && kind.isEmpty(device))
        return {};
    for (const auto property : kind.serials)
        if (const auto text = device.text(property); isReal(property, text))
            return {text, property};
    return {};
}

/// Maker, product and serial number, which name one machine only together.
std::string joined(std::string_view maker, std::string_view product, std::string_view serial)
{
    std::string key;
    for (const auto part : {maker, product, serial}) {
        if (!key.empty() && !part.empty())
            key += ' ';
        key += part;
    }
    return key;
}

} // namespace

bool isReal(std::string_view property, std::string_view text)
{
    return !text.empty() && embedded_host::placeholders::isReal(text, kindOfText(property));
}

bool isPlaceholder(std::string_view property, std::string_view text)
{
    return !text.empty() && embedded_host::placeholders::isPlaceholder(text, kindOfText(property));
}

bool isTemplate(const Device& device)
{
    const auto row = std::ranges::find(knowledge::kTemplates, device.type, &knowledge::Template::type);
    if (row == std::end(knowledge::kTemplates))
        return false;
    const auto says = [&](std::string_view property) {
        const auto text = device.text(property);
        return isReal(property, text) &&
               std::ranges::find(knowledge::kTemplateTexts, text) == std::end(knowledge::kTemplateTexts);
    };
    const auto isMeasured = [&](std::string_view property) {
        const auto text = device.text(property);
        return !text.empty() && text != "UNKNOWN" && device.number(property).value_or(1) != 0;
    };
    return std::ranges::none_of(row->texts, says) && std::ranges::none_of(row->measured, isMeasured);
}

Serials::Serials(const document::Document& document)
{
    for (const auto& device : document.devices())
        if (const auto serial = writtenSerial(device).text; !serial.empty())
            ++carriers_[{device.type, serial}];
}

Serials::Written Serials::written(const Device& device) const
{
    auto serial = writtenSerial(device);
    if (const auto found = carriers_.find({device.type, serial.text}); found != carriers_.end())
        serial.carriers = found->second;
    return serial;
}

std::string_view Serials::of(const Device& device) const
{
    const auto serial = written(device);
    return serial.carriers == 1 ? serial.text : std::string_view();
}

const Device* firstOf(const document::Document& document, unsigned type)
{
    const auto found = std::ranges::find(document.devices(), type, &Device::type);
    return found != document.devices().end() ? &*found : nullptr;
}

Key keyOf(const document::Document& document)
{
    const auto* system = firstOf(document, 1);
    const auto* board = firstOf(document, 2);
    const auto real = [](const Device* device, std::string_view property) {
        const auto text = device != nullptr ? device->text(property) : std::string_view();
        return isReal(property, text) ? text : std::string_view();
    };
    const auto either = [&](std::string_view ofSystem, std::string_view ofBoard) {
        const auto text = real(system, ofSystem);
        return text.empty() ? real(board, ofBoard) : text;
    };
    const Serials serials(document);
    if (system != nullptr)
        if (const auto serial = serials.of(*system); !serial.empty())
            return {joined(either("t1_manufacturer", "t2_manufacturer"), either("t1_product", "t2_product"), serial),
                    Key::From::Serial};
    if (const auto uuid = real(system, "t1_uuid"); !uuid.empty())
        return {std::string(uuid), Key::From::Uuid};
    if (board != nullptr)
        if (const auto serial = serials.of(*board); !serial.empty())
            return {joined(real(board, "t2_manufacturer"), real(board, "t2_product"), serial), Key::From::Board};
    return {};
}

} // namespace zorpinventory::identity
