// The command line, read with CLI11; its help and its complaints are in the user's language.
#include "command_line.h"

#include "module_name.h"
#include "platform/files.h"
#include "services/messages.h"
#include "texts/type_words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>
#include <stdexcept>

namespace embedded_host::session
{

namespace
{

using services::message;
using services::translatable;

/// The options as they were written.
struct Written
{
    bool all = false;
    bool catalogue = false;
    bool details = false;
    bool tables = false;
    bool version = false;
    std::string format = "text";
    std::string output;
    std::string settingsFile;
    std::string language;
    std::string logLevel = "3";
    std::vector<std::string> settings;
    std::vector<std::string> types;
    std::vector<std::string> named; ///< tables
};

constexpr std::array<std::pair<std::string_view, Format>, 3> kFormats = {
    {{"text", Format::Text}, {"json", Format::Json}, {"ndjson", Format::Ndjson}}};

/// How many letters have to be put in, left out or replaced to make one word the other.
std::size_t distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// "; did you mean X?" for the candidate that is most like the word; nothing when none is like it.
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates)
{
    const auto nearest = std::ranges::min_element(candidates, {}, [&](const auto& c) { return distance(word, c); });
    if (nearest == candidates.end() || 2 * distance(word, *nearest) >= word.size())
        return {};
    return message("; did you mean %1?", *nearest);
}

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const auto& name : option.get_lnames())
        names.push_back("--" + name);
    for (const auto& name : option.get_snames())
        names.push_back("-" + name);
    return names;
}

std::string complaintAbout(const std::string& argument, const CLI::App& app)
{
    std::vector<std::string> known;
    for (const auto* option : app.get_options())
        std::ranges::move(namesOf(*option), std::back_inserter(known));
    const auto name = argument.substr(0, argument.find('='));
    return message("there is no option %1", name) + suggestion(name, known);
}

std::string checkFormat(const std::string& text)
{
    std::vector<std::string> known(kFormats.size());
    std::ranges::transform(kFormats, known.begin(), [](const auto& format) { return std::string(format.first); });
    if (std::ranges::find(known, text) != known.end())
        return {};
    return message("\"%1\" is none of text, json and ndjson", text) + suggestion(text, known);
}

std::string checkLogLevel(const std::string& text)
{
    const bool good = text.size() == 1 && text[0] >= '1' && text[0] <= '5';
    return good ? std::string() : message("\"%1\" is not a number from 1 to 5", text);
}

/// The structure types that a word or a number means; none when it means nothing.
std::vector<std::size_t> typesMeantBy(const std::string& text)
{
    for (const auto& each : texts::kTypeWords)
        if (text == each.word)
            return {each.all().begin(), each.all().end()};
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number >= inventory::StructureTypes().size())
        return {};
    return {number};
}

std::string checkType(const std::string& text)
{
    if (!typesMeantBy(text).empty())
        return {};
    std::vector<std::string> known;
    std::string words;
    for (const auto& each : texts::kTypeWords) {
        words.append(words.empty() ? "" : ", ").append(each.word);
        known.emplace_back(each.word);
    }
    return message("\"%1\" is no structure type; give numbers from 0 to 255 or %2", text, words) +
           suggestion(text, known);
}

/// Name and value of NAME=VALUE; an empty name for any other text.
std::pair<std::string, std::string> splitSetting(const std::string& text)
{
    const auto sign = text.find('=');
    if (sign == std::string::npos)
        return {};
    return {text.substr(0, sign), text.substr(sign + 1)};
}

std::string checkSetting(const std::string& text)
{
    const bool good = !splitSetting(text).first.empty();
    return good ? std::string() : message("\"%1\" is not NAME=VALUE", text);
}

