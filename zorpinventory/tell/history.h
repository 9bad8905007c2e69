// The history, as text and as JSON.
#pragma once

#include "compare/changes.h"
#include "history/history.h"
#include "tell/texts.h"
#include "writing/json_writer.h"

namespace zorpinventory::tell
{

/// A record, and what changed since the one before it.
struct RecordChanges
{
    history::Record record;
    std::optional<history::Record> before; ///< nothing for the machine's first
    std::vector<compare::Change> changes;
};

/// What was just recorded.
void recordedAsText(embedded_host::writing::Output& output, const RecordChanges& recorded, const Looks& looks);

/// One line of `log`.
void logLineAsText(embedded_host::writing::Output& output, const RecordChanges& record, const Looks& looks);

/// One element of an array of records.
void recordAsJson(embedded_host::writing::JsonWriter& json, const RecordChanges& record);

void machinesAsText(embedded_host::writing::Output& output, const std::vector<history::Machine>& machines);
void machinesAsJson(embedded_host::writing::Output& output, const std::vector<history::Machine>& machines);

void staysAsText(embedded_host::writing::Output& output, const std::vector<history::Stay>& stays);
void staysAsJson(embedded_host::writing::Output& output, const std::string& serial,
                 const std::vector<history::Stay>& stays);

} // namespace zorpinventory::tell
