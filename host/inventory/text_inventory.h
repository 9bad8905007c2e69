// The inventory for people: the tree of devices with their properties.
#pragma once

#include "embedded_host/inventory.h"
#include "output.h"

namespace embedded_host::inventory
{

/// Which properties are shown.
enum class Detail {
    Usual, ///< tiers 1 and 2, and nothing internal
    All,
};

/// Collects the devices, since any of them may turn out to be an earlier one's parent, and prints them at the end.
class TextInventory : public DeviceSink
{
public:
    TextInventory(Output& output, Detail detail) : output_(output), detail_(detail) {}

    void take(DeviceRecord&& device) override { devices_.push_back(std::move(device)); }
    void end();

private:
    void writeDevice(const DeviceRecord& device, std::size_t depth);

    Output& output_;
    Detail detail_;
    std::vector<DeviceRecord> devices_;
};

/// Prints all declarations as a table.
void writeCatalogueAsText(Output& output);

} // namespace embedded_host::inventory
