// Reading and making entry points (DSP0134, "Structure table entry point").
#include "entry_point.h"

#include "services/messages.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace embedded_host::table
{

namespace
{

constexpr std::string_view kAnchor64 = "_SM3_";
constexpr std::string_view kAnchor32 = "_SM_";
constexpr std::string_view kAnchorLegacy = "_DMI_";
constexpr std::size_t kLength64 = 0x18;
constexpr std::size_t kLength32 = 0x1F;
constexpr std::size_t kLengthLegacy = 0x0F;
/// Where the legacy entry point lies inside a 32-bit one.
constexpr std::size_t kIntermediate = 0x10;

bool startsWith(View bytes, std::string_view anchor)
{
    return bytes.size() >= anchor.size() && std::memcmp(bytes.data(), anchor.data(), anchor.size()) == 0;
}

unsigned char sumOf(View bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), static_cast<unsigned char>(0),
                           [](unsigned char a, unsigned char b) { return static_cast<unsigned char>(a + b); });
}

void putLittleEndian(Bytes& bytes, std::size_t offset, std::size_t width, std::uint64_t value)
{
    for (std::size_t i = 0; i < width; ++i, value >>= 8)
        bytes[offset + i] = static_cast<unsigned char>(value);
}

void putAnchor(Bytes& bytes, std::size_t offset, std::string_view anchor)
{
    std::ranges::copy(anchor, bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// Sets the checksum byte so that `length` bytes from `start` on sum up to 0.
void makeSumZero(Bytes& bytes, std::size_t start, std::size_t length, std::size_t checksum)
{
    bytes[checksum] = 0;
    bytes[checksum] = static_cast<unsigned char>(-sumOf(View(bytes).subspan(start, length)));
}

using services::message;
using services::translatable;

constexpr const char* kWrongLength = translatable("the length byte of its %1 entry point is wrong");
constexpr const char* kCutShort = translatable("its %1 entry point is cut short");
constexpr const char* kWrongChecksum = translatable("the checksum of its %1 entry point is wrong");

/// Five bytes of a 32-bit entry point that the standard reserves for a revision that never came.
constexpr std::size_t kFormattedArea = 0x0B;

/// A reserved byte, 0 in what firmware makes. Our own dumps tell there in which form their version is shown when it
/// did not come from a 64-bit entry point.
constexpr std::size_t kFormMark = 0x0B;

bool isTwoPart(const Version& version) { return version.major == 2 && version.revision == 0; }
bool isAssumed(const Version& version) { return version.number() == Version().number(); }

EntryPointReading fault(std::string text) { return {std::nullopt, std::move(text)}; }

EntryPoint taken(View bytes, std::size_t length, Version version)
{
    EntryPoint entryPoint;
    entryPoint.bytes.assign(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
    entryPoint.version = version.corrected();
    return entryPoint;
}

EntryPointReading read64(View bytes)
{
    const std::size_t length = bytes.size() > 0x06 ? bytes[0x06] : 0;
    // The standard says 18h; a later revision of the entry point may append fields.
    if (length < kLength64 || length > kDumpTableOffset)
        return fault(message(kWrongLength, "_SM3_"));
    if (length > bytes.size())
        return fault(message(kCutShort, "_SM3_"));
    if (sumOf(bytes.first(length)) != 0)
        return fault(message(kWrongChecksum, "_SM3_"));
    auto entryPoint = taken(bytes, length, {bytes[0x07], bytes[0x08], bytes[0x09], Version::Form::ThreePart});
    const Version::Form marked{bytes[kFormMark]};
    if ((marked == Version::Form::TwoPart && isTwoPart(entryPoint.version)) ||
        (marked == Version::Form::Assumed && isAssumed(entryPoint.version)))
        entryPoint.version.form = marked;
    entryPoint.tableLength = static_cast<std::uint32_t>(littleEndian(bytes, 0x0C, 4));
    entryPoint.tableAddress = littleEndian(bytes, 0x10, 8);
    entryPoint.promisesLength = false;
    return {entryPoint, {}};
}

/// What a legacy entry point at `at` says of the table.
void readTablePlace(EntryPoint& entryPoint, View bytes, std::size_t at)
{
    entryPoint.tableLength = static_cast<std::uint32_t>(littleEndian(bytes, at + 0x06, 2));
    entryPoint.tableAddress = littleEndian(bytes, at + 0x08, 4);
    entryPoint.structures = static_cast<std::uint32_t>(littleEndian(bytes, at + 0x0C, 2));
}

EntryPointReading read32(View bytes)
{
    const std::size_t length = bytes.size() > 0x05 ? bytes[0x05] : 0;
    // Version 2.1 of the standard itself said 1Eh.
    if (length != kLength32 && length != kLength32 - 1)
        return fault(message(kWrongLength, "_SM_"));
    if (bytes.size() < kLength32)
        return fault(message(kCutShort, "_SM_"));
    if (sumOf(bytes.first(length)) != 0)
        return fault(message(kWrongChecksum, "_SM_"));
    const auto intermediate = bytes.subspan(kIntermediate, kLengthLegacy);
    if (!startsWith(intermediate, kAnchorLegacy) || sumOf(intermediate) != 0)
        return fault(message("the intermediate checksum of its %1 entry point is wrong", "_SM_"));
    auto entryPoint = taken(bytes, kLength32, {bytes[0x06], bytes[0x07], 0, Version::Form::TwoPart});
    readTablePlace(entryPoint, bytes, kIntermediate);
    return {entryPoint, {}};
}

EntryPointReading readLegacy(View bytes)
{
    if (bytes.size() < kLengthLegacy)
        return fault(message(kCutShort, "_DMI_"));
    if (sumOf(bytes.first(kLengthLegacy)) != 0)
        return fault(message(kWrongChecksum, "_DMI_"));
    const unsigned char revision = bytes[0x0E]; // binary-coded decimal
    auto entryPoint = taken(bytes, kLengthLegacy,
                            {static_cast<unsigned char>(revision >> 4), static_cast<unsigned char>(revision & 0x0F), 0,
                             Version::Form::TwoPart});
    readTablePlace(entryPoint, bytes, 0);
    return {entryPoint, {}};
}

} // namespace

std::uint64_t littleEndian(View bytes, std::size_t offset, std::size_t width)
{
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;)
        value = value << 8 | bytes[offset + i];
    return value;
}

std::uint32_t Version::number() const
{
    return std::uint32_t{major} << 24 | std::uint32_t{minor} << 16 | std::uint32_t{revision} << 8;
}

std::string Version::text() const
{
    std::string twoPart = std::to_string(major) + "." + std::to_string(minor);
    switch (form) {
    case Form::TwoPart:
        return twoPart;
    case Form::ThreePart:
        return twoPart + "." + std::to_string(revision);
    case Form::Assumed:
        break;
    }
    return twoPart + " (assumed)";
}

Version Version::corrected() const
{
    Version version = *this;
    if (major == 2 && (minor == 31 || minor == 33))
        version.minor = 3;
    if (major == 2 && minor == 51)
        version.minor = 6;
    return version;
}

std::string EntryPointReading::faultOfEntryPoint() const
{
    return fault.empty() ? services::message("it is no entry point") : fault;
}

EntryPointReading readEntryPoint(View bytes)
{
    if (startsWith(bytes, kAnchor64))
        return read64(bytes);
    if (startsWith(bytes, kAnchor32))
        return read32(bytes);
    if (startsWith(bytes, kAnchorLegacy))
        return readLegacy(bytes);
    return {};
}

std::optional<EntryPoint> scanForEntryPoint(View memory, const std::string& name, std::uint64_t address, Faults& faults)
{
    constexpr std::size_t kBoundary = 0x10;
    for (const auto anchor : {kAnchor64, kAnchor32, kAnchorLegacy}) {
        for (std::size_t offset = 0; offset < memory.size(); offset += kBoundary) {
            const View here = memory.subspan(offset);
            if (!startsWith(here, anchor))
                continue;
            auto reading = readEntryPoint(here);
            if (reading.entryPoint)
                return reading.entryPoint;
            faults.add(FaultKind::EntryPoint, message("%1: the entry point at %2 is not used, %3", name,
                                                      hex(address + offset), reading.faultOfEntryPoint()));
        }
    }
    return std::nullopt;
}

Bytes dumpEntryPoint(const EntryPoint& original, std::size_t tableLength)
{
    Bytes bytes = original.bytes;
    bytes.resize(kDumpTableOffset);
    if (startsWith(bytes, kAnchor64)) {
        putLittleEndian(bytes, 0x0C, 4, tableLength);
        putLittleEndian(bytes, 0x10, 8, kDumpTableOffset);
        makeSumZero(bytes, 0, original.bytes.size(), 0x05);
        return bytes;
    }
    const std::size_t legacy = startsWith(bytes, kAnchorLegacy) ? 0 : kIntermediate;
    putLittleEndian(bytes, legacy + 0x06, 2, tableLength);
    putLittleEndian(bytes, legacy + 0x08, 4, kDumpTableOffset);
    makeSumZero(bytes, legacy, kLengthLegacy, legacy + 0x05);
    if (legacy != 0)
        makeSumZero(bytes, 0, bytes[0x05], 0x04);
    return bytes;
}

void clearSpareBytes(EntryPoint& entryPoint)
{
    auto& bytes = entryPoint.bytes;
    const auto clear = [&](std::size_t from, std::size_t to) {
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.begin() + static_cast<std::ptrdiff_t>(to),
                  static_cast<unsigned char>(0));
    };
    if (startsWith(bytes, kAnchor64)) {
        bytes[kFormMark] = static_cast<unsigned char>(entryPoint.version.form);
        clear(kLength64, bytes.size());
    } else if (startsWith(bytes, kAnchor32)) {
        clear(kFormattedArea, kIntermediate);
    }
}

