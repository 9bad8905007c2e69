// The inventory and the catalogue of declarations as JSON.
#pragma once

#include "embedded_host/inventory.h"
#include "writing/json_writer.h"

#include <optional>

namespace embedded_host::inventory
{

/// What is told beside the devices and their texts.
struct JsonDetails
{
    bool wanted = false;               ///< numbers, and in documents the table, the other structures and the faults
    std::optional<std::string> source; ///< the table's name, as the document's first key
};

/// One document, or one device a line. Each device is written when it is taken; nothing is collected.
class JsonInventory : public DeviceSink
{
public:
    enum class Layout {
        Document, ///< each device on a line of its own
        Lines,    ///< the devices alone, one a line
        OneLine,  ///< the whole document on one line
    };

    JsonInventory(writing::Output& output, Layout layout, JsonDetails details = {})
        : json_(output), layout_(layout), details_(std::move(details))
    {
    }

    void take(DeviceRecord&& device) override;

    /// Whether anything was written.
    bool isBegun() const { return begun_; }

    /// Writes what closes the document; also when there was no device.
    void end();

private:
    void beginDocument();
    void beginList(std::string_view name);
    void beginElement();
    void endList();
    void writeOthers();
    void writeFaults();

    writing::JsonWriter json_;
    Layout layout_;
    JsonDetails details_;
    bool begun_ = false;
    bool listIsEmpty_ = true;
    std::optional<DeviceRecord> root_; ///< waits for the table, which comes before it in a document with details
};

/// Writes the line that stands for a table that cannot be had.
void writeFailure(writing::Output& output, const std::string& source, const std::string& why);

/// Prints all declarations as one document.
void writeCatalogueAsJson(writing::Output& output);

} // namespace embedded_host::inventory
