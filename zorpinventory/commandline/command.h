// How a command is declared: once, for the parser, the help, the manual page and the completions.
#pragma once

#include "exit_codes.h"
#include "services/messages.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorpinventory::commandline
{

using embedded_host::services::translatable;

/// What a shell offers for a value.
enum class Completes {
    Nothing,
    Choices, ///< few enough for the help; nothing else is taken
    Names,   ///< too many for the help; the command itself knows them
    Files,
    Machines, ///< of the history
};

struct Option
{
    const char* names;      ///< "-f, --format"
    const char* value = ""; ///< what stands for the value in texts; empty for a flag
    const char* says = "";  ///< translatable
    Completes completes = Completes::Nothing;
    std::string_view choices = {}; ///< with blanks between them; the first is what counts without the option
    bool repeatable = false;
    bool mayLackValue = false;

    /// The long name without hyphens: "format".
    std::string_view key() const { return std::string_view(names).substr(std::string_view(names).rfind("--") + 2); }
    bool isFlag() const { return *value == '\0'; }
};

/// What a user asked a command for.
class Arguments
{
public:
    std::vector<std::string> sources;
    std::map<std::string, std::vector<std::string>, std::less<>> given; ///< values by the option's key

    bool has(std::string_view key) const { return given.contains(key); }

    /// The option's last value, nothing when it was not given.
    std::optional<std::string> value(std::string_view key) const;

    /// Whether the output is to be JSON.
    bool json() const { return value("format") == "json"; }
};

struct Command
{
    const char* name;
    const char* says;    ///< translatable
    const char* sources; ///< as help shows them: "A [B]"
    std::size_t leastSources;
    std::size_t mostSources;
    std::span<const Option> options;
    const char* good;      ///< what exit code 0 means, translatable
    const char* otherwise; ///< what 1 means; empty where there is no such code
    Exit (*run)(const Arguments& arguments);
    Completes completes = Completes::Files; ///< what its sources are
};

/// What was asked for: a command, or a word about them.
struct Request
{
    enum class Kind { Run, Help, Version };

    Kind kind = Kind::Run;
    const Command* command = nullptr;
    Arguments arguments;
};

/// Options that several commands have.
inline constexpr Option kFormat{.names = "-f, --format",
                                .value = "FORMAT",
                                .says = translatable("how it is told"),
                                .completes = Completes::Choices,
                                .choices = "text json"};
inline constexpr Option kOutput{.names = "-o, --output",
                                .value = "FILE",
                                .says = translatable("write there instead of standard output"),
                                .completes = Completes::Files};
inline constexpr Option kLanguage{.names = "-l, --language",
                                  .value = "LANG",
                                  .says = translatable("language of texts; else as the environment says"),
                                  .completes = Completes::Choices,
                                  .choices = "en de zh_CN"};

inline constexpr Option kDatabase{.names = "--db",
                                  .value = "FILE",
                                  .says = translatable("the history; else the user's own, as root the system's"),
                                  .completes = Completes::Files};
inline constexpr Option kMachine{.names = "--machine",
                                 .value = "NAME",
                                 .says = translatable("call the machine so, whatever its table says"),
                                 .completes = Completes::Machines};

/// Options that every command has.
inline constexpr Option kHelp{.names = "-h, --help", .says = translatable("show this help")};
inline constexpr Option kVersion{.names = "-V, --version", .says = translatable("show the version")};

/// Reads the arguments, the program's own name first. The first one may name a command, else the first command of the
/// list is meant. Nothing is done, no file opened. Throws Problem.
Request parsed(std::span<const Command> commands, const std::vector<std::string>& arguments);

/// The language that is asked for anywhere in the arguments; for what is said before they are understood.
std::optional<std::string> wantedLanguage(const std::vector<std::string>& arguments);

/// The help of one command, or of all when it is null.
std::string help(std::span<const Command> commands, const Command* command);

} // namespace zorpinventory::commandline
