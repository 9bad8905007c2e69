// One table after the other, as a list names them.
#include "many_tables.h"

#include "devices/registry.h"
#include "discovery.h"
#include "inventory/json_inventory.h"
#include "lack_of_memory.h"
#include "lum.h"
#include "module_name.h"
#include "services/logging.h"
#include "services/messages.h"
#include "settings.h"
#include "table/library.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace embedded_host::session
{

namespace
{

using inventory::JsonInventory;
using services::message;

/// A line of the list of tables.
struct ListLine
{
    std::string text;
    std::string fault; ///< why it names no table; empty when it may
};

/// The next line of the list; nothing at its end.
std::optional<ListLine> readLine(std::istream& list, std::size_t number)
{
    // Longer than any system's paths. A list that is none may not have an end of line at all.
    static std::array<char, 0x10000> buffer;
    list.getline(buffer.data(), buffer.size());
    auto length = static_cast<std::size_t>(list.gcount());
    if (list.fail() && length + 1 < buffer.size())
        return std::nullopt;
    const bool isCut = list.fail();
    if (isCut) {
        list.clear();
        list.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    } else if (!list.eof()) {
        --length; // the end of the line
    }
    std::string text(buffer.data(), length);
    if (isCut)
        return ListLine{std::move(text), message("line %1 of the list is longer than any path", number)};
    if (text.empty())
        return ListLine{{}, message("line %1 of the list is empty; it has to name a table", number)};
    if (text.find('\0') != std::string::npos)
        return ListLine{std::move(text), message("line %1 of the list has a NUL in it; no path has", number)};
    return ListLine{std::move(text), {}};
}

[[noreturn]] void fail(const std::string& sentence) { throw orb5::OrbException(lum::String(sentence)); }

/// Reads the settings. The list alone names tables, and a table that is saved would take the place of the one before.
void readSettingsOfAll(const SettingsSource& settings)
{
    const bool loads = std::ranges::any_of(settings.given, [](const auto& s) { return s.first == "LoadTable"; });
    if (loads)
        fail(message("--tables takes the tables that standard input names; leave out LoadTable"));
    try {
        readSettings(settings);
    } catch (const std::runtime_error& error) {
        fail(error.what());
    }
    lum::String target;
    if (lum::Resource::getSetting(kModuleName, "SaveTable.value", target, lum::LumLocale::getGlobalLocale()) &&
        target.size() != 0)
        fail(message("--tables saves no table; leave out SaveTable"));
}

} // namespace

void printTables(std::istream& list, const SettingsSource& settings, writing::Output& output)
{
    readSettingsOfAll(settings);
    for (std::size_t number = 1; const auto line = readLine(list, number); ++number) {
        if (!line->fault.empty()) {
            inventory::writeFailure(output, line->text, line->fault);
            continue;
        }
        const auto& path = line->text;
        giveSetting("LoadTable", path);
        const services::LogSubject subject(path);
        const services::ShortLog shortLog;
        JsonInventory document(output, JsonInventory::Layout::OneLine, {true, path});
        try {
            devices::forgetValues();
            runDiscovery(document);
            if (table::summary())
                document.end();
            else
                inventory::writeFailure(output, path, table::failure());
        } catch (const std::bad_alloc&) {
            if (document.isBegun())
                throw;
            inventory::writeFailure(output, path, std::string(lackOfMemory()));
        }
        output.flush();
    }
    reportUnusedSettings();
}

} // namespace embedded_host::session
