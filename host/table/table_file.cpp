// Reading saved tables of every layout, and writing dumps.
#include "table_file.h"

#include "services/messages.h"
#include "table_error.h"

#include <algorithm>

namespace embedded_host::table
{

namespace
{

using services::message;
using services::reason;

/// Method byte, version and revision, then the table's length: what stands before the table in a RawSMBIOSData block.
constexpr std::size_t kBlockHeader = 8;

/// Where a table ends that begins there and has the announced length, or as much of it as is held.
std::size_t endOfTable(View bytes, std::size_t start, std::uint64_t announced)
{
    return start + static_cast<std::size_t>(std::min<std::uint64_t>(announced, bytes.size() - start));
}

/// A block has its major version, 2 or 3, where a structure has its length, which is never below 4.
bool looksLikeBlock(View bytes) { return bytes.size() > kBlockHeader && (bytes[1] == 2 || bytes[1] == 3); }

std::uint64_t announcedBy(View block) { return littleEndian(block, 4, 4); }

View tableIn(View block)
{
    return block.first(endOfTable(block, kBlockHeader, announcedBy(block))).subspan(kBlockHeader);
}

bool isPrintable(unsigned char byte) { return byte >= 0x20 && byte < 0x7F; }

/// Whether this is a type that the standard has given out so far, or a maker's own.
bool isAssigned(unsigned char type) { return type <= 46 || type >= 126; }

/// Whether bytes for which no entry point vouches are a table.
///
/// A whole table is known by its end: structures fill the bytes, and the last is the end marker. A table whose tail is
/// broken is known by its beginning: two structures with a word in their strings, before any whose type or strings no
/// maker would write. For each, NUL bytes have to end printable text right where its length says that the text begins;
/// other files meet that once, by chance, but not twice.
bool looksLikeTable(View bytes)
{
    constexpr std::size_t kHeader = 4;
    constexpr std::size_t kNoStrings = 2;
    constexpr std::ptrdiff_t kWord = 4;
    constexpr unsigned kEnough = 2;
    unsigned withWords = 0;
    bool doubtful = false;
    std::size_t offset = 0;
    while (offset + 1 < bytes.size()) {
        const unsigned char type = bytes[offset];
        const std::size_t length = bytes[offset + 1];
        const auto end = length < kHeader ? std::nullopt : endOfStrings(bytes, offset + length);
        if (!end)
            return false;
        const View strings = bytes.subspan(offset + length, *end - offset - length);
        if (type == kEndOfTable)
            return offset != 0 && length == kHeader && strings.size() == kNoStrings && *end == bytes.size();
        const auto letters = std::ranges::count_if(strings, isPrintable);
        const auto ends = std::ranges::count(strings, 0);
        doubtful = doubtful || !isAssigned(type) || static_cast<std::size_t>(letters + ends) != strings.size();
        if (!doubtful && letters >= kWord && ++withWords == kEnough)
            return true;
        offset = *end;
    }
    return false;
}

std::string cutShort(const std::string& name, std::size_t held, std::uint64_t announced)
{
    return message("%1: holds %2 of the table's %3 bytes; read as far as it goes", name, held, announced);
}

/// Whether the table that the entry point describes begins inside the file. A table without any structure needs no
/// place; saving one makes such a file.
bool hasPlaceFor(const EntryPoint& entryPoint, View file)
{
    return entryPoint.tableLength == 0 || entryPoint.tableAddress < file.size();
}

RawTable readDump(Bytes file, EntryPoint entryPoint, const std::string& name, Faults& faults)
{
    if (!hasPlaceFor(entryPoint, file))
        throw TableError::malformed(
            message("%1: its entry point places the table at offset %2, but the file has only %3 bytes", name,
                    entryPoint.tableAddress, file.size()));
    if (entryPoint.tableLength == 0)
        return joined(std::move(entryPoint), {}, name, faults);
    const auto start = static_cast<std::size_t>(entryPoint.tableAddress);
    return joined(std::move(entryPoint), std::move(file), name, faults, start);
}

/// The entry point in the file of its usual name beside a bare table; none when that file is absent or not believed.
std::optional<EntryPoint> entryPointBeside(const std::filesystem::path& table, Faults& faults)
{
    const auto path = table.parent_path() / kEntryPointFile;
    const auto name = platform::utf8FromPath(path);
    try {
        auto reading = readEntryPoint(platform::readFile(path, kLargestFile));
        if (!reading.entryPoint)
            faults.add(FaultKind::EntryPoint, message("%1: not used, %2", name, reading.faultOfEntryPoint()));
        return reading.entryPoint;
    } catch (const std::system_error& error) {
        if (error.code() != std::errc::no_such_file_or_directory)
            faults.add(FaultKind::EntryPoint, message("%1: not used, %2", name, reason(error)));
        return std::nullopt;
    }
}

/// Why what stands at the path must not be overwritten; empty when it may, or nothing stands there.
std::string refusalToReplace(const std::filesystem::path& path, Replaces replaces)
{
    std::error_code error;
    if (platform::isLink(path))
        return std::filesystem::exists(path, error) ? message("it is a symbolic link")
                                                    : reason(std::system_error(platform::FileFault::DanglingLink));
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return {};
    if (!is_regular_file(status))
        return error ? reason(std::system_error(error)) : message("it is not a regular file");
    try {
        const auto file = platform::readFile(path, kLargestFile);
        if (const auto found = readEntryPoint(file).entryPoint; !found || !hasPlaceFor(*found, file))
            return message("it exists and is not an SMBIOS dump");
        return replaces == Replaces::Dumps ? std::string() : message("it exists");
    } catch (const std::system_error& unreadable) {
        return message("it exists and cannot be read: %1", reason(unreadable));
    }
}

} // namespace

RawTable joined(EntryPoint entryPoint, Bytes bytes, const std::string& name, Faults& faults, std::size_t start)
{
    const auto held = bytes.size() - start;
    if (entryPoint.promisesLength && held < entryPoint.tableLength)
        faults.add(FaultKind::LengthDiffers, cutShort(name, held, entryPoint.tableLength));
    bytes.resize(endOfTable(bytes, start, entryPoint.tableLength));
    const auto version = entryPoint.version;
    return {std::move(bytes), start, version, std::move(entryPoint)};
}

RawTable readWindowsBlock(Bytes block, const std::string& name, Faults& faults)
{
    if (!looksLikeBlock(block))
        throw TableError::malformed(message("%1: is not a RawSMBIOSData block", name));
    const auto announced = announcedBy(block);
    const auto held = block.size() - kBlockHeader;
    if (held < announced)
        faults.add(FaultKind::LengthDiffers, cutShort(name, held, announced));
    const auto form = block[1] >= 3 ? Version::Form::ThreePart : Version::Form::TwoPart;
    const unsigned char revision = form == Version::Form::ThreePart ? block[3] : 0;
    const Version version{block[1], block[2], revision, form};
    block.resize(endOfTable(block, kBlockHeader, announced));
    return {std::move(block), kBlockHeader, version.corrected(), std::nullopt};
}

RawTable readTableFile(const std::filesystem::path& given, Faults& faults)
{
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(given, ignored);
    const auto path = isFolder ? given / kTableFile : given;
    const auto name = platform::utf8FromPath(path);
    try {
        Bytes file = platform::readFile(path, kLargestFile, Image::kZeroTail);
        auto reading = readEntryPoint(file);
        if (!reading.fault.empty())
            throw TableError::malformed(name + ": " + reading.fault);
        if (reading.entryPoint)
            return readDump(std::move(file), std::move(*reading.entryPoint), name, faults);

        // What a folder's entry point describes is a table, whatever it looks like.
        auto beside = isFolder ? entryPointBeside(path, faults) : std::nullopt;
        if (!beside) {
            const bool isBlock = looksLikeBlock(file);
            if (!looksLikeTable(isBlock ? tableIn(file) : View(file)))
                throw TableError::malformed(message("%1: is not an SMBIOS table in any known layout", name));
            if (isBlock)
                return readWindowsBlock(std::move(file), name, faults);
            if (!isFolder)
                beside = entryPointBeside(path, faults);
        }
        if (beside)
            return joined(std::move(*beside), std::move(file), name, faults);
        return {std::move(file), 0, Version(), std::nullopt};
    } catch (const std::system_error& error) {
        throw TableError::unreadable(error, name);
    }
}

void writeDump(const Bytes& dump, const std::filesystem::path& path, Replaces replaces, platform::Readers readers)
{
    const auto name = platform::utf8FromPath(path);
    const auto mayReplace = [&](const std::filesystem::path& there) {
        if (const auto refusal = refusalToReplace(there, replaces); !refusal.empty())
            throw std::runtime_error(message("%1: not overwritten, %2", name, refusal));
    };
    mayReplace(path);
    try {
        platform::AtomicFile file(path, readers);
        file.write(dump);
        file.commit(mayReplace);
    } catch (const std::system_error& error) {
        throw std::runtime_error(message("%1: not written, %2", name, reason(error)));
    }
}

} // namespace embedded_host::table
