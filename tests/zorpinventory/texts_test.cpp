// What people look at, in every language: the summary, the changes and the tree of the sample machine.
#include "documents.h"
#include "services/localization.h"
#include "services/utf8.h"
#include "support/expected_file.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"
#include "tell/diff.h"
#include "tell/show.h"
#include "tell/summary.h"

#include <gtest/gtest.h>

namespace
{

using zorpinventory::document::Document;
namespace tell = zorpinventory::tell;

std::string summaryOf(const Document& document)
{
    tests::TextOutput output;
    tell::summaryAsText(output, zorpinventory::summary::summaryOf(document), "sample.dmi", {});
    return output.text();
}

std::string treeOf(const Document& document)
{
    const zorpinventory::choice::Choice choice{.types = {3, 4, 16, 17}};
    tests::TextOutput output;
    tell::showAsTree(output, {document, choice, zorpinventory::choice::chosen(document, choice)}, {.columns = 80},
                     false);
    return output.text();
}

/// Of each kind of change one: a module came, one moved, one was replaced, a processor went, firmware was updated, and
/// empty sockets are listed no more.
std::string changes()
{
    tests::Machine before;
    before.dimms = {{"A1", "5E0071C4"}, {"A2", "5E0082D1"}, {"B1", ""}, {"B2", ""}, {"C1", ""}, {"C2", ""}};
    auto after = before;
    after.firmware = "1.3";
    after.processors[1].version.clear();
    after.dimms = {{"A1", ""}, {"A2", "5E009AF0", "TM8R4", 8192}, {"B1", "5E0071C4"}, {"B2", "5E002F40"}};
    const auto a = tests::detailedDocumentOf(before.table());
    const auto b = tests::detailedDocumentOf(after.table());
    tests::TextOutput output;
    tell::diffAsText(output, zorpinventory::compare::changes(a, b), {}, false);
    return output.text();
}

TEST(Texts, OfTheSampleInEveryLanguage)
{
    const std::filesystem::path folder = TESTS_FOLDER "/zorpinventory/texts";
    const auto document = tests::detailedDocumentOf(tests::readBytes(MACHINES_FOLDER "/sample.dmi"));
    for (const std::string language : {"en", "de", "zh_CN"}) {
        embedded_host::services::speak(language);
        for (const auto& [name, text] :
             {std::pair{"summary", summaryOf(document)}, {"show", treeOf(document)}, {"diff", changes()}}) {
            tests::expectFile(folder / (name + ("." + language + ".txt")), text);
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);)
                EXPECT_LE(embedded_host::services::columnsOf(line), 80U) << name << ", " << language << ": " << line;
        }
    }
    embedded_host::services::speak("en");
}

} // namespace
