// Where this system keeps settings and says which language its user speaks.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace embedded_host::platform
{

/// The folders that may hold settings, the user's before the system's.
std::vector<std::filesystem::path> configurationFolders();

/// The user's language as the system names it ("de_DE.UTF-8", "zh_CN", "C"); empty when it says nothing.
std::string userLanguage();

} // namespace embedded_host::platform
