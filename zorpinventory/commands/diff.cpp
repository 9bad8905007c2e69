// zorpinventory diff
#include "commands.h"

#include "compare/changes.h"
#include "document/problem.h"
#include "identity/identity.h"
#include "sources/sources.h"
#include "tell/diff.h"

#include <chrono>
#include <ctime>

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
constexpr Option kOptions[] = {commandline::kFormat,  kAll, kIgnoreIdentity, kVerbose, commandline::kOutput,
                               commandline::kLanguage};

/// Now, in UTC: "2026-11-01T08:30:00Z".
std::string now()
{
    const auto time = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::string text(sizeof "2026-11-01T08:30:00Z", '\0');
    text.resize(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", std::gmtime(&time)));
    return text;
}

tell::Compared compared(const std::string& source, const document::Document& document)
{
    return {source, identity::keyOf(document).text, source == sources::kThisMachine ? now() : std::string()};
}

Exit run(const Arguments& arguments)
{
    const auto& a = arguments.sources.front();
    const std::string b = arguments.sources.size() > 1 ? arguments.sources.back() : sources::kThisMachine;
    if (a == sources::kStandardInput && b == a)
        throw Problem(message("standard input can be read once only; name a file for A or B"));
    const auto documentA = sources::load(a);
    const auto documentB = sources::load(b);
    const auto changes =
        compare::changes(documentA, documentB, {arguments.has(kAll.key()), arguments.has(kIgnoreIdentity.key())});
    write(arguments, [&](auto& output) {
        if (arguments.json())
            tell::diffAsJson(output, compared(a, documentA), compared(b, documentB), changes);
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
