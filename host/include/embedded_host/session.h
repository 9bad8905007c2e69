// Running discoveries from a program of one's own, as tests, fuzzers and benchmarks do.
#pragma once

#include "embedded_host/inventory.h"
#include "embedded_host/settings_source.h"

namespace embedded_host
{

/// Calls the module's discovery callback once; the sink takes the devices. Throws orb5::OrbException.
void discover(const SettingsSource& settings, DeviceSink& sink);

} // namespace embedded_host
