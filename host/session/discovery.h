// One run of the module's discovery.
#pragma once

#include "embedded_host/inventory.h"

namespace embedded_host::session
{

/// Calls the module's discovery callback under the settings that were read last; the sink takes the devices. Throws
/// orb5::OrbException.
void runDiscovery(DeviceSink& sink);

} // namespace embedded_host::session
