// The standard's enumeration texts.
#include "smbios2.h"
#include "support/recorded_session.h"
#include "texts/catalogue.h"
#include "texts/enum_texts.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

namespace
{

using libsmbios2::Smbios2_SysInfo;

const char* lookUp(unsigned char type, unsigned offset, unsigned value, unsigned char width = 0,
                   unsigned char shift = 0)
{
    return Smbios2_SysInfo::getEnumFieldString(type, offset, value, width, shift);
}

TEST(Texts, LookUps)
{
    EXPECT_STREQ(lookUp(3, 0x05, 0x89, 1, 7), "Chassis lock is present");
    EXPECT_STREQ(lookUp(3, 0x05, 0x89, 7, 0), "Laptop");
    EXPECT_STREQ(lookUp(17, 0x12, 0x1A), "DDR4");
    EXPECT_STREQ(lookUp(18, 0x04, 3), "OK");
    EXPECT_STREQ(lookUp(0, 0x0A, 40), "Reserved") << "for the vendor: no text of its own";
    EXPECT_STREQ(lookUp(17, 0x12, 0x7F), "Out of range");
    EXPECT_STREQ(lookUp(17, 0x12, 0x11A), "Out of range") << "not cut to a byte";
    EXPECT_STREQ(lookUp(15, 0x0A, 0xC0), "BIOS Vendor/OEM-specific");
    EXPECT_EQ(lookUp(17, 0x0F, 1), nullptr) << "no table for the device set";
    EXPECT_EQ(lookUp(3, 0x05, 1), nullptr) << "no table for the whole byte";
    EXPECT_EQ(lookUp(17, 0x112, 0x1A), nullptr);
    EXPECT_EQ(Smbios2_SysInfo::getLocalizedEnumFieldString(17, 0x0F, 1, 0, 0).bytes(), "");
}

TEST(Texts, KnownAndDefined)
{
    const auto isKnown = Smbios2_SysInfo::isKnownEnum;
    const auto isDefined = Smbios2_SysInfo::isDefinedEnum;
    for (const char* neither : std::initializer_list<const char*>{nullptr, "Reserved", "Out of range"})
        EXPECT_TRUE(!isKnown(neither) && !isDefined(neither));
    for (const char* known : {"Other", "Unknown", "None", "Undefined"})
        EXPECT_TRUE(isKnown(known) && !isDefined(known)) << known;
    for (const char* both : {"USB", "other"})
        EXPECT_TRUE(isKnown(both) && isDefined(both)) << both;
}

TEST(Texts, AgreeWithTheStandardsTables)
{
    std::ifstream facts(SHARED_FOLDER "/smbios-enumerations.tsv");
    if (!facts)
        GTEST_SKIP() << "no list of the standard's texts beside the checkout";
    std::string line;
    std::getline(facts, line);
    std::set<std::string> lookUps;
    unsigned texts = 0;
    while (std::getline(facts, line)) {
        std::istringstream columns(line);
        std::string cell[9];
        for (auto& each : cell)
            std::getline(columns, each, '\t');
        const auto number = [&](std::size_t i) { return static_cast<unsigned>(std::stoul(cell[i], nullptr, 0)); };
        const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(number(i)); };
        const bool reserved = cell[6] == "reserved";
        EXPECT_STREQ(lookUp(byteAt(0), number(1), number(4) << number(3), byteAt(2), byteAt(3)),
                     reserved ? "Reserved" : cell[8].c_str())
            << line;
        lookUps.insert(cell[0] + cell[1] + "," + cell[2] + "," + cell[3]);
        texts += reserved ? 0 : 1;
    }
    EXPECT_EQ(lookUps.size(), 98u);
    EXPECT_EQ(texts, 1568u);
}

/// Every text that can be asked for, but for device names: those, like messages, are held against the template.
std::set<std::string> askedFor()
{
    std::set<std::string> keys{"NotInstalled", "Reserved", "Out of range"};
    for (const auto* property : embedded_host::declaredProperties())
        keys.insert(std::string("LocalizedString.propname_").append(property->name));
    for (unsigned place = 0; place < 256u * 256u * 9u * 8u; ++place)
        if (const auto* field =
                embedded_host::texts::findField(place & 0xFF, place >> 8 & 0xFF, (place >> 16) / 8, (place >> 16) % 8))
            for (const auto& text : field->texts)
                keys.insert(text.text);
    return keys;
}

TEST(Languages, LackNothing)
{
    const auto keys = askedFor();
    EXPECT_GT(keys.size(), 1100u);
    for (const auto& catalogue : embedded_host::texts::catalogues())
        for (const auto& key : keys) {
            const bool isEnglish = catalogue.language() == "en" && !key.starts_with("LocalizedString.");
            EXPECT_TRUE(isEnglish || catalogue.find(key) != "") << catalogue.language() << ": " << key;
        }
}

TEST(Languages, WhatIsAlwaysEnglish)
{
    lum::LumLocale::setGlobalLanguage("de");
    EXPECT_STREQ(lookUp(17, 0x12, 1), "Other");
    const auto localized = [](unsigned value) {
        return std::string(Smbios2_SysInfo::getLocalizedEnumFieldString(17, 0x12, value, 0, 0).bytes());
    };
    EXPECT_EQ(localized(0x7F), "Außerhalb des Bereichs");
    EXPECT_EQ(localized(0x1A), "DDR4");
    tests::TableBuilder table;
    table.add(3, 0x0003, 0x09).put(tests::byte(0x05), 1);
    const auto recorded = tests::discover(table);
    EXPECT_EQ(recorded.value("SMBIOS:0x0003", "ChassisType"), "Other");
    EXPECT_EQ(recorded.value("SMBIOS:0x0003", "t3_type_msk7_srt0"), "Andere");
    EXPECT_EQ(recorded.device("SMBIOS:0x0003").name, "Gehäuse");
    EXPECT_EQ(recorded.device("SMBIOS:0x0003").identifier, "Enclosure:0");
    lum::LumLocale::setGlobalLanguage("en");
}

} // namespace
