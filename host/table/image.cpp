// Walking a table and indexing its structures.
#include "image.h"

#include "services/messages.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace embedded_host::table
{

namespace
{

using services::message;

constexpr unsigned char kEndOfTable = 127;
constexpr std::size_t kHeader = 4;

std::string hex(std::size_t number)
{
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "0x%zX", number);
    return text.data();
}

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

Image::Image(RawTable raw, const Remarks& faults) : raw_(std::move(raw)), length_(raw_.bytes.size())
{
    raw_.bytes.resize(length_ + kZeroTail);
    index(walk(faults));
}

std::vector<Image::Found> Image::walk(const Remarks& faults)
{
    const View table = View(raw_.bytes).first(length_);
    const std::size_t limit = raw_.entryPoint ? raw_.entryPoint->structures : 0;
    const auto fault = [&](std::size_t offset, const std::string& text) {
        faults(message("structure at offset %1: %2", hex(offset), text));
    };

    std::vector<Found> found;
    std::size_t offset = 0;
    while (offset < length_ && (limit == 0 || found.size() < limit)) {
        if (length_ - offset < kHeader) {
            fault(offset, message("only %1 bytes of its header lie in the table; dropped", length_ - offset));
            return found;
        }
        const unsigned char type = table[offset];
        const std::size_t length = table[offset + 1];
        if (length < kHeader) {
            fault(offset, message("its length is %1, less than its header; the table ends here", length));
            return found;
        }
        if (length > length_ - offset) {
            fault(offset, message("its formatted area of %1 bytes runs past the end of the table at %2; dropped",
                                  length, hex(length_)));
            return found;
        }
        found.push_back({static_cast<std::uint32_t>(offset), type});

        const auto end = endOfStrings(table, offset + length);
        if (!end)
            fault(offset, message("its strings run past the end of the table at %1; cut there", hex(length_)));
        longest_ = std::max(longest_, end.value_or(length_) - offset);
        offset = end.value_or(length_);
        if (type == kEndOfTable && limit == 0)
            return found;
    }
    if (found.size() < limit)
        faults(message("the table ends at offset %1 after %2 structures; its entry point announced %3", hex(offset),
                       found.size(), limit));
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
    return index < behind - first ? raw_.bytes.data() + offsets_[first + index] : nullptr;
}

Bytes Image::dump() const
{
    Bytes bytes = raw_.entryPoint ? dumpEntryPoint(*raw_.entryPoint, length_)
                                  : dumpEntryPoint(raw_.version, length_, structures(), longest_);
    bytes.insert(bytes.end(), raw_.bytes.begin(), raw_.bytes.begin() + static_cast<std::ptrdiff_t>(length_));
    return bytes;
}

} // namespace embedded_host::table
