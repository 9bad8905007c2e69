// The gates: the process's priority first, so that a quiet process makes no logger at all.
#include "logging.h"

namespace zorpsysinfosmbios2
{

namespace
{

/// The logger when process and logger both take this priority.
lum::Logger* openLogger(lum::LOGGER_PRIORITY priority)
{
    static lum::Logger* logger = nullptr;
    if (lum::LogFactory::getPriority() > priority)
        return nullptr;
    if (logger == nullptr)
        lum::LogFactory::createLogger("zorpsysinfosmbios2", logger);
    return logger->priority <= priority ? logger : nullptr;
}

} // namespace

lum::Logger* loggerFor(lum::LOGGER_PRIORITY priority)
{
    auto* logger = openLogger(priority);
    return logger != nullptr && logger->resolvePriority() <= priority ? logger : nullptr;
}

// Deliberate: traces do not ask for the resolved priority.
lum::Logger* loggerForTraces() { return openLogger(1); }

} // namespace zorpsysinfosmbios2
