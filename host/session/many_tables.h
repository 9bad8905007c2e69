// Thousands of saved tables in one run.
#pragma once

#include "embedded_host/settings_source.h"
#include "writing/output.h"

#include <istream>

namespace embedded_host::session
{

/// Discovers each saved table that a line of the list names. Each becomes a document with details on a line of its own,
/// or a line that says why it does not. Nothing of one table is left when the next is read. Throws orb5::OrbException.
void printTables(std::istream& list, const SettingsSource& settings, writing::Output& output);

} // namespace embedded_host::session
