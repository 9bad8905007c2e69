// Asking the rules.
#include "checks.h"

namespace zorpinventory::checks
{

void Findings::at(const document::Device& device, std::string_view property, std::vector<Argument> arguments)
{
    const auto type = device.type <= 0xFF ? std::optional(device.type) : std::nullopt;
    findings_.push_back({&rule_, rule_.levels.in(type), type, device.handle, &device, property, std::move(arguments)});
}

void Findings::noteAt(const document::Device& device, std::string_view property, std::vector<Argument> arguments)
{
    at(device, property, std::move(arguments));
    findings_.back().level = Level::Note;
}

void Findings::at(const Structure& structure, std::string_view property, std::vector<Argument> arguments)
{
    if (structure.device != nullptr) {
        at(*structure.device, property, std::move(arguments));
        return;
    }
    findings_.push_back(
        {&rule_, rule_.levels.in(structure.type), structure.type, structure.handle, nullptr, {}, std::move(arguments)});
}

void Findings::aboutTable(std::optional<unsigned> handle, std::vector<Argument> arguments)
{
    findings_.push_back(
        {&rule_, rule_.levels.in(std::nullopt), std::nullopt, handle, nullptr, {}, std::move(arguments)});
}

std::vector<Finding> findings(const document::Document& document, std::chrono::year_month_day today, Ignored ignored)
{
    const Inventory inventory(document, today);
    std::vector<Finding> all;
    for (const auto* rule : rules()) {
        if (std::ranges::find(ignored, rule->name) != ignored.end())
            continue;
        Findings findings(*rule);
        rule->look(inventory, findings);
        std::ranges::move(findings.take(), std::back_inserter(all));
    }
    std::ranges::stable_sort(all, {}, &Finding::level);
    return all;
}

Counts counts(std::span<const Finding> findings)
{
    Counts counts{};
    for (const auto& finding : findings)
        ++counts[static_cast<std::size_t>(finding.level)];
    return counts;
}

} // namespace zorpinventory::checks
