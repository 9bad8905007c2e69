// Where log lines go, and logging from within the host.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace embedded_host::services
{

/// Takes one message that passed its gates.
using LogSink = std::function<void(int priority, std::string_view logger, std::string_view message)>;

/// Sends log lines to this sink from now on; an empty sink means standard error again. Returns the sink before.
LogSink setLogSink(LogSink sink);

/// Starts to count warnings and errors, the messages from priority 3 up, anew. After 49 of them one more line says that
/// the rest is left out, so that a table which is nothing but faults cannot flood the log.
void countWarningsAnew();

/// Logs a message of the host's own part `logger`.
void log(int priority, const char* logger, const std::string& message);

} // namespace embedded_host::services
