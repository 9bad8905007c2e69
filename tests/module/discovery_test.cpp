// The driver: settings, root device, order and gates of the decoders, log messages; and the shared operations.
#include "construction.h"
#include "logging.h"
#include "support/recorded_session.h"
#include "texts/translations.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace
{

using tests::byte;
using tests::discover;
using tests::LogLine;
using tests::Settings;
using tests::TableBuilder;
using tests::TemporaryFolder;

using Texts = std::vector<std::string>;

/// One structure of every type there is, of the shortest legal length but where a decoder wants more.
TableBuilder everyType()
{
    TableBuilder table;
    for (unsigned type = 0; type < 256; ++type) {
        const unsigned char length = type == 10 ? 0x06 : type == 131 ? 0x0B : 0x08;
        if (type != 127)
            table.add(static_cast<unsigned char>(type), static_cast<std::uint16_t>(type), length);
    }
    return table;
}

/// The structure types of the published devices that stand for structures, in order.
std::vector<int> types(const tests::Recorded& recorded)
{
    std::vector<int> found;
    for (const auto& device : recorded.devices)
        if (const auto* type = device.find("smbios2_hdr_type"))
            found.push_back(std::get<int>(type->held()));
    return found;
}

TEST(Driver, CallsTheDecodersInTypeOrder)
{
    EXPECT_EQ(types(discover(everyType())),
              (std::vector<int>{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18,
                                19, 20, 21, 22, 23, 24, 26, 27, 28, 29, 30, 32, 33, 34, 35, 38, 39, 41}));
}

TEST(Driver, WithoutVerboseElevenTypesRemain)
{
    const std::vector<int> eleven{0, 1, 2, 3, 5, 6, 11, 13, 16, 17, 24};
    EXPECT_EQ(types(discover(everyType(), {{"verbose", "no"}})), eleven);
    EXPECT_EQ(types(discover(everyType(), {{"verbose", ""}})).size(), 37u) << "no boolean: as if absent";
    EXPECT_EQ(types(discover(everyType(), {{"verbose", "perhaps"}})).size(), 37u);
}

TEST(Driver, TheRootComesFirst)
{
    const auto recorded = discover(everyType());
    const auto& root = recorded.devices.front();
    EXPECT_EQ(tests::inventoryText({root}), "SMBIOS [SMBIOS] [SMBIOS] [SMBIOS] SMBIOS\n"
                                            "  __smbios2_hdr_handle = 0xFFFF\n"
                                            "  smbios2_version = 3.2.0\n"
                                            "  child SMBIOS (none)\n");
}

/// Whether the vendor's structures are decoded, given a type 0 vendor or a type 1 manufacturer.
bool decodesVendor(unsigned char vendorType, const char* vendor)
{
    TableBuilder table;
    auto& identity = table.add(vendorType, 0x0001, 0x08);
    if (vendor != nullptr)
        identity.text(0x04, vendor);
    table.add(131, 0x0131, 0x0B).text(0x0A, "IBM System Metrics");
    table.add(208, 0x0208, 0x08);
    const auto uids = discover(table, {{"verbose", "false"}}).uids();
    return uids.back() == (vendorType == 0 ? "SMBIOS:0x0131" : "SMBIOS:0x0208");
}

TEST(Driver, VendorsAreMatchedWithTheirCase)
{
    const struct
    {
        unsigned char type;
        const char* vendor;
        bool decoded;
    } cases[] = {
        {0, "IBM", true},       {0, "  IBM Corp. ", true}, {0, "LENOVO", true},
        {0, "Lenovo", false},   {0, nullptr, false},       {0, "International Business", false},
        {0, "Dell", false},     {1, "Dell Inc.", true},    {1, "DELL", false},
        {1, "Alienware", true}, {1, "alienware", true},    {1, "ALIENWARE", false},
        {1, nullptr, false},    {1, "LENOVO", false},
    };
    for (const auto& each : cases)
        EXPECT_EQ(decodesVendor(each.type, each.vendor), each.decoded) << (each.vendor != nullptr ? each.vendor : "");
    EXPECT_FALSE(decodesVendor(7, "IBM")) << "no identity structure at all";
}

std::vector<LogLine> moduleLog(const tests::Recorded& recorded)
{
    std::vector<LogLine> lines;
    std::ranges::copy_if(recorded.log, std::back_inserter(lines),
                         [](const LogLine& line) { return line.logger == "zorpsysinfosmbios2"; });
    return lines;
}

/// Sets the process's threshold for one test.
class Threshold
{
public:
    explicit Threshold(int priority) { lum::LogFactory::setPriority(priority); }
    ~Threshold() { lum::LogFactory::setPriority(before_); }
    Threshold(const Threshold&) = delete;
    Threshold& operator=(const Threshold&) = delete;

private:
    int before_ = lum::LogFactory::getPriority();
};

TEST(LoadTable, AMissingFileGivesOneMessageAndNoDevice)
{
    const auto recorded = discover({{"LoadTable", "/nonexistent/table.dmi"}});
    EXPECT_TRUE(recorded.devices.empty());
    const auto log = moduleLog(recorded);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].priority, 5);
    EXPECT_EQ(log[0].text, "2603 Could not load SMBIOS table from file: /nonexistent/table.dmi");
}

