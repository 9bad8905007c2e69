// Building devices: the shared operations.
#include "construction.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace zorpsysinfosmbios2
{

using lum::LumLocale;
using lum::Resource;
using lum::String;
using orb5::DeviceCapability;
using orb5::OrbString;
using orb5::OrbUnitMagnitude;
using orb5::OrbUnitType;
using orb5::SysInfoDevice;
using orb5::Value;

namespace
{

constexpr const char* kSection = "zorpsysinfosmbios2";

} // namespace

bool filterTrivialStrings = true;

char* formatHexBytes(const void* bytes, unsigned char count)
{
    if (count == 0)
        return nullptr;
    constexpr std::size_t kWritten = 3; // two digits and a hyphen
    constexpr const char* kDigits = "0123456789ABCDEF";
    auto* text = static_cast<char*>(std::malloc(count * kWritten + 1));
    if (text == nullptr)
        throw std::bad_alloc();
    const auto* byte = static_cast<const unsigned char*>(bytes);
    for (unsigned i = 0; i < count; ++i) {
        text[kWritten * i] = kDigits[byte[i] >> 4];
        text[kWritten * i + 1] = kDigits[byte[i] & 0x0F];
        text[kWritten * i + 2] = '-';
    }
    text[kWritten * count - 1] = '\0';
    return text;
}

String& getLocalizedDeviceName(String& out, const String& key, const char* defaultName)
{
    static const String kPrefix("LocalizedString.devname_");
    out = "";
    const auto name = (kPrefix + key).getLowerByteString();
    if (!Resource::getString(kSection, name.c_str(), out, LumLocale::getGlobalLocale()))
        out = defaultName;
    return out;
}

SysInfoDevice* createStructureDevice(const DeviceCapability& capability, const OrbString& name, const OrbString& text2,
                                     const OrbString& text3, std::uint16_t handle, std::uint32_t instance)
{
    OrbString uid = OrbString("SMBIOS:") + handleText(handle);
    if (instance != 0)
        uid += OrbString(":") + OrbString(lum::LumValue(instance).toString(lum::LumValue::nilValue()));
    // Deliberate: the third text goes before the second.
    return SysInfoDevice::createGeneric(capability, DeviceCapability::NIL(), name, text3, text2, uid);
}

SysInfoDevice* createNamedStructureDevice(const String& key, const char* defaultName, std::uint16_t handle,
                                          std::uint32_t index, const DeviceCapability& capability)
{
    String name;
    getLocalizedDeviceName(name, key, defaultName);
    const OrbString text = OrbString(defaultName) + ":" + Value(index).toString();
    // Deliberate: the instance is always 0, so identifiers differ by handle alone.
    return createStructureDevice(capability, name, text, text, handle, 0);
}

bool getModuleSetting(const char* name, String& out)
{
    const auto key = (String(name) + String(".value")).getLowerByteString();
    return Resource::getSetting(kSection, key.c_str(), out, LumLocale::getGlobalLocale());
}

bool getStructureString(const libsmbios2::type_hdr* structure, unsigned char number, OrbString& out)
{
    if (number == 0)
        return false;
    const char* text = libsmbios2::Smbios2_SysInfo::getString(structure, number);
    if (text == nullptr)
        return false;
    if (filterTrivialStrings && String(text).trim().size() == 0)
        return false;
    // Deliberate: trimming only tells whether there is a text; its blanks are published.
    out = OrbString(text);
    return true;
}

void addStringProperty(const libsmbios2::type_hdr* structure, unsigned char number, SysInfoDevice* device,
                       orb5::DeviceProperty* property)
{
    OrbString text;
    if (getStructureString(structure, number, text))
        device->addProperty(property->setValue(Value(std::move(text))));
}

OrbString handleText(std::uint32_t handle)
{
    return orb5::OrbDiscreteMeasurement(OrbUnitType::HEXADECIMAL16(), handle)
        .toString(OrbUnitMagnitude::AUTOSCALEUNIT());
}

} // namespace zorpsysinfosmbios2
