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

namespace embedded_host::services
{

namespace
{

LogSink& sink()
{
    static LogSink current;
    return current;
}

constexpr int kWarning = 3;
constexpr unsigned kMostWarnings = 50;
unsigned warnings = 0;

void writeToStandardError(int priority, std::string_view logger, std::string_view message)
{
    std::string line = "[" + std::to_string(priority) + "] " + std::string(logger) + ": ";
    appendPrintable(line, message);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void write(int priority, std::string_view logger, std::string_view text)
{
    if (const auto& taken = sink())
        taken(priority, logger, text);
    else
        writeToStandardError(priority, logger, text);
}

/// Writes the message; once there were too many warnings, says so instead, and then nothing. Returns whether it was
/// written.
bool writeWithinLimit(int priority, std::string_view logger, std::string_view text)
{
    if (priority < kWarning || ++warnings < kMostWarnings) {
        write(priority, logger, text);
        return true;
    }
    if (warnings == kMostWarnings)
        write(kWarning, logger, message("there are more messages like those above; they are left out"));
    return false;
}

} // namespace

LogSink setLogSink(LogSink next) { return std::exchange(sink(), std::move(next)); }

void countWarningsAnew() { warnings = 0; }

void log(int priority, const char* name, const std::string& message)
{
    lum::Logger* logger = nullptr;
    lum::LogFactory::createLogger(name, logger);
    logger->log(priority, lum::LoggerStream() + lum::String(message));
}

} // namespace embedded_host::services

namespace lum
{

namespace
{

/// The least that matters when nobody says otherwise: warnings.
LOGGER_PRIORITY processPriority = 3;

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
    if (at < resolvePriority())
        return false;
    const int error = errno; // whoever logs an error may still tell its number
    const bool written = writeWithinLimit(at, name_, message.text());
    errno = error;
    return written;
}

LOGGER_PRIORITY LogFactory::getPriority() { return processPriority; }

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
