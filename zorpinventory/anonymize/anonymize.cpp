// One pass finds what is secret, one replaces it; leftovers.cpp has the last word.
#include "anonymize.h"

#include "document/problem.h"
#include "fields.h"
#include "keyed.h"
#include "leftovers.h"
#include "letters.h"
#include "placeholders/placeholders.h"
#include "search.h"
#include "services/messages.h"
#include "table/table_error.h"
#include "table/table_file.h"

#include <numeric>
#include <set>
#include <tuple>

namespace zorpinventory::anonymize
{

namespace
{

namespace placeholders = embedded_host::placeholders;
namespace table = embedded_host::table;
using embedded_host::services::message;
using table::View;

constexpr std::size_t kHeader = 4;
constexpr std::size_t kUuid = 16;

/// A fresh key is drawn again where the first one makes a secret by chance.
constexpr unsigned kKeys = 20;

/// And something else for a secret that cannot become what comes first.
constexpr std::uint32_t kAttempts = 1000;

std::string_view asText(View bytes)
{
    return {static_cast<const char*>(static_cast<const void*>(bytes.data())), bytes.size()};
}

/// Where a structure lies.
struct Extent
{
    unsigned char type;
    std::size_t begin;   ///< the header
    std::size_t strings; ///< behind the formatted area
    std::size_t end;

    std::size_t length() const { return strings - begin; }
    std::size_t area() const { return begin + kHeader; }
};

/// A string of a structure, without the blanks around it.
struct String
{
    std::size_t begin;
    std::size_t size;
    bool kept = false;
    bool replaced = false;
    bool secret = false;
};

std::vector<Extent> extentsOf(const table::Image& image)
{
    std::vector<Extent> extents;
    for (const auto& structure : image.inOrder()) {
        const std::size_t strings = std::size_t{structure.offset} + structure.length;
        const auto end = table::endOfStrings(image.bytes(), strings).value_or(image.length());
        extents.push_back({structure.type, structure.offset, strings, end});
    }
    return extents;
}

/// The fields of a structure type that name strings.
std::span<const StringField> stringFields(unsigned char type)
{
    return {std::ranges::lower_bound(kStringFields, type, {}, &StringField::type),
            std::ranges::upper_bound(kStringFields, type, {}, &StringField::type)};
}
static_assert(std::ranges::is_sorted(kStringFields, {}, &StringField::type));

/// Whether a packed date of a smart battery is one.
bool isDate(unsigned packed)
{
    const unsigned month = packed >> 5 & 0x0F;
    return (packed & 0x1F) != 0 && month >= 1 && month <= 12;
}

/// A day that every month has.
std::uint16_t dateLike(unsigned number)
{
    return static_cast<std::uint16_t>((number >> 9) << 9 | ((number >> 5 & 0x0F) % 12 + 1) << 5 |
                                      ((number & 0x1F) % 28 + 1));
}

std::uint16_t numberLike(Keyed& keyed, std::uint16_t number, std::uint32_t attempt)
{
    const std::array bytes{static_cast<unsigned char>(number & 0xFF), static_cast<unsigned char>(number >> 8)};
    const auto like = keyed.bytes(bytes, attempt);
    return static_cast<std::uint16_t>(like[0] | like[1] << 8);
}

class Anonymizer
{
public:
    Anonymizer(const table::Image& image, const table::Faults& faults, const Wishes& wishes)
        : keepMakers_(wishes.keepMakers), extents_(extentsOf(image)), bytes_(image.bytes().begin(), image.bytes().end())
    {
        clear(faults);
        collect();
    }

    /// Decides what stands for each secret. False where this key does not allow it; a fresh one may be tried again and
    /// again for a single secret.
    bool decide(Keyed& keyed, bool fresh);

    /// The table with everything replaced.
    Bytes result();

    /// Whether nothing of what is secret is in such a table any more.
    bool isClean(const Bytes& result) const;

    const Replaced& replaced() const { return replaced_; }

private:
    struct Text
    {
        std::string original; ///< in small letters
        bool sought = false;
        std::string replacement = {};
    };
    struct Battery
    {
        std::uint16_t number;
        bool isDate;

        bool operator<(const Battery& other) const
        {
            return std::tie(number, isDate) < std::tie(other.number, other.isDate);
        }
    };

    void clear(const table::Faults& faults);
    void clearMakers(const Extent& structure);
    void collect();
    void strings(const Extent& structure, std::vector<String>& found) const;

