// Texts, settings and logging.
#include "services/utf8.h"
#include "session/settings.h"
#include "support/recorded_session.h"

#include <gtest/gtest.h>

namespace
{

using embedded_host::session::readSettings;
using lum::String;

TEST(Strings, TrimDropsAsciiWhiteSpaceOnly)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", ""}, {" \t\n\v\f\r ", ""}, {"  a b\t", "a b"}, {"\xC2\xA0 x", "\xC2\xA0 x"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(String(text).trim().bytes(), expected);
}

TEST(Strings, RemoveStaysInside)
{
    String text("L1 Cache");
    text.remove(100, 1);
    text.remove(3, 100);
    EXPECT_EQ(text.bytes(), "L1 ");
}

TEST(Utf8, WhatIsIllFormedIsReplacedAndWhatTerminalsObeyIsEscaped)
{
    const std::pair<const char*, const char*> cases[] = {
        {"\x1B]0;\x07\x7F\xC2\x9B\t\r\n\xE2\x80\xAE\"\\", R"(\x1B]0;\x07\x7F\x9B\x09\x0D\n\u202E"\)"},
        {"\xFF\xFE", "\uFFFD\uFFFD"},
        {"a\xC3", "a\uFFFD"},
        {"\xE4\xB8z", "\uFFFDz"},
        {"\xF0\x9F\x98z", "\uFFFDz"},
        {"\xC0\x80", "\uFFFD\uFFFD"},
        {"\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD"},
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\x80\xBF", "\uFFFD\uFFFD"},
        {"\xF0\x9F\x98\x80", "\U0001F600"},
        {"a\u200B\u00ADb\uFEFF\u2066\u180E\U000E0041", R"(a\u200B\xADb\uFEFF\u2066\u180E\U000E0041)"},
    };
    for (const auto& [text, expected] : cases) {
        std::string shown;
        embedded_host::services::appendPrintable(shown, text);
        EXPECT_EQ(shown, expected);
    }
}

TEST(Utf8, ColumnsAreAsTerminalsCountThem)
{
    const std::pair<const char*, std::size_t> cases[] = {
        {"ASCII", 5},      {"Büro", 4},    {"中文", 4},         {"ＡＢ", 4},
        {"ｱ", 1},          {"e\u0301", 1}, {"한", 2},           {"\u1112\u1161\u11AB", 2},
        {"\U0001F600", 2}, {"│", 1},       {"\u0E01\u0E34", 1},
    };
    for (const auto& [text, columns] : cases)
        EXPECT_EQ(embedded_host::services::columnsOf(text), columns) << text;
}

TEST(Values, BooleanTexts)
{
    for (const bool before : {false, true}) {
        const auto read = [&](const char* text) {
            bool flag = before;
            lum::LumValue::getCorrectValue(text, lum::LUM_TYPE_BOOL, true).get(flag);
            return flag;
        };
        for (const char* yes : {"1", "true", "YES", "On", "\t yes "})
            EXPECT_TRUE(read(yes)) << yes;
        for (const char* no : {"0", "FALSE", "no", "oFF ", " 0\t"})
            EXPECT_FALSE(read(no)) << no;
        for (const char* neither : {"", "2", "perhaps", "tru", "yes\n", "1 1"})
            EXPECT_EQ(read(neither), before) << neither;
    }
}

TEST(Values, FormatsAndPaddedNumbersAreOfAnyLength)
{
    EXPECT_EQ(lum::LumValue(7u).toString(3).bytes(), "007");
    EXPECT_EQ(lum::SprintfFormat("%s", std::string(5000, 'x').c_str()).size(), 5000u);
}

/// What a setting of the module's section says, "(absent)" when it does not exist.
std::string setting(const char* key)
{
    String out("(absent)");
    const bool exists = lum::Resource::getSetting("zorpsysinfosmbios2", key, out, lum::LumLocale::getGlobalLocale());
    EXPECT_EQ(exists, out.bytes() != "(absent)");
    return std::string(out.bytes());
}

TEST(Settings, TheCommandLineWinsOverTheFile)
{
    const tests::TemporaryFolder folder;
    const auto file = folder.file("s.ini", "\xEF\xBB\xBF; a comment\r\n"
                                           "[other]\r\nverbose.value = other\r\n"
                                           "[zorpsysinfosmbios2]\r\n"
                                           "verbose.value = false \r\n"
                                           "LoadTable.value=/srv/a folder;x/\xC3\xA4.dmi\r\n"
                                           "SaveTable.value =\r\n");
    readSettings({{}, file});
    EXPECT_EQ(setting("verbose.value"), "false");
    EXPECT_EQ(setting("LoadTable.value"), "/srv/a folder;x/\xC3\xA4.dmi");
    EXPECT_EQ(setting("SaveTable.value"), "") << "an empty setting is there";
    EXPECT_EQ(setting("FilterTrivialStrings.value"), "(absent)");
    EXPECT_EQ(setting("VERBOSE.value"), "(absent)") << "case counts";
    EXPECT_EQ(setting("verbose"), "(absent)");

    readSettings({{{"verbose", "first"}, {"verbose", "second=x"}, {"SaveTable", "y"}}, file});
    EXPECT_EQ(setting("verbose.value"), "second=x") << "the last of a name wins";
    EXPECT_EQ(setting("SaveTable.value"), "y");
}

TEST(Settings, ABadFileIsToldWithItsLineAndLeavesTheSettingsAsTheyWere)
{
    const tests::TemporaryFolder folder;
    readSettings({{{"verbose", "kept"}}, folder.file("empty.ini", "")});
    const std::pair<const char*, const char*> cases[] = {
        {"[zorpsysinfosmbios2]\nverbose.value false\n", "line 2"},
        {"\n[zorpsysinfosmbios2\n", "line 2"},
        {"[a]\nx=1\nx=2\n", "line 3"},
    };
    for (const auto& [content, place] : cases) {
        const auto file = folder.file("bad.ini", content);
        try {
            readSettings({{}, file});
            ADD_FAILURE() << content;
        } catch (const std::runtime_error& error) {
            EXPECT_TRUE(std::string(error.what()).starts_with("settings file " + file.string() + ", " + place))
                << error.what();
        }
    }
    EXPECT_EQ(setting("verbose.value"), "kept");
}

TEST(Logging, ALoggerTakesWhatBothThresholdsLetPass)
{
    lum::Logger* logger = nullptr;
    lum::LogFactory::createLogger("thresholds", logger);
    const auto before = lum::LogFactory::getPriority();
    testing::internal::CaptureStderr();
    lum::LogFactory::setPriority(3);
    EXPECT_FALSE(logger->log(2, lum::LoggerStream() + "below the process's"));
    EXPECT_TRUE(logger->log(3, lum::LoggerStream() + "2655 " + String("\x1B[2J\xFF\n") + -7));
    logger->priority = 4;
    EXPECT_EQ(logger->resolvePriority(), 4);
    EXPECT_FALSE(logger->log(3, lum::LoggerStream() + "below its own"));
    const lum::TraceLogger silent(nullptr, "nowhere", "nowhere", 1);
    lum::LogFactory::setPriority(before);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[3] thresholds: 2655 \\x1B[2J\xEF\xBF\xBD\\n-7\n");
}

} // namespace
