// What a rule of `check` is: all that is known of it stands in one place.
#pragma once

#include "inventory.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace zorpinventory::checks
{

/// How serious a finding is.
enum class Level {
    Error,   ///< the table contradicts the standard or itself; readers will show wrong things
    Warning, ///< a value that no one can use
    Note,    ///< what many machines have, and what may still explain something
};
inline constexpr Level kLevels[] = {Level::Error, Level::Warning, Level::Note};

/// The level of a rule's findings: one for all, or one in these types of structures and another elsewhere.
struct Levels
{
    Level level;
    std::span<const unsigned> types = {};
    Level elsewhere = level;

    constexpr Level in(std::optional<unsigned> type) const
    {
        const bool here = types.empty() || (type && std::ranges::find(types, *type) != types.end());
        return here ? level : elsewhere;
    }
};

/// A size that people read in its largest unit.
struct Bytes
{
    std::uint64_t number;
};

/// Types of structures, which people know by their names.
struct Types
{
    std::vector<unsigned> numbers;
};

/// What stands for %1 and so on in a rule's text.
using Argument = std::variant<std::string, Bytes, Types>;

struct Rule;

struct Finding
{
    const Rule* rule;
    Level level;
    std::optional<unsigned> type;   ///< of the structure; none where none is meant
    std::optional<unsigned> handle; ///< likewise
    const document::Device* device; ///< the structure's; null where it has none
    std::string_view property;      ///< of the device; empty where none is meant
    std::vector<Argument> arguments;
};

/// Takes what a rule finds.
class Findings
{
public:
    explicit Findings(const Rule& rule) : rule_(rule) {}

    const Rule& rule() const { return rule_; }

    void at(const document::Device& device, std::string_view property, std::vector<Argument> arguments = {});
    /// Less serious than the rule's level.
    void noteAt(const document::Device& device, std::string_view property, std::vector<Argument> arguments = {});
    void at(const Structure& structure, std::string_view property, std::vector<Argument> arguments = {});
    /// About the table itself, or a structure that cannot be read.
    void aboutTable(std::optional<unsigned> handle, std::vector<Argument> arguments = {});

    std::vector<Finding> take() { return std::move(findings_); }

private:
    const Rule& rule_;
    std::vector<Finding> findings_;
};

struct Rule
{
    const char* name; ///< for ever, since people have it in scripts
    Levels levels;
    const char* means;                                            ///< translatable: the fault in general
    const char* text;                                             ///< translatable: what was found, with %1 and so on
    const char* advice;                                           ///< translatable: what to do
    const char* standard;                                         ///< the standard's structure and field
    void (*look)(const Inventory& inventory, Findings& findings); ///< in the document's order
};

} // namespace zorpinventory::checks
