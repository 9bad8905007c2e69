// Whole discoveries of a saved table: what is printed is valid in every format, and the log stays small.
#include "fuzzing.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

namespace
{

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
    using namespace embedded_host::inventory;
    fuzz::Input input(data, size);
    const unsigned choice = fuzz::takeChoice(input);
    const auto flag = [&](unsigned bit) { return std::string((choice >> bit & 1) == 0 ? "true" : "false"); };
    const char* const languages[] = {"en", "de", "zh_CN", "none"};
    lum::LumLocale::setGlobalLanguage(languages[choice >> 4 & 3]);
    const auto recorded = tests::discover(tests::Bytes(input.begin(), input.end()),
                                          {{"verbose", flag(0)}, {"FilterTrivialStrings", flag(1)}});
    fuzz::expectNone(tests::faultInLog(recorded.log));
    switch (choice >> 2 & 3) {
    case 0:
        fuzz::expectNone(
            tests::faultInJson(tests::printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Document)));
        break;
    case 1:
        expectValidLines(tests::printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Lines));
        break;
    default:
        const auto detail = (choice >> 2 & 1) == 0 ? Detail::All : Detail::Usual;
        const Looks looks{choice >> 6 << 4, false};
        fuzz::expectNone(tests::faultInText(tests::printed<TextInventory>(recorded.devices, detail, looks)));
    }
    return 0;
}
