// The structure types of the SMBIOS standard, as far as an inventory may be restricted to some.
#pragma once

#include "embedded_host/inventory.h"

#include <bitset>
#include <optional>

namespace embedded_host::inventory
{

/// By number; where none is set, all are meant.
using StructureTypes = std::bitset<256>;

/// The type of the structure that a device was made of, as its properties tell; none for the root and for groups.
std::optional<unsigned> structureType(const DeviceRecord& device);

/// Whether a device is among those that are wanted.
bool isWanted(const DeviceRecord& device, const StructureTypes& types);

/// Lets pass what is wanted.
class TypeFilter : public DeviceSink
{
public:
    TypeFilter(DeviceSink& next, const StructureTypes& types) : next_(next), types_(types) {}
    void take(DeviceRecord&& device) override
    {
        if (isWanted(device, types_))
            next_.take(std::move(device));
    }

private:
    DeviceSink& next_;
    const StructureTypes& types_;
};

} // namespace embedded_host::inventory
