// Walking a table and indexing its structures.
#include "image.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace embedded_host::table
{

namespace
{

constexpr std::size_t kHeader = 4;

std::uint16_t handleAt(View table, std::size_t offset)
{
    return static_cast<std::uint16_t>(littleEndian(table, offset + 2, 2));
}

std::uint32_t narrow(std::size_t number) { return static_cast<std::uint32_t>(number); }

} // namespace

std::optional<std::size_t> endOfStrings(View bytes, std::size_t offset)
{
    while (offset + 1 < bytes.size()) {
        const auto* start = bytes.data() + offset;
        const auto* nul = static_cast<const unsigned char*>(std::memchr(start, 0, bytes.size() - offset - 1));
        if (nul == nullptr)
            break;
        if (nul[1] == 0)
            return static_cast<std::size_t>(nul - bytes.data()) + 2;
        offset = static_cast<std::size_t>(nul - bytes.data()) + 1;
    }
    return std::nullopt;
}

void StringSet::turnTo(const libsmbios2::type_hdr* structure)
{
    structure_ = structure;
    next_ = static_cast<const char*>(static_cast<const void*>(structure)) + structure->length;
    found_.clear();
}

const char* StringSet::find(unsigned char number)
{
    // An empty text ends the numbering; the zeros behind the table end a set that was cut.
    while (found_.size() < number && *next_ != '\0') {
        found_.push_back(next_);
        next_ += std::strlen(next_) + 1;
    }
    return number != 0 && number <= found_.size() ? found_[number - 1] : nullptr;
}

Image::Image(RawTable raw, Faults& faults)
    : raw_(std::move(raw)), length_(raw_.bytes.size() - raw_.start), hasDevice_(length_)
{
    raw_.bytes.resize(raw_.bytes.size() + kZeroTail);
    index(walk(faults));
}

std::vector<Image::Found> Image::walk(Faults& faults)
{
    const View table = bytes();
    const std::size_t limit = raw_.entryPoint ? raw_.entryPoint->structures : 0;
    std::size_t offset = 0;
    const auto fault = [&](FaultKind kind, std::size_t first, std::size_t second = 0) {
        const bool hasHandle = kind != FaultKind::HeaderCut;
        faults.add({kind, hasHandle, hasHandle ? handleAt(table, offset) : std::uint16_t{0}, narrow(offset),
                    narrow(first), narrow(second)});
    };

    std::vector<Found> found;
    bool ended = false; // at a type 127 that ends the table, or at bytes that are no structure
    while (!ended && offset < length_ && (limit == 0 || found.size() < limit)) {
        ended = true;
        if (length_ - offset < kHeader) {
            fault(FaultKind::HeaderCut, length_ - offset);
            break;
        }
        const unsigned char type = table[offset];
        const std::size_t length = table[offset + 1];
        if (length < kHeader) {
            fault(FaultKind::LengthBelowHeader, length);
            break;
        }
        if (length > length_ - offset) {
            fault(FaultKind::AreaPastEnd, length, length_);
            break;
        }
        found.push_back({narrow(offset), type});

        const auto end = endOfStrings(table, offset + length);
        if (!end)
            fault(FaultKind::StringsPastEnd, length_);
        longest_ = std::max(longest_, end.value_or(length_) - offset);
        offset = end.value_or(length_);
        ended = type == kEndOfTable && limit == 0;
    }
    if (found.size() < limit)
        faults.add({.kind = FaultKind::CountDiffers,
                    .offset = narrow(offset),
                    .first = narrow(found.size()),
                    .second = narrow(limit)});
    else if (!ended && limit == 0)
        faults.add({.kind = FaultKind::EndMissing});
    return found;
}

void Image::index(const std::vector<Found>& found)
{
    for (const auto& structure : found)
        ++firstOfType_[structure.type + std::size_t{1}];
    for (std::size_t type = 0; type < 256; ++type)
        firstOfType_[type + 1] += firstOfType_[type];

    offsets_.resize(found.size());
    auto next = firstOfType_;
    for (const auto& structure : found)
        offsets_[next[structure.type]++] = structure.offset;
}

const unsigned char* Image::find(unsigned char type, std::size_t index) const
{
    const std::size_t first = firstOfType_[type];
    const std::size_t behind = firstOfType_[type + std::size_t{1}];
    return index < behind - first ? bytes().data() + offsets_[first + index] : nullptr;
}

std::optional<std::uint32_t> Image::offsetOf(const void* structure) const
{
    const auto* start = static_cast<const unsigned char*>(structure);
    const std::less<> before; // a total order, whatever the pointer points into
    const auto* table = bytes().data();
    if (before(start, table) || !before(start, table + length_))
        return std::nullopt;
    return static_cast<std::uint32_t>(start - table);
}

StringSet* Image::strings(const libsmbios2::type_hdr* structure)
{
    if (structure != strings_.structure()) {
        if (!offsetOf(structure))
            return nullptr;
        strings_.turnTo(structure);
    }
    return &strings_;
}

StructurePlace Image::place(std::uint32_t offset) const
{
    const View table = bytes();
    return {offset, table[offset], table[offset + 1], handleAt(table, offset)};
}

std::vector<StructurePlace> Image::inOrder() const
{
    std::vector<StructurePlace> all;
    for (const auto offset : offsets_)
        all.push_back(place(offset));
    std::ranges::sort(all, {}, &StructurePlace::offset);
    return all;
}

std::vector<StructurePlace> Image::withoutDevice() const
{
    auto others = inOrder();
    std::erase_if(others, [&](const StructurePlace& structure) { return hasDevice_[structure.offset]; });
    return others;
}

Bytes Image::dump() const
{
    Bytes dump = raw_.entryPoint ? dumpEntryPoint(*raw_.entryPoint, length_)
                                 : dumpEntryPoint(raw_.version, length_, structures(), longest_);
    const View table = bytes();
    dump.insert(dump.end(), table.begin(), table.end());
    return dump;
}

} // namespace embedded_host::table
