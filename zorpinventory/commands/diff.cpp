// zorpinventory diff
#include "commands.h"

#include "compare/changes.h"
#include "document/problem.h"
#include "tell/diff.h"

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Option;
using embedded_host::services::message;
using embedded_host::services::translatable;

constexpr Option kAll{.names = "--all",
                      .says = translatable("compare every property, links and handles as they are written")};
constexpr Option kIgnoreIdentity{.names = "--ignore-identity",
                                 .says = translatable("for two machines of one model: serial numbers, asset tags and "
                                                      "the UUID do not count")};
constexpr Option kVerbose{.names = "-v, --verbose",
                          .says = translatable("text: list what would be gathered in one line")};
constexpr Option kOptions[] = {commandline::kFormat,  kAll,
                               kIgnoreIdentity,       kVerbose,
                               commandline::kMachine, commandline::kDatabase,
                               commandline::kOutput,  commandline::kLanguage};

tell::Compared compared(const sources::Sighting& sighting)
{
    return {sighting.source, sighting.machine, sighting.taken};
}

Exit run(const Arguments& arguments)
{
    const auto& a = arguments.sources.front();
    const std::string b = arguments.sources.size() > 1 ? arguments.sources.back() : sources::kThisMachine;
    if (a == sources::kStandardInput && b == a)
        throw Problem(message("standard input can be read once only; name a file for A or B"));
    auto where = place(arguments);
    const auto seenB = sources::see(b, where);
    // Where this machine was just asked, it need not be found out which one it is.
    if (b == sources::kThisMachine && where.machine.empty())
        where.machine = seenB.machine;
    const auto seenA = sources::see(a, where);
    const auto changes = compare::changes(seenA.document, seenB.document,
                                          {arguments.has(kAll.key()), arguments.has(kIgnoreIdentity.key())});
    write(arguments, [&](auto& output) {
        if (arguments.json())
            tell::diffAsJson(output, compared(seenA), compared(seenB), changes);
        else
            tell::diffAsText(output, changes, looks(arguments), arguments.has(kVerbose.key()));
    });
    return changes.empty() ? Exit::Good : Exit::Otherwise;
}

} // namespace

const commandline::Command kDiff{.name = "diff",
                                 .says = translatable("what changed from A to B, or from A to now"),
                                 .sources = "A [B]",
                                 .leastSources = 1,
                                 .mostSources = 2,
                                 .options = kOptions,
                                 .good = translatable("nothing differs"),
                                 .otherwise = translatable("something differs"),
                                 .run = run};

} // namespace zorpinventory::commands
