// How a decoder names places in a structure and reads them.
#pragma once

#include "smbios2.h"

#include <concepts>

namespace zorpsysinfosmbios2
{

/// A place in a structure: its offset, its width in bytes (that of T) and, for a sub-field, its bits. Width 0 means the
/// whole field, as in the table library's look-ups.
template <std::unsigned_integral T>
struct Field
{
    unsigned offset;
    unsigned char width = 0;
    unsigned char shift = 0;

    /// The sub-field of `bitWidth` bits from bit `bitShift` up.
    constexpr Field bits(unsigned char bitWidth, unsigned char bitShift) const { return {offset, bitWidth, bitShift}; }
};

constexpr Field<std::uint8_t> byte(unsigned offset) { return {offset}; }
constexpr Field<std::uint16_t> word(unsigned offset) { return {offset}; }
constexpr Field<std::uint32_t> dword(unsigned offset) { return {offset}; }
constexpr Field<std::uint64_t> qword(unsigned offset) { return {offset}; }

/// A structure of the table, as a decoder reads it.
class Structure
{
public:
    explicit Structure(const void* start) : bytes_(static_cast<const unsigned char*>(start)) {}

    unsigned char type() const { return (*this)[byte(0x00)]; }
    unsigned char length() const { return (*this)[byte(0x01)]; }
    std::uint16_t handle() const { return (*this)[word(0x02)]; }

    const libsmbios2::type_hdr* header() const
    {
        return static_cast<const libsmbios2::type_hdr*>(static_cast<const void*>(bytes_));
    }

    /// Whether the field is there. Deliberate: only its first byte must lie inside the structure, so a word at 06h
    /// counts as present from length 07h on.
    template <class T>
    bool has(Field<T> field) const
    {
        return length() > field.offset;
    }

    /// The whole field, little-endian, whatever the structure's length: the table library owns the bytes behind it.
    template <class T>
    T operator[](Field<T> field) const
    {
        T value = 0;
        for (unsigned i = sizeof(T); i-- > 0;)
            value = static_cast<T>(value << 8 | bytes_[field.offset + i]);
        return value;
    }

    /// The bytes from an offset on.
    const unsigned char* at(unsigned offset) const { return bytes_ + offset; }

private:
    const unsigned char* bytes_;
};

} // namespace zorpsysinfosmbios2
