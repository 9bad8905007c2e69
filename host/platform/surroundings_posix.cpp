// The process's surroundings on POSIX systems.
#include "surroundings.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

/// An environment variable; empty when it is not set.
std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

std::vector<std::string> utf8Arguments(int argc, const char* const* argv) { return {argv, argv + argc}; }

void prepareStreams()
{
    // Whatever is opened first would take the place of a standard stream that is closed, and its text too. Opened the
    // wrong way round, it fails as a closed one does.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);

    // Writing then fails with EPIPE and EFBIG.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

std::optional<Terminal> terminal()
{
    if (isatty(STDOUT_FILENO) == 0)
        return std::nullopt;
    constexpr std::size_t kUsual = 80;
    std::size_t columns = 0;
    const auto wanted = variable("COLUMNS");
    std::from_chars(wanted.data(), wanted.data() + wanted.size(), columns);
    if (winsize size{}; columns == 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0)
        columns = size.ws_col;
    const auto kind = variable("TERM");
    return Terminal{columns != 0 ? columns : kUsual, variable("NO_COLOR").empty() && !kind.empty() && kind != "dumb"};
}

bool isTerminal(Stream stream) { return isatty(stream == Stream::Input ? STDIN_FILENO : STDERR_FILENO) != 0; }

bool showsUtf8()
{
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        auto value = variable(name);
        if (value.empty())
            continue;
        std::ranges::transform(value, value.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
        return value.find("utf-8") != std::string::npos || value.find("utf8") != std::string::npos;
    }
    return false;
}

std::vector<std::filesystem::path> configurationFolders()
{
    std::vector<std::filesystem::path> folders;
    if (const auto own = variable("XDG_CONFIG_HOME"); !own.empty())
        folders.emplace_back(own);
    else if (const auto home = variable("HOME"); !home.empty())
        folders.emplace_back(home + "/.config");
    folders.emplace_back("/etc");
    return folders;
}

std::filesystem::path ownProgram()
{
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown);
}

std::vector<std::filesystem::path> programFolders()
{
    std::vector<std::filesystem::path> folders;
    std::istringstream path(variable("PATH"));
    for (std::string folder; std::getline(path, folder, ':');)
        folders.emplace_back(folder.empty() ? "." : folder);
    return folders;
}

std::string userLanguage()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (auto value = variable(name); !value.empty())
            return value;
    return {};
}

} // namespace embedded_host::platform
