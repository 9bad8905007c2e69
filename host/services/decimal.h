// Decimal numbers as every rendering of this host prints them.
#pragma once

#include <cstddef>

namespace embedded_host::services
{

enum class Zeros { Keep, Drop };

/// The most that writeDecimal writes: the largest double has 309 digits before the point, and no more than 80 decimals
/// are written.
inline constexpr std::size_t kLongestDecimal = 400;

/// Writes the number as the C library's "%.*f" prints it in the C locale; Drop takes trailing zeros off, and the point
/// with the last of them. Returns the end.
char* writeDecimal(char* out, double number, int decimals, Zeros trailing);

/// The most that writeNumber writes.
inline constexpr std::size_t kLongestNumber = 32;

/// Writes the number as ECMAScript prints it: the fewest digits that read back as the same double. Returns the end.
char* writeNumber(char* out, double number);

} // namespace embedded_host::services
