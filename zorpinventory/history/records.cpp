// Keeping documents, giving them back, and forgetting them.
#include "history.h"

#include "compare/side.h"
#include "document/problem.h"
#include "identity/identity.h"
#include "platform/files.h"
#include "platform/own_files.h"
#include "services/messages.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace zorpinventory::history
{

using embedded_host::services::message;

namespace
{

constexpr const char* kFolder = "zorpinventory";
constexpr const char* kFile = "history.db";

std::int64_t hashOf(std::string_view text) { return static_cast<std::int64_t>(XXH3_64bits(text.data(), text.size())); }

/// Of the whole document, made from its devices' hashes.
std::int64_t hashOf(std::string_view before, std::span<const std::int64_t> devices, std::string_view after)
{
    const std::int64_t frame[] = {hashOf(before), hashOf(after)};
    XXH3_state_t state;
    XXH3_64bits_reset(&state);
    XXH3_64bits_update(&state, frame, sizeof frame);
    XXH3_64bits_update(&state, devices.data(), devices.size_bytes());
    return static_cast<std::int64_t>(XXH3_64bits_digest(&state));
}

/// The statements that keep one document after the other.
class Keeper
{
public:
    explicit Keeper(const Database& database) : database_(database) {}

    Kept keep(const Snapshot& snapshot);

private:
    std::int64_t machine(const std::string& name);
    std::int64_t device(std::int64_t hash, const std::string& text);
    std::int64_t document(const Snapshot& snapshot);

    const Database& database_;
    Statement findMachine_{database_, "SELECT id FROM machine WHERE name = ?1"};
    Statement addMachine_{database_, "INSERT INTO machine (name) VALUES (?1)"};
    // Two texts may have one hash.
    Statement findDevice_{database_, "SELECT id FROM device WHERE hash = ?1 AND text = ?2"};
    Statement addDevice_{database_, "INSERT INTO device (hash, text) VALUES (?1, ?2)"};
    Statement findDocument_{database_,
                            "SELECT id FROM document WHERE hash = ?1 AND before = ?2 AND devices = ?3 AND after = ?4"};
    Statement addDocument_{database_, "INSERT INTO document (hash, before, devices, after) VALUES (?1, ?2, ?3, ?4)"};
    Statement addPart_{database_, "INSERT OR IGNORE INTO part (serial, document, type, place) VALUES (?1, ?2, ?3, ?4)"};
    Statement findBefore_{database_,
                          "SELECT number, taken, source, document FROM record WHERE machine = ?1 AND taken <= ?2 "
                          "ORDER BY taken DESC, number DESC LIMIT 1"};
    Statement lastNumber_{database_, "SELECT coalesce(max(number), 0) FROM record WHERE machine = ?1"};
    Statement addRecord_{database_,
                         "INSERT INTO record (machine, number, taken, source, document) VALUES (?1, ?2, ?3, ?4, ?5)"};
    std::vector<std::int64_t> hashes_;
};

std::int64_t Keeper::machine(const std::string& name)
{
    if (findMachine_.with(name).next())
        return findMachine_.integer(0);
    addMachine_.with(name).run();
    return database_.lastRow();
}

std::int64_t Keeper::device(std::int64_t hash, const std::string& text)
{
    if (findDevice_.with(hash, text).next())
        return findDevice_.integer(0);
    addDevice_.with(hash, text).run();
    return database_.lastRow();
}

std::int64_t Keeper::document(const Snapshot& snapshot)
{
    const auto& parts = snapshot.parts;
    std::string devices = "[";
    hashes_.clear();
    for (const auto& text : parts.devices) {
        hashes_.push_back(hashOf(text));
        if (devices.size() > 1)
            devices += ',';
        devices += std::to_string(device(hashes_.back(), text));
    }
    devices += ']';
    const auto hash = hashOf(parts.before, hashes_, parts.after);
    if (findDocument_.with(hash, parts.before, devices, parts.after).next())
        return findDocument_.integer(0);
    addDocument_.with(hash, parts.before, devices, parts.after).run();
    const auto document = database_.lastRow();
    for (const auto& part : snapshot.serials)
        addPart_.with(part.serial, document, std::int64_t{part.type}, part.place).run();
    return document;
}

Kept Keeper::keep(const Snapshot& snapshot)
{
    const auto id = machine(snapshot.machine);
    Kept kept;
    if (findBefore_.with(id, snapshot.taken).next())
        kept.before = Record{snapshot.machine, findBefore_.integer(0), std::string(findBefore_.text(1)),
                             std::string(findBefore_.text(2)), findBefore_.integer(3)};
    lastNumber_.with(id).next();
    kept.record = {snapshot.machine, lastNumber_.integer(0) + 1, snapshot.taken, snapshot.source, document(snapshot)};
    const auto source = snapshot.source.empty() ? std::nullopt : std::optional(snapshot.source);
    addRecord_.with(id, kept.record.number, snapshot.taken, source, kept.record.document).run();
    return kept;
}

} // namespace

std::filesystem::path usualFile()
{
    const auto folder = embedded_host::platform::stateFolder();
    return folder.empty() ? folder : folder / kFolder / kFile;
}

std::vector<Part> serialsOf(const document::Document& document)
{
    const identity::Serials serials(document);
    std::vector<Part> parts;
    for (const auto& device : document.devices())
        if (const auto serial = serials.of(device); !serial.empty())
            parts.push_back(
                {std::string(serial), device.type, compare::placeText(device, knowledge::kindOf(device.type))});
    return parts;
}

namespace
{

/// The file, in a folder that is there when it is the program's own.
const std::filesystem::path& prepared(const std::filesystem::path& file, Access access)
{
    if (file.empty())
        throw Problem(message("neither HOME nor XDG_STATE_HOME says where the history is; name its file with --db"));
    if (access == Access::Change && file == usualFile()) {
        const auto folder = file.parent_path();
        try {
            embedded_host::platform::makeOwnFolder(folder);
        } catch (const std::system_error& error) {
            throw Problem(message("cannot make %1: %2; name another file with --db",
                                  embedded_host::platform::utf8FromPath(folder),
                                  embedded_host::services::reason(error)));
        }
    }
    return file;
}

} // namespace

History::History(const std::filesystem::path& file, Access access) : database_(prepared(file, access), access) {}

bool History::exists(const std::filesystem::path& file)
{
    std::error_code ignored;
    const auto size = std::filesystem::file_size(file, ignored);
    return !ignored && size != 0;
}

std::vector<Kept> History::keep(std::span<const Snapshot> snapshots)
{
    std::vector<Kept> kept;
    Transaction transaction(database_);
    {
        Keeper keeper(database_);
        for (const auto& snapshot : snapshots)
            kept.push_back(keeper.keep(snapshot));
    }
    transaction.commit();
    return kept;
}

std::string History::text(const Record& record) const
{
    const auto refuse = [&] {
        throw Problem(message("%1 is damaged: @%2 of %3 is not what was recorded; put a copy of the file back", name(),
                              record.number, record.machine));
    };
    Statement document(database_, "SELECT before, devices, after, hash FROM document WHERE id = ?1");
    if (!document.with(record.document).next())
        refuse();
    std::string text(document.text(0));
    std::vector<std::int64_t> hashes;
    Statement devices(database_, "SELECT device.text, device.hash FROM json_each(?1) AS place "
                                 "JOIN device ON device.id = place.value ORDER BY place.key");
    devices.with(document.text(1));
    while (devices.next()) {
        if (!hashes.empty())
            text += ',';
        text += devices.text(0);
        hashes.push_back(hashOf(devices.text(0)));
    }
    text += document.text(2);
    if (hashOf(document.text(0), hashes, document.text(2)) != document.integer(3))
        refuse();
    return text;
}

void History::forget(const std::string& machine)
{
    Transaction transaction(database_);
    for (const auto* sql : {"DELETE FROM record WHERE machine = (SELECT id FROM machine WHERE name = ?1)",
                            "DELETE FROM machine WHERE name = ?1"})
        Statement(database_, sql).with(machine).run();
    for (const auto* sql : {"DELETE FROM part WHERE document NOT IN (SELECT document FROM record)",
                            "DELETE FROM document WHERE id NOT IN (SELECT document FROM record)",
                            "DELETE FROM device WHERE id NOT IN (SELECT place.value FROM document, "
                            "json_each(document.devices) AS place)"})
        database_.run(sql);
    transaction.commit();
    // Where rows have moved from page to page, overwriting the rows alone leaves pieces of them behind.
    try {
        database_.run("VACUUM");
    } catch (const Problem& problem) {
        throw Problem(message("%1 is forgotten, but pieces of what was known of it may still be in the file (%2); run "
                              "VACUUM on it with sqlite3",
                              machine, problem.what()));
    }
}

} // namespace zorpinventory::history