    View view(std::size_t begin, std::size_t end) const { return View(bytes_).subspan(begin, end - begin); }
    std::string_view textOf(const String& string) const
    {
        return asText(view(string.begin, string.begin + string.size));
    }
    bool isReal(const String& string) const;
    View uuidIn(const Extent& structure) const;

    /// The places in a structure that hold numbers of a smart battery.
    std::vector<std::pair<std::size_t, Battery>> batteryNumbers(const Extent& structure) const;

    void decideUuids(Keyed& keyed);
    bool decideTexts(Keyed& keyed, bool fresh);
    bool decideBatteries(Keyed& keyed, bool fresh);

    void replaceTexts(Bytes& to, std::size_t begin, std::size_t end, std::vector<Occurrence> places);
    void replaceWideTexts(Bytes& to, std::size_t begin, std::size_t end);
    void replaceNumbers(Bytes& to, const Extent& structure);
    void put(Bytes& to, std::size_t begin, std::size_t step, std::string_view before, std::string_view after) const;

    bool keepMakers_;
    std::vector<Extent> extents_;
    Bytes bytes_; ///< the table without what nobody needs
    std::vector<Text> texts_;
    std::unordered_map<std::string, std::size_t> byText_;
    std::map<Bytes, Bytes> uuids_;
    std::map<Battery, std::uint16_t> batteries_;
    Search search_;
    Replaced replaced_;
};

void Anonymizer::clear(const table::Faults& faults)
{
    using table::FaultKind;
    const auto end = extents_.empty() ? 0 : extents_.back().end;
    // A header that the walk did not believe is what the fault tells of.
    const bool stopped = std::ranges::any_of(faults.all(), [](const table::Fault& fault) {
        return fault.kind == FaultKind::HeaderCut || fault.kind == FaultKind::LengthBelowHeader ||
               fault.kind == FaultKind::AreaPastEnd;
    });
    const auto unheld = std::min(bytes_.size(), end + (stopped ? kHeader : 0));
    std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(unheld), bytes_.end(), static_cast<unsigned char>(0));
    if (!keepMakers_)
        for (const auto& structure : extents_)
            if (isMakers(structure.type))
                clearMakers(structure);
}

void Anonymizer::clearMakers(const Extent& structure)
{
    std::size_t from = structure.strings;
    std::size_t to = structure.strings;
    for (const auto& known : kKnownMakers) {
        if (known.type != structure.type || structure.length() < known.least || structure.length() > known.most)
            continue;
        from = structure.begin + known.from;
        to = std::min(structure.begin + known.to, structure.strings);
        std::vector<String> found;
        strings(structure, found);
        // What asks for the string in vain goes on doing so.
        if (known.knownBy != 0 && std::ranges::none_of(found, &String::kept))
            from = structure.begin + known.knownBy, to = from + 1;
    }
    for (auto i = structure.area(); i < structure.strings; ++i)
        if (i < from || i >= to)
            bytes_[i] = 0;
    ++replaced_.makersCleared;
}

void Anonymizer::strings(const Extent& structure, std::vector<String>& found) const
{
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    found.clear();
    std::size_t numbered = 0; // an empty string ends the numbering
    const auto all = asText(view(structure.strings, structure.end));
    bool ended = false;
    for (std::size_t i = 0; i < all.size();) {
        const auto text = all.substr(i, all.find('\0', i) - i);
        ended = ended || text.empty();
        if (!text.empty()) {
            const auto first = std::min(text.find_first_not_of(kBlanks), text.size());
            const auto behind = std::max(first, text.find_last_not_of(kBlanks) + 1);
            found.push_back({structure.strings + i + first, behind - first});
            numbered += ended ? 0 : 1;
        }
        i += text.size() + 1;
    }

    const auto makers = isMakers(structure.type) && !keepMakers_;
    for (auto& string : found)
        string.replaced = makers;
    const auto named = [&](unsigned char offset) -> String* {
        const unsigned number = offset < structure.length() ? bytes_[structure.begin + offset] : 0;
        return number != 0 && number <= numbered ? &found[number - 1] : nullptr;
    };
    for (const auto& field : stringFields(structure.type)) {
        if (field.offset == kEveryString)
            for (auto& string : found)
                string.replaced = field.fate == Fate::Replaced;
        else if (auto* string = named(field.offset)) {
            string->kept = string->kept || field.fate == Fate::Kept;
            string->secret = string->secret || field.fate == Fate::Secret;
            string->replaced = string->replaced || field.fate == Fate::Replaced;
        }
    }
    for (const auto& known : kKnownMakers)
        if (makers && known.type == structure.type && known.least == structure.length() && known.knownBy != 0)
            if (auto* string = named(known.knownBy))
                string->kept = std::ranges::find(known.texts, textOf(*string)) != std::end(known.texts);
}

bool Anonymizer::isReal(const String& string) const
{
    const auto kind = string.secret ? placeholders::Kind::Serial : placeholders::Kind::Name;
    return string.size != 0 && (string.secret || string.replaced) && placeholders::isReal(textOf(string), kind);
}

View Anonymizer::uuidIn(const Extent& structure) const
{
    if (structure.type != kUuidType || structure.length() <= kUuidOffset)
        return {};
    const auto begin = structure.begin + kUuidOffset;
    const auto uuid = view(begin, std::min(begin + kUuid, structure.strings));
    std::string digits;
    for (const auto byte : uuid) {
        digits += "0123456789abcdef"[byte >> 4];
        digits += "0123456789abcdef"[byte & 0xF];
    }
    return placeholders::isReal(digits, placeholders::Kind::Uuid) ? uuid : View();
}

std::vector<std::pair<std::size_t, Anonymizer::Battery>> Anonymizer::batteryNumbers(const Extent& structure) const
{
    std::vector<std::pair<std::size_t, Battery>> numbers;
    for (const auto offset : {kBatterySerial, kBatteryDate}) {
        if (structure.type != kBatteryType || structure.length() < offset + 2)
            continue;
        const auto place = structure.begin + offset;
        const auto number = static_cast<std::uint16_t>(bytes_[place] | bytes_[place + 1] << 8);
        if (number != 0 && number != 0xFFFF)
            numbers.push_back({place, {number, offset == kBatteryDate && isDate(number)}});
    }
    return numbers;
}

void Anonymizer::collect()
{
    std::vector<String> found;
    for (const auto& structure : extents_) {
        strings(structure, found);
        for (const auto& string : found) {
            if (!isReal(string))
                continue;
            const auto [known, isNew] = byText_.emplace(inSmallLetters(textOf(string)), texts_.size());
            if (isNew)
                texts_.push_back({known->first});
            auto& text = texts_[known->second];
            text.sought = text.sought || (string.secret && string.size >= kShortestSought);
        }
        if (const auto uuid = uuidIn(structure); !uuid.empty())
            uuids_.emplace(Bytes(uuid.begin(), uuid.end()), Bytes());
        for (const auto& [place, number] : batteryNumbers(structure))
            batteries_.emplace(number, std::uint16_t{0});
    }
}

bool Anonymizer::decide(Keyed& keyed, bool fresh)
{
    search_ = {};
    decideUuids(keyed);
    return decideTexts(keyed, fresh) && decideBatteries(keyed, fresh);
}

void Anonymizer::decideUuids(Keyed& keyed)
{
    for (auto& [original, replacement] : uuids_) {
        for (std::uint32_t attempt = 0; attempt == 0 || (uuids_.contains(replacement) && attempt < kAttempts);
             ++attempt)
            replacement = keyed.bytes(original, attempt);
        if (original.size() == kUuid)
            search_.add(original, replacement);
    }
}

bool Anonymizer::decideTexts(Keyed& keyed, bool fresh)
{
    Search secrets;
    for (const auto& text : texts_)
        if (text.sought)
            secrets.add(text.original, text.original);
    for (const auto& [original, replacement] : uuids_)
        if (original.size() == kUuid)
            secrets.add(original, original);

    // What stands inside another is decided before it.
    std::vector<std::size_t> order(texts_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return texts_[i].original.size(); });
    std::set<std::string_view> taken;
    std::vector<Occurrence> inside;
    std::vector<Occurrence> left;
    std::size_t count = 0;

