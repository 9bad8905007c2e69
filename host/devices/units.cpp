// Units, magnitudes, and how a measurement becomes text.
#include "orb5.h"
#include "services/decimal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace orb5
{

using embedded_host::services::decimal;
using embedded_host::services::Zeros;

namespace
{

/// How measurements of one unit are scaled and shown.
struct Scale
{
    const char* unit;
    unsigned step; ///< factor between two magnitudes
    int smallest;  ///< magnitude of the first prefix, in steps from the base unit
    std::array<const char*, 8> prefixes;
    int count;

    int largest() const { return smallest + count - 1; }
    const char* prefix(int magnitude) const { return prefixes[static_cast<std::size_t>(magnitude - smallest)]; }
};

constexpr Scale unscaled(const char* unit) { return {unit, 1000, 0, {""}, 1}; }
constexpr Scale decimalScale(const char* unit) { return {unit, 1000, -3, {"n", "µ", "m", "", "k", "M", "G", "T"}, 8}; }
constexpr Scale kBytes = {"B", 1024, 0, {"", "K", "M", "G", "T", "P", "E"}, 7};

struct Unit
{
    const OrbUnitType& (*type)();
    unsigned hexDigits; ///< 0 for a unit that is not hexadecimal
    Scale scale;
};

constexpr Unit kUnits[] = {
    {OrbUnitType::HEXADECIMAL16, 4, {}},
    {OrbUnitType::HEXADECIMAL32, 8, {}},
    {OrbUnitType::HEXADECIMAL8, 2, {}},
    {OrbUnitType::HEXADECIMAL64, 16, {}},
    {OrbUnitType::BYTES, 0, kBytes},
    {OrbUnitType::HERTZ, 0, decimalScale("Hz")},
    {OrbUnitType::VOLTS, 0, decimalScale("V")},
    {OrbUnitType::AMPS, 0, decimalScale("A")},
    {OrbUnitType::WATTS, 0, decimalScale("W")},
    {OrbUnitType::WATTHOURS, 0, decimalScale("Wh")},
    {OrbUnitType::SECONDS, 0, decimalScale("s")},
    {OrbUnitType::BITS, 0, unscaled("bits")},
    {OrbUnitType::RPM, 0, unscaled("RPM")},
};

const Unit& traits(const OrbUnitType& type)
{
    return *std::ranges::find_if(kUnits, [&](const Unit& unit) { return unit.type() == type; });
}

OrbString hexadecimal(std::uint64_t value, unsigned digits)
{
    std::array<char, 18> text{'0', 'x'};
    unsigned shown = digits;
    while (shown < 16 && value >> (4 * shown) != 0)
        ++shown;
    for (unsigned i = 0; i < shown; ++i)
        text[2 + i] = "0123456789ABCDEF"[value >> (4 * (shown - 1 - i)) & 0xF];
    return lum::String(std::string_view(text.data(), 2 + shown));
}

/// step to the power of `steps`, exact up to 22 decimal digits.
double power(unsigned step, int steps)
{
    double result = 1;
    for (int i = 0; i < steps; ++i)
        result *= step;
    return result;
}

/// The exact quotient, rounded once.
double quotient(std::uint64_t value, std::uint64_t divisor)
{
    constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
    if (value < kExact)
        return static_cast<double>(value) / static_cast<double>(divisor);
    // More bits than a double holds, the last one telling of everything cut off, so that converting rounds once.
    std::uint64_t whole = value / divisor;
    std::uint64_t rest = value % divisor;
    int exponent = 0;
    for (; whole < 2 * kExact; --exponent) {
        rest *= 2;
        whole = 2 * whole + (rest >= divisor ? 1 : 0);
        rest -= rest >= divisor ? divisor : 0;
    }
    return std::ldexp(static_cast<double>(whole | (rest != 0 ? 1 : 0)), exponent);
}

/// The exact product with a factor of at most ten digits, rounded once.
double product(std::uint64_t value, double factor)
{
    // Both halves and the lower product are exact doubles.
    const std::uint64_t low = value & 0x7FFFFF;
    return std::fma(static_cast<double>(value - low), factor, static_cast<double>(low) * factor);
}

/// The value, given in one magnitude, in another: multiplied or divided once, so rounded once.
double converted(double value, int from, int to, unsigned step)
{
    return from >= to ? value * power(step, from - to) : value / power(step, to - from);
}

/// Whether |value| steps up from magnitude `from` is at least 1 in magnitude `to`, told without rounding.
bool reaches(double value, int from, int to, unsigned step)
{
    const double size = std::fabs(value);
    return from >= to ? std::fma(size, power(step, from - to), -1.0) >= 0 : size >= power(step, to - from);
}

/// The magnitude in which to show a value: the largest in which it is at least 1, the base unit for 0.
template <class ReachesOne>
int autoscaled(const Scale& scale, bool isZero, ReachesOne reachesOne)
{
    if (isZero)
        return 0;
    int magnitude = scale.largest();
    while (magnitude > scale.smallest && !reachesOne(magnitude))
        --magnitude;
    return magnitude;
}

int clamped(const Scale& scale, const OrbUnitMagnitude& magnitude)
{
    return std::clamp(magnitude.steps(), scale.smallest, scale.largest());
}

OrbString shown(const Scale& scale, int magnitude, std::string number)
{
    number.append(" ").append(scale.prefix(magnitude)).append(scale.unit);
    return lum::String(std::move(number));
}

} // namespace

// clang-format off
const OrbUnitType& OrbUnitType::HERTZ()         { static constexpr OrbUnitType kUnit("HERTZ"); return kUnit; }
const OrbUnitType& OrbUnitType::BITS()          { static constexpr OrbUnitType kUnit("BITS"); return kUnit; }
const OrbUnitType& OrbUnitType::BYTES()         { static constexpr OrbUnitType kUnit("BYTES"); return kUnit; }
const OrbUnitType& OrbUnitType::AMPS()          { static constexpr OrbUnitType kUnit("AMPS"); return kUnit; }
const OrbUnitType& OrbUnitType::VOLTS()         { static constexpr OrbUnitType kUnit("VOLTS"); return kUnit; }
const OrbUnitType& OrbUnitType::WATTS()         { static constexpr OrbUnitType kUnit("WATTS"); return kUnit; }
const OrbUnitType& OrbUnitType::WATTHOURS()     { static constexpr OrbUnitType kUnit("WATTHOURS"); return kUnit; }
const OrbUnitType& OrbUnitType::SECONDS()       { static constexpr OrbUnitType kUnit("SECONDS"); return kUnit; }
const OrbUnitType& OrbUnitType::RPM()           { static constexpr OrbUnitType kUnit("RPM"); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL8()  { static constexpr OrbUnitType kUnit("HEXADECIMAL8"); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL16() { static constexpr OrbUnitType kUnit("HEXADECIMAL16"); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL32() { static constexpr OrbUnitType kUnit("HEXADECIMAL32"); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL64() { static constexpr OrbUnitType kUnit("HEXADECIMAL64"); return kUnit; }

const OrbUnitMagnitude& OrbUnitMagnitude::NANO()     { static constexpr OrbUnitMagnitude kScale("NANO", -3); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::MILLI()    { static constexpr OrbUnitMagnitude kScale("MILLI", -1); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::BASEUNIT() { static constexpr OrbUnitMagnitude kScale("BASEUNIT", 0); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::KILO()     { static constexpr OrbUnitMagnitude kScale("KILO", 1); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::MEGA()     { static constexpr OrbUnitMagnitude kScale("MEGA", 2); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::NOTSET()   { static constexpr OrbUnitMagnitude kScale("NOTSET", 0); return kScale; }
const OrbUnitMagnitude& OrbUnitMagnitude::AUTOSCALEUNIT()
{
    static constexpr OrbUnitMagnitude kScale("AUTOSCALEUNIT", 0);
    return kScale;
}
// clang-format on

OrbString OrbDiscreteMeasurement::toString(const OrbUnitMagnitude& magnitude) const
{
    const Unit& unit = traits(unit_);
    if (unit.hexDigits != 0)
        return hexadecimal(value_, unit.hexDigits);

    const Scale& scale = unit.scale;
    const auto divisor = [&](int to) { return static_cast<std::uint64_t>(power(scale.step, to)); };
    int to = clamped(scale, magnitude);
    if (magnitude == OrbUnitMagnitude::AUTOSCALEUNIT())
        to = autoscaled(scale, value_ == 0,
                        [&](int candidate) { return candidate <= 0 || value_ >= divisor(candidate); });
    const double number = to < 0 ? product(value_, power(scale.step, -to)) : quotient(value_, divisor(to));
    return shown(scale, to, decimal(number, 2, Zeros::Drop));
}

OrbString OrbNonDiscreteMeasurement::toString(int precision, const OrbUnitMagnitude& magnitude) const
{
    const Unit& unit = traits(unit_);
    if (unit.hexDigits != 0)
        return hexadecimal(static_cast<std::uint64_t>(value_), unit.hexDigits);

    const Scale& scale = unit.scale;
    const int from = given_.steps();
    const auto& wanted = magnitude == OrbUnitMagnitude::NOTSET() ? shown_ : magnitude;
    int to = clamped(scale, wanted);
    if (wanted == OrbUnitMagnitude::AUTOSCALEUNIT())
        to =
            autoscaled(scale, value_ == 0, [&](int candidate) { return reaches(value_, from, candidate, scale.step); });
    return shown(scale, to,
                 decimal(converted(value_, from, to, scale.step), precision, keepZeros_ ? Zeros::Keep : Zeros::Drop));
}

} // namespace orb5
