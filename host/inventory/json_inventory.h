// The inventory and the catalogue of declarations as JSON.
#pragma once

#include "embedded_host/inventory.h"
#include "writing/json_writer.h"
#include "writing/output.h"

namespace embedded_host::inventory
{

/// One document, or one device a line. Each device is written when it is taken; nothing is collected.
class JsonInventory : public DeviceSink
{
public:
    enum class Layout { Document, Lines };

    JsonInventory(writing::Output& output, Layout layout) : output_(output), layout_(layout) {}

    void take(DeviceRecord&& device) override;

    /// Writes what closes the document; also when there was no device.
    void end();

private:
    void beginDocument();

    writing::Output& output_;
    Layout layout_;
    writing::JsonWriter writer_;
    bool begun_ = false;
};

/// Prints all declarations as one document.
void writeCatalogueAsJson(writing::Output& output);

} // namespace embedded_host::inventory