TEST(LoadTable, IsAnnouncedAtPriority2)
{
    const Threshold everything(2);
    const TemporaryFolder folder;
    const auto path = folder.file("t.dmi", everyType().dump64(3, 0, 0)).string();
    const auto log = moduleLog(discover({{"LoadTable", path}}));
    ASSERT_FALSE(log.empty());
    EXPECT_EQ(log[0].priority, 2);
    EXPECT_EQ(log[0].text, "2601 Loading SMBIOS table from file: " + path);
}

TEST(LoadTable, AnEmptyPathMeansTheFirmware)
{
    const tests::Firmware none;
    const Threshold everything(2);
    const auto recorded = discover({{"LoadTable", ""}});
    EXPECT_TRUE(recorded.devices.empty());
    EXPECT_TRUE(moduleLog(recorded).empty()) << "a machine without a table is no message of the module's";
    EXPECT_EQ(recorded.log.size(), 1u) << "but one of the table library's";
}

TEST(Populate, AFailureLeavesTheRootAloneAndIsLoggedWithItsErrno)
{
    const tests::Firmware firmware;
    const auto dump = everyType().dump64(3, 0, 0);
    firmware.folder().file("smbios_entry_point",
                           tests::Bytes(dump.begin(), dump.begin() + 0x18)); // but no table beside it
    const auto recorded = discover(Settings{});
    EXPECT_EQ(recorded.uids(), Texts{"SMBIOS"});
    const auto log = moduleLog(recorded);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].priority, 3);
    EXPECT_EQ(log[0].text, "2655 Could not populate the libSmbios2 table: " + std::to_string(ENOENT));
}

TEST(Logging, EachGateStopsAMessageAndAQuietProcessMakesNoLogger)
{
    using zorpsysinfosmbios2::loggerFor;
    using zorpsysinfosmbios2::loggerForTraces;
    {
        const Threshold quiet(4);
        EXPECT_EQ(loggerFor(3), nullptr);
        EXPECT_EQ(loggerForTraces(), nullptr);
        EXPECT_NE(loggerFor(4), nullptr);
    }
    const Threshold everything(1);
    auto* logger = loggerForTraces();
    ASSERT_NE(logger, nullptr);
    logger->priority = 3;
    EXPECT_EQ(loggerFor(2), nullptr);
    EXPECT_EQ(loggerForTraces(), nullptr);
    EXPECT_EQ(loggerFor(3), logger);
    logger->priority = 1;
}

TEST(Logging, ADiscoveryIsTracedAtPriority1)
{
    const Threshold everything(1);
    const auto log = moduleLog(discover({{"LoadTable", "/nonexistent"}}));
    ASSERT_EQ(log.size(), 4u);
    EXPECT_EQ(log[0].text,
              R"(enter DiscoverSMBIOS (modules\src\multi\sysinfo\zorpsysinfosmbios2\zorpsysinfosmbios2:2589))");
    EXPECT_EQ(log[3].text, "leave DiscoverSMBIOS") << "on every way out";
}

TEST(Logging, ATableFullOfFaultsDoesNotFloodTheLog)
{
    const auto logOf = [](std::uint16_t modules) {
        TableBuilder table;
        for (std::uint16_t i = 0; i < modules; ++i)
            table.add(6, i / 2, 0x0C).put(byte(0x09), 0x28); // a size of 2^40 MB
        return discover(table).messages("zorpsysinfosmbios2");
    };
    EXPECT_EQ(logOf(4).size(), 2u) << "the same text once";
    const auto many = logOf(1000);
    ASSERT_EQ(many.size(), 50u);
    EXPECT_EQ(many.back(), "there are more messages like those above; they are left out");
}

