// A table in memory: its structures, found once, and the zero bytes behind it.
#pragma once

#include "entry_point.h"
#include "faults.h"
#include "smbios2.h"

#include <array>

namespace embedded_host::table
{

/// Where a string set that starts at `offset` ends, behind its two NUL bytes; nothing when the bytes end first.
std::optional<std::size_t> endOfStrings(View bytes, std::size_t offset);

/// The strings of one structure, each found once, and no sooner than it is asked for.
class StringSet
{
public:
    /// Turns to the strings of another structure.
    void turnTo(const libsmbios2::type_hdr* structure);

    const libsmbios2::type_hdr* structure() const { return structure_; }

    /// The text of this number, from 1 to 255; null when the set has none.
    const char* find(unsigned char number);

private:
    const libsmbios2::type_hdr* structure_ = nullptr;
    const char* next_ = nullptr; ///< what was not looked at yet
    std::vector<const char*> found_;
};

/// A table as its source gave it, nothing in it believed yet.
struct RawTable
{
    Bytes bytes;                          ///< up to the table's end
    std::size_t start;                    ///< of the table in them; a dump's entry point may stand in front
    Version version;                      ///< as told by the source
    std::optional<EntryPoint> entryPoint; ///< none for a bare table and for a Windows block
};

/// The type of the structure that ends a table.
constexpr unsigned char kEndOfTable = 127;

/// A table whose structures are known.
class Image
{
public:
    /// Walks the table once. It ends at the entry point's structure count where there is one, else at the type 127
    /// structure, in every case at the last byte.
    Image(RawTable raw, Faults& faults);

    /// The start of structure `index` of this type; null when there is none. Behind the table's last byte lie
    /// kZeroTail zero bytes.
    const unsigned char* find(unsigned char type, std::size_t index) const;

    /// How far a structure's start is behind the table's; nothing when it is not in this table.
    std::optional<std::uint32_t> offsetOf(const void* structure) const;

    /// The strings of a structure of this table; null for one that lies elsewhere.
    StringSet* strings(const libsmbios2::type_hdr* structure);

    /// The structure that starts there.
    StructurePlace place(std::uint32_t offset) const;

    /// Keeps that a device was made of the structure that starts there.
    void markDevice(std::uint32_t offset) { hasDevice_[offset] = true; }

    /// All other structures, in table order.
    std::vector<StructurePlace> withoutDevice() const;

    /// All structures, in table order: each begins where the one before it ends.
    std::vector<StructurePlace> inOrder() const;

    const Version& version() const { return raw_.version; }

    /// Bytes of the table.
    std::size_t length() const { return length_; }

    /// The table, without what stands in front of it and behind it.
    View bytes() const { return View(raw_.bytes).subspan(raw_.start, length_); }

    /// All bytes, the zeros behind the table among them.
    View memory() const { return raw_.bytes; }

    /// Structures of all types.
    std::size_t structures() const { return offsets_.size(); }

    /// The image as a dump: entry point and table.
    Bytes dump() const;

    /// How far a decoder may read past the table's end. The farthest read of all is the last of 255 handles from
    /// offset 0Fh on, 525 bytes behind a header.
    static constexpr std::size_t kZeroTail = 1024;

private:
    struct Found
    {
        std::uint32_t offset;
        unsigned char type;
    };
    std::vector<Found> walk(Faults& faults);
    void index(const std::vector<Found>& found);

    RawTable raw_;
    std::size_t length_;                           ///< of the table alone
    std::size_t longest_ = 0;                      ///< structure, string set included
    std::array<std::uint32_t, 257> firstOfType_{}; ///< where a type's offsets begin; the next type's is their end
    std::vector<std::uint32_t> offsets_;           ///< of all structures, by type, in table order within a type
    std::vector<bool> hasDevice_;                  ///< by offset
    StringSet strings_;                            ///< of the structure that was asked for last
};

} // namespace embedded_host::table
