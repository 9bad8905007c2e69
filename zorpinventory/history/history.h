// The history: what machines were made of, and when. One file, which nothing recorded is ever lost from.
#pragma once

#include "database.h"

#include "document/document.h"
#include "document/parts.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zorpinventory::history
{

/// The user's own history, or the system's for an administrator; empty when the surroundings name no folder for it.
std::filesystem::path usualFile();

/// A part that is known by its serial number, as one document has it.
struct Part
{
    std::string serial;
    unsigned type = 0;
    std::optional<std::string> place;
};

/// What is to be kept of a machine.
struct Snapshot
{
    std::string machine; ///< its key
    std::string taken;   ///< when it was so, in UTC: "2026-11-01T08:30:00Z"
    std::string source;  ///< empty for the machine itself
    document::Parts parts;
    std::vector<Part> serials;
};

/// What is kept of one machine at one time.
struct Record
{
    std::string machine;
    std::int64_t number = 0; ///< N of @N, from 1 in each machine, in the order of recording
    std::string taken;
    std::string source;
    std::int64_t document = 0; ///< equal documents have the same one
};

/// What was recorded, and the machine's record before it in time.
struct Kept
{
    Record record;
    std::optional<Record> before;
};

struct Machine
{
    std::string name;
    std::int64_t records = 0;
    std::string first; ///< when the first record was taken, and the last
    std::string last;
};

/// How long a part was in a place, as far as records tell.
struct Stay
{
    std::string machine;
    unsigned type = 0;
    std::optional<std::string> place;
    std::string from;
    std::string to;
    bool still = false; ///< the machine's last record has it there
};

/// The parts of a document that have a serial number of their own.
std::vector<Part> serialsOf(const document::Document& document);

class History
{
public:
    /// Throws Problem. With Access::Change the file is made where it is missing; the usual one with its folder.
    History(const std::filesystem::path& file, Access access);

    /// Whether there is a history in the file; nothing is opened.
    static bool exists(const std::filesystem::path& file);

    /// Keeps all of them, or none when it throws Problem.
    std::vector<Kept> keep(std::span<const Snapshot> snapshots);

    /// Removes a machine and overwrites what was known of it alone.
    void forget(const std::string& machine);

    std::vector<Machine> machines() const;

    /// The machine of this name, else the one whose name alone has this in it, without case; nothing when there is
    /// none. Throws Problem when there are several.
    std::optional<std::string> machineLike(const std::string& name) const;

    /// The only machine of which there are records of the machine itself; nothing when there is none, or several.
    std::optional<std::string> onlyMachineItself() const;

    /// The machine's records from the earliest on; times are compared as texts, empty ones do not count.
    std::vector<Record> records(const std::string& machine, const std::string& since = {},
                                const std::string& until = {}) const;

    std::optional<Record> record(const std::string& machine, std::int64_t number) const;

    /// The last record that was taken at this time or before; an empty time does not count.
    std::optional<Record> latest(const std::string& machine, const std::string& until = {}) const;

    /// What was kept, as it was.
    std::string text(const Record& record) const;

    /// Where the part was, from the earliest stay on.
    std::vector<Stay> stays(const std::string& serial) const;

    const std::string& name() const { return database_.name(); }

private:
    Database database_;
};

} // namespace zorpinventory::history
