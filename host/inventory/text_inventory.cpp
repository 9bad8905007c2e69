// Printing the tree.
#include "text_inventory.h"

#include "categories.h"
#include "services/utf8.h"
#include "texts/translations.h"
#include "tree.h"

#include <algorithm>
#include <iterator>

namespace embedded_host::inventory
{

namespace
{

/// Deeper devices are not indented further, so that a hostile chain of links cannot make the text grow by its square.
constexpr std::size_t kDeepestIndent = 16;

std::string printable(std::string_view text)
{
    std::string shown;
    services::appendPrintable(shown, text);
    return shown;
}

std::string labelOf(const Property& property)
{
    const auto& language = lum::LumLocale::getGlobalLocale().language();
    const auto label = texts::translation(language, "LocalizedString.propname_" + property.name);
    return std::string(label.empty() ? property.name : label);
}

bool isShown(const Property& property, Detail detail)
{
    using Category = orb5::PropertyCategory;
    const auto& categories = property.categories;
    return detail == Detail::All ||
           (!categories.contains(Category::Internal()) &&
            (categories.contains(Category::Tier1()) || categories.contains(Category::Tier2())));
}

/// The lines of a value: one for each element of a list.
std::vector<std::string> linesOf(const orb5::Value& value)
{
    const auto* elements = std::get_if<std::vector<orb5::OrbString>>(&value.held());
    if (elements == nullptr)
        return {printable(value.toString().lumString().bytes())};
    std::vector<std::string> lines;
    for (const auto& element : *elements)
        lines.push_back(printable(element.lumString().bytes()));
    return lines;
}

/// Columns that a text takes: its characters, as far as each takes one.
std::size_t width(std::string_view text)
{
    return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

} // namespace

void TextInventory::end()
{
    const auto tree = treeOf(devices_);
    struct Place
    {
        std::size_t device;
        std::size_t depth;
    };
    std::vector<Place> pending;
    if (!devices_.empty())
        pending.push_back({0, 0});
    while (!pending.empty()) {
        const auto place = pending.back();
        pending.pop_back();
        writeDevice(devices_[place.device], place.depth);
        const auto& children = tree[place.device].children;
        std::transform(children.rbegin(), children.rend(), std::back_inserter(pending), [&](std::size_t child) {
            return Place{child, place.depth + 1};
        });
    }
}

void TextInventory::writeDevice(const DeviceRecord& device, std::size_t depth)
{
    const std::string indent(2 * std::min(depth, kDeepestIndent), ' ');
    output_.write(indent + printable(device.name) + "\n");

    struct Row
    {
        std::string label;
        const orb5::Value& value;
    };
    std::vector<Row> rows;
    std::size_t widest = 0;
    for (const auto& property : device.properties) {
        if (!isShown(*property.declaration, detail_))
            continue;
        rows.push_back({labelOf(*property.declaration), property.value});
        widest = std::max(widest, width(rows.back().label));
    }

    const std::string hanging = indent + std::string(4 + widest + 2, ' ');
    for (const auto& row : rows) {
        std::string text = indent;
        text.append("    ").append(row.label).append(widest - width(row.label) + 2, ' ');
        const auto lines = linesOf(row.value);
        for (const auto& line : lines) {
            if (&line != &lines.front())
                (text += '\n') += hanging;
            text += line;
        }
        output_.write(text + "\n");
    }
}

void writeCatalogueAsText(Output& output)
{
    const auto properties = declaredProperties();
    std::size_t widest = 0;
    for (const auto* property : properties)
        widest = std::max(widest, property->name.size());
    for (const auto* property : properties) {
        std::string line = property->name + std::string(widest - property->name.size() + 2, ' ');
        line += property->type.name();
        line.resize(widest + 2 + 21, ' ');
        line += property->capability.name();
        line.resize(widest + 2 + 21 + 15, ' ');
        for (const auto* category : categoryNames(property->categories))
            line += std::string(line.back() == ' ' ? "" : " ") + category;
        output.write(line + "\n");
    }
}

} // namespace embedded_host::inventory
