// Reading sources. What they are is told by their first bytes, never by their names.
#include "sources.h"

#include "child.h"
#include "document/problem.h"
#include "platform/files.h"
#include "platform/surroundings.h"
#include "services/messages.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

namespace zorpinventory::sources
{

namespace
{

using embedded_host::platform::pathFromUtf8;
using embedded_host::platform::utf8FromPath;
using embedded_host::services::message;

constexpr const char* kModuleProgram = "zorpsysinfosmbios2";

/// What the module's program prints instead of a document when it was not understood.
constexpr std::string_view kRefusal = "OrbException: ";

constexpr Limits kLimits{std::chrono::seconds(60), document::kLargestDocument};

std::filesystem::path moduleProgram()
{
    std::vector<std::filesystem::path> folders;
    if (const auto own = embedded_host::platform::ownProgram(); !own.empty())
        folders.push_back(own.parent_path());
    std::ranges::move(embedded_host::platform::programFolders(), std::back_inserter(folders));
    for (const auto& folder : folders) {
        std::error_code ignored;
        auto program = folder / (std::string(kModuleProgram) + embedded_host::platform::kProgramEnding);
        if (std::filesystem::is_regular_file(program, ignored))
            return program;
    }
    throw Problem(message("%1 is neither beside this program nor in PATH; install it there", kModuleProgram));
}

/// A table's path for another program: whole, and without the separator that may end a folder's. Windows takes a
/// backslash before a closing quotation mark for a part of the name.
std::string asArgument(const std::filesystem::path& path)
{
    const auto whole = std::filesystem::absolute(path);
    return utf8FromPath(whole.has_filename() ? whole : whole.parent_path());
}

/// Whatever the user's settings say.
document::Document fromModule(const std::string& table, const std::string& name)
{
    auto output = outputOf(moduleProgram(),
                           {"-l", "en", "-f", "json", "--details", "-s", "verbose=true", "-s",
                            "FilterTrivialStrings=true", "-s", "SaveTable=", "-s", "LoadTable=" + table},
                           kLimits);
    if (output.starts_with(kRefusal))
        throw Problem(message("%1 says: %2", kModuleProgram,
                              document::trimmed(std::string_view(output).substr(kRefusal.size()))));
    auto document = document::read(std::move(output), message("what %1 printed", kModuleProgram));
    if (document.devices().empty())
        throw Problem(table.empty()
                          ? message("this machine's SMBIOS table cannot be read, as said above; name a saved one")
                          : message("no SMBIOS table can be read from %1, as said above", name));
    return document;
}

/// Whether this is how a document begins: no table begins with a brace behind blanks, and none is all blank.
bool looksLikeJson(std::string_view start)
{
    if (start.starts_with("\xEF\xBB\xBF"))
        return true;
    const auto first = start.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? !start.empty() : start[first] == '{' || start[first] == '[';
}

bool isDocument(const std::filesystem::path& path)
{
    std::array<char, 0x1000> start{};
    std::ifstream file(path, std::ios::binary);
    file.read(start.data(), start.size());
    return looksLikeJson({start.data(), static_cast<std::size_t>(file.gcount())});
}

document::Document fromStandardInput()
{
    std::string bytes;
    std::array<char, 0x10000> piece{};
    while (const auto size = std::fread(piece.data(), 1, piece.size(), stdin)) {
        bytes.append(piece.data(), size);
        if (bytes.size() > document::kLargestDocument)
            break;
    }
    return document::read(std::move(bytes), nameOf(kStandardInput));
}

document::Document fromFile(const std::string& source)
{
    const auto path = pathFromUtf8(source);
    try {
        const auto status = std::filesystem::status(path); // throws unless it is merely not there
        if (!exists(status))
            throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
        if (is_directory(status))
            return fromModule(asArgument(path), source);
        if (!is_regular_file(status))
            throw Problem(
                message("cannot read %1: it is neither a file nor a folder; name - for standard input", source));
        if (!isDocument(path))
            return fromModule(asArgument(path), source);
        const auto bytes = embedded_host::platform::readFile(path, document::kLargestDocument);
        return document::read({bytes.begin(), bytes.end()}, source);
    } catch (const std::system_error& error) {
        throw Problem(message("cannot read %1: %2", source, embedded_host::services::reason(error)));
    }
}

} // namespace

std::string nameOf(const std::string& source)
{
    if (source == kThisMachine)
        return message("this machine");
    return source == kStandardInput ? message("standard input") : source;
}

document::Document load(const std::string& source)
{
    if (source == kThisMachine)
        return fromModule({}, {});
    return source == kStandardInput ? fromStandardInput() : fromFile(source);
}

} // namespace zorpinventory::sources
