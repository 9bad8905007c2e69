// Keeping what devices tell, and laying it out as a tree.
#include "text_inventory.h"

#include "categories.h"
#include "numbers.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "texts/translations.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace embedded_host::inventory
{

namespace
{

using outline::Manner;
using outline::Role;
using services::message;
using services::translatable;
using NumberKind = lum::Number::Kind;
using placeholders::trimmed;

/// The module's own words, the same in every language.
constexpr std::string_view kUnknown = "UNKNOWN";
constexpr std::string_view kNone = "NONE";

constexpr std::string_view kGap = "  ";
constexpr std::string_view kComma = ", ";

bool isInTier(const Property& property)
{
    using Category = orb5::PropertyCategory;
    const auto& categories = property.categories;
    return !categories.contains(Category::Internal()) &&
           (categories.contains(Category::Tier1()) || categories.contains(Category::Tier2()));
}

std::string_view bytesOf(const orb5::OrbString& text) { return text.lumString().bytes(); }

const lum::Number& numberOf(const orb5::OrbString& text) { return text.lumString().number(); }

bool isQuantity(const lum::Number& number)
{
    return number.kind() == NumberKind::Whole || number.kind() == NumberKind::Real;
}

/// Whether nothing is measured: no clock, no width, no size. Nought volts may be.
bool isNought(const lum::Number& number)
{
    constexpr std::string_view kUnits[] = {"HERTZ", "BITS", "BYTES"};
    return isQuantity(number) && number.unit() != nullptr && amount(number) == 0 &&
           std::ranges::find(kUnits, number.unit()) != std::end(kUnits);
}

/// The texts that a value holds: one, or the elements of a list.
template <class Use>
void forEachText(const orb5::Value& value, Use use)
{
    const auto& held = value.held();
    if (const auto* text = std::get_if<orb5::OrbString>(&held))
        use(*text);
    else if (const auto* list = std::get_if<std::vector<orb5::OrbString>>(&held))
        std::ranges::for_each(*list, use);
    else
        use(value.toString());
}

/// How many texts that are.
std::size_t countTexts(const orb5::Value& value)
{
    const auto* list = std::get_if<std::vector<orb5::OrbString>>(&value.held());
    return list != nullptr ? list->size() : 1;
}

/// The number that a property of a device shows, for those that have to be links and sizes.
std::optional<std::uint64_t> wholeOf(const orb5::Value* value)
{
    if (value == nullptr)
        return std::nullopt;
    if (const auto* measurement = std::get_if<orb5::OrbDiscreteMeasurement>(&value->held()))
        return measurement->value();
    const auto text = value->toString();
    if (!isQuantity(numberOf(text)) || amount(numberOf(text)) < 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(amount(numberOf(text)));
}

std::string bytesShown(std::uint64_t bytes)
{
    const orb5::OrbDiscreteMeasurement size(orb5::OrbUnitType::BYTES(), bytes);
    return std::string(bytesOf(size.toString(orb5::OrbUnitMagnitude::AUTOSCALEUNIT())));
}

} // namespace

TextInventory::TextInventory(writing::Output& output, Detail detail, const Looks& looks, const StructureTypes& types)
    : detail_(detail), types_(types), drawing_(output, looks)
{
    const auto& language = lum::LumLocale::getGlobalLocale().language();
    notInstalled_ = texts::translation(language, "NotInstalled");
    unknown_ = texts::translated(language, "Unknown");
    other_ = texts::translated(language, "Other");
    reserved_ = texts::translated(language, "Reserved");
    outOfRange_ = texts::translated(language, "Out of range");
    labels_.resize(declaredProperties().size());
}

const TextInventory::Label& TextInventory::labelOf(const Property& property)
{
    auto& label = labels_[property.index];
    if (!label) {
        const auto& language = lum::LumLocale::getGlobalLocale().language();
        auto text = texts::translation(language, std::string("LocalizedString.propname_").append(property.name));
        if (text.empty())
            text = property.name;
        label = {std::string(text), services::columnsOf(text), isInTier(property), outline::mannerOf(property.name)};
    }
    return *label;
}

/// Whether a text tells a person nothing.
bool TextInventory::isNothing(const Manner& manner, const orb5::OrbString& text) const
{
    const auto bytes = bytesOf(text);
    const auto& number = numberOf(text);
    const bool isNamed = number.kind() == NumberKind::Code;
    if ((manner.isLink && !isNamed) || (!manner.nothing.empty() && bytes == manner.nothing))
        return true;
    switch (number.kind()) {
    case NumberKind::None:
        return bytes == kUnknown || bytes == notInstalled_ || !placeholders::isReal(bytes, manner.kind);
    case NumberKind::Code:
        return bytes == unknown_ || bytes == other_ || bytes == reserved_ || bytes == outOfRange_ ||
               std::ranges::find(manner.usual, number.integer()) != manner.usual.end();
    default:
        return isNought(number);
    }
}

/// Whether a text stands for a value that is not there.
bool TextInventory::isMissing(const orb5::OrbString& text) const
{
    const auto bytes = bytesOf(text);
    return bytes == kUnknown || bytes == kNone || bytes == notInstalled_ || bytes == unknown_;
}

/// Whether the device that is taken is the empty socket of one.
bool TextInventory::isVacant() const
{
    return std::ranges::any_of(special_, [&](const Special& special) {
        const auto role = special.label->manner.role;
        if (role != Role::Vacancy && role != Role::ModuleSize)
            return false;
        const auto text = special.property->value.toString();
        const auto& number = numberOf(text);
        return bytesOf(text) == notInstalled_ || isNought(number) ||
               (number.kind() == NumberKind::Code && number.integer() == 0);
    });
}

/// Whether the device's name or another of its properties says the same.
bool TextInventory::isRepeated(const Label& label, const DeviceRecord& device, std::string_view text) const
{
    if (text == trimmed(device.name.bytes()))
        return true;
    const auto* same = label.manner.repeats.empty() ? nullptr : device.find(label.manner.repeats);
    return same != nullptr && text == trimmed(bytesOf(same->toString()));
}

void TextInventory::keep(Mark mark, std::size_t number, std::string_view text)
{
    const Row row{mark, static_cast<std::uint16_t>(number), static_cast<std::uint32_t>(text.size())};
    std::array<char, sizeof row> bytes{};
    std::memcpy(bytes.data(), &row, sizeof row);
    kept_.append({bytes.data(), bytes.size()});
    kept_.append(text);
}

/// "2 GB, kilobytes 0x00200000 to 0x003FFFFF"
void TextInventory::keepRange(const orb5::Value& start, const orb5::Value& end)
{
    constexpr std::uint64_t kElsewhere = 0xFFFFFFFF; // the standard's later fields have the addresses
    const auto first = wholeOf(&start);
    const auto last = wholeOf(&end);
    if (!first || !last || *first == kElsewhere)
        return;
    if (*first <= *last)
        keep(Mark::Telling, 0, bytesShown((*last - *first + 1) * 1024));
    keep(Mark::Telling, 0, message("kilobytes %1 to %2", bytesOf(start.toString()), bytesOf(end.toString())));
}

/// "Memory Device  DIMM A1, 16 GB, DDR4": what is not known is left out.
void TextInventory::keepHeadline(const DeviceRecord& device, bool vacant)
{
    std::ranges::sort(telling_, {}, [](const Special& special) { return special.label->manner.headline; });

    keep(vacant ? Mark::Empty : Mark::Name, 0, trimmed(device.name.bytes()));
    for (const auto& [property, labelled] : telling_) {
        const auto& label = *labelled;
        const auto value = property->value.toString();
        const auto text = trimmed(bytesOf(value));
        const bool isPlace =
            label.manner.kind == placeholders::Kind::Place && numberOf(value).kind() == NumberKind::None;
        if (isNothing(label.manner, value) || isRepeated(label, device, text) || (vacant && !isPlace))
            continue;
        keep(label.manner.kind == placeholders::Kind::Serial ? Mark::Serial : Mark::Telling, 0, text);
    }
    if (vacant)
        keep(Mark::Vacant, 0, {});

    const HeldProperty* start = nullptr;
    for (const auto& [property, label] : special_) {
        const auto role = label->manner.role;
        if (role == Role::RangeStart)
            start = property;
        if (role == Role::RangeEnd && start != nullptr)
            keepRange(start->value, property->value);
        if (role == Role::ArrayMaximum || role == Role::ArraySockets) {
            const auto value = property->value.toString();
            const auto handle = wholeOf(device.find("smbios2_hdr_handle")).value_or(0);
            keep(role == Role::ArrayMaximum ? Mark::ArrayMaximum : Mark::ArraySockets, handle,
                 isNought(numberOf(value)) ? std::string_view() : bytesOf(value));
        }
    }
}

/// Keeps the rows of a property: one for each element of a list.
void TextInventory::keepRow(const HeldProperty& property, const DeviceRecord& device, bool vacant)
{
    const auto& declaration = *property.declaration;
    const auto& label = labelOf(declaration);
    const auto& manner = label.manner;
    const bool all = detail_ == Detail::All;
    const bool told =
        vacant || !label.inTier || manner.headline != outline::kNotInHeadline || manner.role >= Role::ArrayMaximum;
    const auto count = countTexts(property.value);
    if (!all && (told || count == 0)) {
        left_ += std::max<std::size_t>(count, 1);
        return;
    }
    const auto keepValue = [&](Mark mark, std::string_view text) {
        keep(mark, declaration.index, text);
        auto& widest = blocks_.back().labelColumns;
        widest = std::max(widest, label.columns);
    };
    if (count == 0)
        keepValue(Mark::Value, {});
    forEachText(property.value, [&](const orb5::OrbString& text) {
        const auto shown = all ? bytesOf(text) : trimmed(bytesOf(text));
        if (all || !(isNothing(manner, text) || isRepeated(label, device, shown)))
            keepValue(isMissing(text) ? Mark::Missing : Mark::Value, shown);
        else
            ++left_;
    });
}

/// Adds a module to the array that it is in.
void TextInventory::addToArray(const DeviceRecord& device, const HeldProperty& size)
{
    const auto array = wholeOf(device.find("smbios2_parent"));
    if (!array || *array > 0xFFFF)
        return;
    auto& modules = modules_[static_cast<std::uint16_t>(*array)];
    ++modules.sockets;
    const auto text = size.value.toString();
    if (bytesOf(text) == notInstalled_)
        return;
    ++modules.fitted;
    const auto bytes = wholeOf(&size.value);
    modules.unknown = modules.unknown || !bytes;
    modules.bytes += bytes.value_or(0);
}

void TextInventory::addToTree(const DeviceRecord& device)
{
    const auto* parent = device.find("smbios2_parent");
    const auto handle = parent != nullptr ? parent->toString() : orb5::OrbString();
    tree_.add(device.uid.bytes(), !device.uids.empty(), bytesOf(handle));
    for (std::size_t i = 0; i < device.childBusIds.size(); ++i)
        if (const auto child = device.childBusIds[i]; child.id)
            tree_.addChild(child.id->bytes());
}

void TextInventory::take(DeviceRecord&& device)
{
    blocks_.push_back({kept_.size()});
    addToTree(device);
    telling_.clear();
    special_.clear();
    for (const auto& property : device.properties) {
        const auto& label = labelOf(*property.declaration);
        if (label.manner.headline != outline::kNotInHeadline)
            telling_.push_back({&property, &label});
        if (label.manner.role != Role::None)
            special_.push_back({&property, &label});
        if (label.manner.role == Role::ModuleSize)
            addToArray(device, property);
    }
    const bool vacant = isVacant();
    keepHeadline(device, vacant);
    const bool wanted = isWanted(device, types_);
    if (types_.any())
        wanted_.push_back(wanted);
    if (wanted)
        for (const auto& property : device.properties)
            keepRow(property, device, vacant);
    keep(Mark::End, 0, {});
}

void TextInventory::end(const WithoutDevice& others)
{
    if (blocks_.empty())
        return;
    auto tree = tree_.tree();
    if (types_.any())
        outline::restrictTo(tree, wanted_);
    drawing_.forEach(tree, [&](auto device, const auto& beside) { writeBlock(blocks_[device], beside); });
    writeWhatIsMissing(others);
}

TextInventory::Row TextInventory::rowAt(std::uint64_t at)
{
    Row row{};
    std::memcpy(&row, kept_.read(at, sizeof row).data(), sizeof row);
    return row;
}

/// "32 GB in 2 of 24 sockets, at most 3 TB"
std::string TextInventory::arrayParts(std::uint16_t handle, std::string_view maximum, std::string_view sockets) const
{
    const auto* modules = modules_.find(handle);
    std::string parts;
    if (modules == nullptr || modules->sockets == 0)
        // Translators: sockets are places for memory modules here, as in the next two.
        parts = sockets.empty() ? "" : message("%1 sockets", sockets);
    else if (modules->fitted == 0 || modules->unknown)
        parts = message("%1 of %2 sockets in use", modules->fitted, modules->sockets);
    else
        parts = message("%1 in %2 of %3 sockets", bytesShown(modules->bytes), modules->fitted, modules->sockets);
    if (!maximum.empty())
        parts.append(parts.empty() ? "" : kComma).append(message("at most %1", maximum));
    return parts;
}

void TextInventory::writeBlock(const Block& block, const outline::Beside& beside)
{
    auto at = block.at;
    const Row first = rowAt(at);
    const auto name = services::printable(kept_.read(at + sizeof first, first.size));
    at += sizeof first + first.size;
    std::string telling;
    const auto tell = [&](std::string_view text) { telling.append(telling.empty() ? "" : kComma).append(text); };
    std::optional<std::uint16_t> array;
    std::string maximum;
    std::string sockets;
    Row row = rowAt(at);
    for (; row.mark != Mark::End && row.mark != Mark::Value && row.mark != Mark::Missing; row = rowAt(at)) {
        const auto text = kept_.read(at + sizeof row, row.size);
        at += sizeof row + row.size;
        switch (row.mark) {
        case Mark::Serial:
            // Translators: a serial number in a headline; as short as can be.
            tell(message("serial %1", text));
            break;
        case Mark::Vacant:
            // Translators: a socket.
            tell(message("empty"));
            break;
        case Mark::ArrayMaximum:
        case Mark::ArraySockets:
            array = row.number;
            (row.mark == Mark::ArrayMaximum ? maximum : sockets) = text;
            break;
        default:
            tell(text);
        }
    }
    if (array)
        if (const auto parts = arrayParts(*array, maximum, sockets); !parts.empty())
            tell(parts);
    drawing_.headline(beside, name, first.mark == Mark::Empty, telling);

    for (std::optional<std::uint16_t> before; row.mark != Mark::End; row = rowAt(at)) {
        const auto text = kept_.read(at + sizeof row, row.size);
        const auto& label = *labels_[row.number];
        const bool further = before == row.number; // an element of the same list
        const bool missing = row.mark == Mark::Missing;
        drawing_.row(beside, {further ? "" : label.text, further ? 0 : label.columns, block.labelColumns}, missing,
                     missing ? wordFor(text) : text);
        before = row.number;
        at += sizeof row + row.size;
    }
}

/// One word for each way in which a value is not there.
std::string TextInventory::wordFor(std::string_view text) const
{
    if (text == notInstalled_)
        return message("not installed");
    // Translators: a value of a device that the firmware does not tell, and one that there is not.
    return text == kNone ? message("none") : message("unknown");
}

/// "261 lines not shown (--all); 35 structures have no device: types 36, 43, 126"
void TextInventory::writeWhatIsMissing(const WithoutDevice& others)
{
    std::string sentence;
    if (left_ != 0)
        sentence = left_ == 1 ? message("1 line not shown (--all)") : message("%1 lines not shown (--all)", left_);
    if (others.structures != 0) {
        std::string types;
        for (std::size_t type = 0; type < others.types.size(); ++type)
            if (others.types.test(type))
                types.append(types.empty() ? "" : kComma).append(std::to_string(type));
        const char* english = others.types.count() > 1 ? translatable("%1 structures have no device: types %2")
                              : others.structures > 1  ? translatable("%1 structures have no device: type %2")
                                                       : translatable("1 structure has no device: type %2");
        sentence.append(sentence.empty() ? "" : "; ").append(message(english, others.structures, types));
    }
    drawing_.remark(sentence);
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
