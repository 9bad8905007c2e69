// The state behind Smbios2: which table is in memory, and for which discovery.
#pragma once

namespace embedded_host::table
{

/// Tells the table library that a new discovery begins: a table that an earlier one took from a file is no longer the
/// source, unless this one asks for a file again. The memory stays until the table is replaced.
void beginDiscovery();

} // namespace embedded_host::table
