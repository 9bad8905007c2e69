// Reading sources. What they are is told by their first bytes, never by their names.
#include "sources.h"

#include "child.h"
#include "document/problem.h"
#include "history/times.h"
#include "identity/identity.h"
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

constexpr const char* kLatest = "latest";

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

/// Whatever the user's settings say.
std::vector<std::string> moduleArguments()
{
    return {"-l", "en",        "-f", "json", "--details", "-s", "verbose=true", "-s", "FilterTrivialStrings=true",
            "-s", "SaveTable="};
}

/// What the module's program tells of a table, of this machine's when none is named.
std::string textFromModule(const std::string& table)
{
    auto arguments = moduleArguments();
    arguments.insert(arguments.end(), {"-s", "LoadTable=" + table});
    auto output = outputOf(moduleProgram(), arguments, kLimits);
    if (output.starts_with(kRefusal))
        throw Problem(message("%1 says: %2", kModuleProgram,
                              document::trimmed(std::string_view(output).substr(kRefusal.size()))));
    return output;
}

/// Reads what the module's program printed.
document::Document readFromModule(std::string text, const std::string& source)
{
    auto document = document::read(std::move(text), message("what %1 printed", kModuleProgram));
    if (document.devices().empty())
        throw Problem(source == kThisMachine
                          ? message("this machine's SMBIOS table cannot be read, as said above; name a saved one")
                          : message("no SMBIOS table can be read from %1, as said above", source));
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

std::string textFromStandardInput()
{
    std::string bytes;
    std::array<char, 0x10000> piece{};
    while (const auto size = std::fread(piece.data(), 1, piece.size(), stdin)) {
        bytes.append(piece.data(), size);
        if (bytes.size() > document::kLargestDocument)
            break;
    }
    return bytes;
}

/// What a source's bytes are, and who is to be asked for them.
enum class Kind { Document, Table };

/// Throws std::system_error when the file cannot be looked at, Problem when it is none.
Kind kindOfFile(const std::string& source)
{
    const auto path = pathFromUtf8(source);
    const auto status = std::filesystem::status(path); // throws unless it is merely not there
    if (!exists(status))
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    if (is_directory(status))
        return Kind::Table;
    if (!is_regular_file(status))
        throw Problem(message("cannot read %1: it is neither a file nor a folder; name - for standard input", source));
    return isDocument(path) ? Kind::Document : Kind::Table;
}

/// A table's path for another program: whole, and without the separator that may end a folder's. Windows takes a
/// backslash before a closing quotation mark for a part of the name.
std::string asArgument(const std::string& source)
{
    const auto whole = std::filesystem::absolute(pathFromUtf8(source));
    return utf8FromPath(whole.has_filename() ? whole : whole.parent_path());
}

/// A source that is no record, as text and as document.
struct Seen
{
    std::string text;
    document::Document document;
};

Seen seenInFile(const std::string& source)
{
    try {
        if (kindOfFile(source) == Kind::Table) {
            auto text = textFromModule(asArgument(source));
            auto document = readFromModule(text, source);
            return {std::move(text), std::move(document)};
        }
        const auto bytes = embedded_host::platform::readFile(pathFromUtf8(source), document::kLargestDocument);
        std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        auto document = document::read(text, source);
        return {std::move(text), std::move(document)};
    } catch (const std::system_error& error) {
        throw Problem(message("cannot read %1: %2", source, embedded_host::services::reason(error)));
    }
}

Seen seen(const std::string& source)
{
    if (source != kThisMachine && source != kStandardInput)
        return seenInFile(source);
    auto text = source == kThisMachine ? textFromModule({}) : textFromStandardInput();
    auto document = source == kThisMachine ? readFromModule(text, source) : document::read(text, nameOf(source));
    return {std::move(text), std::move(document)};
}

/// What stands around the last @ of MACHINE@N.
struct RecordName
{
    std::string machine; ///< empty for this machine
    std::string which;   ///< a number, "latest", or a day
};

/// Nothing for what names no record. Whatever is written as a path is one.
std::optional<RecordName> recordNamed(const std::string& source)
{
    const auto at = source.rfind('@');
    if (at == std::string::npos || source.starts_with('/') || source.starts_with("./") || source.starts_with("../"))
        return std::nullopt;
    RecordName name{source.substr(0, at), source.substr(at + 1)};
    const bool isNumber = !name.which.empty() && name.which.size() < 19 &&
                          std::ranges::all_of(name.which, [](char c) { return c >= '0' && c <= '9'; });
    const bool isRecord =
        isNumber || name.which == kLatest || history::timeFrom(name.which, history::Of::DaysEnd).has_value();
    return isRecord ? std::optional(std::move(name)) : std::nullopt;
}

history::History openedHistory(const Place& place)
{
    const auto file = place.file();
    if (!file.empty() && !history::History::exists(file))
        throw Problem(message("there is no history in %1; record begins one", utf8FromPath(file)));
    return {file, history::Access::Ask};
}

Sighting seeRecord(const std::string& source, const RecordName& name, const Place& place)
{
    const auto history = openedHistory(place);
    const auto machine = name.machine.empty() ? thisMachine(history, place) : machineOf(history, name.machine);
    std::optional<history::Record> record;
    if (const auto time = history::timeFrom(name.which, history::Of::DaysEnd))
        record = history.latest(machine, *time);
    else if (name.which == kLatest)
        record = history.latest(machine);
    else
        record = history.record(machine, std::stoll(name.which));
    if (!record)
        throw Problem(message("the history has no @%1 of %2; log tells which there are", name.which, machine));
    auto text = history.text(*record);
    return {source, record->machine, record->taken, document::read(std::move(text), source)};
}

std::string keyIn(const document::Document& document, const Place& place)
{
    return place.machine.empty() ? identity::keyOf(document).text : place.machine;
}

/// All files and table folders in a folder, in the order of their names.
std::vector<std::string> foundIn(const std::filesystem::path& folder)
{
    if (std::filesystem::exists(folder / "DMI"))
        return {utf8FromPath(folder)};
    std::vector<std::filesystem::path> entries;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        entries.push_back(entry.path());
    std::ranges::sort(entries);
    std::vector<std::string> found;
    for (const auto& entry : entries) {
        if (std::filesystem::is_directory(entry) && !std::filesystem::is_symlink(entry))
            std::ranges::move(foundIn(entry), std::back_inserter(found));
        else if (std::filesystem::is_regular_file(entry))
            found.push_back(utf8FromPath(entry));
    }
    return found;
}

/// The folders among the sources replaced by what is in them.
std::vector<std::string> searched(const std::vector<std::string>& sources, const Fail& fail)
{
    std::vector<std::string> all;
    for (const auto& source : sources) {
        const auto path = pathFromUtf8(source);
        try {
            if (source == kThisMachine || source == kStandardInput || !std::filesystem::is_directory(path)) {
                all.push_back(source);
                continue;
            }
            auto found = foundIn(path);
            if (found.empty())
                fail(message("cannot read %1: %2", source, message("there is no file in it")));
            std::ranges::move(found, std::back_inserter(all));
        } catch (const std::system_error& error) {
            fail(message("cannot read %1: %2", source, embedded_host::services::reason(error)));
        }
    }
    return all;
}

/// Tables that follow each other among the sources: read in one run.
class Tables
{
public:
    Tables(const Place& place, const Take& take, const Fail& fail) : place_(place), take_(take), fail_(fail) {}

    void add(std::string source) { sources_.push_back(std::move(source)); }

    void read()
    {
        if (sources_.empty())
            return;
        std::string list;
        for (const auto& source : sources_)
            list += asArgument(source) + "\n";
        auto arguments = moduleArguments();
        arguments.emplace_back("--tables");
        std::size_t next = 0;
        eachLineOf(moduleProgram(), arguments, list, kLimits, [&](std::string line) {
            if (next < sources_.size())
                takeLine(sources_[next++], std::move(line));
        });
        if (next < sources_.size())
            throw Problem(message("%1 told nothing of %2 and what follows", kModuleProgram, sources_[next]));
        sources_.clear();
    }

private:
    void takeLine(const std::string& source, std::string line)
    {
        std::optional<Sighting> sighting;
        try {
            auto document = document::read(line, asArgument(source));
            sighting = {source, keyIn(document, place_), {}, std::move(document)};
        } catch (const Problem& problem) {
            fail_(problem.what());
            return;
        }
        take_(std::move(*sighting), std::move(line));
    }

    const Place& place_;
    const Take& take_;
    const Fail& fail_;
    std::vector<std::string> sources_;
};

} // namespace

