// zorpinventory summary, and zorpinventory alone.
#include "commands.h"

#include "compare/changes.h"
#include "document/problem.h"
#include "summary/summary.h"
#include "tell/summary.h"

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using embedded_host::services::message;
using embedded_host::services::translatable;

constexpr commandline::Option kOptions[] = {commandline::kFormat, commandline::kMachine, commandline::kDatabase,
                                            commandline::kOutput, commandline::kLanguage};

/// For a shell, whatever is in it.
std::string quoted(const std::string& text)
{
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? "'\\''" : std::string(1, c);
    return word + "'";
}

/// How the machine compares with its last record. A history that cannot be asked is no reason to show no machine.
std::optional<summary::SinceRecord> sinceRecord(const sources::Sighting& sighting, const sources::Place& place)
{
    if (sighting.machine.empty() || sources::isRecord(sighting.source) || !history::History::exists(place.file()))
        return std::nullopt;
    try {
        const history::History history(place.file(), history::Access::Ask);
        const auto latest = history.latest(sighting.machine);
        if (!latest)
            return std::nullopt;
        const auto before = document::read(history.text(*latest), history.name());
        const auto command =
            sighting.source == sources::kThisMachine
                ? "zorpinventory diff @latest"
                : "zorpinventory diff " + quoted(sighting.machine + "@latest") + " " + quoted(sighting.source);
        return summary::SinceRecord{latest->number, latest->taken, compare::changes(before, sighting.document).size(),
                                    command};
    } catch (const Problem& problem) {
        note(problem.what());
        return std::nullopt;
    }
}

Exit run(const Arguments& arguments)
{
    const auto source = arguments.sources.empty() ? sources::kThisMachine : arguments.sources.front();
    const auto sighting = sources::see(source, place(arguments));
    const auto& document = sighting.document;
    if (!document.detailed())
        note(message("%1 was written without --details: sums and speeds are left out", sources::nameOf(source)));
    auto summary = summary::summaryOf(document);
    summary.findings = checks::counts(checks::findings(document, today()));
    if (const auto machine = place(arguments).machine; !machine.empty())
        summary.key = {machine, identity::Key::From::Name};
    summary.sinceRecord = sinceRecord(sighting, place(arguments));
    write(arguments, [&](auto& output) {
        if (arguments.json())
            tell::summaryAsJson(output, summary, source);
        else
            tell::summaryAsText(output, summary, source, looks(arguments));
    });
    return Exit::Good;
}

} // namespace

const commandline::Command kSummary{.name = "summary",
                                    .says = translatable("the machine at a glance, on one screen"),
                                    .sources = "[SOURCE]",
                                    .leastSources = 0,
                                    .mostSources = 1,
                                    .options = kOptions,
                                    .good = translatable("the machine was told"),
                                    .otherwise = "",
                                    .run = run};

} // namespace zorpinventory::commands
