// The module's declarations and registration.
#include "registry.h"

#include "services/utf8.h"

namespace embedded_host
{

namespace devices
{

Registry& registry()
{
    // Never destroyed: declarations live as long as the process, and that many would take long.
    static auto& instance = *new Registry;
    return instance;
}

void forgetValues()
{
    for (auto& property : registry().properties)
        property.value = orb5::Value("");
}

} // namespace devices

const ModuleInfo& moduleInfo() { return devices::registry().module; }

std::vector<const Property*> declaredProperties()
{
    std::vector<const Property*> all;
    for (const auto& property : devices::registry().properties)
        all.push_back(&property);
    return all;
}

std::vector<std::string> declaredTexts()
{
    std::vector<std::string> all;
    for (const auto& text : devices::registry().texts)
        all.push_back(text->key);
    return all;
}

} // namespace embedded_host

namespace orb5
{

using embedded_host::devices::DeclaredText;
using embedded_host::devices::registry;

void SysInfoModule::setVersion(unsigned int major, unsigned int minor, const OrbString& build)
{
    auto& module = registry().module;
    module.major = major;
    module.minor = minor;
    module.build = build.lumString().bytes();
}

void SysInfoModule::setModuleCapabilities(const DeviceCapability& capability)
{
    registry().module.capabilities = {capability};
}

void SysInfoModule::setDiscoverDevicesCallback(void (*discover)()) { registry().discover = discover; }

DeviceProperty* SysInfoModule::createDeviceProperty(const OrbString& name, const PropertyCategory& categories,
                                                    const DataType& type, const DeviceCapability& capability)
{
    const auto bytes = name.lumString().bytes();
    if (embedded_host::services::plainPrefix(bytes) != bytes.size())
        throw OrbException("a property's name must be printable ASCII without quotation mark and backslash");
    auto& properties = registry().properties;
    auto& declared = properties.emplace_back(name, categories, type, capability);
    declared.index = properties.size() - 1;
    return &declared;
}

LocalizedString* DiagModule::createLocalizedString(const OrbString& key)
{
    auto& texts = registry().texts;
    texts.push_back(std::make_unique<DeclaredText>());
    texts.back()->key = key.lumString().bytes();
    return texts.back().get();
}

const OrbString& LocalizedString::localizedString() const
{
    // The key stands in for a text that no language has.
    const auto& declared = static_cast<const DeclaredText&>(*this);
    lum::String text(declared.key);
    lum::Resource::getString("", declared.key.c_str(), text, lum::LumLocale::getGlobalLocale());
    declared.text = text;
    return declared.text;
}

} // namespace orb5
