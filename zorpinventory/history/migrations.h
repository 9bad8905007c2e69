// The schema's steps, in order; made while building from migrations/*.sql.
#pragma once

#include <cstdint>
#include <span>

namespace zorpinventory::history
{

/// Each step's SQL. What was released is never edited: a change is one more step.
std::span<const char* const> migrations();

/// How new this program's schema is.
inline std::int64_t newestVersion() { return static_cast<std::int64_t>(migrations().size()); }

} // namespace zorpinventory::history
