// What was chosen, as the tree that the module's program draws.
//
// What a device tells is taken from the document here and from live devices there; how it is judged (the manners),
// where it hangs and how it is drawn is the same.
#include "show.h"

#include "knowledge/properties.h"
#include "outline/manners.h"
#include "services/localization.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "texts.h"
#include "texts/translations.h"
#include "told.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace zorpinventory::tell
{

using document::Device;
using document::Property;
using document::trimmed;
using embedded_host::services::columnsOf;
using embedded_host::services::message;

namespace outline = embedded_host::outline;
namespace placeholders = embedded_host::placeholders;
namespace texts = embedded_host::texts;

namespace
{

constexpr std::string_view kUnknown = "UNKNOWN"; // the module's own words
constexpr std::string_view kNone = "NONE";

/// What the module's English says of an empty memory socket, and of codes that tell nothing.
constexpr std::string_view kNotInstalled = "Not Installed";
constexpr std::string_view kSaysNothing[] = {"Unknown", "Other", "Reserved", "Out of range"};

struct Label
{
    std::string text;
    std::size_t columns;
    bool usual; ///< shown unless there is a reason not to
    outline::Manner manner;
};

/// The modules of a memory array.
struct Modules
{
    std::uint64_t bytes = 0;
    unsigned fitted = 0;
    unsigned sockets = 0;
    bool unknown = false; ///< the size of one is not known
};

std::optional<std::uint64_t> wholeOf(const Told& told)
{
    constexpr double kMost = 18446744073709549568.0; // the largest double below 2^64
    double number = 0;
    const auto* end = told.number.data() + told.number.size();
    if (told.number.empty() || std::from_chars(told.number.data(), end, number).ptr != end || number < 0 ||
        number > kMost)
        return std::nullopt;
    std::uint64_t whole = 0;
    return std::from_chars(told.number.data(), end, whole).ptr == end ? whole : static_cast<std::uint64_t>(number);
}

/// Whether nothing is measured: no clock, no width, no size. Nought volts may be.
bool isNought(const Told& told)
{
    constexpr std::string_view kUnits[] = {"HERTZ", "BITS", "BYTES"};
    return std::ranges::find(kUnits, told.unit) != std::end(kUnits) && wholeOf(told) == 0;
}

/// Whether a text tells a person nothing.
bool isNothing(const outline::Manner& manner, const Told& told)
{
    // A list in which handles stand among codes has no codes in the document.
    const bool isHandle = manner.isLink && told.code.empty() && told.text.starts_with("0x");
    if (isHandle || (!manner.nothing.empty() && told.text == manner.nothing))
        return true;
    if (!told.code.empty())
        return std::ranges::find(kSaysNothing, told.text) != std::end(kSaysNothing) ||
               std::ranges::any_of(manner.usual, [&](auto code) { return std::to_string(code) == told.code; });
    if (!told.number.empty() && told.number != told.text)
        return isNought(told);
    return told.text == kUnknown || told.text == kNotInstalled || !placeholders::isReal(told.text, manner.kind);
}

/// Whether a text stands for a value that is not there.
bool isMissing(std::string_view text)
{
    return text == kUnknown || text == kNone || text == kNotInstalled || text == kSaysNothing[0];
}

/// One word for each way in which a value is not there.
std::string wordFor(std::string_view text)
{
    if (text == kNotInstalled)
        return message("not installed");
    return text == kNone ? message("none") : message("unknown");
}

/// The text in the user's language, where it is one of the standard's.
std::string_view translated(const Told& told)
{
    return told.code.empty() ? told.text : texts::translated(embedded_host::services::language(), told.text);
}

class Tree
{
public:
    Tree(embedded_host::writing::Output& output, const Shown& shown, const outline::Looks& looks, bool all)
        : devices_(shown.document.devices()), shown_(shown), all_(all), drawing_(output, looks)
    {
        for (const auto& device : devices_)
            addToArray(device);
    }

    void draw();

private:
    struct Special
    {
        const Property* property;
        const Label* label;
    };

    const Label& labelOf(std::string_view property);
    void addToArray(const Device& device);
    std::vector<outline::TreeNode> tree() const;
    void draw(const Device& device, bool isChosen, const outline::Beside& beside);
    std::string headline(const Device& device, bool vacant);
    std::string arrayParts(const Device& device);
    bool isRepeated(const Label& label, const Device& device, std::string_view text) const;

    const std::vector<Device>& devices_;
    const Shown& shown_;
    bool all_;
    outline::Drawing drawing_;
    std::map<std::string_view, Label> labels_;
    std::map<std::string_view, Modules> modules_; ///< by their array's handle
    std::size_t left_ = 0;                        ///< lines that were left out
};

const Label& Tree::labelOf(std::string_view property)
{
    auto found = labels_.find(property);
    if (found == labels_.end()) {
        auto text = printable(label(property, embedded_host::services::language()));
        const auto columns = columnsOf(text);
        found = labels_
                    .emplace(property, Label{std::move(text), columns,
                                             !std::ranges::binary_search(knowledge::kNotUsuallyShown, property),
                                             outline::mannerOf(property)})
                    .first;
    }
    return found->second;
}

/// Adds a module to the array that it is in.
void Tree::addToArray(const Device& device)
{
    constexpr unsigned kMemoryDevice = 17;
    const auto* size = device.type == kMemoryDevice ? device.find("t17_sz") : nullptr;
    const auto array = device.text("smbios2_parent");
    if (size == nullptr || array.empty())
        return;
    auto& modules = modules_[array];
    ++modules.sockets;
    forEachText(*size, [&](const Told& told) {
        if (told.text == kNotInstalled)
            return;
        ++modules.fitted;
        const auto bytes = wholeOf(told);
        modules.unknown = modules.unknown || !bytes;
        modules.bytes += bytes.value_or(0);
    });
}

/// "32 GB in 2 of 24 sockets, at most 3 TB"
std::string Tree::arrayParts(const Device& device)
{
    const auto shownNumber = [&](std::string_view property) {
        std::string text;
        if (const auto* found = device.find(property); found != nullptr)
            forEachText(*found, [&](const Told& told) { text = isNought(told) ? "" : trimmed(told.text); });
        return text;
    };
    const auto sockets = shownNumber("t16_num");
    const auto maximum = shownNumber("t16_max_sz");
    const auto found = modules_.find(device.text("smbios2_hdr_handle"));
    std::string parts;
    if (found == modules_.end())
        parts = sockets.empty() ? "" : message("%1 sockets", sockets);
    else if (const auto& modules = found->second; modules.fitted == 0 || modules.unknown)
        parts = message("%1 of %2 sockets in use", modules.fitted, modules.sockets);
    else
        parts = message("%1 in %2 of %3 sockets", sizeText(modules.bytes), modules.fitted, modules.sockets);
    if (!maximum.empty())
        parts += (parts.empty() ? "" : ", ") + message("at most %1", maximum);
    return parts;
}

/// Whether the device's name or another of its properties says the same.
bool Tree::isRepeated(const Label& label, const Device& device, std::string_view text) const
{
    return text == trimmed(device.name) || text == deviceName(trimmed(device.name)) ||
           (!label.manner.repeats.empty() && device.find(label.manner.repeats) != nullptr &&
            text == device.text(label.manner.repeats));
}

/// "2 GB, kilobytes 0x00200000 to 0x003FFFFF"
std::string rangeParts(const Property& start, const Property& end)
{
    constexpr std::uint64_t kElsewhere = 0xFFFFFFFF; // the standard's later fields have the addresses
    Told first;
    Told last;
    forEachText(start, [&](const Told& told) { first = told; });
    forEachText(end, [&](const Told& told) { last = told; });
    const auto from = wholeOf(first);
    const auto to = wholeOf(last);
    if (!from || !to || *from == kElsewhere)
        return {};
    const auto span = message("kilobytes %1 to %2", first.text, last.text);
    return *from <= *to ? sizeText((*to - *from + 1) * 1024) + ", " + span : span;
}

/// "DIMM A1, 16 GB, DDR4": what is not known is left out.
std::string Tree::headline(const Device& device, bool vacant)
{
    std::vector<Special> telling;
    for (const auto& property : device.properties)
        if (const auto& label = labelOf(property.name); label.manner.headline != outline::kNotInHeadline)
            telling.push_back({&property, &label});
    std::ranges::sort(telling, {}, [](const Special& special) { return special.label->manner.headline; });

    std::string parts;
    const auto tell = [&](const std::string& text) { parts += (parts.empty() || text.empty() ? "" : ", ") + text; };
    for (const auto& special : telling) {
        const auto& label = *special.label;
        forEachText(*special.property, [&](const Told& told) {
            const auto text = trimmed(told.text);
            const bool isPlace =
                label.manner.kind == placeholders::Kind::Place && told.code.empty() && told.number.empty();
            if (isNothing(label.manner, told) || isRepeated(label, device, text) || (vacant && !isPlace))
                return;
            const bool isSerial = label.manner.kind == placeholders::Kind::Serial;
            tell(isSerial ? message("serial %1", text) : std::string(trimmed(translated(told))));
        });
    }
    if (vacant)
        tell(message("empty"));
    const Property* start = nullptr;
    bool isArray = false;
    for (const auto& property : device.properties) {
        const auto role = labelOf(property.name).manner.role;
        if (role == outline::Role::RangeStart)
            start = &property;
        if (role == outline::Role::RangeEnd && start != nullptr)
            tell(rangeParts(*start, property));
        isArray = isArray || role == outline::Role::ArrayMaximum || role == outline::Role::ArraySockets;
    }
    if (isArray)
        tell(arrayParts(device));
    return parts;
}

void Tree::draw(const Device& device, bool isChosen, const outline::Beside& beside)
{
    bool vacant = false;
    for (const auto& property : device.properties) {
        const auto role = labelOf(property.name).manner.role;
        if (role == outline::Role::Vacancy || role == outline::Role::ModuleSize)
            forEachText(property, [&](const Told& told) {
                vacant = vacant || told.text == kNotInstalled || isNought(told) || told.code == "0";
            });
    }
    drawing_.headline(beside, deviceName(trimmed(device.name)), vacant, headline(device, vacant));
    if (!isChosen)
        return;

    struct Row
    {
        const Label* label;
        bool isFirst;
        std::string_view text;
        bool isMissing;
    };
    std::vector<Row> rows;
    std::size_t columns = 0;
    for (const auto& property : device.properties) {
        const auto& label = labelOf(property.name);
        const auto& manner = label.manner;
        const bool told = vacant || !label.usual || manner.headline != outline::kNotInHeadline ||
                          manner.role >= outline::Role::ArrayMaximum;
        const auto before = rows.size();
        std::size_t count = 0;
        forEachText(property, [&](const Told& each) {
            ++count;
            const auto text = trimmed(each.text);
            if (all_ || !(told || isNothing(manner, each) || isRepeated(label, device, text)))
                rows.push_back({&label, rows.size() == before, all_ ? translated(each) : trimmed(translated(each)),
                                isMissing(each.text)});
            else
                ++left_;
        });
        if (count == 0 && all_)
            rows.push_back({&label, true, {}, false});
        else if (count == 0)
            ++left_;
        if (rows.size() != before)
            columns = std::max(columns, label.columns);
    }
    for (const auto& row : rows)
        drawing_.row(beside, {row.isFirst ? row.label->text : "", row.isFirst ? row.label->columns : 0, columns},
                     row.isMissing, row.isMissing ? wordFor(row.text) : row.text);
}

std::vector<outline::TreeNode> Tree::tree() const
{
    outline::TreeBuilder builder;
    for (const auto& device : devices_) {
        builder.add(device.uid, !device.uids.empty(), device.text("smbios2_parent"));
        for (const auto& child : device.children)
            if (child.id)
                builder.addChild(*child.id);
    }
    return builder.tree();
}

void Tree::draw()
{
    if (devices_.empty())
        return;
    auto nodes = tree();
    if (!shown_.choice.everything())
        outline::restrictTo(nodes, shown_.devices);
    drawing_.forEach(nodes,
                     [&](auto device, const auto& beside) { draw(devices_[device], shown_.devices[device], beside); });
    if (left_ != 0)
        drawing_.remark(left_ == 1 ? message("1 line not shown (--all)")
                                   : message("%1 lines not shown (--all)", left_));
}

} // namespace

void showAsTree(embedded_host::writing::Output& output, const Shown& shown, const outline::Looks& looks, bool all)
{
    Tree(output, shown, looks, all).draw();
}

} // namespace zorpinventory::tell
