// Builds SMBIOS tables for the tests: structures field by field, in the decoders' own words, and the layouts around
// them.
#pragma once

#include "vocabulary/fields.h"

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tests
{

using Bytes = std::vector<unsigned char>;

/// Writes a file. Throws std::runtime_error when it cannot be written.
void writeBytes(const std::filesystem::path& path, const Bytes& content);

using zorpsysinfosmbios2::byte;
using zorpsysinfosmbios2::dword;
using zorpsysinfosmbios2::Field;
using zorpsysinfosmbios2::qword;
using zorpsysinfosmbios2::word;

/// Stores a number little-endian.
template <class T>
void put(Bytes& to, Field<T> field, std::uint64_t value)
{
    for (unsigned i = 0; i < sizeof(T); ++i)
        to.at(field.offset + i) = static_cast<unsigned char>(value >> 8 * i);
}

/// Makes the checksums of the entry point at the start right, by its own length byte and whatever else it holds.
void mendEntryPoint(std::span<unsigned char> dump);

/// Sets the checksum byte so that `length` bytes from `start` on add up to 0, as far as they are there.
void mend(std::span<unsigned char> bytes, std::size_t start, std::size_t length, std::size_t checksum);

/// One structure. A field beyond the length throws std::out_of_range, so that a test's own slip is seen. The header's
/// bytes are fields like all others: a wrong length byte is `put(byte(0x01), 3)`.
class StructureBuilder
{
public:
    StructureBuilder(unsigned char type, std::uint16_t handle, unsigned char length);

    unsigned char type() const { return formatted_.front(); }

    template <class T>
    StructureBuilder& put(Field<T> field, std::type_identity_t<T> value)
    {
        tests::put(formatted_, field, value);
        return *this;
    }

    StructureBuilder& bytes(unsigned offset, const Bytes& values);

    /// Appends to the string set and stores the string's number at the offset.
    StructureBuilder& text(unsigned offset, std::string_view value);

    /// Appends to the string set; nothing refers to it.
    StructureBuilder& string(std::string_view value);

    /// Shortens the formatted area, the length byte with it; the strings stay.
    StructureBuilder& cut(unsigned char length);

    /// The formatted area and the string set.
    Bytes image() const;

private:
    Bytes formatted_;
    std::vector<std::string> strings_;
};

/// A table of such structures, in the order in which they were added.
class TableBuilder
{
public:
    /// A zero-filled formatted area of `length` bytes, the header's four among them. The reference holds as long as
    /// the table.
    StructureBuilder& add(unsigned char type, std::uint16_t handle, unsigned char length);
    StructureBuilder& add(const StructureBuilder& structure) { return structures_.emplace_back(structure); }

    const std::deque<StructureBuilder>& all() const { return structures_; }

    /// Adds the end-of-table structure (type 127); no layout adds one by itself.
    TableBuilder& end(std::uint16_t handle = 0xFEFF);

    /// The bare structure table.
    Bytes structures() const;

    /// A dump: the entry point padded to 32 bytes, then the table, at the address 0x20 that the entry point gives.
    Bytes dump64(unsigned char major, unsigned char minor, unsigned char docrev) const; ///< `_SM3_`
    Bytes dump32(unsigned char major, unsigned char minor) const;                       ///< `_SM_` with its `_DMI_`
    Bytes dumpLegacy(unsigned char major, unsigned char minor) const;                   ///< `_DMI_` alone

    /// The RawSMBIOSData block that Windows returns.
    Bytes windowsBlock(unsigned char major, unsigned char minor, unsigned char revision) const;

    /// All of these, by name.
    std::map<std::string, Bytes> layouts() const;

private:
    Bytes intermediateEntryPoint(unsigned char major, unsigned char minor) const;

    std::deque<StructureBuilder> structures_;
};

} // namespace tests