    for (const auto i : order) {
        auto& [original, sought, replacement] = texts_[i];
        const bool isLong = lettersAndDigits(original) >= 4;
        inside.clear();
        search_.find(original, inside);
        bool decided = false;
        for (std::uint32_t attempt = 0; !decided && attempt < kAttempts; ++attempt) {
            std::vector<Occurrence> places{{0, keyed.text(original, attempt)}};
            places.insert(places.end(), inside.begin(), inside.end());
            replacement = painted(original, places, count);
            // Little room is left for a short one.
            const bool isGood =
                replacement != original && placeholders::isReal(replacement, placeholders::Kind::Serial);
            if (!isGood && (isLong || attempt < kAttempts / 2))
                continue;
            left.clear();
            secrets.find(replacement, left);
            decided = left.empty() && !(isLong && (byText_.contains(replacement) || taken.contains(replacement)));
            if (!decided && !fresh)
                return false;
        }
        if (!decided)
            return false;
        if (isLong)
            taken.insert(replacement);
        if (sought)
            search_.add(original, replacement);
    }
    return true;
}

bool Anonymizer::decideBatteries(Keyed& keyed, bool fresh)
{
    std::set<Battery> taken;
    for (auto& [original, replacement] : batteries_) {
        bool decided = false;
        for (std::uint32_t attempt = 0; !decided && attempt < kAttempts; ++attempt) {
            replacement = original.isDate ? dateLike(keyed.number(original.number, attempt))
                                          : numberLike(keyed, original.number, attempt);
            if (replacement == original.number || replacement == 0 || replacement == 0xFFFF)
                continue;
            const Battery battery{replacement, original.isDate};
            decided = !batteries_.contains(battery) && taken.insert(battery).second;
            if (!decided && !fresh)
                return false;
        }
        if (!decided)
            return false;
    }
    return true;
}

