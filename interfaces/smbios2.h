// The SMBIOS table library: the machine's table in memory, its structures, their strings and their enumeration texts.
//
// Every multi-byte field of a structure is little-endian and may lie at any address. Nothing here throws: results
// tell of failures. Used from one thread only.
#pragma once

#include "lum.h"

#include <cstdint>

namespace libsmbios2
{

#pragma pack(push, 1)
/// The header of every structure (DSP0134, "Structure header format"); the rest of the formatted area and the string
/// set follow it in memory.
struct type_hdr
{
    std::uint8_t type;    ///< structure type; 128 to 255 are the makers' own
    std::uint8_t length;  ///< bytes of the formatted area, this header included, the string set not
    std::uint16_t handle; ///< unique in a sound table; stored little-endian
};
#pragma pack(pop)
static_assert(sizeof(type_hdr) == 4 && alignof(type_hdr) == 1, "structures start at odd addresses too");

/// What became of `Smbios2::populateTable`. 0 and 1 are success; every value above leaves `errno` set.
enum POPULATE_TABLE_RESULT {
    POPULATE_TABLE_READ = 0,          ///< read from the firmware now
    POPULATE_TABLE_IN_MEMORY = 1,     ///< already in memory, from an earlier call or from a file
    POPULATE_TABLE_NONE = 2,          ///< this machine offers no table
    POPULATE_TABLE_NO_PERMISSION = 3, ///< there is a table, but this process may not read it
    POPULATE_TABLE_MALFORMED = 4,     ///< unreadable, or no table in what was read
};

} // namespace libsmbios2

namespace libsmbios2_internal
{

/// The one table of the process. Pointers into it stay valid until the next `populateTable` or `loadTableFromFile`.
class Smbios2
{
public:
    /// The table object, made on the first call. Every call returns the same one.
    static Smbios2& instance();

    Smbios2(const Smbios2&) = delete;
    Smbios2& operator=(const Smbios2&) = delete;

    /// 1 when a table is loaded, or when the firmware's can be opened and its entry point holds; else 0, and the log
    /// says why and what to do about it.
    int isPresent();

    /// Brings the firmware's table into memory. A table from a file stays; `refresh` reads the firmware again even
    /// when its table is in memory.
    libsmbios2::POPULATE_TABLE_RESULT populateTable(bool refresh);

    /// Takes the table from a file: a dump with entry point, a raw structure table, a folder with a copy of
    /// /sys/firmware/dmi/tables, or the block that Windows returns. The layout is told by content, never by name.
    /// False, with the cause logged, leaves no table in memory. `log` false keeps the faults of the table itself
    /// out of the log.
    bool loadTableFromFile(const lum::String& path, bool log);

    /// Writes the table in memory as a dump that `loadTableFromFile` and the field's tools read. The file appears
    /// whole or not at all, readable by its owner only; a symbolic link or a file that is no dump is refused.
    /// False, with the cause logged, when nothing was written.
    bool saveTableToFile(const lum::String& path);

    /// 0 when structure `index` (from 0, in table order) of this type exists; `*out` is then its `type_hdr`. Takes
    /// constant time.
    ///
    /// Memory behind a structure, its own formatted area passed or not, may be read up to 1 KiB past the table's last
    /// byte: the library owns it, and it holds zeros there. Readers of short structures and of lists whose count byte
    /// lies therefore need no bounds of their own.
    int readStructure(unsigned char type, const void** out, unsigned int index);

    /// The SMBIOS version: major in bits 31 to 24, minor in 23 to 16, revision in 15 to 8. 0x03000000 for a table that
    /// came without one; 0 without a table.
    unsigned int getVersion() const;

    /// The version as text: "2.7", "3.1.1", "3.0 (assumed)".
    lum::String getVersionString() const;

private:
    Smbios2() = default;
    ~Smbios2() = default;
};

} // namespace libsmbios2_internal

namespace libsmbios2
{

using libsmbios2_internal::Smbios2;

/// Strings of structures, and the standard's texts for values of enumerated fields.
///
/// A look-up names a field by structure type and offset. `width` 0 takes the whole value; otherwise the library cuts
/// out `width` bits from bit `shift` up. A field whose bits each stand for something is looked up once per bit, with
/// the bit's number as the value.
class Smbios2_SysInfo
{
public:
    /// Text `number` (from 1) of the structure's string set, valid as long as the structure is; null when the number
    /// is 0 or beyond the set.
    static const char* getString(const type_hdr* structure, unsigned char number);

    /// The English text; "Reserved" for a value that the standard names so, "Out of range" for any other value
    /// without a text; null when there is no table for this field. Valid for the process's life.
    static const char* getEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                          const unsigned int& value, unsigned char width, unsigned char shift);

    /// The same text in the current language; empty where `getEnumFieldString` is null.
    static lum::String getLocalizedEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                                   const unsigned int& value, unsigned char width, unsigned char shift);

    /// Whether a text of `getEnumFieldString` names a value that the standard gives a meaning. False for null.
    static bool isKnownEnum(const char* text);

    /// As `isKnownEnum`, and false also for "Other", "Unknown", "None" and "Undefined".
    static bool isDefinedEnum(const char* text);
};

} // namespace libsmbios2
