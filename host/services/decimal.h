// Decimal numbers as every rendering of this host prints them.
#pragma once

#include <string>

namespace embedded_host::services
{

enum class Zeros { Keep, Drop };

/// The number as the C library's "%.*f" prints it in the C locale; Drop takes trailing zeros off, and the point with
/// the last of them.
std::string decimal(double number, int decimals, Zeros trailing);

} // namespace embedded_host::services