EntryPoint entryPointWithoutCount(const Version& version)
{
    EntryPoint made;
    made.version = version;
    made.promisesLength = false;
    made.bytes.resize(kLength64);
    putAnchor(made.bytes, 0, kAnchor64);
    made.bytes[0x06] = kLength64;
    made.bytes[0x07] = version.major;
    made.bytes[0x08] = version.minor;
    made.bytes[0x09] = version.revision;
    made.bytes[0x0A] = 1; // revision of the entry point
    made.bytes[kFormMark] = static_cast<unsigned char>(version.form);
    return made;
}

Bytes dumpEntryPoint(const Version& version, std::size_t tableLength, std::size_t structures,
                     std::size_t longestStructure)
{
    const bool fits32 = tableLength <= 0xFFFF && structures <= 0xFFFF;
    if (version.form != Version::Form::TwoPart || !fits32)
        return dumpEntryPoint(entryPointWithoutCount(version), tableLength);
    EntryPoint made;
    made.bytes.resize(kLength32);
    putAnchor(made.bytes, 0, kAnchor32);
    made.bytes[0x05] = kLength32;
    made.bytes[0x06] = version.major;
    made.bytes[0x07] = version.minor;
    putLittleEndian(made.bytes, 0x08, 2, std::min<std::size_t>(longestStructure, 0xFFFF));
    putAnchor(made.bytes, kIntermediate, kAnchorLegacy);
    putLittleEndian(made.bytes, 0x1C, 2, structures);
    made.bytes[0x1E] = static_cast<unsigned char>(version.major << 4 | (version.minor & 0x0F));
    return dumpEntryPoint(made, tableLength);
}

} // namespace embedded_host::table
