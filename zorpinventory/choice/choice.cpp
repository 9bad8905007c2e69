// Choosing devices.
#include "choice.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zorpinventory::choice
{

using document::Device;
using document::Document;
using document::Property;

bool Choice::has(const Property& property) const
{
    return properties.empty() || std::ranges::find(properties, property.name) != properties.end();
}

std::optional<std::uint16_t> handleOf(const Device& device)
{
    constexpr std::string_view kPrefix = "SMBIOS:0x";
    if (!device.uid.starts_with(kPrefix))
        return std::nullopt;
    const auto digits = device.uid.substr(kPrefix.size());
    std::uint16_t handle = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    return error == std::errc() ? std::optional(handle) : std::nullopt;
}

std::vector<bool> chosen(const Document& document, const Choice& choice)
{
    std::vector<bool> all;
    for (const auto& device : document.devices()) {
        const auto handle = choice.handles.empty() ? std::nullopt : handleOf(device);
        all.push_back((choice.types.empty() || choice.types.contains(device.type)) &&
                      (choice.handles.empty() || (handle && choice.handles.contains(*handle))) &&
                      (choice.properties.empty() ||
                       std::ranges::any_of(device.properties, [&](const auto& each) { return choice.has(each); })));
    }
    return all;
}

namespace
{

/// "03000200-0400-0500-0006-000700080009" for the bytes in the table's order.
std::string uuidText(std::string_view bytes, bool turned)
{
    constexpr std::size_t kBytes = 16;
    constexpr std::array<std::size_t, kBytes> kTurned = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    constexpr std::size_t kStep = 3; // "00-02-"
    if (bytes.size() != kBytes * kStep - 1)
        return std::string(bytes);
    std::string text;
    for (std::size_t i = 0; i < kBytes; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += bytes.substr((turned ? kTurned[i] : i) * kStep, 2);
    }
    std::ranges::transform(text, text.begin(),
                           [](char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// Whether the table is of version 2.6 or later.
bool turnsUuids(const Document& document)
{
    if (document.devices().empty())
        return true;
    const auto version = document.devices().front().text("smbios2_version");
    unsigned major = 0;
    unsigned minor = 0;
    const auto* end = version.data() + version.size();
    const auto point = std::from_chars(version.data(), end, major).ptr;
    if (point != end)
        std::from_chars(point + 1, end, minor);
    return version.empty() || major > 2 || (major == 2 && minor >= 6);
}

/// Behind a shorter structure the bytes of a string stand where the revisions would be.
bool saysNoRevision(const Device& device, std::string_view text)
{
    constexpr double kLengthWithRevisions = 0x18;
    return text == "255.255" || device.number("smbios2_hdr_len").value_or(kLengthWithRevisions) < kLengthWithRevisions;
}

} // namespace

std::vector<std::string> textsOf(const Document& document, const knowledge::Keyword& keyword)
{
    using knowledge::Form;
    constexpr double kMega = 1e6;
    constexpr double kMost = 1e18;
    std::vector<std::string> texts;
    for (const auto& device : document.devices()) {
        if (device.type != keyword.type)
            continue;
        const auto text = device.text(keyword.property);
        const auto hertz = keyword.form == Form::Megahertz ? device.number(keyword.property) : std::nullopt;
        if (hertz && *hertz >= kMega && *hertz < kMost)
            texts.push_back(std::to_string(static_cast<std::uint64_t>(*hertz / kMega)) + " MHz");
        else if (keyword.form == Form::Uuid && !text.empty())
            texts.push_back(uuidText(text, turnsUuids(document)));
        else if (!text.empty() && !(keyword.form == Form::Revision && saysNoRevision(device, text)))
            texts.emplace_back(text);
    }
    return texts;
}

} // namespace zorpinventory::choice
