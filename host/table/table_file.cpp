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

Bytes copied(View bytes) { return {bytes.begin(), bytes.end()}; }

/// As much of the announced length as there is.
View cut(View table, std::uint64_t announced)
{
    return table.first(static_cast<std::size_t>(std::min<std::uint64_t>(announced, table.size())));
}

/// A block has its major version, 2 or 3, where a structure has its length, which is never below 4.
bool looksLikeBlock(View bytes) { return bytes.size() > kBlockHeader && (bytes[1] == 2 || bytes[1] == 3); }

/// Whether a whole structure stands at the start: formatted area and string set lie in the file. Few files that are no
/// table begin like that; an end marker in front, as every ELF program has it, is no table either.
bool looksLikeTable(View bytes)
{
    return bytes.size() >= 6 && bytes[0] != 127 && bytes[1] >= 4 && endOfStrings(bytes, bytes[1]).has_value();
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

RawTable readDump(View file, EntryPoint entryPoint, const std::string& name, const Remarks& remarks)
{
    if (!hasPlaceFor(entryPoint, file))
        throw TableError::malformed(
            message("%1: its entry point places the table at offset %2, but the file has only %3 bytes", name,
                    entryPoint.tableAddress, file.size()));
    if (entryPoint.tableLength == 0)
        return joined(std::move(entryPoint), {});
    const View rest = file.subspan(static_cast<std::size_t>(entryPoint.tableAddress));
    // The length of a 64-bit entry point is an upper bound; only the others promise it.
    if (entryPoint.structures != 0 && rest.size() < entryPoint.tableLength)
        remarks(cutShort(name, rest.size(), entryPoint.tableLength));
    return joined(std::move(entryPoint), copied(rest));
}

/// The entry point in the file of its usual name beside a bare table; none when that file is absent or not believed.
std::optional<EntryPoint> entryPointBeside(const std::filesystem::path& table, const Remarks& remarks)
{
    const auto path = table.parent_path() / kEntryPointFile;
    const auto name = platform::utf8FromPath(path);
    try {
        auto reading = readEntryPoint(platform::readFile(path, kLargestFile));
        if (!reading.entryPoint)
            remarks(message("%1: not used, %2", name, reading.faultOfEntryPoint()));
        return reading.entryPoint;
    } catch (const std::system_error& error) {
        if (error.code() != std::errc::no_such_file_or_directory)
            remarks(message("%1: not used, %2", name, reason(error)));
        return std::nullopt;
    }
}

/// Why a file must not be overwritten; empty when it may.
std::string refusalToReplace(const std::filesystem::path& path)
{
    std::error_code error;
    if (platform::isLink(path))
        return message("it is a symbolic link");
    const auto status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return {};
    if (!is_regular_file(status))
        return error ? reason(std::system_error(error)) : message("it is not a regular file");
    try {
        const auto file = platform::readFile(path, kLargestFile);
        if (const auto found = readEntryPoint(file).entryPoint; found && hasPlaceFor(*found, file))
            return {};
        return message("it exists and is not an SMBIOS dump");
    } catch (const std::system_error& unreadable) {
        return message("it exists and cannot be read: %1", reason(unreadable));
    }
}

} // namespace

RawTable joined(EntryPoint entryPoint, Bytes table)
{
    RawTable raw;
    raw.bytes = std::move(table);
    raw.bytes.resize(std::min<std::size_t>(raw.bytes.size(), entryPoint.tableLength));
    raw.version = entryPoint.version;
    raw.entryPoint = std::move(entryPoint);
    return raw;
}

RawTable readWindowsBlock(View block, const std::string& name, const Remarks& remarks)
{
    if (!looksLikeBlock(block))
        throw TableError::malformed(message("%1: is not a RawSMBIOSData block", name));
    const auto announced = littleEndian(block, 4, 4);
    const View table = block.subspan(kBlockHeader);
    if (table.size() < announced)
        remarks(cutShort(name, table.size(), announced));
    const auto form = block[1] >= 3 ? Version::Form::ThreePart : Version::Form::TwoPart;
    const unsigned char revision = form == Version::Form::ThreePart ? block[3] : 0;
    const Version version{block[1], block[2], revision, form};
    return {copied(cut(table, announced)), version.corrected(), std::nullopt};
}

RawTable readTableFile(const std::filesystem::path& given, const Remarks& remarks)
{
    std::error_code ignored;
    const bool isFolder = std::filesystem::is_directory(given, ignored);
    const auto path = isFolder ? given / kTableFile : given;
    const auto name = platform::utf8FromPath(path);
    try {
        Bytes file = platform::readFile(path, kLargestFile);
        auto reading = readEntryPoint(file);
        if (!reading.fault.empty())
            throw TableError::malformed(name + ": " + reading.fault);
        if (reading.entryPoint)
            return readDump(file, std::move(*reading.entryPoint), name, remarks);

        // What a folder's entry point describes is a table, whatever it looks like.
        auto beside = isFolder ? entryPointBeside(path, remarks) : std::nullopt;
        if (!beside) {
            if (looksLikeBlock(file))
                return readWindowsBlock(file, name, remarks);
            if (!looksLikeTable(file))
                throw TableError::malformed(message("%1: is not an SMBIOS table in any known layout", name));
            if (!isFolder)
                beside = entryPointBeside(path, remarks);
        }
        if (beside)
            return joined(std::move(*beside), std::move(file));
        return {std::move(file), Version(), std::nullopt};
    } catch (const std::system_error& error) {
        throw TableError::unreadable(error, name);
    }
}

void writeDump(const Image& image, const std::filesystem::path& path)
{
    const auto name = platform::utf8FromPath(path);
    if (const auto refusal = refusalToReplace(path); !refusal.empty())
        throw std::runtime_error(message("%1: not overwritten, %2", name, refusal));
    try {
        platform::AtomicFile file(path, platform::Readers::Owner);
        file.write(image.dump());
        file.commit();
    } catch (const std::system_error& error) {
        throw std::runtime_error(message("%1: not written, %2", name, reason(error)));
    }
}

} // namespace embedded_host::table
