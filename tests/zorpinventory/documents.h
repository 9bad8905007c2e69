// Documents of machines that tests make up: a table goes through the module and the host, as it does for users.
#pragma once

#include "document/document.h"
#include "support/table_builder.h"

#include <functional>
#include <string>

namespace tests
{

/// The JSON document of a table in any layout.
std::string documentText(const Bytes& image);

/// The same with details and with all types, as the program asks for it.
std::string detailedText(const Bytes& image);

inline zorpinventory::document::Document documentOf(const Bytes& image)
{
    return zorpinventory::document::read(documentText(image), "a test's document");
}

inline zorpinventory::document::Document detailedDocumentOf(const Bytes& image)
{
    return zorpinventory::document::read(detailedText(image), "a test's document");
}

/// The document with its devices in another order.
std::string shuffled(const std::string& document, unsigned seed);

/// The document with its devices in another order and with other handles: the same machine.
std::string shuffledAndRenumbered(const std::string& document, unsigned seed);

/// A machine with what people change: a board with two processors, four memory sockets, two slots and a battery.
struct Machine
{
    struct Dimm
    {
        std::string locator;
        std::string serial; ///< empty: nothing in the socket
        std::string part = "TM16R4";
        std::uint16_t megabytes = 16384;
        std::string bank = {};
        std::uint16_t megahertz = 3200;
    };
    struct Processor
    {
        std::string socket;
        std::string version; ///< empty: nothing in the socket
        std::string cache = "L1";
    };
    struct Slot
    {
        std::string name;
        bool used;
    };

    std::vector<Dimm> dimms = {{"A1", "5E0071C4"}, {"A2", "5E0082D1"}, {"B1", ""}, {"B2", ""}};
    std::vector<Processor> processors = {{"CPU0", "Norn N9"}, {"CPU1", "Norn N9"}};
    std::vector<Slot> slots = {{"PCIE1", true}, {"PCIE2", false}};
    std::string firmware = "1.2";
    std::string serial = "HI-0042-7719";
    std::string uuid = "3F0C1A7799B2";
    std::string bootStatus = "fine";
    unsigned char bootState = 3;
    std::uint32_t mappedEnd = 0x01FFFFFF;
    std::uint16_t firstHandle = 0x0010;
    bool backwards = false; ///< the structures stand in the reverse order
    bool wideEntryPoint = true;

    Bytes table() const;
};

} // namespace tests
