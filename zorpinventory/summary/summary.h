// What one came for: the facts of one screen. What is not known, or a placeholder, is not in them.
#pragma once

#include "checks/checks.h"
#include "document/document.h"
#include "identity/identity.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zorpinventory::summary
{

/// A number that may not be known.
using Count = std::optional<std::uint64_t>;

struct Thing
{
    std::string maker;
    std::string product;
    std::string version;
    std::string serial;

    bool empty() const { return maker.empty() && product.empty() && version.empty() && serial.empty(); }
};

struct Firmware
{
    std::string vendor;
    std::string version;
    std::string date; ///< as ISO 8601 has it where it can be read
};

/// Processors that are alike.
struct Processor
{
    std::string name; ///< empty when nothing tells it
    unsigned count = 0;
};

/// An occupied memory device, or several that are alike.
struct Module
{
    std::string locator;
    std::string size;
    std::string type;
    Count configured; ///< million transfers a second
    Count possible;
    std::string maker;
    std::string part;
    std::string serial;
    unsigned count = 1;
};

struct Memory
{
    Count bytes;
    unsigned occupied = 0;
    unsigned sockets = 0;
    Count mostBytes;
    std::vector<Module> modules;
};

/// A battery or a power supply.
struct Supply
{
    std::string maker;
    std::string name;
    std::string rating; ///< capacity or power
};

/// How the machine compares with its last record in the history.
struct SinceRecord
{
    std::int64_t number = 0;
    std::string taken;
    std::size_t changes = 0;
    std::string command; ///< that tells them
};

struct Summary
{
    identity::Key key;
    Thing system;
    std::string chassis;
    Thing board;
    Firmware firmware;
    std::vector<Processor> processors;
    Count cores;
    Count threads;
    Memory memory;
    unsigned usedSlots = 0;
    unsigned freeSlots = 0;
    std::vector<Supply> batteries;
    std::vector<Supply> powerSupplies;
    checks::Counts findings{};              ///< whoever asks for the summary asks the rules
    std::optional<SinceRecord> sinceRecord; ///< for the command to fill in; nothing where there is no record
};

Summary summaryOf(const document::Document& document);

/// Gathers the modules that are alike but for their places and serial numbers.
std::vector<Module> gathered(const std::vector<Module>& modules);

} // namespace zorpinventory::summary
