// What the exit code tells. What a command means by 1 stands in its declaration.
#pragma once

namespace zorpinventory
{

enum class Exit {
    Good = 0,
    Otherwise = 1, ///< something differs, nothing was found
    Problem = 2,   ///< it could not be done
};

} // namespace zorpinventory
