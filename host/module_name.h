// The name of the module that this host was built for: it names the program and its settings file.
#pragma once

namespace embedded_host
{

inline constexpr const char* kModuleName = EMBEDDED_HOST_MODULE;

} // namespace embedded_host