void Anonymizer::put(Bytes& to, std::size_t begin, std::size_t step, std::string_view before,
                     std::string_view after) const
{
    for (std::size_t i = 0; i < before.size(); ++i)
        if (after[i] != before[i]) {
            const auto place = begin + i * step;
            const bool capital = isCapital(static_cast<char>(bytes_[place]));
            to[place] = static_cast<unsigned char>(capital ? toCapital(after[i]) : after[i]);
        }
}

void Anonymizer::replaceTexts(Bytes& to, std::size_t begin, std::size_t end, std::vector<Occurrence> places)
{
    const auto text = inSmallLetters(asText(view(begin, end)));
    search_.find(text, places);
    if (places.empty())
        return;
    std::size_t count = 0;
    const auto after = painted(text, places, count);
    replaced_.elsewhere += count;
    put(to, begin, 1, text, after);
}

void Anonymizer::replaceWideTexts(Bytes& to, std::size_t begin, std::size_t end)
{
    std::vector<Occurrence> places;
    std::string text;
    for (auto first = begin; first < end;) {
        text.clear();
        for (auto i = first; i < end && bytes_[i] != 0; i += 2) {
            text += toSmall(static_cast<char>(bytes_[i]));
            if (i + 1 < end && bytes_[i + 1] != 0)
                break;
        }
        places.clear();
        if (text.size() >= kShortestSought)
            search_.find(text, places);
        if (!places.empty()) {
            std::size_t count = 0;
            put(to, first, 2, text, painted(text, places, count));
            replaced_.elsewhere += count;
        }
        // All between the characters was 0.
        first += text.empty() ? 1 : 2 * text.size() - 1;
    }
}

void Anonymizer::replaceNumbers(Bytes& to, const Extent& structure)
{
    const auto copy = [&](const Bytes& from, std::size_t place) {
        std::ranges::copy(from, to.begin() + static_cast<std::ptrdiff_t>(place));
    };
    if (const auto uuid = uuidIn(structure); !uuid.empty()) {
        copy(uuids_.at({uuid.begin(), uuid.end()}), structure.begin + kUuidOffset);
        ++replaced_.uuids;
    }
    for (auto i = structure.area(); search_.knowsUuids() && i + kUuid <= structure.strings; ++i) {
        const bool isOwn = structure.type == kUuidType && i == structure.begin + kUuidOffset;
        const auto* uuid = isOwn ? nullptr : search_.replacementOf(view(i, i + kUuid));
        if (uuid != nullptr) {
            copy(*uuid, i);
            ++replaced_.elsewhere;
        }
        if (isOwn || uuid != nullptr)
            i += kUuid - 1;
    }
    for (const auto& [place, number] : batteryNumbers(structure)) {
        const auto replacement = batteries_.at(number);
        to[place] = static_cast<unsigned char>(replacement & 0xFF);
        to[place + 1] = static_cast<unsigned char>(replacement >> 8);
        ++replaced_.batteries;
    }
}

