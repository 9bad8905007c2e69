// The system's journal, for programs that nobody watches.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace embedded_host::platform
{

/// Leaves one entry in the journal: its fields under the journal's own names, such as MESSAGE and PRIORITY. Throws
/// std::system_error where there is no journal.
void tellJournal(std::span<const std::pair<std::string_view, std::string>> fields);

} // namespace embedded_host::platform
