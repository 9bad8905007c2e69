// The numbers that texts show, as programs read them.
#pragma once

#include "lum.h"

namespace embedded_host::inventory
{

/// The code or the quantity, rounded to a double.
double amount(const lum::Number& number);

/// Writes the code or the quantity exactly, at most services::kLongestNumber bytes: in full when it is whole and not
/// above 2^64, else as ECMAScript prints it. Returns the end.
char* writeNumber(char* out, const lum::Number& number);

} // namespace embedded_host::inventory
