// Reading the command line: CLI11, set up from the declarations.
#include "command.h"

#include "document/problem.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace zorpinventory::commandline
{

namespace
{

using embedded_host::services::message;

/// "-f,--format", as the parser wants it.
std::string withoutBlanks(std::string_view names)
{
    std::string text(names);
    std::erase(text, ' ');
    return text;
}

std::vector<std::string> words(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string joinedByCommas(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const auto& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

void declare(CLI::App& app, const Option& option)
{
    if (option.isFlag()) {
        app.add_flag(withoutBlanks(option.names));
        return;
    }
    auto* declared =
        app.add_option(withoutBlanks(option.names))->expected(option.mayLackValue ? 0 : 1, 1)->allow_extra_args(false);
    declared->multi_option_policy(option.repeatable ? CLI::MultiOptionPolicy::TakeAll
                                                    : CLI::MultiOptionPolicy::TakeLast);
    if (option.completes != Completes::Choices)
        return;
    const auto check = [choices = words(option.choices)](const std::string& text) {
        const bool known = std::ranges::find(choices, text) != choices.end();
        return known ? std::string() : message("\"%1\" is none of %2", text, joinedByCommas(choices));
    };
    declared->check(check, "");
}

/// What CLI11 says of an option without its value begins with the option.
std::string nameIn(const std::string& complaint) { return complaint.substr(0, complaint.find(':')); }

Problem wrong(const std::string& what) { return Problem(message("%1 (--help lists what there is)", what)); }

} // namespace

std::optional<std::string> Arguments::value(std::string_view key) const
{
    const auto found = given.find(key);
    return found != given.end() && !found->second.empty() ? std::optional(found->second.back()) : std::nullopt;
}

std::optional<std::string> wantedLanguage(const std::vector<std::string>& arguments)
{
    CLI::App app;
    declare(app, Option{.names = kLanguage.names, .value = kLanguage.value});
    app.allow_windows_style_options(false);
    app.allow_extras();
    app.set_help_flag();
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend() - (arguments.empty() ? 0 : 1)));
    } catch (const CLI::ParseError&) {
        return std::nullopt;
    }
    const auto* option = app.get_option("--language");
    return option->count() != 0 ? std::optional(option->as<std::string>()) : std::nullopt;
}

Request parsed(std::span<const Command> commands, const std::vector<std::string>& arguments)
{
    std::vector<std::string> rest(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
    const Command* command = &commands.front();
    bool named = false;
    if (!rest.empty()) {
        const auto found = std::ranges::find(commands, rest.front(), &Command::name);
        if (found != commands.end()) {
            command = &*found;
            named = true;
            rest.erase(rest.begin());
        }
    }

    CLI::App app;
    app.set_help_flag();
    app.allow_windows_style_options(false); // "/srv/machine.dmi" is a source there too
    for (const auto& option : command->options)
        declare(app, option);
    declare(app, kHelp);
    declare(app, kVersion);
    std::vector<std::string> sources;
    app.add_option("sources", sources);
    app.allow_extras();
    try {
        // The last argument first, as this parser wants them.
        std::ranges::reverse(rest);
        app.parse(std::move(rest));
    } catch (const CLI::ArgumentMismatch& error) {
        throw wrong(message("%1 needs a value", nameIn(error.what())));
    } catch (const CLI::ParseError& error) {
        throw wrong(error.what());
    }
    if (app.count("--help") != 0)
        return {Request::Kind::Help, named ? command : nullptr, {}};
    if (app.count("--version") != 0)
        return {Request::Kind::Version, nullptr, {}};
    for (const auto& unknown : app.remaining())
        if (unknown != "--")
            throw wrong(message("there is no option %1", unknown));
    if (sources.size() < command->leastSources)
        throw wrong(message("%1 needs one more source: %2", command->name, command->sources));
    if (sources.size() > command->mostSources)
        throw wrong(message("%1 is one source too many for %2", sources[command->mostSources], command->name));

    Request request{Request::Kind::Run, command, {}};
    request.arguments.sources = std::move(sources);
    for (const auto& option : command->options) {
        const auto name = "--" + std::string(option.key());
        if (app.count(name) != 0)
            request.arguments.given[std::string(option.key())] =
                option.isFlag() ? std::vector<std::string>() : app.get_option(name)->results();
    }
    return request;
}

} // namespace zorpinventory::commandline
