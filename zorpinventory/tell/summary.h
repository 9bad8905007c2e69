// The summary, as text and as JSON.
#pragma once

#include "summary/summary.h"
#include "tell/texts.h"
#include "writing/output.h"

namespace zorpinventory::tell
{

void summaryAsText(embedded_host::writing::Output& output, const summary::Summary& summary, const Looks& looks);

/// `source`: empty for this machine.
void summaryAsJson(embedded_host::writing::Output& output, const summary::Summary& summary, const std::string& source);

} // namespace zorpinventory::tell
