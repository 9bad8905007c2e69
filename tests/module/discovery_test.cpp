// The driver: settings, root device, order and gates of the decoders, log messages, strings.
#include "logging.h"
#include "support/recorded_session.h"

#include <gtest/gtest.h>
#include <optional>

/// What the module gets of populateTable; none for the library's own result. The linker puts this in between
/// (`--wrap`), since the library itself has no negative one.
static std::optional<int> populateTableReturns;

int libraryPopulateTable(libsmbios2::Smbios2*, bool) asm("__real__ZN19libsmbios2_internal7Smbios213populateTableEb");
int modulePopulateTable(libsmbios2::Smbios2*, bool) asm("__wrap__ZN19libsmbios2_internal7Smbios213populateTableEb");
int modulePopulateTable(libsmbios2::Smbios2* library, bool refresh)
{
    const int result = libraryPopulateTable(library, refresh);
    return populateTableReturns.value_or(result);
}

namespace
{

using tests::byte;
using tests::discover;
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

/// Whether the vendor's structures are decoded, given a type 0 vendor or a type 1 manufacturer.
bool decodesVendor(unsigned char vendorType, const char* vendor)
{
    TableBuilder table;
    table.add(vendorType, 0x0001, 0x08).text(0x04, vendor);
    table.add(131, 0x0131, 0x0B).text(0x0A, "IBM System Metrics");
    table.add(208, 0x0208, 0x08);
    const auto uids = discover(table, {{"verbose", "false"}}).uids();
    return uids.back() == (vendorType == 0 ? "SMBIOS:0x0131" : "SMBIOS:0x0208");
}

TEST(Driver, VendorsAreMatchedWithTheirCase)
{
    for (const char* vendor : {"IBM", "  IBM Corp. ", "LENOVO"})
        EXPECT_TRUE(decodesVendor(0, vendor)) << vendor;
    for (const char* vendor : {"Lenovo", "International Business", "Dell"})
        EXPECT_FALSE(decodesVendor(0, vendor)) << vendor;
    for (const char* vendor : {"Dell Inc.", "Alienware", "alienware"})
        EXPECT_TRUE(decodesVendor(1, vendor)) << vendor;
    for (const char* vendor : {"DELL", "ALIENWARE", "LENOVO"})
        EXPECT_FALSE(decodesVendor(1, vendor)) << vendor;
    EXPECT_FALSE(decodesVendor(7, "IBM")) << "no identity structure at all";
}

/// What the module logged, each text behind its priority.
Texts moduleLog(const tests::Recorded& recorded)
{
    Texts lines;
    for (const auto& line : recorded.log)
        if (line.logger == "zorpsysinfosmbios2")
            lines.push_back(std::to_string(line.priority) + " " + line.text);
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
    const Threshold everything(1);
    const auto recorded = discover({{"LoadTable", "/nonexistent/table.dmi"}});
    EXPECT_TRUE(recorded.devices.empty());
    EXPECT_EQ(
        moduleLog(recorded),
        (Texts{R"(1 enter DiscoverSMBIOS (modules\src\multi\sysinfo\zorpsysinfosmbios2\zorpsysinfosmbios2:2589))",
               "2 2601 Loading SMBIOS table from file: /nonexistent/table.dmi",
               "5 2603 Could not load SMBIOS table from file: /nonexistent/table.dmi", "1 leave DiscoverSMBIOS"}));
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
    const auto recorded = discover({{"SaveTable", "/nonexistent/saved.dmi"}});
    EXPECT_EQ(recorded.uids(), Texts{"SMBIOS"});
    EXPECT_EQ(moduleLog(recorded), Texts{"3 2655 Could not populate the libSmbios2 table: " + std::to_string(ENOENT)});
}

TEST(Populate, ANegativeResultIsAFailureToo)
{
    const tests::Firmware firmware;
    firmware.offer(everyType().dump64(3, 0, 0));
    EXPECT_GT(discover(Settings{}).devices.size(), 1u);
    populateTableReturns = -1;
    EXPECT_EQ(discover(Settings{}).uids(), Texts{"SMBIOS"});
    populateTableReturns.reset();
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

TEST(Logging, ATableFullOfFaultsDoesNotFloodTheLog)
{
    const auto logOf = [](std::uint16_t modules) {
        TableBuilder table;
        for (std::uint16_t i = 0; i < modules; ++i)
            table.add(6, i / 2, 0x0C).put(byte(0x09), 0x28); // a size of 2^40 MB
        return discover(table.end()).messages("zorpsysinfosmbios2");
    };
    EXPECT_EQ(logOf(4).size(), 2u) << "the same text once";
    const auto many = logOf(1000);
    ASSERT_EQ(many.size(), 50u);
    EXPECT_EQ(many.back(), "there are more messages like those above; they are left out");
}

TEST(Settings, WhatNothingAsksForIsTold)
{
    const auto told = [](const Settings& settings) { return discover(settings).messages("settings"); };
    const auto unused = [](const std::string& name) {
        return "nothing asked for the setting " + name + " in this run; it had no effect";
    };
    const TemporaryFolder folder;
    const auto table = folder.file("t", everyType().dump64(3, 2, 0)).string();
    EXPECT_EQ(told({{"LoadTable", table}, {"Verbose", "no"}}), Texts{unused("Verbose")});
    EXPECT_EQ(told({{"LoadTable", "/nonexistent"}, {"verboze", "no"}, {"verbose", "no"}}), Texts{unused("verboze")})
        << "without a table too";
}

TEST(Strings, TrivialOnesCountAsAbsentUnlessTheFilterIsOff)
{
    TableBuilder table;
    table.add(1, 0x0001, 0x08).text(0x04, "\t \v\r").text(0x05, " blanks kept ").put(byte(0x07), 3);
    const auto shown = [&](const Settings& settings) {
        const auto recorded = discover(table, settings);
        Texts values;
        for (const char* property : {"t1_manufacturer", "t1_product", "t1_ver", "t1_serial"})
            values.push_back(recorded.value("SMBIOS:0x0001", property));
        return values;
    };
    const Texts filtered{"(absent)", " blanks kept ", "(absent)", "(absent)"};
    EXPECT_EQ(shown({}), filtered) << "number 0 and a number beyond are absent as well";
    EXPECT_EQ(shown({{"FilterTrivialStrings", "off"}}), (Texts{"\t \v\r", " blanks kept ", "(absent)", "(absent)"}));
}

} // namespace
