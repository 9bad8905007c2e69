// Whole discoveries of saved tables: what is printed is valid in every format, the log stays small, and nothing of one
// table is left for the next.
#include "discovery.h"

#include "embedded_host/session.h"
#include "fuzzing.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "session/many_tables.h"
#include "support/memory_file.h"
#include "support/output_rules.h"

#include <sanitizer/allocator_interface.h>
#include <sstream>

namespace
{

using namespace embedded_host;
using inventory::JsonInventory;

/// One discovery into an inventory; returns what that printed.
template <class Inventory, class... How>
std::string printed(const SettingsSource& settings, How... how)
{
    return tests::printedOf<Inventory>([&](auto& inventory) { discover(settings, inventory); }, how...);
}

std::vector<std::string> validLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line); lines.push_back(line))
        fuzz::expectNone(tests::faultInJson(line));
    return lines;
}

/// One table, another and the first again in one run: the first prints what it prints alone, and a second run takes no
/// more memory than the first.
void tryManyTables(const std::string& path, const std::string& other, const SettingsSource& settings,
                   std::vector<tests::LogLine>& log)
{
    const auto run = [&] {
        std::istringstream list(path + "\n" + other + "\n" + path + "\n");
        tests::TextOutput output;
        session::printTables(list, settings, output);
        return output.text();
    };
    const auto lines = validLines(run());
    fuzz::expect(lines.size() == 3 && lines[0] == lines[2], "a table left something behind");
    log = {};
    const auto before = __sanitizer_get_current_allocated_bytes();
    run();
    log = {};
    fuzz::expect(__sanitizer_get_current_allocated_bytes() <= before, "memory grows with the number of tables");

    const inventory::JsonDetails details{true, std::nullopt};
    auto alone = settings;
    alone.given.emplace_back("LoadTable", path);
    auto document = printed<JsonInventory>(alone, JsonInventory::Layout::Document, details);
    fuzz::expectNone(tests::faultInJson(document));
    std::erase(document, '\n');
    const bool loaded = lines[0].find("\"error\":") == std::string::npos;
    fuzz::expect(!loaded || lines[0].ends_with(document.substr(1)), "a table in a list is not what it is alone");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static tests::MemoryFile table;
    static tests::MemoryFile previous;
    static const tests::MemoryFile noSettings;
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);

    fuzz::Input input(data, size);
    const unsigned choice = fuzz::takeChoice(input);
    table.hold(input);
    const auto flag = [&](unsigned bit) { return std::string((choice >> bit & 1) == 0 ? "true" : "false"); };
    const char* const languages[] = {"en", "de", "zh_CN", "none"};
    lum::LumLocale::setGlobalLanguage(languages[choice >> 4 & 3]);
    const inventory::Looks looks{choice >> 6 << 4, false};
    SettingsSource settings{{{"verbose", flag(0)}, {"FilterTrivialStrings", flag(1)}}, noSettings.path()};

    std::vector<tests::LogLine> log;
    const tests::LogRecorder recorder(log);
    const inventory::JsonDetails details{(choice >> 6 & 1) != 0, std::nullopt};
    if ((choice >> 2 & 3) < 2 && choice >> 7 != 0) {
        tryManyTables(table.path(), previous.path(), settings, log);
        previous.hold(input);
        return 0;
    }
    settings.given.emplace_back("LoadTable", table.path());
    switch (choice >> 2 & 3) {
    case 0:
        fuzz::expectNone(
            tests::faultInJson(printed<JsonInventory>(settings, JsonInventory::Layout::Document, details)));
        break;
    case 1:
        validLines(printed<JsonInventory>(settings, JsonInventory::Layout::Lines, details));
        break;
    default:
        using inventory::Detail;
        fuzz::expectNone(tests::faultInText(
            printed<inventory::TextInventory>(settings, (choice >> 2 & 1) == 0 ? Detail::All : Detail::Usual, looks)));
    }
    fuzz::expectNone(tests::faultInLog(log));
    return 0;
}
