// Records what is logged.
#pragma once

#include "services/logging.h"

#include <string>
#include <vector>

namespace tests
{

struct LogLine
{
    int priority;
    std::string logger;
    std::string text;
};

/// Takes the log lines as long as it lives.
class LogRecorder
{
public:
    explicit LogRecorder(std::vector<LogLine>& lines)
        : before_(embedded_host::services::setLogSink([&lines](int priority, auto logger, auto text) {
              lines.push_back({priority, std::string(logger), std::string(text)});
          }))
    {
    }
    ~LogRecorder() { embedded_host::services::setLogSink(before_); }
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

private:
    embedded_host::services::LogSink before_;
};

} // namespace tests
