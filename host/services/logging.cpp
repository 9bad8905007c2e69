// Loggers: thresholds, trace scopes, and lines on standard error.
#include "logging.h"

#include "lum.h"
#include "messages.h"
#include "utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <set>

namespace embedded_host::services
{

namespace
{

LogSink& sink()
{
    static LogSink current;
    return current;
}

struct Listener
{
    int priority;
    LogSink hear;
};

std::optional<Listener>& listener()
{
    static std::optional<Listener> current;
    return current;
}

/// What a LogSubject names; empty when there is none.
std::string& subject()
{
    static std::string current;
    return current;
}

/// The line with what it is about.
std::string named(std::string line)
{
    const auto& name = subject();
    if (name.empty() || line.starts_with(name + ": ") || line.ends_with(": " + name))
        return line;
    return name + ": " + line;
}

using Told = std::optional<std::set<std::string>>;

/// What a ShortLog has let pass; none when there is no ShortLog.
Told& told()
{
    static Told texts;
    return texts;
}

void writeToStandardError(int priority, std::string_view logger, std::string_view message)
{
    std::string line = "[" + std::to_string(priority) + "] " + std::string(logger) + ": ";
    appendPrintable(line, message);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

/// The message, or what is told in its stead; nothing when that was told before.
std::optional<std::string> shortened(int priority, const std::string& text)
{
    if (!told() || priority < kWarning)
        return text;
    const bool isLast = told()->size() + 1 >= ShortLog::kMostWarnings;
    const auto line = isLast ? message("there are more messages like those above; they are left out") : text;
    return told()->insert(line).second ? std::optional(line) : std::nullopt;
}

} // namespace

LogSink setLogSink(LogSink next) { return std::exchange(sink(), std::move(next)); }

void log(int priority, const char* name, const std::string& message)
{
    lum::Logger* logger = nullptr;
    lum::LogFactory::createLogger(name, logger);
    logger->log(priority, lum::LoggerStream() + lum::String(message));
}

LogListener::LogListener(int priority, LogSink hear) { listener() = {priority, std::move(hear)}; }

LogListener::~LogListener() { listener().reset(); }

LogSubject::LogSubject(std::string name) { subject() = std::move(name); }

LogSubject::~LogSubject() { subject().clear(); }

ShortLog::ShortLog() { told().emplace(); }

ShortLog::~ShortLog() { told().reset(); }

} // namespace embedded_host::services

namespace lum
{

namespace
{

/// The least that matters when nobody says otherwise: warnings.
LOGGER_PRIORITY processPriority = embedded_host::services::kWarning;

} // namespace

LoggerStream& LoggerStream::operator+(const char* text)
{
    text_ += text;
    return *this;
}

LoggerStream& LoggerStream::operator+(const String& text)
{
    text_ += text.bytes();
    return *this;
}

LoggerStream& LoggerStream::operator+(int number)
{
    text_ += std::to_string(number);
    return *this;
}

LOGGER_PRIORITY Logger::resolvePriority() const { return std::max(priority, LogFactory::getPriority()); }

bool Logger::log(LOGGER_PRIORITY at, const LoggerStream& message)
{
    using namespace embedded_host::services;
    if (listener() && at >= listener()->priority)
        listener()->hear(at, name_, message.text());
    if (at < std::max(priority, processPriority))
        return false;
    const int error = errno; // whoever logs an error may still tell its number
    const auto text = shortened(at, message.text());
    if (const auto& taken = sink(); taken && text)
        taken(at, name_, named(*text));
    else if (text)
        writeToStandardError(at, name_, named(*text));
    errno = error;
    return text.has_value();
}

LOGGER_PRIORITY LogFactory::getPriority()
{
    const auto& heard = embedded_host::services::listener();
    return heard ? std::min(processPriority, heard->priority) : processPriority;
}

void LogFactory::setPriority(LOGGER_PRIORITY priority) { processPriority = priority; }

void LogFactory::createLogger(const char* name, Logger*& out)
{
    static std::map<std::string, std::unique_ptr<Logger>> loggers;
    auto& logger = loggers[name];
    if (!logger)
        logger.reset(new Logger(name));
    out = logger.get();
}

TraceLogger::TraceLogger(Logger* logger, const char* function, const char* file, int line)
    : logger_(logger), function_(function)
{
    if (logger_ != nullptr)
        logger_->log(1, LoggerStream() + "enter " + function_ + " (" + file + ":" + line + ")");
}

TraceLogger::~TraceLogger()
{
    if (logger_ != nullptr)
        logger_->log(1, LoggerStream() + "leave " + function_);
}

} // namespace lum
