// zorpinventory forget
#include "commands.h"

#include "document/problem.h"
#include "platform/files.h"
#include "platform/surroundings.h"

#include <cstdio>

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Option;
using embedded_host::platform::Stream;
using embedded_host::services::message;
using embedded_host::services::translatable;

constexpr Option kYes{.names = "-y, --yes", .says = translatable("do not ask")};
constexpr Option kOptions[] = {kYes, commandline::kDatabase, commandline::kLanguage};

/// Asks on the terminal; whatever does not begin with a y says no.
bool agrees(const std::string& question)
{
    note(question + " [y/N]");
    char answer[64]{};
    return std::fgets(answer, sizeof answer, stdin) != nullptr && (*answer == 'y' || *answer == 'Y');
}

Exit run(const Arguments& arguments)
{
    const auto& name = arguments.sources.front();
    const auto file = place(arguments).file();
    if (!file.empty() && !history::History::exists(file))
        throw Problem(
            message("there is no history in %1; record begins one", embedded_host::platform::utf8FromPath(file)));
    history::History history(file, history::Access::Change);
    const auto machine = sources::machineOf(history, name);
    const auto records = history.records(machine).size();
    if (!arguments.has(kYes.key())) {
        using embedded_host::platform::isTerminal;
        if (!isTerminal(Stream::Input) || !isTerminal(Stream::Errors))
            throw Problem(message("nobody is there to be asked whether %1 is to be forgotten; say --yes", machine));
        if (!agrees(message("Forget %1 and its records (%2) for good?", machine, records)))
            return Exit::Otherwise;
    } else if (machine != name) {
        throw Problem(message("the history has no machine %1, but %2; with --yes say the whole name", name, machine));
    }
    history.forget(machine);
    return Exit::Good;
}

} // namespace

const commandline::Command kForget{.name = "forget",
                                   .says = translatable("remove a machine from the history, and overwrite it there"),
                                   .sources = "MACHINE",
                                   .leastSources = 1,
                                   .mostSources = 1,
                                   .options = kOptions,
                                   .good = translatable("the machine was forgotten"),
                                   .otherwise = translatable("you said no, and nothing was changed"),
                                   .run = run,
                                   .completes = commandline::Completes::Machines};

} // namespace zorpinventory::commands
