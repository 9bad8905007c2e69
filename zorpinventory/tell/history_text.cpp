// The history for people.
#include "history.h"

#include "diff.h"
#include "services/messages.h"
#include "services/utf8.h"

#include <algorithm>

namespace zorpinventory::tell
{

using embedded_host::services::columnsOf;
using embedded_host::services::message;
using embedded_host::writing::Output;

void recordedAsText(Output& output, const RecordChanges& recorded, const Looks& looks)
{
    const auto& [record, before, changes] = recorded;
    const auto machine = printable(record.machine);
    if (!before) {
        output.write(message("first record of %1: @%2", machine, record.number) + "\n");
        return;
    }
    if (changes.empty()) {
        output.write(message("%1: @%2, nothing changed since @%3 of %4", machine, record.number, before->number,
                             printable(before->taken)) +
                     "\n");
        return;
    }
    output.write(
        message("%1: @%2, changed since @%3 of %4:", machine, record.number, before->number, printable(before->taken)) +
        "\n");
    diffAsText(output, changes, looks, false);
}

void logLineAsText(Output& output, const RecordChanges& record, const Looks& looks)
{
    constexpr std::size_t kNumberColumns = 5;
    constexpr std::size_t kLeastColumns = 20;
    auto line = padded("@" + std::to_string(record.record.number), kNumberColumns) + "  " +
                printable(record.record.taken) + "  ";
    const auto used = columnsOf(line);
    if (!record.before)
        line += message("first record");
    else if (record.changes.empty())
        line += message("no changes");
    else
        line += changesInShort(record.changes, std::max(looks.columns, used + kLeastColumns) - used);
    output.write(line + "\n");
}

void machinesAsText(Output& output, const std::vector<history::Machine>& machines)
{
    std::size_t widest = 0;
    for (const auto& machine : machines)
        widest = std::max(widest, columnsOf(printable(machine.name)));
    for (const auto& machine : machines)
        output.write(padded(printable(machine.name), widest) + "  " + message("records: %1", machine.records) + ", " +
                     printable(machine.first) +
                     (machine.records > 1 ? " … " + printable(machine.last) : std::string()) + "\n");
}

void staysAsText(Output& output, const std::vector<history::Stay>& stays)
{
    for (const auto& stay : stays) {
        std::string line = printable(stay.from);
        line.append(" … ").append(stay.still ? message("%1, still there", printable(stay.to)) : printable(stay.to));
        line.append("  ").append(kindName(knowledge::kindOf(stay.type)));
        if (stay.place)
            line.append(" ").append(printable(*stay.place));
        output.write(line.append(", ").append(printable(stay.machine)).append("\n"));
    }
}

} // namespace zorpinventory::tell
