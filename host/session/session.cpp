// The life of the module under this host: the command line is read, one discovery is run, its devices are printed.
#include "embedded_host/session.h"

#include "command_line.h"
#include "inventory/json_inventory.h"
#include "inventory/structure_types.h"
#include "inventory/text_inventory.h"
#include "lack_of_memory.h"
#include "many_tables.h"
#include "platform/surroundings.h"
#include "services/localization.h"
#include "services/logging.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "table/library.h"
#include "writing/output.h"

#include <cstdio>
#include <iostream>
#include <new>

namespace embedded_host
{

namespace
{

session::CommandLine& commandLine()
{
    static session::CommandLine current;
    return current;
}

/// Sentences quote file names and arguments, which terminals shall not obey either.
[[noreturn]] void fail(const std::string& sentence)
{
    throw orb5::OrbException(lum::String(services::printable(sentence)));
}

/// What the table has that no device was made of, of the types that are wanted.
inventory::WithoutDevice withoutDevice(const inventory::StructureTypes& wanted)
{
    constexpr unsigned char kEnd = 127; // every table has one
    inventory::WithoutDevice others;
    for (const auto& structure : table::structuresWithoutDevice()) {
        if (structure.type == kEnd || (wanted.any() && !wanted.test(structure.type)))
            continue;
        ++others.structures;
        others.types.set(structure.type);
    }
    return others;
}

void printInventory(const session::CommandLine& line, writing::Output& output)
{
    if (line.tables) {
        session::printTables(std::cin, line.settings, output);
        if (std::ferror(stdin) != 0)
            fail(services::message("cannot read standard input to its end"));
        return;
    }
    if (line.format == session::Format::Text) {
        inventory::Looks looks{.ascii = !platform::showsUtf8()};
        if (const auto terminal = line.output ? std::nullopt : platform::terminal()) {
            looks.columns = terminal->columns;
            looks.colours = terminal->colours;
        }
        using inventory::Detail;
        inventory::TextInventory text(output, line.all ? Detail::All : Detail::Usual, looks, line.types);
        discover(line.settings, text);
        text.end(withoutDevice(line.types));
    } else {
        using Layout = inventory::JsonInventory::Layout;
        inventory::JsonInventory json(output, line.format == session::Format::Json ? Layout::Document : Layout::Lines,
                                      {line.details, std::nullopt});
        inventory::TypeFilter wanted(json, line.types);
        discover(line.settings, wanted);
        json.end();
    }
}

void print(const session::CommandLine& line, writing::Output& output)
{
    const auto& module = moduleInfo();
    switch (line.action) {
    case session::Action::Help:
        output.write(session::helpText());
        break;
    case session::Action::Version:
        output.write(module.name + " " + std::to_string(module.major) + "." + std::to_string(module.minor) +
                     " (build " + module.build + ")\n");
        break;
    case session::Action::Catalogue:
        if (line.format == session::Format::Json)
            inventory::writeCatalogueAsJson(output);
        else
            inventory::writeCatalogueAsText(output);
        break;
    case session::Action::Discover:
        printInventory(line, output);
        break;
    }
}

} // namespace

} // namespace embedded_host

namespace orb5
{

using namespace embedded_host;

void SysInfoModule::setCmdLineArgs(int argc, const char* const* argv)
{
    platform::prepareStreams();
    try {
        services::speak(platform::userLanguage()); // for what may be said of the command line
        auto line = session::readCommandLine(platform::utf8Arguments(argc, argv), services::speak);
        lum::LogFactory::setPriority(line.logLevel);
        const auto language = line.language.value_or(platform::userLanguage());
        if (!services::speak(language))
            services::log(services::kInformation, "language",
                          services::message("there are no texts in %1; English is used", language));
        commandLine() = std::move(line);
    } catch (const std::runtime_error& error) {
        fail(services::message("%1 (--help lists the options)", error.what()));
    }
}

int SysInfoModule::start()
{
    const auto& line = commandLine();
    try {
        const auto output =
            line.output ? writing::fileOutput(platform::pathFromUtf8(*line.output)) : writing::standardOutput();
        print(line, *output);
        output->finish();
    } catch (const orb5::OrbException& exception) {
        fail(std::string(exception.toString().lumString().bytes())); // as it may be shown
    } catch (const std::system_error& error) {
        if (!line.output && error.code() == std::errc::broken_pipe)
            return 0; // whoever read has seen enough
        const auto name = line.output.value_or(services::message("standard output"));
        const auto sentence = services::message("cannot write %1: %2", name, services::reason(error));
        // What the caller prints of the exception is lost with the rest of a broken standard output.
        if (!line.output)
            services::log(services::kFatal, "output", sentence);
        fail(sentence);
    } catch (const std::bad_alloc&) {
        if (!line.output)
            session::logLackOfMemory();
        fail(std::string(session::lackOfMemory()));
    }
    return 0;
}

} // namespace orb5
