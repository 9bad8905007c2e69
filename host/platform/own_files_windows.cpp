// The owner's files on Windows, where new ones have the access list of the folder that they are made in.
#include "own_files.h"

#include "files.h"

#include <cstdlib>
#include <fstream>

namespace embedded_host::platform
{

std::filesystem::path stateFolder()
{
    const wchar_t* folder = _wgetenv(L"ProgramData");
    return folder == nullptr ? std::filesystem::path() : std::filesystem::path(folder);
}

void makeOwnFolder(const std::filesystem::path& folder) { std::filesystem::create_directories(folder); }

void makeOwnFile(const std::filesystem::path& file)
{
    if (!std::ofstream(file, std::ios::app))
        throw std::system_error(errno, std::generic_category());
}

bool isAnothers(const std::filesystem::path& /*file*/) { return false; }

} // namespace embedded_host::platform
