// Finding out a device's structure type.
#include "structure_types.h"

#include <charconv>

namespace embedded_host::inventory
{

namespace
{

/// The number at the start of a text.
std::optional<unsigned> numberAt(std::string_view text)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<unsigned> structureType(const DeviceRecord& device)
{
    // The makers' own types do not have the property, but all properties are called after their type: "t208_...".
    for (const auto& property : device.properties) {
        const std::string_view name = property.declaration->name;
        if (name == "smbios2_hdr_type")
            return numberAt(property.value.toString().lumString().bytes());
        if (name.starts_with('t'))
            if (const auto type = numberAt(name.substr(1)))
                return type;
    }
    return std::nullopt;
}

bool isWanted(const DeviceRecord& device, const StructureTypes& types)
{
    if (types.none())
        return true;
    const auto type = structureType(device);
    return type && *type < types.size() && types.test(*type);
}

} // namespace embedded_host::inventory
