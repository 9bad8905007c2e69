// zorpinventory check
#include "commands.h"

#include "checks/checks.h"
#include "document/problem.h"
#include "sources/sources.h"
#include "tell/check.h"

#include <charconv>

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Completes;
using commandline::Option;
using embedded_host::services::message;
using embedded_host::services::translatable;

/// The names of all rules, with blanks between them.
const std::string& ruleNames()
{
    static const std::string names = [] {
        std::string joined;
        for (const auto* rule : checks::rules())
            joined.append(joined.empty() ? "" : " ").append(rule->name);
        return joined;
    }();
    return names;
}

constexpr Option kLevel{.names = "--level",
                        .value = "LEVEL",
                        .says = translatable("the exit code is 1 from this level on"),
                        .completes = Completes::Choices,
                        .choices = "warning error note"};
constexpr Option kAt{
    .names = "--at", .value = "DATE", .says = translatable("stands for today when dates are checked: 2026-11-01")};
constexpr Option kRules{.names = "--rules", .says = translatable("list the rules instead, with what they mean")};

std::span<const Option> options()
{
    static const Option kIgnore{.names = "--ignore",
                                .value = "RULE",
                                .says = translatable("leave out what this rule finds; may be given several times"),
                                .completes = Completes::Names,
                                .choices = ruleNames(),
                                .repeatable = true};
    static const Option kOptions[] = {
        kLevel, kIgnore, kRules, kAt, commandline::kFormat, commandline::kOutput, commandline::kLanguage};
    return kOptions;
}

std::vector<std::string> ignored(const Arguments& arguments)
{
    const auto given = arguments.given.find("ignore");
    if (given == arguments.given.end())
        return {};
    for (const auto& name : given->second)
        if (std::ranges::find(checks::rules(), name, &checks::Rule::name) == checks::rules().end())
            throw Problem(message("there is no rule %1 (--rules lists them)", name));
    return given->second;
}

/// The day of "2026-11-01".
std::chrono::year_month_day dayOf(const std::string& text)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    const auto take = [&](auto& number, std::size_t digits, bool isLast) {
        const auto before = static_cast<std::size_t>(end - at);
        if (before < digits || *at == '-')
            return false;
        const auto [read, error] = std::from_chars(at, at + digits, number);
        if (error != std::errc() || read != at + digits)
            return false;
        at = read;
        return isLast ? at == end : at != end && *at++ == '-';
    };
    const bool isRead = take(year, 4, false) && take(month, 2, false) && take(day, 2, true);
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (!isRead || !date.ok())
        throw Problem(message("%1 is no date; write it as 2026-11-01", text));
    return date;
}

/// A warning unless another is asked for.
checks::Level levelOf(const std::optional<std::string>& name)
{
    for (const auto level : checks::kLevels)
        if (name == tell::nameOf(level))
            return level;
    return checks::Level::Warning;
}

Exit run(const Arguments& arguments)
{
    const auto today = arguments.value(kAt.key());
    const auto ignoredRules = ignored(arguments);
    const auto day = today ? dayOf(*today) : commands::today();
    if (arguments.has(kRules.key())) {
        write(arguments, [&](auto& output) {
            if (arguments.json())
                tell::rulesAsJson(output, checks::rules());
            else
                tell::rulesAsText(output, checks::rules(), looks(arguments));
        });
        return Exit::Good;
    }
    const auto source = arguments.sources.empty() ? sources::kThisMachine : arguments.sources.front();
    const auto document = sources::load(source);
    if (!document.detailed())
        note(message("%1 was written without --details: only what needs no numbers is checked",
                     sources::nameOf(source)));
    const auto findings = checks::findings(document, day, ignoredRules);
    write(arguments, [&](auto& output) {
        if (arguments.json())
            tell::findingsAsJson(output, findings, source);
        else
            tell::findingsAsText(output, findings, looks(arguments));
    });
    const auto level = levelOf(arguments.value(kLevel.key()));
    return std::ranges::any_of(findings, [&](const auto& finding) { return finding.level <= level; }) ? Exit::Otherwise
                                                                                                      : Exit::Good;
}

} // namespace

const commandline::Command kCheck{.name = "check",
                                  .says = translatable("what the firmware's table gets wrong"),
                                  .sources = "[SOURCE]",
                                  .leastSources = 0,
                                  .mostSources = 1,
                                  .options = options(),
                                  .good = translatable("nothing at or above the level was found"),
                                  .otherwise = translatable("something was found"),
                                  .run = run};

} // namespace zorpinventory::commands
