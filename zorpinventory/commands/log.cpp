// zorpinventory log
#include "commands.h"

#include "compare/changes.h"
#include "document/problem.h"
#include "platform/files.h"
#include "tell/history.h"

#include <map>

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Option;
using embedded_host::services::message;
using embedded_host::services::translatable;
using embedded_host::writing::JsonWriter;
using embedded_host::writing::Output;

constexpr Option kSince{.names = "--since",
                        .value = "TIME",
                        .says = translatable("leave out what is earlier than this day, or this time of a day")};
constexpr Option kUntil{
    .names = "--until", .value = "TIME", .says = translatable("leave out what is later than this day or time")};
constexpr Option kMachines{.names = "--machines", .says = translatable("list the machines of the history")};
constexpr Option kNames{.names = "--names", .says = translatable("with --machines: their names alone, one a line")};
constexpr Option kPart{.names = "--part",
                       .value = "SERIAL",
                       .says = translatable("where the part with this serial number was, and from when to when")};
constexpr Option kOptions[] = {
    commandline::kFormat,  kSince, kUntil, kMachines, kNames, kPart, commandline::kDatabase, commandline::kOutput,
    commandline::kLanguage};

/// Compares records with those before them; what follows each other is read once.
class Reader
{
public:
    explicit Reader(const history::History& history) : history_(history) {}

    tell::RecordChanges changes(const history::Record& record, const std::optional<history::Record>& before)
    {
        tell::RecordChanges told{record, before, {}};
        if (before && before->document != record.document) {
            std::erase_if(held_, [&](const auto& held) {
                return held.first != record.document && held.first != before->document;
            });
            told.changes = compare::changes(document(*before), document(record));
        }
        return told;
    }

private:
    const document::Document& document(const history::Record& record)
    {
        auto held = held_.find(record.document);
        if (held == held_.end())
            held = held_.emplace(record.document, document::read(history_.text(record), history_.name())).first;
        return held->second;
    }

    const history::History& history_;
    std::map<std::int64_t, document::Document> held_;
};

Exit tellMachines(const history::History& history, const Arguments& arguments)
{
    const auto machines = history.machines();
    write(arguments, [&](Output& output) {
        if (arguments.json())
            tell::machinesAsJson(output, machines);
        else if (arguments.has(kNames.key()))
            for (const auto& machine : machines)
                output.write(tell::printable(machine.name) + "\n");
        else
            tell::machinesAsText(output, machines);
    });
    return machines.empty() ? Exit::Otherwise : Exit::Good;
}

Exit tellPart(const history::History& history, const Arguments& arguments, const std::string& serial)
{
    auto stays = history.stays(serial);
    const auto since = time(arguments, kSince, history::Of::DaysBegin);
    const auto until = time(arguments, kUntil, history::Of::DaysEnd);
    std::erase_if(stays, [&](const history::Stay& stay) {
        return (since && stay.to < *since && !stay.still) || (until && stay.from > *until);
    });
    write(arguments, [&](Output& output) {
        if (arguments.json())
            tell::staysAsJson(output, serial, stays);
        else
            tell::staysAsText(output, stays);
    });
    return stays.empty() ? Exit::Otherwise : Exit::Good;
}

Exit tellRecords(const history::History& history, const Arguments& arguments)
{
    const auto machine = arguments.sources.empty() ? sources::thisMachine(history, place(arguments))
                                                   : sources::machineOf(history, arguments.sources.front());
    const auto since = time(arguments, kSince, history::Of::DaysBegin);
    const auto until = time(arguments, kUntil, history::Of::DaysEnd);
    const auto records = history.records(machine, {}, until.value_or(""));
    const auto isTold = [&](const history::Record& record) { return !since || record.taken >= *since; };
    write(arguments, [&](Output& output) {
        JsonWriter json(output);
        if (arguments.json()) {
            json.beginObject();
            json.member("format", "zorp-log-1");
            json.key("records");
            json.beginArray();
        } else if (!records.empty() && isTold(records.back())) {
            output.write(tell::printable(machine) + "\n");
        }
        Reader reader(history);
        for (std::size_t i = records.size(); i-- > 0 && isTold(records[i]);) {
            const auto told = reader.changes(records[i], i > 0 ? std::optional(records[i - 1]) : std::nullopt);
            if (arguments.json())
                tell::recordAsJson(json, told);
            else
                tell::logLineAsText(output, told, looks(arguments));
        }
        if (arguments.json()) {
            json.endArray();
            json.endObject();
            json.endLine();
        }
    });
    return !records.empty() && isTold(records.back()) ? Exit::Good : Exit::Otherwise;
}

Exit run(const Arguments& arguments)
{
    const auto part = arguments.value(kPart.key());
    const bool machines = arguments.has(kMachines.key());
    if ((part || machines) && (!arguments.sources.empty() || (part && machines)))
        throw Problem(message("MACHINE, --machines and --part are three questions; ask one of them"));
    if (arguments.has(kNames.key()) && !machines)
        throw Problem(message("--names goes with --machines"));
    const auto file = place(arguments).file();
    if (!file.empty() && !history::History::exists(file)) {
        note(message("there is no history in %1; record begins one", embedded_host::platform::utf8FromPath(file)));
        return Exit::Otherwise;
    }
    const history::History history(file, history::Access::Ask);
    if (machines)
        return tellMachines(history, arguments);
    return part ? tellPart(history, arguments, *part) : tellRecords(history, arguments);
}

} // namespace

const commandline::Command kLog{.name = "log",
                                .says = translatable("what was recorded, newest first, and what changed each time"),
                                .sources = "[MACHINE]",
                                .leastSources = 0,
                                .mostSources = 1,
                                .options = kOptions,
                                .good = translatable("the records were told"),
                                .otherwise = translatable("there is no such record"),
                                .run = run,
                                .completes = commandline::Completes::Machines};

} // namespace zorpinventory::commands
