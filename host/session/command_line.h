// What the command line asks for.
#pragma once

#include "embedded_host/settings_source.h"

#include "inventory/structure_types.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace embedded_host::session
{

enum class Action { Discover, Catalogue, Help, Version };
enum class Format { Text, Json, Ndjson };

struct CommandLine
{
    Action action = Action::Discover;
    Format format = Format::Text;
    std::optional<std::string> output; ///< file; none for standard output
    SettingsSource settings;
    std::optional<std::string> language; ///< none: the environment's
    bool all = false;
    bool details = false;            ///< with numbers, and what the document tells of the table
    bool tables = false;             ///< standard input names the tables
    inventory::StructureTypes types; ///< to which the inventory is restricted; none set for no limit
    int logLevel = 3;
};

/// Takes a language as soon as it is read, so that it counts for what there is to say of the rest.
using Speak = std::function<void(const std::string& language)>;

/// Reads the arguments, the program's own name first. Throws std::runtime_error with a sentence that says what is
/// wrong.
CommandLine readCommandLine(const std::vector<std::string>& arguments, const Speak& speak);

/// All options with what they do, in the user's language.
std::string helpText();

} // namespace embedded_host::session
