// Where log lines go, and logging from within the host.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace embedded_host::services
{

/// How much a message of the host matters, as lum::LOGGER_PRIORITY tells it.
inline constexpr int kInformation = 2;
inline constexpr int kWarning = 3;
inline constexpr int kError = 4;
inline constexpr int kFatal = 5;

/// Takes one message that passed its gates.
using LogSink = std::function<void(int priority, std::string_view logger, std::string_view message)>;

/// Sends log lines to this sink from now on; an empty sink means standard error again. Returns the sink before.
LogSink setLogSink(LogSink sink);

/// Logs a message of the host's own part `logger`.
void log(int priority, const char* logger, const std::string& message);

/// Hears what modules log at this priority and above as long as it lives, whatever is then written: modules do not even
/// make a message that nobody takes.
class LogListener
{
public:
    LogListener(int priority, LogSink hear);
    ~LogListener();
    LogListener(const LogListener&) = delete;
    LogListener& operator=(const LogListener&) = delete;
};

/// Names what is worked on in front of each line of the log that does not begin or end with it, as long as it lives.
class LogSubject
{
public:
    explicit LogSubject(std::string name);
    ~LogSubject();
    LogSubject(const LogSubject&) = delete;
    LogSubject& operator=(const LogSubject&) = delete;
};

/// Keeps the log short as long as it lives, whatever a table holds: each message from a warning up is logged
/// once, and after 49 of them one more line says that the rest is left out.
class ShortLog
{
public:
    static constexpr std::size_t kMostWarnings = 50;

    ShortLog();
    ~ShortLog();
    ShortLog(const ShortLog&) = delete;
    ShortLog& operator=(const ShortLog&) = delete;
};

} // namespace embedded_host::services
