// zorpinventory summary, and zorpinventory alone.
#include "commands.h"

#include "sources/sources.h"
#include "summary/summary.h"
#include "tell/summary.h"

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using embedded_host::services::message;
using embedded_host::services::translatable;

constexpr commandline::Option kOptions[] = {commandline::kFormat, commandline::kOutput, commandline::kLanguage};

Exit run(const Arguments& arguments)
{
    const auto source = arguments.sources.empty() ? sources::kThisMachine : arguments.sources.front();
    const auto document = sources::load(source);
    if (!document.detailed())
        note(message("%1 was written without --details: sums and speeds are left out", sources::nameOf(source)));
    auto summary = summary::summaryOf(document);
    summary.findings = checks::counts(checks::findings(document, today()));
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