Bytes Anonymizer::result()
{
    replaced_ = {.makersCleared = replaced_.makersCleared};
    Bytes to = bytes_;
    std::vector<String> found;
    for (const auto& structure : extents_) {
        replaceTexts(to, structure.area(), structure.strings, {});
        replaceWideTexts(to, structure.area(), structure.strings);
        replaceNumbers(to, structure);

        strings(structure, found);
        std::vector<Occurrence> own;
        for (const auto& string : found) {
            if (string.kept || !isReal(string))
                continue;
            const auto& text = texts_[byText_.at(inSmallLetters(textOf(string)))];
            if (text.sought) // it is found as such
                --replaced_.elsewhere;
            else {
                own.push_back({string.begin - structure.strings, text.replacement});
                --replaced_.elsewhere;
            }
            auto& counter = string.secret                    ? replaced_.serials
                            : isMakers(structure.type)       ? replaced_.makers
                            : structure.type == kBatteryType ? replaced_.batteries
                                                             : replaced_.listed;
            ++counter;
        }
        replaceTexts(to, structure.strings, structure.end, std::move(own));
        replaceWideTexts(to, structure.strings, structure.end);
        for (const auto& string : found)
            if (string.kept)
                std::ranges::copy(view(string.begin, string.begin + string.size),
                                  to.begin() + static_cast<std::ptrdiff_t>(string.begin));
    }
    return to;
}

bool Anonymizer::isClean(const Bytes& result) const
{
    Secrets secrets;
    for (const auto& text : texts_)
        if (text.sought)
            secrets.texts.push_back(text.original);
    for (const auto& [original, replacement] : uuids_)
        if (original.size() == kUuid)
            secrets.uuids.push_back(original);

    std::vector<View> pieces;
    std::vector<String> found;
    const auto piece = [&](std::size_t begin, std::size_t end) {
        pieces.push_back(View(result).subspan(begin, end - begin));
    };
    for (const auto& structure : extents_) {
        piece(structure.area(), structure.strings);
        strings(structure, found);
        auto begin = structure.strings;
        for (const auto& string : found)
            if (string.kept) {
                piece(begin, string.begin);
                begin = string.begin + string.size;
            }
        piece(begin, structure.end);
    }
    return !holdsAny(secrets, pieces);
}

/// Whether both have the same structures at the same places.
bool isSame(const table::Image& one, const table::Image& other)
{
    const auto told = [](const table::StructurePlace& place) {
        return std::tuple(place.offset, place.type, place.length, place.handle);
    };
    return std::ranges::equal(one.inOrder(), other.inOrder(), {}, told, told);
}

} // namespace

Anonymized anonymized(const std::filesystem::path& path, const Wishes& wishes)
try {
    const auto name = embedded_host::platform::utf8FromPath(path);
    table::Faults faults;
    auto raw = table::readTableFile(path, faults);
    auto entryPoint = raw.entryPoint.value_or(table::entryPointWithoutCount(raw.version));
    table::clearSpareBytes(entryPoint);
    const table::Image image(std::move(raw), faults);
    // Bytes that were promised and are not there are missing in the copy too.
    const auto announced = entryPoint.promisesLength && image.length() != 0
                               ? std::max<std::size_t>(image.length(), entryPoint.tableLength)
                               : image.length();

    Anonymizer anonymizer(image, faults, wishes);
    for (unsigned i = 0; i < (wishes.key ? 1 : kKeys); ++i) {
        Keyed keyed(wishes.key ? *wishes.key : Keyed::freshKey());
        if (!anonymizer.decide(keyed, !wishes.key))
            continue;
        const auto result = anonymizer.result();
        auto dump = table::dumpEntryPoint(entryPoint, announced);
        dump.insert(dump.end(), result.begin(), result.end());
        table::Faults ignored;
        auto made = table::readEntryPoint(dump);
        const table::Image copy(table::joined(made.entryPoint.value(), dump, name, ignored, table::kDumpTableOffset),
                                ignored);
        if (isSame(image, copy) && anonymizer.isClean(result))
            return {std::move(dump), anonymizer.replaced()};
    }
    throw Problem(wishes.key ? message("%1: nothing was written, with this key a secret would still be in the copy, or "
                                       "two would become one; name another key",
                                       name)
                             : message("%1: nothing was written, a secret would still be in the copy", name));
} catch (const table::TableError& error) {
    throw Problem(message("%1; name a saved table or a folder such as /sys/firmware/dmi/tables", error.what()));
}

void write(const Bytes& dump, const std::filesystem::path& path, bool mayReplace)
try {
    table::writeDump(dump, path, mayReplace ? table::Replaces::Dumps : table::Replaces::Nothing,
                     embedded_host::platform::Readers::AsBefore);
} catch (const std::runtime_error& error) {
    throw Problem(error.what());
}

} // namespace zorpinventory::anonymize
