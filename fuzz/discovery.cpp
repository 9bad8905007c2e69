// Whole discoveries of a saved table: what is printed is valid as JSON and as text, and the log stays small.
#include "fuzzing.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"

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
    if ((choice >> 2 & 3) == 0) {
        fuzz::expectNone(
            tests::faultInJson(tests::printed<JsonInventory>(recorded.devices, JsonInventory::Layout::Document)));
    } else {
        const auto detail = (choice >> 2 & 1) == 0 ? Detail::All : Detail::Usual;
        const Looks looks{choice >> 6 << 4, false};
        fuzz::expectNone(tests::faultInText(tests::printed<TextInventory>(recorded.devices, detail, looks)));
    }
    return 0;
}
