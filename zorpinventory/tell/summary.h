// The summary, as text and as JSON.
#pragma once

#include "summary/summary.h"
#include "tell/texts.h"
#include "writing/output.h"

namespace zorpinventory::tell
{

/// `source`: empty for this machine.
void summaryAsText(embedded_host::writing::Output& output, const summary::Summary& summary, const std::string& source,
                   const Looks& looks);
void summaryAsJson(embedded_host::writing::Output& output, const summary::Summary& summary, const std::string& source);

} // namespace zorpinventory::tell
