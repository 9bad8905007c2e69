// Where inventories come from.
#pragma once

#include "document/document.h"

#include <string>

namespace zorpinventory::sources
{

/// What a user names this machine by: nothing.
inline constexpr const char* kThisMachine = "";
inline constexpr const char* kStandardInput = "-";

/// The source's name in sentences: a path, or what stands for none.
std::string nameOf(const std::string& source);

/// The inventory of this machine, of a saved table in any layout, of a JSON document, or of one on standard input.
/// Tables are read by the module's program, which is looked for beside this one, then in PATH. Throws Problem.
document::Document load(const std::string& source);

} // namespace zorpinventory::sources
