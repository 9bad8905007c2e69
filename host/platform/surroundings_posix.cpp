// The process's surroundings on POSIX systems.
#include "surroundings.h"

#include <csignal>
#include <cstdlib>

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
    // Writing then fails with EPIPE.
    std::signal(SIGPIPE, SIG_IGN);
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

std::string userLanguage()
{
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (auto value = variable(name); !value.empty())
            return value;
    return {};
}

} // namespace embedded_host::platform
