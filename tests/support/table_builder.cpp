// The tests' table builder: structures as bytes, and the entry points and blocks that carry them.
#include "table_builder.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace tests
{
namespace
{

constexpr unsigned kHeaderSize = 4;
constexpr unsigned char kEndOfTable = 127;
constexpr std::size_t kTableAddress = 0x20;

Bytes anchor(std::string_view text, std::size_t size)
{
    Bytes entryPoint(size);
    std::copy(text.begin(), text.end(), entryPoint.begin());
    return entryPoint;
}

template <std::unsigned_integral T>
void set(Bytes& to, std::size_t offset, std::uint64_t value)
{
    if (value > std::numeric_limits<T>::max())
        throw std::out_of_range("the table is too large for this entry point");
    for (std::size_t i = 0; i < sizeof(T); ++i)
        to.at(offset + i) = static_cast<unsigned char>(value >> 8 * i);
}

/// Sets the byte that makes the sum of them all 0.
void setChecksum(Bytes& entryPoint, std::size_t offset)
{
    unsigned sum = 0;
    for (const unsigned char value : entryPoint)
        sum += value;
    entryPoint.at(offset) = static_cast<unsigned char>(entryPoint.at(offset) - sum);
}

void append(Bytes& to, const Bytes& more) { to.insert(to.end(), more.begin(), more.end()); }

Bytes dump(Bytes entryPoint, const Bytes& table)
{
    entryPoint.resize(kTableAddress);
    append(entryPoint, table);
    return entryPoint;
}

} // namespace

StructureBuilder::StructureBuilder(unsigned char type, std::uint16_t handle, unsigned char length) : formatted_(length)
{
    put(byte(0x00), type).put(byte(0x01), length).put(word(0x02), handle);
}

std::span<unsigned char> StructureBuilder::area(unsigned offset, std::size_t size)
{
    if (offset > formatted_.size() || size > formatted_.size() - offset) {
        char wrong[80];
        std::snprintf(wrong, sizeof wrong, "a field of %zu bytes at %02Xh does not fit into the structure", size,
                      offset);
        throw std::out_of_range(wrong);
    }
    return std::span(formatted_).subspan(offset, size);
}

StructureBuilder& StructureBuilder::store(unsigned offset, unsigned size, unsigned width, unsigned shift,
                                          std::uint64_t value)
{
    const std::span<unsigned char> place = area(offset, size);
    const unsigned bits = width == 0 ? 8 * size : width;
    if (shift + bits > 8 * size || (bits < 64 && value >> bits != 0))
        throw std::out_of_range("the value does not fit into its bits");

    const std::uint64_t mask = (std::numeric_limits<std::uint64_t>::max() >> (64 - bits)) << shift;
    const std::uint64_t placed = value << shift;
    for (unsigned i = 0; i < size; ++i) {
        const std::uint64_t kept = place[i] & ~(mask >> 8 * i);
        place[i] = static_cast<unsigned char>(kept | placed >> 8 * i);
    }
    return *this;
}

StructureBuilder& StructureBuilder::bytes(unsigned offset, std::span<const unsigned char> values)
{
    std::copy(values.begin(), values.end(), area(offset, values.size()).begin());
    return *this;
}

StructureBuilder& StructureBuilder::bytes(unsigned offset, std::initializer_list<unsigned char> values)
{
    return bytes(offset, std::span(values.begin(), values.size()));
}

StructureBuilder& StructureBuilder::text(unsigned offset, std::string_view value)
{
    string(value);
    return put(byte(offset), static_cast<unsigned char>(strings_.size()));
}

StructureBuilder& StructureBuilder::string(std::string_view value)
{
    if (strings_.size() == std::numeric_limits<unsigned char>::max())
        throw std::out_of_range("a structure numbers at most 255 strings");
    strings_.emplace_back(value);
    return *this;
}

StructureBuilder& StructureBuilder::cut(unsigned char length)
{
    if (length < kHeaderSize || length > formatted_.size())
        throw std::out_of_range("a structure is cut between its header and its end");
    formatted_.resize(length);
    return put(byte(0x01), length);
}

Bytes StructureBuilder::image() const
{
    Bytes whole = formatted_;
    for (const std::string& text : strings_) {
        whole.insert(whole.end(), text.begin(), text.end());
        whole.push_back(0);
    }
    // A set without strings is two NUL bytes as well.
    whole.resize(whole.size() + (strings_.empty() ? 2 : 1));
    return whole;
}

StructureBuilder& TableBuilder::add(unsigned char type, std::uint16_t handle, unsigned char length)
{
    return structures_.emplace_back(type, handle, length);
}

TableBuilder& TableBuilder::end(std::uint16_t handle)
{
    add(kEndOfTable, handle, kHeaderSize);
    return *this;
}

Bytes TableBuilder::structures() const
{
    Bytes table;
    for (const StructureBuilder& structure : structures_)
        append(table, structure.image());
    return table;
}

Bytes TableBuilder::dump64(unsigned char major, unsigned char minor, unsigned char docrev) const
{
    const Bytes table = structures();
    Bytes entryPoint = anchor("_SM3_", 0x18);
    set<std::uint8_t>(entryPoint, 0x06, entryPoint.size());
    set<std::uint8_t>(entryPoint, 0x07, major);
    set<std::uint8_t>(entryPoint, 0x08, minor);
    set<std::uint8_t>(entryPoint, 0x09, docrev);
    set<std::uint8_t>(entryPoint, 0x0A, 1); // entry point revision
    set<std::uint32_t>(entryPoint, 0x0C, table.size());
    set<std::uint64_t>(entryPoint, 0x10, kTableAddress);
    setChecksum(entryPoint, 0x05);
    return dump(entryPoint, table);
}

Bytes TableBuilder::dump32(unsigned char major, unsigned char minor) const
{
    std::size_t largest = 0;
    for (const StructureBuilder& structure : structures_)
        largest = std::max(largest, structure.image().size());

    Bytes entryPoint = anchor("_SM_", 0x10);
    append(entryPoint, intermediateEntryPoint(major, minor));
    set<std::uint8_t>(entryPoint, 0x05, entryPoint.size());
    set<std::uint8_t>(entryPoint, 0x06, major);
    set<std::uint8_t>(entryPoint, 0x07, minor);
    set<std::uint16_t>(entryPoint, 0x08, largest);
    setChecksum(entryPoint, 0x04);
    return dump(entryPoint, structures());
}

Bytes TableBuilder::dumpLegacy(unsigned char major, unsigned char minor) const
{
    return dump(intermediateEntryPoint(major, minor), structures());
}

/// The 15 bytes from `_DMI_` on, which are the older entry point and the second half of the 32-bit one.
Bytes TableBuilder::intermediateEntryPoint(unsigned char major, unsigned char minor) const
{
    Bytes entryPoint = anchor("_DMI_", 0x0F);
    set<std::uint16_t>(entryPoint, 0x06, structures().size());
    set<std::uint32_t>(entryPoint, 0x08, kTableAddress);
    set<std::uint16_t>(entryPoint, 0x0C, structures_.size());
    set<std::uint8_t>(entryPoint, 0x0E, major * 0x10u + minor); // the version in BCD
    setChecksum(entryPoint, 0x05);
    return entryPoint;
}

Bytes TableBuilder::windowsBlock(unsigned char major, unsigned char minor, unsigned char revision) const
{
    const Bytes table = structures();
    Bytes block(0x08); // byte 00h, Used20CallingMethod, stays 0
    set<std::uint8_t>(block, 0x01, major);
    set<std::uint8_t>(block, 0x02, minor);
    set<std::uint8_t>(block, 0x03, revision);
    set<std::uint32_t>(block, 0x04, table.size());
    append(block, table);
    return block;
}

} // namespace tests