/// All options, in the order and in the groups in which the help shows them. The language counts from the moment at
/// which it is read: everything else is looked at later.
void declareOptions(CLI::App& app, Written& written, const Speak& speak)
{
    app.set_help_flag();
    app.allow_windows_style_options(false); // "/srv/machine.dmi" names a table there too
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.option_defaults()->group(translatable("What is printed"));
    app.add_option("-f,--format", written.format, translatable("text (default), json or ndjson"))
        ->option_text("FORMAT")
        ->check(checkFormat, "");
    app.add_option("-o,--output", written.output, translatable("write there instead of standard output"))
        ->option_text("FILE");
    app.add_flag("-d,--details", written.details, translatable("json, ndjson: numbers, the table and its faults too"));
    app.add_flag("-a,--all", written.all, translatable("text: what is unknown, empty or internal too"));
    app.add_option("-t,--type", written.types, translatable("only these types: 17,4 or memory, slot, cache ..."))
        ->option_text("TYPE")
        ->delimiter(',')
        ->check(checkType, "")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
    app.add_option_function<std::string>(
           "-l,--language",
           [&](const std::string& language) {
               written.language = language;
               speak(language);
           },
           translatable("language of names and texts: en, de or zh_CN"))
        ->option_text("LANG")
        ->trigger_on_parse();
    app.add_flag("--catalogue", written.catalogue,
                 translatable("print the property declarations instead of discovering"));

    app.option_defaults()->group(translatable("Settings, log and help"));
    app.add_option("-s,--set", written.settings, translatable("set LoadTable, SaveTable, verbose ... for this run"))
        ->option_text("NAME=VALUE")
        ->check(checkSetting, "")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
    app.add_option("--settings", written.settingsFile, translatable("read the settings from this file"))
        ->option_text("FILE");
    app.add_flag("--tables", written.tables, translatable("with -d -f json: the tables that standard input names"));
    app.add_option("--log-level", written.logLevel, translatable("lowest priority that is logged, 1 to 5 (default 3)"))
        ->option_text("N")
        ->check(checkLogLevel, "");
    app.set_help_flag("-h,--help", translatable("show this help"))->group("Settings, log and help");
    app.add_flag("-V,--version", written.version, translatable("show the version"));

    app.option_defaults()->group("");
    app.add_option("TABLE", written.named)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

/// "  -f, --format FORMAT     text (default), json or ndjson"
std::string helpLine(const CLI::Option& option)
{
    constexpr std::size_t kDescriptions = 26;
    const auto& shorts = option.get_snames();
    std::string line = shorts.empty() ? "      " : "  -" + shorts.front() + ", ";
    line += "--" + option.get_lnames().front();
    if (const auto& value = option.get_option_text(); !value.empty())
        line += " " + value;
    line.resize(std::max(line.size() + 1, kDescriptions), ' ');
    return line + message(option.get_description().c_str()) + "\n";
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments, const Speak& speak)
{
    CommandLine line;
    // What scripts ask first, of thousands of machines; declaring the options would take longer than all the rest.
    if (arguments.size() == 2 && (arguments[1] == "--version" || arguments[1] == "-V")) {
        line.action = Action::Version;
        return line;
    }

    CLI::App app;
    Written written;
    declareOptions(app, written, speak);

    try {
        app.allow_extras();
        // Without the program's name, the last argument first, as this parser wants them.
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        if (!reversed.empty())
            reversed.pop_back();
        app.parse(std::move(reversed));
        if (const auto unknown = app.remaining(); !unknown.empty())
            throw std::runtime_error(complaintAbout(unknown.front(), app));
    } catch (const CLI::CallForHelp&) {
        line.action = Action::Help;
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string text = error.what(); // begins with the option
        throw std::runtime_error(message("%1 needs a value", text.substr(0, text.find(':'))));
    } catch (const CLI::ParseError& error) {
        throw std::runtime_error(error.what());
    }

    line.format = std::ranges::find(kFormats, written.format, [](const auto& f) { return f.first; })->second;
    if (written.version && line.action != Action::Help)
        line.action = Action::Version;
    else if (written.catalogue && line.action != Action::Help)
        line.action = Action::Catalogue;
    if (line.action == Action::Catalogue && line.format == Format::Ndjson)
        throw std::runtime_error(message("--catalogue is printed as text or json, not as ndjson"));
    if (line.action == Action::Catalogue && (written.details || written.tables))
        throw std::runtime_error(message("--catalogue goes with neither --details nor --tables"));
    if (line.action == Action::Discover && written.details && line.format == Format::Text)
        throw std::runtime_error(message("--details needs -f json or -f ndjson"));
    if (line.action == Action::Discover && written.tables && !(written.details && line.format == Format::Json))
        throw std::runtime_error(message("--tables needs --details and -f json"));
    if (line.action == Action::Discover && written.tables && !written.types.empty())
        throw std::runtime_error(message("--tables prints whole documents; leave out --type"));
    line.details = written.details;
    line.tables = written.tables;
    line.all = written.all;
    line.logLevel = written.logLevel.front() - '0';
    if (app.count("--output") != 0)
        line.output = written.output;
    if (app.count("--language") != 0)
        line.language = written.language;
    if (app.count("--settings") != 0)
        line.settings.file = platform::pathFromUtf8(written.settingsFile);
    std::ranges::transform(written.settings, std::back_inserter(line.settings.given), splitSetting);
    if (written.named.size() > 1)
        throw std::runtime_error(
            message("one table is read at a time, not %1 and %2", written.named[0], written.named[1]));
    for (auto& table : written.named)
        line.settings.given.emplace_back("LoadTable", std::move(table));
    for (const auto& text : written.types)
        for (const auto type : typesMeantBy(text))
            line.types.set(type);
    return line;
}

std::string helpText()
{
    CLI::App app;
    Written written;
    declareOptions(app, written, [](const auto&) {});

    std::string text = message("Usage: %1 [OPTION]... [TABLE]", kModuleName) + "\n" +
                       message("Prints what this machine is made of, or the one whose saved table is TABLE.") + "\n";
    for (const auto& group : app.get_groups()) {
        if (group.empty())
            continue; // the table
        text += "\n" + message("%1:", message(group.c_str())) + "\n";
        for (const auto* option : app.get_options([&](const auto* o) { return o->get_group() == group; }))
            text += helpLine(*option);
    }
    constexpr std::pair<const char*, const char*> kExamples[] = {
        {"-t memory", translatable("the memory, module by module; needs root")},
        {"-f json saved.dmi", translatable("another machine, for programs")},
    };
    text += "\n" + message("Examples:") + "\n";
    for (const auto& [options, meaning] : kExamples) {
        std::string line = std::string("  ") + kModuleName + " " + options;
        line.resize(40, ' ');
        text += line + message(meaning) + "\n";
    }
    return text;
}

} // namespace embedded_host::session
