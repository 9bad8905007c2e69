// What the process was given: arguments and streams, folders for settings, the user's language.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace embedded_host::platform
{

/// The arguments as UTF-8, whatever the code page in which `main` got them.
std::vector<std::string> utf8Arguments(int argc, const char* const* argv);

/// Makes standard output take UTF-8 and leave every byte as it is, and standard streams that are closed stay so. A
/// reader who goes away and a file that gets too large are errors of writing and no end of the process. To be called
/// before any file is opened.
void prepareStreams();

/// A terminal that shows what is printed.
struct Terminal
{
    std::size_t columns;
    bool colours; ///< it obeys colour sequences, and the user wants them
};

/// The terminal that standard output is; none where it is a file or a pipe.
std::optional<Terminal> terminal();

enum class Stream { Input, Errors };

/// Whether a person is at the other end of the stream.
bool isTerminal(Stream stream);

/// Whether the user's surroundings show UTF-8, as the locale says.
bool showsUtf8();

/// The folders that may hold settings, the user's before the system's.
std::vector<std::filesystem::path> configurationFolders();

/// Where the running program is; empty when the system does not tell.
std::filesystem::path ownProgram();

/// The folders in which the system looks for programs, in this order.
std::vector<std::filesystem::path> programFolders();

/// What the names of programs end in.
#ifdef _WIN32
inline constexpr const char* kProgramEnding = ".exe";
#else
inline constexpr const char* kProgramEnding = "";
#endif

/// The user's language as the system names it ("de_DE.UTF-8", "zh-CN", "C"); empty when it says nothing.
std::string userLanguage();

} // namespace embedded_host::platform
