// The end of a run for want of memory. Telling it takes none.
#pragma once

#include <string_view>

namespace embedded_host::session
{

/// What is told, in the user's language.
std::string_view lackOfMemory();

/// Logs it. Standard output may have a part of the inventory already, which nobody can take back.
void logLackOfMemory();

} // namespace embedded_host::session
