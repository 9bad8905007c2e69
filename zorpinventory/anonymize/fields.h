// Where in a table secrets stand (DSP0134): every field of the standard that names a string is decided here, one by
// one.
#pragma once

namespace zorpinventory::anonymize
{

/// What becomes of a string.
enum class Fate {
    Harmless, ///< stays, but for the secrets that stand in it
    Kept,     ///< stays whatever stands in it: what the machine is called
    Replaced, ///< is replaced here
    Secret,   ///< is replaced here and wherever else it stands
};

struct StringField
{
    unsigned char type;
    unsigned char offset; ///< of the byte that has the string's number
    Fate fate;
};

/// In the place of an offset: all strings of the structure.
inline constexpr unsigned char kEveryString = 0;

/// All fields that name strings. (A row that is missing here does harm when it should be a secret; a test compares with
/// what is shown of a structure.)
inline constexpr StringField kStringFields[] = {
    {0, 0x04, Fate::Kept},              // vendor
    {0, 0x05, Fate::Harmless},          // version
    {0, 0x08, Fate::Harmless},          // release date
    {1, 0x04, Fate::Kept},              // manufacturer
    {1, 0x05, Fate::Kept},              // product
    {1, 0x06, Fate::Harmless},          // version
    {1, 0x07, Fate::Secret},            // serial number
    {1, 0x19, Fate::Harmless},          // SKU
    {1, 0x1A, Fate::Harmless},          // family
    {2, 0x04, Fate::Harmless},          // manufacturer
    {2, 0x05, Fate::Harmless},          // product
    {2, 0x06, Fate::Harmless},          // version
    {2, 0x07, Fate::Secret},            // serial number
    {2, 0x08, Fate::Secret},            // asset tag
    {2, 0x0A, Fate::Harmless},          // location in chassis
    {3, 0x04, Fate::Harmless},          // manufacturer
    {3, 0x06, Fate::Harmless},          // version
    {3, 0x07, Fate::Secret},            // serial number
    {3, 0x08, Fate::Secret},            // asset tag
    {3, 0x18, Fate::Harmless},          // SKU, where there are no contained elements
    {4, 0x04, Fate::Harmless},          // socket
    {4, 0x07, Fate::Harmless},          // manufacturer
    {4, 0x10, Fate::Harmless},          // version
    {4, 0x20, Fate::Secret},            // serial number
    {4, 0x21, Fate::Secret},            // asset tag
    {4, 0x22, Fate::Harmless},          // part number
    {4, 0x32, Fate::Harmless},          // socket type
    {6, 0x04, Fate::Harmless},          // socket
    {7, 0x04, Fate::Harmless},          // socket
    {8, 0x04, Fate::Harmless},          // internal designator
    {8, 0x06, Fate::Harmless},          // external designator
    {9, 0x04, Fate::Harmless},          // designation
    {10, kEveryString, Fate::Harmless}, // descriptions
    {11, kEveryString, Fate::Replaced}, // whatever the maker wants to say of this machine
    {12, kEveryString, Fate::Replaced}, // options
    {13, kEveryString, Fate::Harmless}, // languages
    {14, 0x04, Fate::Harmless},         // group
    {17, 0x10, Fate::Harmless},         // device locator
    {17, 0x11, Fate::Harmless},         // bank locator
    {17, 0x17, Fate::Harmless},         // manufacturer
    {17, 0x18, Fate::Secret},           // serial number
    {17, 0x19, Fate::Secret},           // asset tag
    {17, 0x1A, Fate::Harmless},         // part number
    {17, 0x2B, Fate::Harmless},         // firmware version
    {22, 0x04, Fate::Harmless},         // location
    {22, 0x05, Fate::Harmless},         // manufacturer
    {22, 0x06, Fate::Replaced}, // manufacture date; not looked for elsewhere, where other things have the same date
    {22, 0x07, Fate::Secret},   // serial number
    {22, 0x08, Fate::Harmless}, // name
    {22, 0x0E, Fate::Harmless}, // version of the smart battery's data
    {22, 0x14, Fate::Harmless}, // chemistry
    {26, 0x04, Fate::Harmless}, // description
    {27, 0x0E, Fate::Harmless}, // description
    {28, 0x04, Fate::Harmless}, // description
    {29, 0x04, Fate::Harmless}, // description
    {30, 0x04, Fate::Harmless}, // manufacturer
    {34, 0x04, Fate::Harmless}, // description
    {35, 0x04, Fate::Harmless}, // description
    {39, 0x05, Fate::Harmless}, // location
    {39, 0x06, Fate::Harmless}, // name
    {39, 0x07, Fate::Harmless}, // manufacturer
    {39, 0x08, Fate::Secret},   // serial number
    {39, 0x09, Fate::Secret},   // asset tag
    {39, 0x0A, Fate::Harmless}, // part number
    {39, 0x0B, Fate::Harmless}, // revision
    {40, kEveryString, Fate::Harmless}, // additional information
    {41, 0x04, Fate::Harmless},         // reference designation
    {43, 0x12, Fate::Harmless},         // description of a trusted platform module
    {45, 0x04, Fate::Harmless},         // firmware component
    {45, 0x05, Fate::Harmless},         // its version
    {45, 0x07, Fate::Harmless},         // its identifier
    {45, 0x09, Fate::Harmless},         // its release date
    {45, 0x0A, Fate::Harmless},         // its manufacturer
    {45, 0x0B, Fate::Harmless},         // the lowest version that it may have
};

/// System Information, UUID: sixteen bytes.
inline constexpr unsigned char kUuidType = 1;
inline constexpr unsigned kUuidOffset = 0x08;

/// Portable Battery, what a smart battery says: serial number and packed date, two bytes each.
inline constexpr unsigned char kBatteryType = 22;
inline constexpr unsigned kBatterySerial = 0x10;
inline constexpr unsigned kBatteryDate = 0x12;

/// Whether only a maker knows what stands in structures of the type: its own types, management controllers' host
/// interfaces, string properties, and structures that are switched off.
constexpr bool isMakers(unsigned char type) { return type >= 128 || type == 42 || type == 46 || type == 126; }

/// A maker's structure that zorpsysinfosmbios2 shows as a device: known by its length and perhaps by a string.
struct KnownMakers
{
    unsigned char type;
    unsigned char least, most; ///< its length
    unsigned char from, to;    ///< the bytes of its fields
    unsigned char knownBy;     ///< the byte with the number of the string by which it is known; 0 for none
    const char* texts[2] = {}; ///< what that string may be
};

inline constexpr KnownMakers kKnownMakers[] = {
    {131, 0x0B, 0x0B, 0x04, 0x0B, 0x0A, {"IBM System Metrics", "Lenovo System Metrics"}},
    {208, 0x08, 0xFF, 0x04, 0x10, 0},
};

} // namespace zorpinventory::anonymize
