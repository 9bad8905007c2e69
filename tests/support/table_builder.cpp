// The tests' table builder: structures as bytes, and the entry points and blocks that carry them.
#include "table_builder.h"

#include <algorithm>
#include <fstream>
#include <numeric>
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

void append(Bytes& to, const Bytes& more) { to.insert(to.end(), more.begin(), more.end()); }

Bytes dump(Bytes entryPoint, const Bytes& table)
{
    entryPoint.resize(kTableAddress);
    mendEntryPoint(entryPoint);
    append(entryPoint, table);
    return entryPoint;
}

} // namespace

void writeBytes(const std::filesystem::path& path, const Bytes& content)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    if (!file.flush())
        throw std::runtime_error(path.string() + ": cannot be written");
}

void mendEntryPoint(std::span<unsigned char> dump)
{
    const std::string_view text(reinterpret_cast<const char*>(dump.data()), dump.size());
    if (text.starts_with("_SM3_")) {
        mend(dump, 0, dump[0x06], 0x05);
    } else if (text.starts_with("_SM_")) {
        mend(dump, 0x10, 0x0F, 0x15);
        mend(dump, 0, dump[0x05], 0x04);
    } else if (text.starts_with("_DMI_")) {
        mend(dump, 0, 0x0F, 0x05);
    }
}

void mend(std::span<unsigned char> bytes, std::size_t start, std::size_t length, std::size_t checksum)
{
    if (start + length > bytes.size())
        return;
    const auto summed = bytes.subspan(start, length);
    bytes[checksum] -= std::accumulate(summed.begin(), summed.end(), std::uint8_t{0});
}

StructureBuilder::StructureBuilder(unsigned char type, std::uint16_t handle, unsigned char length) : formatted_(length)
{
    put(byte(0x00), type).put(byte(0x01), length).put(word(0x02), handle);
}

StructureBuilder& StructureBuilder::bytes(unsigned offset, const Bytes& values)
{
    for (const auto value : values)
        put(byte(offset++), value);
    return *this;
}

StructureBuilder& StructureBuilder::text(unsigned offset, std::string_view value)
{
    string(value);
    return put(byte(offset), static_cast<unsigned char>(strings_.size()));
}

StructureBuilder& StructureBuilder::string(std::string_view value)
{
    strings_.emplace_back(value);
    return *this;
}

StructureBuilder& StructureBuilder::cut(unsigned char length)
{
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
    put(entryPoint, byte(0x06), entryPoint.size());
    put(entryPoint, byte(0x07), major);
    put(entryPoint, byte(0x08), minor);
    put(entryPoint, byte(0x09), docrev);
    put(entryPoint, byte(0x0A), 1); // entry point revision
    put(entryPoint, dword(0x0C), table.size());
    put(entryPoint, qword(0x10), kTableAddress);
    return dump(entryPoint, table);
}

Bytes TableBuilder::dump32(unsigned char major, unsigned char minor) const
{
    Bytes entryPoint = anchor("_SM_", 0x10);
    append(entryPoint, intermediateEntryPoint(major, minor));
    put(entryPoint, byte(0x05), entryPoint.size());
    put(entryPoint, byte(0x06), major);
    put(entryPoint, byte(0x07), minor);
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
    put(entryPoint, word(0x06), structures().size());
    put(entryPoint, dword(0x08), kTableAddress);
    put(entryPoint, word(0x0C), structures_.size());
    put(entryPoint, byte(0x0E), major * 0x10u + minor); // the version in BCD
    return entryPoint;
}

Bytes TableBuilder::windowsBlock(unsigned char major, unsigned char minor, unsigned char revision) const
{
    const Bytes table = structures();
    Bytes block(0x08); // byte 00h, Used20CallingMethod, stays 0
    put(block, byte(0x01), major);
    put(block, byte(0x02), minor);
    put(block, byte(0x03), revision);
    put(block, dword(0x04), table.size());
    append(block, table);
    return block;
}

std::map<std::string, Bytes> TableBuilder::layouts() const
{
    return {{"64", dump64(3, 2, 0)},
            {"32", dump32(2, 7)},
            {"legacy", dumpLegacy(2, 1)},
            {"raw", structures()},
            {"windows", windowsBlock(3, 2, 0)},
            {"windows-older", windowsBlock(2, 7, 0)}};
}

} // namespace tests
