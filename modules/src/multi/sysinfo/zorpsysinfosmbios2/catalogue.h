// The descriptors of all declared properties, by their names, and the one declared text.
//
// A descriptor is shared by every device: it is given a value right before it is added to a device, which copies it.
#pragma once

#include "orb5.h"

namespace zorpsysinfosmbios2
{

#define PROPERTY(name, tier, type) extern orb5::DeviceProperty* const name;
#define UNKEPT(name, tier, type)
#define SPECIAL(name, categories, type, capability) extern orb5::DeviceProperty* const name;
#define NAMED(descriptor, name, categories, type, capability) extern orb5::DeviceProperty* const descriptor;
#include "catalogue.def"

/// The size of an empty memory socket, in the user's language.
extern orb5::LocalizedString* const notInstalled;

} // namespace zorpsysinfosmbios2
