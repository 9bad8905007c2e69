// The summary on one screen.
#include "summary.h"

#include "check.h"
#include "services/localization.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "texts/translations.h"

#include <algorithm>
#include <array>

namespace zorpinventory::tell
{

using embedded_host::services::columnsOf;
using embedded_host::services::message;
using summary::Module;
using summary::Summary;

namespace
{

constexpr std::size_t kScreen = 24;
constexpr std::size_t kMostRows = 12; ///< more memory devices than that are gathered
constexpr std::string_view kGap = "  ";

/// The parts that are not empty, with something between them.
std::string joined(const std::vector<std::string>& parts, std::string_view between)
{
    std::string text;
    for (const auto& part : parts)
        if (!part.empty())
            text.append(text.empty() ? "" : between).append(part);
    return text;
}

/// Maker, product and version, none of them twice: many products begin with their maker's name.
std::string nameOf(const summary::Thing& thing)
{
    const bool named = !thing.maker.empty() && thing.product.starts_with(thing.maker);
    const bool repeated = thing.version == thing.product || thing.version == thing.maker;
    return joined(
        {named ? "" : printable(thing.maker), printable(thing.product), repeated ? "" : printable(thing.version)}, " ");
}

std::string serialOf(const std::string& serial)
{
    return serial.empty() ? "" : message("serial %1", printable(serial));
}

std::string speedOf(const Module& module)
{
    const auto text = [](const summary::Count& speed) { return speed ? std::to_string(*speed) : std::string(); };
    const auto configured = text(module.configured);
    const auto possible = text(module.possible);
    const auto both = configured == possible ? configured : joined({configured, possible}, "/");
    return both.empty() ? "" : both + " MT/s";
}

std::vector<std::string> labels()
{
    return {message("System"),   message("Board"),  message("Firmware"),  message("Processors"),
            message("Memory"),   message("Slots"),  message("Batteries"), message("Power supplies"),
            message("Findings"), message("History")};
}

std::size_t lines(std::string_view text) { return static_cast<std::size_t>(std::ranges::count(text, '\n')); }

/// The lines of one fact: its parts, on as many lines as they need; none where nothing is known.
std::string fact(const std::string& label, const std::vector<std::string>& parts, const Looks& looks)
{
    std::size_t indent = 0;
    for (const auto& each : labels())
        indent = std::max(indent, columnsOf(each) + kGap.size());
    std::string text = looks.colours ? "\x1B[1m" + padded(label, indent) + "\x1B[0m" : padded(label, indent);
    std::size_t used = indent;
    bool isFirst = true;
    for (const auto& part : parts) {
        if (part.empty())
            continue;
        if (!isFirst && used + 3 + columnsOf(part) > looks.columns) {
            text += ",\n" + std::string(indent, ' ');
            used = indent;
        } else if (!isFirst) {
            text += ", ";
            used += 2;
        }
        text += part;
        used += columnsOf(part);
        isFirst = false;
    }
    return isFirst ? std::string() : text + "\n";
}

enum Column : std::size_t { Locator, Size, Type, Speed, Maker, Part, Serial, kColumns };
using Row = std::array<std::string, kColumns>;

Row rowOf(const Module& module)
{
    const bool several = module.count > 1;
    const auto locator = printable(module.locator);
    return {several ? message("from %1 on", locator) : locator,
            (several ? std::to_string(module.count) + " × " : std::string()) + module.size,
            module.type,
            speedOf(module),
            printable(module.maker),
            printable(module.part),
            serialOf(module.serial)};
}

/// The modules in columns. Where one does not fit, they lose the maker first; then what does not fit goes on in a
/// second line.
std::string table(const std::vector<Module>& modules, const Looks& looks)
{
    std::vector<Row> rows;
    std::array<std::size_t, kColumns> widths{};
    for (const auto& module : modules) {
        rows.push_back(rowOf(module));
        for (std::size_t i = 0; i < kColumns; ++i)
            widths[i] = std::max(widths[i], columnsOf(rows.back()[i]));
    }
    const auto columnsNeeded = [&] {
        std::size_t all = 0;
        for (const auto width : widths)
            all += width != 0 ? kGap.size() + width : 0;
        return all;
    };
    if (columnsNeeded() > looks.columns)
        widths[Maker] = 0;
    std::string text;
    for (const auto& row : rows) {
        std::string line;
        std::size_t used = 0;
        for (std::size_t i = 0; i < kColumns; ++i) {
            if (widths[i] == 0)
                continue;
            if (used + kGap.size() + columnsOf(row[i]) > looks.columns) {
                line.erase(line.find_last_not_of(' ') + 1);
                line += "\n" + std::string(kGap);
                used = kGap.size();
            }
            line += std::string(kGap) + padded(row[i], widths[i]);
            used += kGap.size() + std::max(widths[i], columnsOf(row[i]));
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

/// The memory devices on no more lines than there are: first what tells them apart only by themselves goes, then what
/// the other forms tell as well.
std::string modules(const std::vector<Module>& all, const Looks& looks, std::size_t room)
{
    if (all.size() <= kMostRows)
        if (auto text = table(all, looks); lines(text) <= room)
            return text;
    auto gathered = summary::gathered(all);
    if (auto text = table(gathered, looks); lines(text) <= room)
        return text;
    for (auto& module : gathered)
        module.maker = module.part = module.serial = {};
    if (auto text = table(gathered, looks); lines(text) <= room)
        return text;
    std::vector<std::string> parts;
    for (const auto& module : gathered) {
        const auto row = rowOf(module);
        parts.push_back(joined({row[Locator], row[Size], row[Type]}, " "));
    }
    return fact("", parts, looks);
}

std::vector<std::string> processors(const Summary& summary)
{
    std::vector<std::string> parts;
    for (const auto& [name, count] : summary.processors)
        parts.push_back(std::to_string(count) + " × " + (name.empty() ? message("(unknown)") : printable(name)));
    if (summary.cores)
        parts.push_back(message("%1 cores", *summary.cores));
    if (summary.threads)
        parts.push_back(message("%1 threads", *summary.threads));
    return parts;
}

std::vector<std::string> supplies(const std::vector<summary::Supply>& all)
{
    std::vector<std::string> parts;
    parts.reserve(all.size());
    for (const auto& supply : all)
        parts.push_back(joined({printable(supply.maker), printable(supply.name), supply.rating}, " "));
    return parts;
}

/// How much the rules found, and what tells more; nothing where there is nothing.
std::vector<std::string> findings(const checks::Counts& counts, const std::string& source)
{
    if (std::ranges::all_of(counts, [](auto count) { return count == 0; }))
        return {};
    return {countsText(counts), message("%1 tells more", joined({"zorpinventory check", printable(source)}, " "))};
}

} // namespace

void summaryAsText(embedded_host::writing::Output& output, const Summary& summary, const std::string& source,
                   const Looks& looks)
{
    const auto& memory = summary.memory;
    const auto& language = embedded_host::services::language();
    const std::string chassis(embedded_host::texts::translated(language, summary.chassis));
    std::string above =
        fact(message("System"), {nameOf(summary.system), chassis, serialOf(summary.system.serial)}, looks) +
        fact(message("Board"), {nameOf(summary.board), serialOf(summary.board.serial)}, looks) +
        fact(message("Firmware"),
             {joined({printable(summary.firmware.vendor), printable(summary.firmware.version)}, " "),
              printable(summary.firmware.date)},
             looks) +
        fact(message("Processors"), processors(summary), looks);
    if (memory.sockets != 0)
        above += fact(message("Memory"),
                      {memory.bytes ? sizeText(*memory.bytes) : "",
                       message("%1 of %2 sockets", memory.occupied, memory.sockets),
                       memory.mostBytes ? message("at most %1", sizeText(*memory.mostBytes)) : ""},
                      looks);
    std::string below;
    if (summary.usedSlots + summary.freeSlots != 0)
        below += fact(message("Slots"),
                      {message("%1 in use", summary.usedSlots), message("%1 free", summary.freeSlots)}, looks);
    below += fact(message("Batteries"), supplies(summary.batteries), looks) +
             fact(message("Power supplies"), supplies(summary.powerSupplies), looks) +
             fact(message("Findings"), findings(summary.findings, source), looks);
    if (const auto& since = summary.sinceRecord)
        below +=
            fact(message("History"),
                 {since->changes == 0
                      ? message("no changes since @%1 of %2", since->number, printable(since->taken))
                      : message("changes since @%1 of %2: %3", since->number, printable(since->taken), since->changes),
                  since->changes == 0 ? "" : printable(since->command)},
                 looks);

    const auto used = lines(above) + lines(below);
    output.write(above);
    output.write(modules(memory.modules, looks, kScreen - std::min(kScreen, used)));
    output.write(below);
}

} // namespace zorpinventory::tell
