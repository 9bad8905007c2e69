// What show tells: the same devices as the module's program, chosen; names of the field; and nothing that a spreadsheet
// would calculate.
#include "documents.h"
#include "embedded_host/inventory.h"
#include "inventory/json_inventory.h"
#include "inventory/text_inventory.h"
#include "knowledge/properties.h"
#include "services/localization.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"
#include "tell/show.h"
#include "tell/texts.h"

#include <gtest/gtest.h>

namespace
{

using embedded_host::inventory::Detail;
using embedded_host::inventory::JsonDetails;
using embedded_host::inventory::JsonInventory;
using embedded_host::inventory::TextInventory;
using tests::TextOutput;
using zorpinventory::choice::Choice;
using zorpinventory::document::Document;
namespace tell = zorpinventory::tell;

template <class Show, class... How>
std::string shown(Show show, const Document& document, const Choice& choice, const How&... how)
{
    TextOutput output;
    show(output, {document, choice, zorpinventory::choice::chosen(document, choice)}, how...);
    return output.text();
}

TEST(Show, TellsEverythingAsTheModulesProgramDoes)
{
    for (const std::string name : {"sample_dell", "sample_lenovo"}) {
        const auto image = tests::readBytes(std::string(MACHINES_FOLDER "/") + name + ".dmi");
        const auto devices = tests::discover(image).devices;
        const auto document = tests::detailedDocumentOf(image);
        for (const auto detail : {Detail::Usual, Detail::All})
            EXPECT_EQ(shown(tell::showAsTree, document, {}, embedded_host::outline::Looks(), detail == Detail::All),
                      tests::printed<TextInventory>(devices, detail));
        EXPECT_EQ(shown(tell::showAsLines, document, {}),
                  tests::printed<JsonInventory>(devices, JsonInventory::Layout::Lines, JsonDetails{true, {}}));
        const auto text = tests::documentText(image);
        EXPECT_EQ(shown(tell::showAsJson, zorpinventory::document::read(text, name), {}), text);
    }
}

TEST(Show, LeavesOutWhatTheModuleDeclaresSo)
{
    using Category = orb5::PropertyCategory;
    std::vector<std::string_view> expected;
    tests::discover(tests::Machine().table()); // so that the module has declared its properties
    for (const auto* property : embedded_host::declaredProperties()) {
        const auto& categories = property->categories;
        if (categories.contains(Category::Internal()) ||
            !(categories.contains(Category::Tier1()) || categories.contains(Category::Tier2())))
            expected.push_back(property->name);
    }
    std::ranges::sort(expected);
    EXPECT_TRUE(std::ranges::equal(expected, zorpinventory::knowledge::kNotUsuallyShown));
}

TEST(Show, WhatIsChosenHasItsAncestorsAsHeadlines)
{
    const auto document = tests::detailedDocumentOf(tests::Machine().table());
    Choice choice{.types = {7}};
    EXPECT_EQ(shown(tell::showAsTree, document, choice, embedded_host::outline::Looks(), false),
              "SMBIOS  3.0.0\n"
              "└─ Processors\n"
              "   ├─ Processor  CPU0, Norn N9\n"
              "   │  └─ L1 Cache  L1, 64 KB\n"
              "   └─ Processor  CPU1, Norn N9\n"
              "      └─ L1 Cache  L1, 64 KB\n"
              "34 lines not shown (--all)\n");
    choice = {.types = {17, 1}, .properties = {"t17_serial", "t1_serial"}};
    EXPECT_EQ(shown(tell::showAsTexts, document, choice), "HI-0042-7719\n5E0071C4\n5E0082D1\n");
    choice = {.types = {17}, .handles = {0x0010, 0x001C}, .properties = {"t17_sz"}};
    EXPECT_EQ(shown(tell::showAsCsv, document, choice), "uid,property,value,number,unit,code\r\n"
                                                        "SMBIOS:0x001C,t17_sz,16 GB,17179869184,BYTES,\r\n");
}

TEST(Show, NoSpreadsheetTakesATextForAFormula)
{
    const auto row = [](const std::string& value, const std::string& numbers = "{}") {
        const auto document = zorpinventory::document::read(
            R"({"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2"},"devices":[{"uid":"u","name":"",)"
            R"("properties":{"p":)" +
                value + R"(},"numbers":)" + numbers + "}]}",
            "a test's document");
        const auto text = shown(tell::showAsCsv, document, {});
        return text.substr(text.find('\n') + 1);
    };
    EXPECT_EQ(row(R"("=1+1")"), "u,p,'=1+1,,,\r\n");
    EXPECT_EQ(row(R"x(" @SUM(A1,B1)")x"), "u,p,\"' @SUM(A1,B1)\",,,\r\n");
    EXPECT_EQ(row("\"\xEF\xBC\x8B"
                  "1\""),
              "u,p,'\xEF\xBC\x8B"
              "1,,,\r\n");
    EXPECT_EQ(row(R"("a\u001B\r\n=1")"), "u,p,a\\x1B\\x0D\\n=1,,,\r\n");
    EXPECT_EQ(row(R"("say \"hi\"")"), "u,p,\"say \"\"hi\"\"\",,,\r\n");
    EXPECT_EQ(row("-7"), "u,p,-7,-7,,\r\n") << "a number is one";
    EXPECT_EQ(row(R"(["A","B"])", R"({"p":{"codes":[7,13]}})"), "u,p,A,,,7\r\nu,p,B,,,13\r\n");
}

TEST(Show, NamesOfTheFieldTellWhatItsToolsPrint)
{
    tests::Machine machine;
    const auto told = [&](std::string_view name) {
        const auto document = tests::detailedDocumentOf(machine.table());
        const auto keyword =
            std::ranges::find(zorpinventory::knowledge::kKeywords, name, &zorpinventory::knowledge::Keyword::name);
        std::string all;
        for (const auto& text : zorpinventory::choice::textsOf(document, *keyword))
            all += text + "|";
        return all;
    };
    EXPECT_EQ(told("system-serial-number"), "HI-0042-7719|");
    EXPECT_EQ(told("processor-version"), "Norn N9|Norn N9|");
    machine.uuid = "abcdefghijklmnop";
    EXPECT_EQ(told("system-uuid"), "64636261-6665-6867-696a-6b6c6d6e6f70|");
    EXPECT_EQ(told("system-family"), "");
    for (const auto& keyword : zorpinventory::knowledge::kKeywords)
        EXPECT_TRUE(tell::isDeclared(keyword.property)) << keyword.name;
}

} // namespace
