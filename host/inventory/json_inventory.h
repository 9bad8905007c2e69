// The inventory and the catalogue of declarations as JSON.
#pragma once

#include "embedded_host/inventory.h"
#include "writing/json_writer.h"

namespace embedded_host::inventory
{

/// One document, or one device a line. Each device is written when it is taken; nothing is collected.
class JsonInventory : public DeviceSink
{
public:
    enum class Layout { Document, Lines };
    enum class Numbers { Without, With }; ///< whether devices also tell the numbers that their texts show

    JsonInventory(writing::Output& output, Layout layout, Numbers numbers = Numbers::Without)
        : json_(output), layout_(layout), numbers_(numbers)
    {
    }

    void take(DeviceRecord&& device) override;

    /// Writes what closes the document; also when there was no device.
    void end();

private:
    void beginDocument();

    writing::JsonWriter json_;
    Layout layout_;
    Numbers numbers_;
    bool begun_ = false;
};

/// Prints all declarations as one document.
void writeCatalogueAsJson(writing::Output& output);

} // namespace embedded_host::inventory
