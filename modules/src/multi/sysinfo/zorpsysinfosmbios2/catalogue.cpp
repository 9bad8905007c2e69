// Declares every property and the localized text, before main runs and in the catalogue's order.
#include "catalogue.h"

namespace zorpsysinfosmbios2
{

using Category = orb5::PropertyCategory;
using Type = orb5::DataType;
using Capability = orb5::DeviceCapability;
using orb5::SysInfoModule;

// NOLINTBEGIN(bugprone-macro-parentheses): types and names cannot stand in parentheses
#define DECLARE(name, categories, type, capability)                                                                    \
    SysInfoModule::createDeviceProperty(name, categories, Type::type(), Capability::capability())

#define PROPERTY(name, tier, type)                                                                                     \
    orb5::DeviceProperty* const name = DECLARE(#name, Category::SysInfo() | Category::tier(), type, SMBIOS_Struct);
#define UNKEPT(name, tier, type)                                                                                       \
    [[maybe_unused]] static const bool name =                                                                          \
        DECLARE(#name, Category::SysInfo() | Category::tier(), type, SMBIOS_Struct) != nullptr;
#define SPECIAL(name, categories, type, capability)                                                                    \
    orb5::DeviceProperty* const name = DECLARE(#name, categories, type, capability);
#define NAMED(descriptor, name, categories, type, capability)                                                          \
    orb5::DeviceProperty* const descriptor = DECLARE(name, categories, type, capability);
#include "catalogue.def"

#undef DECLARE
// NOLINTEND(bugprone-macro-parentheses)

orb5::LocalizedString* const notInstalled = orb5::DiagModule::createLocalizedString("NotInstalled");

} // namespace zorpsysinfosmbios2
