// One discovery of the machine's SMBIOS structures.
#pragma once

namespace zorpsysinfosmbios2
{

/// Reads the settings, obtains the table, and publishes the root device and a device for every structure of a known
/// type. Called by the framework, once for each discovery; of one call's settings, only `filterTrivialStrings` lasts
/// until the next that sets it.
void DiscoverSMBIOS();

} // namespace zorpsysinfosmbios2
