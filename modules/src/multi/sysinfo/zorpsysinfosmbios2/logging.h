// The module's one logger and the gates in front of it.
#pragma once

#include "lum.h"

namespace zorpsysinfosmbios2
{

/// The module's logger when a message of this priority is wanted, else null: a message is not even built then.
/// The logger is made on first need and kept for the process's life.
lum::Logger* loggerFor(lum::LOGGER_PRIORITY priority);

/// The module's logger when the ways through its functions are to be traced, else null.
lum::Logger* loggerForTraces();

/// What traces give as their place: the module is known to its users as one source file.
inline constexpr const char* kTracedSource = R"(modules\src\multi\sysinfo\zorpsysinfosmbios2\zorpsysinfosmbios2)";

} // namespace zorpsysinfosmbios2
