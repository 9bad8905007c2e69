// Whole discoveries of a saved table: what is printed is valid in every format, and the log stays small.
#include "discovery.h"

#include "embedded_host/session.h"
#include "fuzzing.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "support/memory_file.h"
#include "support/output_rules.h"

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

void expectValidLines(std::string_view text)
{
    while (!text.empty()) {
        const auto end = text.find('\n');
        fuzz::expectNone(tests::faultInJson(text.substr(0, end)));
        text.remove_prefix(end + 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    static tests::MemoryFile table;
    static const tests::MemoryFile noSettings;
    orb5::SysInfoModule::setDiscoverDevicesCallback(zorpsysinfosmbios2::DiscoverSMBIOS);

    fuzz::Input input(data, size);
    const unsigned choice = fuzz::takeChoice(input);
    table.hold(input);
    const auto flag = [&](unsigned bit) { return std::string((choice >> bit & 1) == 0 ? "true" : "false"); };
    const char* const languages[] = {"en", "de", "zh_CN", "none"};
    lum::LumLocale::setGlobalLanguage(languages[choice >> 4 & 3]);
    const inventory::Looks looks{choice >> 6 << 4, false};
    const SettingsSource settings{
        {{"LoadTable", table.path()}, {"verbose", flag(0)}, {"FilterTrivialStrings", flag(1)}}, noSettings.path()};

    std::vector<tests::LogLine> log;
    const tests::LogRecorder recorder(log);
    switch (choice >> 2 & 3) {
    case 0:
        fuzz::expectNone(tests::faultInJson(printed<JsonInventory>(settings, JsonInventory::Layout::Document)));
        break;
    case 1:
        expectValidLines(printed<JsonInventory>(settings, JsonInventory::Layout::Lines));
        break;
    default:
        using inventory::Detail;
        fuzz::expectNone(tests::faultInText(
            printed<inventory::TextInventory>(settings, (choice >> 2 & 1) == 0 ? Detail::All : Detail::Usual, looks)));
    }
    fuzz::expectNone(tests::faultInLog(log));
    return 0;
}
