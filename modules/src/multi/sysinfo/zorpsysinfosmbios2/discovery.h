// One discovery of the machine's SMBIOS structures.
#pragma once

namespace zorpsysinfosmbios2
{

/// Reads the settings, obtains the table, and publishes the root device and a device for every structure of a known
/// type. Called by the framework, once for each discovery; keeps nothing from one call to the next.
void DiscoverSMBIOS();

} // namespace zorpsysinfosmbios2
