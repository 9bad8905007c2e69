// Printing the tree, and the declarations.
#include "text_inventory.h"

#include "categories.h"
#include "headlines.h"
#include "services/utf8.h"
#include "texts/translations.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace embedded_host::inventory
{

namespace
{

/// Deeper devices are not indented further, so that a hostile chain of links cannot make the text grow by its square.
constexpr std::size_t kDeepestIndent = 16;

/// Values are not wrapped to less, however narrow the terminal is.
constexpr std::size_t kNarrowest = 20;

/// A line of a block that is not laid out yet: a mark, the name of a device or the label of a property (none for
/// further elements of a list), kCell, and what is said of it. No printable text has a tab.
constexpr char kCell = '\t';
constexpr char kDevice = 'D';
constexpr char kEmptySocket = 'E';
constexpr char kKnown = 'K';
constexpr char kMissing = 'M';

/// The module's own word, the same in every language.
constexpr std::string_view kUnknown = "UNKNOWN";

constexpr std::string_view kGap = "  ";

constexpr std::string_view kPlain = "\x1B[0m";
constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kFaint = "\x1B[2m";
constexpr std::string_view kTelling = "\x1B[36m";

struct Style
{
    std::string_view left;
    std::string_view right;
};

Style styleOf(char mark)
{
    switch (mark) {
    case kDevice:
        return {kBold, kTelling};
    case kEmptySocket:
        return {kFaint, kFaint};
    case kMissing:
        return {kPlain, kFaint};
    default:
        return {kPlain, kPlain};
    }
}

bool isShown(const Property& property, Detail detail)
{
    using Category = orb5::PropertyCategory;
    const auto& categories = property.categories;
    return detail == Detail::All ||
           (!categories.contains(Category::Internal()) &&
            (categories.contains(Category::Tier1()) || categories.contains(Category::Tier2())));
}

/// The lines of a text for a place of so many columns, broken at blanks where there are some.
std::vector<std::string_view> wrapped(std::string_view text, std::size_t columns)
{
    std::vector<std::string_view> lines;
    for (;;) {
        std::string_view rest = text; // behind what fits
        std::size_t used = 0;
        std::size_t behindBlank = 0;
        while (!rest.empty()) {
            std::string_view next = rest;
            const char32_t code = services::takeCharacter(next);
            used += services::columnsOf(code);
            if (code == ' ' && used <= columns + 1)
                behindBlank = text.size() - next.size();
            if (used > columns)
                break;
            rest = next;
        }
        if (rest.empty())
            break;
        const std::size_t end = behindBlank != 0 ? behindBlank : text.size() - rest.size();
        lines.push_back(text.substr(0, behindBlank != 0 ? end - 1 : end));
        text.remove_prefix(end);
    }
    lines.push_back(text);
    return lines;
}

} // namespace

TextInventory::TextInventory(writing::Output& output, Detail detail, Looks looks) : output_(output), looks_(looks)
{
    const auto& language = lum::LumLocale::getGlobalLocale().language();
    notInstalled_ = texts::translation(language, "NotInstalled");
    unknown_ = texts::translated(language, "Unknown");
    for (const auto* property : declaredProperties()) {
        auto label = texts::translation(language, std::string("LocalizedString.propname_").append(property->name));
        if (label.empty())
            label = property->name;
        const auto rank = std::ranges::find(kHeadlines, property->name) - std::begin(kHeadlines);
        labels_.push_back({std::string(label), services::columnsOf(label), isShown(*property, detail),
                           static_cast<std::size_t>(rank)});
    }
}

/// Appends a text as it is shown; what stands for a missing value is put in parentheses. Returns whether it does.
bool TextInventory::appendShown(const orb5::OrbString& value)
{
    const std::string_view text = value.lumString().bytes();
    const bool missing = text == notInstalled_ || text == unknown_ || text == kUnknown;
    if (missing)
        text_ += '(';
    services::appendPrintable(text_, text);
    if (missing)
        text_ += ')';
    return missing;
}

/// "Memory Device  DIMM A1, 16 GB, DDR4": what is not known is left out, what is not there is said.
void TextInventory::appendHeadline(const DeviceRecord& device)
{
    telling_.clear();
    for (const auto& property : device.properties)
        if (labels_[property.declaration->index].headline < std::size(kHeadlines))
            telling_.push_back(&property);
    std::ranges::sort(telling_, {}, [&](const auto* p) { return labels_[p->declaration->index].headline; });

    const std::size_t mark = text_.size();
    text_ += kDevice;
    services::appendPrintable(text_, device.name.bytes());
    text_ += kCell;
    std::string_view comma;
    for (const auto* property : telling_) {
        const std::size_t before = text_.size();
        const auto value = property->value.toString();
        const bool empty = value.lumString().bytes() == notInstalled_;
        text_ += comma;
        if (appendShown(value) && !empty) {
            text_.resize(before);
            continue;
        }
        comma = ", ";
        if (empty)
            text_[mark] = kEmptySocket;
    }
    text_ += '\n';
}

/// Appends the lines of a property: one for each element of a list.
void TextInventory::appendRows(const HeldProperty& property, std::size_t labelColumns)
{
    const auto& label = labels_[property.declaration->index];
    const auto appendLine = [&](bool first, const orb5::OrbString& text) {
        const std::size_t mark = text_.size();
        text_ += kKnown;
        if (first)
            text_.append(label.text).append(labelColumns - label.columns, ' ');
        text_ += kCell;
        if (appendShown(text))
            text_[mark] = kMissing;
        text_ += '\n';
    };

    const auto& held = property.value.held();
    if (const auto* text = std::get_if<orb5::OrbString>(&held)) {
        appendLine(true, *text);
    } else if (const auto* list = std::get_if<std::vector<orb5::OrbString>>(&held); list != nullptr && !list->empty()) {
        for (const auto& element : *list)
            appendLine(&element == &list->front(), element);
    } else {
        appendLine(true, property.value.toString());
    }
}

void TextInventory::take(DeviceRecord&& device)
{
    std::size_t labelColumns = 0;
    for (const auto& property : device.properties)
        if (const auto& label = labels_[property.declaration->index]; label.shown)
            labelColumns = std::max(labelColumns, label.columns);

    text_.clear();
    appendHeadline(device);
    for (const auto& property : device.properties)
        if (labels_[property.declaration->index].shown)
            appendRows(property, labelColumns);
    blocks_.add(text_);
    tree_.add(device);
}

void TextInventory::end()
{
    if (blocks_.size() == 0)
        return;
    const auto tree = tree_.tree();
    std::array<std::string, kDeepestIndent + 1> beside; // the lines of the tree left of what hangs under each level

    struct Place
    {
        std::size_t device;
        std::size_t depth;
        bool last; ///< of its parent's children
    };
    std::vector<Place> pending{{0, 0, true}};
    while (!pending.empty()) {
        const auto place = pending.back();
        pending.pop_back();
        const auto& children = tree[place.device].children;
        const std::size_t level = std::min(place.depth, kDeepestIndent);
        std::string branch;
        if (level != 0) {
            branch = beside[level - 1] + (place.last ? "└─ " : "├─ ");
            beside[level] = beside[level - 1] + (place.last ? "   " : "│  ");
        }
        writeBlock(blocks_[place.device], branch, beside[level] + (children.empty() ? "   " : "│  "));
        std::transform(children.rbegin(), children.rend(), std::back_inserter(pending), [&](std::size_t child) {
            return Place{child, place.depth + 1, child == children.back()};
        });
    }
}

void TextInventory::writeBlock(std::string_view block, std::string_view branch, std::string_view beside)
{
    text_.clear();
    std::string blank; // where the label of a list's further elements would be
    for (std::string_view left = branch; !block.empty(); left = beside) {
        const auto end = block.find('\n');
        const auto line = block.substr(0, end);
        const auto label = line.substr(1, line.find(kCell) - 1);
        block.remove_prefix(end + 1);
        if (!label.empty() && !block.empty() && block[1] == kCell)
            blank.assign(services::columnsOf(label), ' ');
        layOut(line, label.empty() ? blank : label, left, beside);
    }
    output_.write(text_);
}

/// Lays out a line of a block, on more than one where it is too long for the place.
void TextInventory::layOut(std::string_view line, std::string_view label, std::string_view left,
                           std::string_view beside)
{
    const auto style = styleOf(line.front());
    const auto value = line.substr(line.find(kCell) + 1);
    const auto paint = [&](std::string_view colour, std::string_view text) {
        if (looks_.colours)
            text_.append(colour).append(text).append(kPlain);
        else
            text_.append(text);
    };
    const auto append = [&](std::string_view tree, std::string_view name, std::string_view text) {
        paint(kFaint, tree);
        paint(style.left, name);
        if (!value.empty()) {
            text_ += kGap;
            paint(style.right, text);
        }
        text_ += '\n';
    };
    if (looks_.columns == 0) {
        append(left, label, value);
        return;
    }
    const std::size_t labelColumns = services::columnsOf(label);
    const std::size_t used = services::columnsOf(left) + labelColumns + kGap.size();
    const auto parts = wrapped(value, std::max(kNarrowest, looks_.columns - std::min(looks_.columns, used)));
    append(left, label, parts.front());
    for (std::size_t i = 1; i < parts.size(); ++i)
        append(beside, std::string(labelColumns, ' '), parts[i]);
}

void writeCatalogueAsText(writing::Output& output)
{
    constexpr std::size_t kTypeColumns = 21;
    constexpr std::size_t kCapabilityColumns = 15;
    const auto properties = declaredProperties();
    std::size_t nameColumns = 0;
    for (const auto* property : properties)
        nameColumns = std::max(nameColumns, property->name.size() + kGap.size());
    const auto cell = [](std::string text, std::size_t columns) {
        text.resize(std::max(text.size() + 1, columns), ' ');
        return text;
    };
    for (const auto* property : properties) {
        std::string line = cell(std::string(property->name), nameColumns) + cell(property->type.name(), kTypeColumns) +
                           cell(property->capability.name(), kCapabilityColumns);
        for (const auto* category : categoryNames(property->categories))
            line += std::string(line.back() == ' ' ? "" : " ") + category;
        output.write(line + "\n");
    }
}

} // namespace embedded_host::inventory
