// The command line, read with CLI11.
#include "command_line.h"

#include "module_name.h"
#include "platform/files.h"

#include <CLI/CLI.hpp>

#include <map>
#include <stdexcept>

namespace embedded_host::session
{

namespace
{

const std::map<std::string, Format>& formats()
{
    static const std::map<std::string, Format> known{
        {"text", Format::Text}, {"json", Format::Json}, {"ndjson", Format::Ndjson}};
    return known;
}

std::pair<std::string, std::string> setting(const std::string& argument)
{
    const auto sign = argument.find('=');
    if (sign == std::string::npos || sign == 0)
        throw std::runtime_error("--set takes NAME=VALUE, not \"" + argument + "\"");
    return {argument.substr(0, sign), argument.substr(sign + 1)};
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments)
{
    CommandLine line;
    bool catalogue = false;
    bool version = false;
    std::string format = "text";
    std::string output;
    std::string settingsFile;
    std::string language;
    std::vector<std::string> settings;

    CLI::App app("Reads this machine's SMBIOS table, or a saved one, and prints what the machine is made of.",
                 kModuleName);
    app.set_help_flag("-h,--help", "show this help");
    app.add_flag("-V,--version", version, "show the version");
    app.add_option("-f,--format", format, "what is printed: text (default), json or ndjson")
        ->option_text("FORMAT")
        ->check(CLI::IsMember(formats()));
    app.add_option("-o,--output", output, "write there instead of standard output")->option_text("FILE");
    app.add_option("-s,--set", settings, "a module setting for this run; repeatable, wins over the settings file")
        ->option_text("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_option("--settings", settingsFile, "settings file")->option_text("FILE");
    app.add_option("-l,--language", language, "language of names and texts")->option_text("LANG");
    app.add_flag("-a,--all", line.all, "text: every tier and the internal properties too");
    app.add_flag("--catalogue", catalogue, "print the property declarations instead of discovering");
    app.add_option("--log-level", line.logLevel, "lowest priority that is logged, 1 to 5 (default 3)")
        ->option_text("N")
        ->check(CLI::Range(1, 5));

    try {
        // Without the program's name, the last argument first, as this parser wants them.
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        if (!reversed.empty())
            reversed.pop_back();
        app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        line.action = Action::Help;
        line.help = app.help();
        return line;
    } catch (const CLI::ParseError& error) {
        throw std::runtime_error(error.what());
    }

    line.format = formats().at(format);
    if (version)
        line.action = Action::Version;
    else if (catalogue)
        line.action = Action::Catalogue;
    if (line.action == Action::Catalogue && line.format == Format::Ndjson)
        throw std::runtime_error("--catalogue is printed as text or json, not as ndjson");
    if (app.count("--output") != 0)
        line.output = output;
    if (app.count("--language") != 0)
        line.language = language;
    if (app.count("--settings") != 0)
        line.settings.file = platform::pathFromUtf8(settingsFile);
    for (const auto& argument : settings)
        line.settings.given.push_back(setting(argument));
    return line;
}

} // namespace embedded_host::session
