// What all commands share.
#include "commands.h"

#include "document/problem.h"
#include "platform/files.h"
#include "platform/surroundings.h"
#include "services/utf8.h"

#include <cstdio>

namespace zorpinventory::commands
{

using embedded_host::services::message;

std::span<const commandline::Command> all()
{
    static const commandline::Command kAll[] = {kSummary, kShow, kDiff, kRecord, kLog, kForget, kCheck, kAnonymize};
    return kAll;
}

void write(const commandline::Arguments& arguments, const std::function<void(embedded_host::writing::Output&)>& say)
{
    using namespace embedded_host;
    const auto file = arguments.value(commandline::kOutput.key());
    try {
        const auto output = file ? writing::fileOutput(platform::pathFromUtf8(*file)) : writing::standardOutput();
        say(*output);
        output->finish();
    } catch (const std::system_error& error) {
        if (!file && error.code() == std::errc::broken_pipe)
            throw ReaderGone();
        throw Problem(
            message("cannot write %1: %2", file.value_or(message("standard output")), services::reason(error)));
    }
}

void note(const std::string& sentence)
{
    std::string line = "zorpinventory: ";
    embedded_host::services::appendPrintable(line, sentence);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

std::chrono::year_month_day today() { return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()); }

sources::Place place(const commandline::Arguments& arguments)
{
    return {embedded_host::platform::pathFromUtf8(arguments.value(commandline::kDatabase.key()).value_or("")),
            arguments.value(commandline::kMachine.key()).value_or("")};
}

std::optional<std::string> time(const commandline::Arguments& arguments, const commandline::Option& option,
                                history::Of day)
{
    const auto text = arguments.value(option.key());
    if (!text)
        return std::nullopt;
    if (auto time = history::timeFrom(*text, day))
        return time;
    throw Problem(message("\"%1\" is no time; write a day as 2026-11-01, or a time as 2026-11-01T08:30:00Z", *text));
}

tell::Looks looks(const commandline::Arguments& arguments)
{
    const auto terminal =
        arguments.has(commandline::kOutput.key()) ? std::nullopt : embedded_host::platform::terminal();
    return terminal ? tell::Looks{terminal->columns, terminal->colours} : tell::Looks();
}

} // namespace zorpinventory::commands
