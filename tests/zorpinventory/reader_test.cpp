// Documents that are none, and what is said of them; and the command line, read without running anything.
#include "commands/commands.h"
#include "document/problem.h"
#include "documents.h"
#include "services/localization.h"
#include "services/utf8.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace
{

using zorpinventory::Problem;
using zorpinventory::document::read;

/// The sentence of a problem, or "(none)".
template <class Function>
std::string problemOf(Function function)
{
    try {
        function();
        return "(none)";
    } catch (const Problem& problem) {
        return problem.what();
    }
}

std::string headed(const std::string& rest)
{
    return R"({"format":"zorp-sysinfo-1","module":{"name":"zorpsysinfosmbios2"},)" + rest + "}";
}

std::string withDevice(const std::string& rest)
{
    return headed(R"("devices":[{"uid":"SMBIOS","name":"SMBIOS",)" + rest + "}]");
}

TEST(Reader, SaysWhatIsWrongAndWhere)
{
    const std::pair<std::string, const char*> cases[] = {
        {"", "it is empty"},
        {std::string(5000, ' '), "it is empty"},
        {"[]", "it is no inventory of zorpsysinfosmbios2"},
        {"7", "it is no inventory of zorpsysinfosmbios2"},
        {"{}", "it is no inventory of zorpsysinfosmbios2"},
        {"OrbException: x", "it is no JSON from byte 0 on"},
        {R"({"format":"zorp-sysinfo-1","mod)", "it ends in the middle, at byte 31; write it again with -o"},
        {headed(R"("devices":[])") + "x", "it is no JSON from byte 79 on"},
        {headed(R"("devices":[])") + std::string("\0x", 2), "it is no JSON from byte 79 on"},
        {headed("\"devices\":[\"\xFF\"]"), "it is no JSON from byte 78 on"},
        {R"({"format":"zorp-sysinfo-2"})", "its format is zorp-sysinfo-2, and this program reads zorp-sysinfo-1"},
        {R"({"format":"zorp-diff-1"})", "its format is zorp-diff-1, and this program reads zorp-sysinfo-1"},
        {R"({"format":"zorp-sysinfo-1","module":{"name":"other"},"devices":[]})",
         "it comes from another module, other"},
        {R"({"format":"a","format":"b"})", "it has \"format\" twice"},
        {headed(R"("x":1)"), "\"devices\" is missing"},
        {headed(R"("devices":{})"), "\"devices\" is no array"},
        {headed(R"("devices":[[]])"), "something in it is no object"},
        {headed(R"("devices":[{"uid":"SMBIOS"}])"), "\"name\" is missing"},
        {withDevice(R"("uid":"SMBIOS")"), "it has \"uid\" twice"},
        {withDevice(R"("properties":{"a":"","b":"","a":""})"), "it has \"a\" twice"},
        {withDevice(R"("properties":{"a":null})"), "\"a\" is no text"},
        {withDevice(R"("properties":{"a":["",7]})"), "something in it is no text"},
        {withDevice(R"("properties":{"a":{"value":"7","unit":"BYTES","text":""}})"), "\"a\" is no number"},
        {withDevice(R"("properties":{"a":)" + std::string(40, '7') + "}"), "a number in it is longer than any"},
        {withDevice(R"("childBusIds":[{"id":"0x0001"}])"), "\"bus\" is missing"},
        {headed("\"x\":" + std::string(100000, '[')), "it is nested deeper than any inventory"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(problemOf([&given = text] { read(given, "x.json"); }), "cannot read x.json: " + std::string(expected))
            << text;
}

TEST(Reader, PassesOverWhatLaterVersionsMayAdd)
{
    const auto document =
        read(headed(R"("new":{"a":[{}]},"devices":[{"uid":"SMBIOS:0x0011","name":"Memory Device",)"
                    R"("new":[1,{"a":null}],"properties":{"smbios2_hdr_type":17,"t17_sz":"1 GB"},)"
                    R"("numbers":{"t17_sz":{"value":1073741824,"unit":"BYTES"},"t17_new":{"code":1}}}])"),
             "x");
    ASSERT_EQ(document.devices().size(), 1U);
    EXPECT_TRUE(document.detailed());
    EXPECT_EQ(document.devices()[0].type, 17U);
    EXPECT_EQ(document.devices()[0].number("t17_sz"), 1073741824.0);
}

TEST(Reader, TakesADocumentThatIsCutAnywhereForNone)
{
    const auto text = tests::documentText(tests::Machine().table());
    for (std::size_t size = 0; size + 2 < text.size(); size += 1 + size / 64) // without its last bracket and line feed
        ASSERT_NE(problemOf([&] { read(text.substr(0, size), "x"); }), "(none)") << size;
}

TEST(CommandLine, WordsInOptionsOut)
{
    using Words = std::vector<std::string>;
    const auto parsed = [](Words words) {
        words.insert(words.begin(), "zorpinventory");
        return zorpinventory::commandline::parsed(zorpinventory::commands::all(), words);
    };
    const auto told = [&](const Words& words) {
        const auto request = parsed(words);
        std::string text = request.command != nullptr ? request.command->name : "(none)";
        for (const auto& source : request.arguments.sources)
            text += " " + source;
        for (const auto& [key, values] : request.arguments.given)
            text += " " + key + "=" + (values.empty() ? "" : values.back());
        return text;
    };
    EXPECT_EQ(told({}), "summary");
    EXPECT_EQ(told({"a.dmi", "-f", "json"}), "summary a.dmi format=json");
    EXPECT_EQ(told({"summary", "-"}), "summary -");
    EXPECT_EQ(told({"diff", "a", "--all", "b", "-ox"}), "diff a b all= output=x");
    EXPECT_EQ(told({"diff", "a", "--", "-b"}), "diff a -b");
    EXPECT_EQ(told({"diff", "-h"}), "diff");
    EXPECT_EQ(told({"-h"}), "(none)");

    const std::pair<Words, const char*> mistakes[] = {
        {{"diff"}, "diff needs one more source: A [B]"},
        {{"diff", "a", "b", "c"}, "c is one source too many for diff"},
        {{"--bogus"}, "there is no option --bogus"},
        {{"-f", "xml"}, "--format: \"xml\" is none of text, json"},
        {{"-o"}, "--output needs a value"},
    };
    for (const auto& [words, expected] : mistakes)
        EXPECT_EQ(problemOf([&, given = words] { parsed(given); }),
                  expected + std::string(" (--help lists what there is)"));
}

TEST(CommandLine, DeclarationsAreWhole)
{
    using namespace zorpinventory::commandline;
    const auto commands = zorpinventory::commands::all();
    for (const char* language : {"en", "de", "zh_CN"}) {
        embedded_host::services::speak(language);
        std::set<std::string> helps;
        for (const auto& command : commands) {
            std::set<std::string_view> keys{kHelp.key(), kVersion.key()};
            for (const auto& option : command.options) {
                EXPECT_TRUE(keys.insert(option.key()).second) << command.name << " has --" << option.key() << " twice";
                const bool isList = option.completes == Completes::Choices || option.completes == Completes::Names;
                EXPECT_EQ(isList, !option.choices.empty());
                EXPECT_TRUE(option.isFlag() ? option.completes == Completes::Nothing : true);
            }
            EXPECT_TRUE(helps.insert(help(commands, &command)).second);
        }
        helps.insert(help(commands, nullptr));
        for (const auto& text : helps) {
            std::string_view rest = text;
            while (!rest.empty()) {
                const auto line = rest.substr(0, rest.find('\n'));
                EXPECT_LE(embedded_host::services::columnsOf(line), 80U) << line;
                rest.remove_prefix(line.size() + 1);
            }
        }
    }
    embedded_host::services::speak("en");
}

} // namespace
