// One run of the module's discovery.
#pragma once

#include "embedded_host/inventory.h"
#include "embedded_host/settings_source.h"

namespace embedded_host::session
{

/// Calls the module's discovery callback; the sink takes the devices. Throws orb5::OrbException.
void discoverOnce(const SettingsSource& settings, DeviceSink& sink);

} // namespace embedded_host::session
