// What shells know of the commands.
#pragma once

#include "command.h"

namespace zorpinventory::commandline
{

std::string bashCompletion(std::span<const Command> commands);
std::string zshCompletion(std::span<const Command> commands);
std::string fishCompletion(std::span<const Command> commands);

} // namespace zorpinventory::commandline