TEST(Settings, UnknownOnesAreToldOnceDevicesCame)
{
    const auto told = [](const tests::Recorded& recorded) { return recorded.messages("settings"); };
    EXPECT_EQ(told(discover(everyType(), {{"Verbose", "no"}})),
              Texts{"the setting Verbose is not known and has no effect"});
    EXPECT_EQ(told(discover({{"LoadTable", "/nonexistent"}, {"SaveTable", "x"}})), Texts{});
}

TEST(Catalogue, Holds315PropertiesAndOneText)
{
    std::set<std::string> names;
    for (const auto* property : embedded_host::declaredProperties()) {
        names.insert(property->name);
        const auto label = "LocalizedString.propname_" + property->name;
        EXPECT_FALSE(embedded_host::texts::translation("en", label).empty()) << "a label for " << property->name;
    }
    EXPECT_EQ(embedded_host::declaredProperties().size(), 315u);
    EXPECT_EQ(names.size(), 315u);
    EXPECT_EQ(embedded_host::declaredProperties().front()->name, "smbios2_hdr_type");
    EXPECT_EQ(embedded_host::declaredProperties().back()->name, "smbios2_version");
    EXPECT_EQ(embedded_host::declaredTexts(), Texts{"NotInstalled"});
}

TEST(Strings, TrivialOnesCountAsAbsentUnlessTheFilterIsOff)
{
    const struct
    {
        const char* text;
        const char* filtered;
        const char* unfiltered;
    } cases[] = {{"   ", "(absent)", "   "},
                 {"\t\v\r", "(absent)", "\t\v\r"},
                 {" blanks kept ", " blanks kept ", " blanks kept "}};
    for (const auto& each : cases) {
        TableBuilder table;
        table.add(1, 0x0001, 0x08).text(0x04, each.text).put(byte(0x05), 2).text(0x07, "S");
        EXPECT_EQ(discover(table).value("SMBIOS:0x0001", "t1_manufacturer"), each.filtered);
        const auto unfiltered = discover(table, {{"FilterTrivialStrings", "off"}});
        EXPECT_EQ(unfiltered.value("SMBIOS:0x0001", "t1_manufacturer"), each.unfiltered);
        EXPECT_EQ(unfiltered.value("SMBIOS:0x0001", "t1_product"), "S") << "by number, whoever else refers to it";
        EXPECT_EQ(unfiltered.value("SMBIOS:0x0001", "t1_ver"), "(absent)") << "number 0";
    }
    TableBuilder beyond;
    beyond.add(1, 0x0001, 0x08).text(0x04, "one").put(byte(0x05), 2);
    EXPECT_EQ(discover(beyond).value("SMBIOS:0x0001", "t1_product"), "(absent)");
}

TEST(Construction, IdentifiersCarryTheHandleAndAnInstanceUnless0)
{
    TableBuilder table;
    table.add(17, 0x0010, 0x04);
    table.add(17, 0x0011, 0x04);
    table.add(10, 0x0020, 0x08);
    const auto text = tests::inventoryText(discover(table).devices);
    EXPECT_NE(text.find("SMBIOS:0x0010 [Memory Device] [Memory Device:0] [Memory Device:0] SMBIOS_Struct"), text.npos);
    EXPECT_NE(text.find("SMBIOS:0x0011 [Memory Device] [Memory Device:1] [Memory Device:1] SMBIOS_Struct"), text.npos);
    EXPECT_NE(text.find("SMBIOS:0x0020 [On Board Device]"), text.npos);
    EXPECT_NE(text.find("SMBIOS:0x0020:1 [On Board Device]"), text.npos);
}

TEST(Construction, HexBytes)
{
    const unsigned char bytes[] = {0x01, 0xAB, 0x0F};
    const auto text = [&](unsigned char count) {
        const std::unique_ptr<char, decltype(&std::free)> made(zorpsysinfosmbios2::formatHexBytes(bytes, count),
                                                               std::free);
        return std::string(made ? made.get() : "(null)");
    };
    EXPECT_EQ(text(0), "(null)");
    EXPECT_EQ(text(1), "01");
    EXPECT_EQ(text(3), "01-AB-0F");
}

} // namespace