std::string nameOf(const std::string& source)
{
    if (source == kThisMachine)
        return message("this machine");
    return source == kStandardInput ? message("standard input") : source;
}

Sighting see(const std::string& source, const Place& place)
{
    if (const auto record = recordNamed(source))
        return seeRecord(source, *record, place);
    auto document = seen(source).document;
    auto machine = keyIn(document, place);
    return {source, std::move(machine), source == kThisMachine ? history::now() : std::string(), std::move(document)};
}

bool isRecord(const std::string& source) { return recordNamed(source).has_value(); }

std::string machineOf(const history::History& history, const std::string& name)
{
    if (auto machine = history.machineLike(name))
        return *machine;
    throw Problem(message("the history has no machine %1; log --machines lists those that it has", name));
}

std::string thisMachine(const history::History& history, const Place& place)
{
    if (!place.machine.empty())
        return machineOf(history, place.machine);
    if (auto machine = history.onlyMachineItself())
        return *machine;
    if (auto machines = history.machines(); machines.size() == 1)
        return machines.front().name;
    return machineOf(history, see(kThisMachine, place).machine);
}

void seeAll(const std::vector<std::string>& sources, const Place& place, const std::function<void(std::size_t)>& found,
            const Take& take, const Fail& fail)
{
    const auto all = searched(sources, fail);
    found(all.size());
    Tables tables(place, take, fail);
    const auto isTable = [&](const std::string& source) {
        const bool isFile = source != kThisMachine && source != kStandardInput;
        return isFile && source.find('\n') == std::string::npos && kindOfFile(source) == Kind::Table;
    };
    for (const auto& source : all) {
        std::optional<Seen> one;
        try {
            if (all.size() > 1 && isTable(source)) {
                tables.add(source);
                continue;
            }
            one = seen(source);
        } catch (const std::system_error& error) {
            fail(message("cannot read %1: %2", source, embedded_host::services::reason(error)));
            continue;
        } catch (const Problem& problem) {
            fail(problem.what());
            continue;
        }
        tables.read();
        auto machine = keyIn(one->document, place);
        take({source, std::move(machine), source == kThisMachine ? history::now() : std::string(),
              std::move(one->document)},
             std::move(one->text));
    }
    tables.read();
}

} // namespace zorpinventory::sources
