// The operations that every decoder shares: names, identifiers, settings and strings.
#pragma once

#include "orb5.h"
#include "smbios2.h"

namespace zorpsysinfosmbios2
{

/// Whether strings of nothing but white space count as absent. The setting of the same name changes it.
extern bool filterTrivialStrings;

/// Bytes as "01-AB": upper-case hexadecimal, joined by hyphens. The caller releases the text with `free`; null for a
/// count of 0. Throws std::bad_alloc.
char* formatHexBytes(const void* bytes, unsigned char count);

/// The device key's name in the user's language, the default name where it has none. Returns `out`.
lum::String& getLocalizedDeviceName(lum::String& out, const lum::String& key, const char* defaultName);

/// A device identified by "SMBIOS:" and its handle's text, and by ":" and the instance unless that is 0.
orb5::SysInfoDevice* createStructureDevice(const orb5::DeviceCapability& capability, const orb5::OrbString& name,
                                           const orb5::OrbString& text2, const orb5::OrbString& text3,
                                           std::uint16_t handle, std::uint32_t instance);

/// A device with the key's localized name, described by default name and index ("Processor:0").
orb5::SysInfoDevice* createNamedStructureDevice(const lum::String& key, const char* defaultName, std::uint16_t handle,
                                                std::uint32_t index, const orb5::DeviceCapability& capability);

/// Reads one of the module's settings. False, and `out` untouched, when it is not set.
bool getModuleSetting(const char* name, lum::String& out);

/// String `number` of the structure. False, and `out` untouched, when there is none or it counts as absent.
bool getStructureString(const libsmbios2::type_hdr* structure, unsigned char number, orb5::OrbString& out);

/// Adds the string as a property, unless `getStructureString` has none.
void addStringProperty(const libsmbios2::type_hdr* structure, unsigned char number, orb5::SysInfoDevice* device,
                       orb5::DeviceProperty* property);

/// A handle as links, identifiers and properties show it: "0x0010".
orb5::OrbString handleText(std::uint32_t handle);

} // namespace zorpsysinfosmbios2
