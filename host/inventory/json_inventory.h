// The inventory and the catalogue of declarations as JSON.
#pragma once

#include "embedded_host/inventory.h"
#include "json_writer.h"
#include "output.h"

namespace embedded_host::inventory
{

/// One document, or one device a line. Each device is written when it is taken; nothing is collected.
class JsonInventory : public DeviceSink
{
public:
    enum class Layout { Document, Lines };

    JsonInventory(Output& output, Layout layout) : output_(output), layout_(layout) {}

    void take(DeviceRecord&& device) override;

    /// Writes what closes the document; also when there was no device.
    void end();

private:
    void beginDocument();

    Output& output_;
    Layout layout_;
    JsonWriter writer_;
    bool begun_ = false;
};

/// Prints all declarations as one document.
void writeCatalogueAsJson(Output& output);

} // namespace embedded_host::inventory
