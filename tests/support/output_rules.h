// What holds for everything that is printed or logged, whatever the input.
#pragma once

#include "embedded_host/inventory.h"
#include "log_recorder.h"
#include "writing/output.h"

namespace tests
{

/// An output whose text stays in memory.
class TextOutput : public embedded_host::writing::Output
{
public:
    /// All that was written; finishes the output.
    const std::string& text()
    {
        finish();
        return text_;
    }

private:
    void writeThrough(std::string_view text) override { text_ += text; }
    void complete() override {}

    std::string text_;
};

/// What an inventory prints of the devices that are brought to it.
template <class Inventory, class Bring, class... How>
std::string printedOf(Bring bring, How... how)
{
    TextOutput output;
    Inventory inventory(output, how...);
    bring(inventory);
    inventory.end();
    return output.text();
}

/// What an inventory prints of these devices.
template <class Inventory, class... How>
std::string printed(const std::vector<embedded_host::DeviceRecord>& devices, How... how)
{
    const auto bring = [&](auto& inventory) {
        for (auto device : devices)
            inventory.take(std::move(device));
    };
    return printedOf<Inventory>(bring, how...);
}

/// What is wrong with a text for people; empty when it is UTF-8 and no character but the newline drives a terminal.
std::string faultInText(std::string_view text);

/// What is wrong with a JSON document; empty when it parses, its numbers read back and no terminal minds it either.
std::string faultInJson(std::string_view document);

/// What is wrong with what one table had logged; empty for a few lines, each of them once.
std::string faultInLog(std::vector<LogLine> lines);

} // namespace tests
