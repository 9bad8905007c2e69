// Times as the history writes them: UTC, and in the order of their texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorpinventory::history
{

/// Now: "2026-11-01T08:30:00Z".
std::string now();

/// Which end of a day is meant where only a day is said.
enum class Of { DaysBegin, DaysEnd };

/// The time that a text names: a day ("2026-11-01"), or a time as `now` writes it. Nothing for other texts, and for
/// days that no calendar has.
std::optional<std::string> timeFrom(std::string_view text, Of day);

} // namespace zorpinventory::history
