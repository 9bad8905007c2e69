// Numbers, codes and dates that cannot be.
#include "families.h"

#include "knowledge/standard.h"
#include "services/messages.h"
#include "texts/translations.h"

#include <array>

namespace zorpinventory::checks
{

using document::Device;
using embedded_host::services::translatable;

namespace
{

constexpr unsigned kWherePeopleLook[] = {0, 3, 4, 7, 9, 16, 17};

/// How many there are; nothing where the structure is too short to say it, or does not know it.
std::optional<unsigned> countOf(const Device& device, std::string_view property, unsigned lengthWithWide)
{
    constexpr std::uint64_t kSeeWide = 0xFF;
    constexpr std::uint64_t kUnknown = 0xFFFF;
    const auto count = positive(device.number(property));
    if (!count || *count >= kUnknown)
        return std::nullopt;
    if (*count == kSeeWide && device.number("smbios2_hdr_len").value_or(0) < lengthWithWide)
        return std::nullopt;
    return static_cast<unsigned>(*count);
}

/// Whether the document's text says that the standard has none for the code, in any language that documents are
/// written in.
bool isOutOfRange(const document::Property& property)
{
    constexpr std::string_view kOutOfRange = "Out of range";
    constexpr std::string_view kLanguages[] = {"en", "de", "zh_CN"};
    if (property.number == nullptr || property.number->kind != document::Number::Kind::Code)
        return false;
    const auto text = document::textOf(property.value);
    return std::ranges::any_of(
        kLanguages, [&](auto language) { return text == embedded_host::texts::translated(language, kOutOfRange); });
}

/// A date as BIOS Release Date has it: "mm/dd/yy" or "mm/dd/yyyy". Nothing for anything else, and for days that no
/// calendar has.
std::optional<std::chrono::year_month_day> dateIn(std::string_view text)
{
    const auto number = [&](std::size_t at, std::size_t digits) {
        int value = 0;
        for (const char c : text.substr(at, digits))
            value = c >= '0' && c <= '9' && value >= 0 ? 10 * value + (c - '0') : -1;
        return value;
    };
    constexpr std::size_t kShort = sizeof "mm/dd/yy" - 1;
    constexpr std::size_t kLong = sizeof "mm/dd/yyyy" - 1;
    if ((text.size() != kShort && text.size() != kLong) || text[2] != '/' || text[5] != '/')
        return std::nullopt;
    const int month = number(0, 2);
    const int day = number(3, 2);
    int year = number(6, text.size() - 6);
    if (month < 0 || day < 0 || year < 0)
        return std::nullopt;
    // The standard wants 19yy; firmware of this century writes its own years so too.
    constexpr int kFirstYear = 80;
    if (text.size() == kShort)
        year += year < kFirstYear ? 2000 : 1900;
    const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    return date.ok() ? std::optional(date) : std::nullopt;
}

/// Calls `look(firmware, text, date)` for each date of firmware; the date is nothing where it cannot be read.
template <class Look>
void forEachDate(const Inventory& inventory, Look look)
{
    for (const auto* firmware : inventory.ofType(0))
        if (const auto text = firmware->text("t0_date"); !text.empty())
            look(*firmware, std::string(text), dateIn(text));
}

constexpr const char* kReleaseDate = "BIOS Information (type 0), BIOS Release Date (08h)";

} // namespace

const Rule kCoresMiscounted{
    .name = "cores-miscounted",
    .levels = {Level::Warning},
    .means = translatable("more cores are enabled than there are, or there are fewer threads than enabled cores"),
    .text = translatable("It claims %1 cores, %2 of them enabled, and %3 threads."),
    .advice = translatable("Ask the operating system how many there are."),
    .standard = "Processor Information (type 4), Core Count (23h), Core Enabled (24h) and Thread Count (25h)",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            for (const auto* processor : inventory.ofType(4)) {
                const auto cores = countOf(*processor, "t4_core_cnt", 0x2C);
                const auto enabled = countOf(*processor, "t4_core_enabled", 0x2E);
                const auto threads = countOf(*processor, "t4_thread_cnt", 0x30);
                const bool tooMany = cores && enabled && *enabled > *cores;
                const bool tooFew = threads && enabled && *threads < *enabled;
                const auto text = [](auto count) { return count ? std::to_string(*count) : std::string("?"); };
                if (tooMany || tooFew)
                    findings.at(*processor, tooMany ? "t4_core_enabled" : "t4_thread_cnt",
                                {text(cores), text(enabled), text(threads)});
            }
        },
};

const Rule kCodeOutOfRange{
    .name = "code-out-of-range",
    .levels = {Level::Warning, kWherePeopleLook, Level::Note},
    .means = translatable("a code to which the standard gives no meaning; only a note where the table is newer than "
                          "the newest standard that this program knows"),
    .text = translatable("It has the code %1, to which the standard gives no meaning."),
    .advice = translatable("Nothing can be known of it. Where the machine is newer than this program, look for a newer "
                           "program."),
    .standard = "every field with a list of values",
    .look =
        [](const Inventory& inventory, Findings& findings) {
            const bool isNewer = knowledge::isNewerThanKnown(inventory.document().version());
            for (const auto& device : inventory.devices()) {
                for (const auto& property : device.properties) {
                    // The module does not ask for the structure's own code there.
                    if (!isOutOfRange(property) || property.name == "t38_access_method")
                        continue;
                    if (isNewer)
                        findings.noteAt(device, property.name, {std::string(property.number->value.digits)});
                    else
                        findings.at(device, property.name, {std::string(property.number->value.digits)});
                }
            }
        },
};

const Rule kDateUnreadable{
    .name = "date-unreadable",
    .levels = {Level::Warning},
    .means = translatable("the firmware's date is none of the form mm/dd/yy or mm/dd/yyyy"),
    .text = translatable("\"%1\" is no date of the form mm/dd/yyyy."),
    .advice = translatable("Go by the firmware's version; programs that sort by date are misled."),
    .standard = kReleaseDate,
    .look =
        [](const Inventory& inventory, Findings& findings) {
            forEachDate(inventory, [&](const Device& firmware, const std::string& text, const auto& date) {
                if (!date)
                    findings.at(firmware, "t0_date", {text});
            });
        },
};

const Rule kDateInFuture{
    .name = "date-in-future",
    .levels = {Level::Warning},
    .means = translatable("the firmware's date has not come yet"),
    .text = translatable("%1 (mm/dd/yyyy) has not come yet."),
    .advice = translatable("Is the clock of this machine right? If so, go by the firmware's version."),
    .standard = kReleaseDate,
    .look =
        [](const Inventory& inventory, Findings& findings) {
            forEachDate(inventory, [&](const Device& firmware, const std::string& text, const auto& date) {
                if (date && *date > inventory.today())
                    findings.at(firmware, "t0_date", {text});
            });
        },
};

const Rule kDateUnlikely{
    .name = "date-unlikely",
    .levels = {Level::Note},
    .means = translatable("the firmware's date lies before 1995, when there were no such tables"),
    .text = translatable("%1 (mm/dd/yyyy) lies before 1995, when there were no such tables."),
    .advice = translatable("Go by the firmware's version."),
    .standard = kReleaseDate,
    .look =
        [](const Inventory& inventory, Findings& findings) {
            constexpr std::chrono::year kFirstTables{1995};
            forEachDate(inventory, [&](const Device& firmware, const std::string& text, const auto& date) {
                if (date && date->year() < kFirstTables)
                    findings.at(firmware, "t0_date", {text});
            });
        },
};

} // namespace zorpinventory::checks
