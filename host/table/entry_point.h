// The entry point of an SMBIOS table: where the table lies, how long it is and which version it has.
#pragma once

#include "faults.h"
#include "platform/files.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace embedded_host::table
{

using platform::Bytes;
using View = std::span<const unsigned char>;

/// The number stored little-endian in `width` bytes, which must lie inside.
std::uint64_t littleEndian(View bytes, std::size_t offset, std::size_t width);

/// An SMBIOS version, and in which form its source tells it.
struct Version
{
    /// Dumps hold these numbers.
    enum class Form : unsigned char {
        ThreePart = 0, ///< 64-bit entry points and Windows blocks of version 3: "3.1.1"
        TwoPart = 1,   ///< 32-bit and legacy entry points, older Windows blocks: "2.7"
        Assumed = 2,   ///< no version at all: "3.0 (assumed)"
    };

    unsigned char major = 3;
    unsigned char minor = 0;
    unsigned char revision = 0;
    Form form = Form::Assumed;

    /// Major in bits 31 to 24, minor in 23 to 16, revision in 15 to 8.
    std::uint32_t number() const;
    std::string text() const;

    /// The version with the well-known slips of firmware put right: 2.31 and 2.33 mean 2.3, 2.51 means 2.6.
    Version corrected() const;
};

/// An entry point that holds: its anchor, length byte and checksums are right.
struct EntryPoint
{
    Bytes bytes;                    ///< as found, without padding
    Version version;                ///< corrected
    std::uint64_t tableAddress = 0; ///< physical, or an offset into the file
    std::uint32_t tableLength = 0;  ///< bytes; for a 64-bit entry point the most there can be
    std::uint32_t structures = 0;   ///< 0 where none is told: the table then ends at its type 127
    bool promisesLength = true;     ///< all but a 64-bit one do
};

/// An entry point, or why there is none.
struct EntryPointReading
{
    std::optional<EntryPoint> entryPoint;
    std::string fault; ///< what is wrong when there is an anchor but no entry point; empty without an anchor

    /// The fault of what should have been an entry point.
    std::string faultOfEntryPoint() const;
};

/// Reads the entry point (_SM3_, _SM_ or _DMI_) that stands at the start of these bytes.
EntryPointReading readEntryPoint(View bytes);

/// The entry point in a stretch of memory that begins at a 16-byte boundary: a 64-bit one before a 32-bit one before a
/// legacy one, the first of its kind. One that does not hold is passed over, a fault of the memory of this name, whose
/// first byte has this address.
std::optional<EntryPoint> scanForEntryPoint(View memory, const std::string& name, std::uint64_t address,
                                            Faults& faults);

/// Bytes that the entry point of a dump occupies; the table follows it.
constexpr std::size_t kDumpTableOffset = 0x20;

/// The entry point of a dump: this one, padded, with the table behind it and its checksums made right.
Bytes dumpEntryPoint(const EntryPoint& original, std::size_t tableLength);

/// Sets to 0 what an entry point holds without telling of the table: reserved bytes, and what a later revision
/// appended.
void clearSpareBytes(EntryPoint& entryPoint);

/// An entry point for a table that came without one and ends where a table without an announced count does.
EntryPoint entryPointWithoutCount(const Version& version);

/// The entry point of a dump whose table came without one.
Bytes dumpEntryPoint(const Version& version, std::size_t tableLength, std::size_t structures,
                     std::size_t longestStructure);

} // namespace embedded_host::table
