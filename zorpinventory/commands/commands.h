// The commands, one file for each: its declaration and its run.
#pragma once

#include "commandline/command.h"
#include "history/times.h"
#include "sources/sources.h"
#include "tell/texts.h"
#include "writing/output.h"

#include <chrono>
#include <exception>
#include <functional>
#include <span>

namespace zorpinventory::commands
{

/// All commands; the first is meant where none is named.
std::span<const commandline::Command> all();

extern const commandline::Command kSummary;
extern const commandline::Command kShow;
extern const commandline::Command kDiff;
extern const commandline::Command kCheck;
extern const commandline::Command kRecord;
extern const commandline::Command kLog;
extern const commandline::Command kForget;
extern const commandline::Command kAnonymize;

/// Whoever read standard output has gone away, which is no fault.
struct ReaderGone : std::exception
{
};

/// Writes what a command has to say to standard output, or to the file that was named: whole, or not at all. Throws
/// Problem, or ReaderGone.
void write(const commandline::Arguments& arguments, const std::function<void(embedded_host::writing::Output&)>& say);

/// Tells on standard error what a user should know of a result, without control characters from outside.
void note(const std::string& sentence);

/// Today, in UTC.
std::chrono::year_month_day today();

/// Which history is meant, and what the machine is called in it.
sources::Place place(const commandline::Arguments& arguments);

/// The time that an option names; nothing without the option. Throws Problem for what is no time.
std::optional<std::string> time(const commandline::Arguments& arguments, const commandline::Option& option,
                                history::Of day);

/// How the place looks where `write` writes.
tell::Looks looks(const commandline::Arguments& arguments);

} // namespace zorpinventory::commands
