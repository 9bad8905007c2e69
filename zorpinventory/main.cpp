// The process's entry: reads the command line, runs one command, tells what could not be done.
#include "commands/commands.h"
#include "document/problem.h"
#include "platform/surroundings.h"
#include "services/localization.h"
#include "services/messages.h"

#include <new>

namespace
{

using namespace zorpinventory;
using embedded_host::services::message;

Exit run(const std::vector<std::string>& arguments)
{
    const auto all = commands::all();
    const auto request = commandline::parsed(all, arguments);
    switch (request.kind) {
    case commandline::Request::Kind::Help:
        commands::write({}, [&](auto& output) { output.write(commandline::help(all, request.command)); });
        return Exit::Good;
    case commandline::Request::Kind::Version:
        commands::write({}, [](auto& output) { output.write("zorpinventory " ZORPINVENTORY_VERSION "\n"); });
        return Exit::Good;
    case commandline::Request::Kind::Run:
        break;
    }
    return request.command->run(request.arguments);
}

int fail(const std::string& sentence)
{
    commands::note(sentence);
    return static_cast<int>(Exit::Problem);
}

} // namespace

int main(int argc, char* argv[])
{
    embedded_host::platform::prepareStreams();
    const auto arguments = embedded_host::platform::utf8Arguments(argc, argv);
    embedded_host::services::speak(
        commandline::wantedLanguage(arguments).value_or(embedded_host::platform::userLanguage()));
    try {
        return static_cast<int>(run(arguments));
    } catch (const commands::ReaderGone&) {
        return static_cast<int>(Exit::Good);
    } catch (const Problem& problem) {
        return fail(problem.what());
    } catch (const std::bad_alloc&) {
        return fail(message("there is not enough memory for this inventory"));
    }
}
