// Units, magnitudes, and how a measurement becomes text.
#include "orb5.h"
#include "services/decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <utility>

namespace orb5
{

using embedded_host::services::kLongestDecimal;
using embedded_host::services::writeDecimal;
using embedded_host::services::Zeros;
using lum::Number;

struct OrbUnitType::Traits
{
    const char* symbol;
    unsigned hexDigits; ///< 0 for a unit that is not hexadecimal
    unsigned step;      ///< factor between two magnitudes
    int smallest;       ///< magnitude of the first prefix, in steps from the base unit
    std::array<const char*, 8> prefixes;
    int count;

    int largest() const { return smallest + count - 1; }
    const char* prefix(int magnitude) const { return prefixes[static_cast<std::size_t>(magnitude - smallest)]; }
};

namespace
{

using Traits = OrbUnitType::Traits;

constexpr Traits hexadecimal(unsigned digits) { return {"", digits, 1000, 0, {""}, 1}; }
constexpr Traits unscaled(const char* symbol) { return {symbol, 0, 1000, 0, {""}, 1}; }
constexpr Traits decimal(const char* symbol)
{
    return {symbol, 0, 1000, -3, {"n", "µ", "m", "", "k", "M", "G", "T"}, 8};
}

constexpr Traits kHertz = decimal("Hz");
constexpr Traits kBits = unscaled("bits");
constexpr Traits kBytes = {"B", 0, 1024, 0, {"", "K", "M", "G", "T", "P", "E"}, 7};
constexpr Traits kAmps = decimal("A");
constexpr Traits kVolts = decimal("V");
constexpr Traits kWatts = decimal("W");
constexpr Traits kWatthours = decimal("Wh");
constexpr Traits kSeconds = decimal("s");
constexpr Traits kRpm = unscaled("RPM");
constexpr Traits kHexadecimal8 = hexadecimal(2);
constexpr Traits kHexadecimal16 = hexadecimal(4);
constexpr Traits kHexadecimal32 = hexadecimal(8);
constexpr Traits kHexadecimal64 = hexadecimal(16);

/// Writes the value in as many digits as the unit has, or as it takes.
OrbString asHexadecimal(std::uint64_t value, const OrbUnitType& unit)
{
    std::array<char, 18> text{'0', 'x'};
    const auto needed = static_cast<unsigned>(std::bit_width(value) + 3) / 4;
    const unsigned shown = std::max(unit.traits().hexDigits, needed);
    auto rest = value;
    for (unsigned place = 1 + shown; place > 1; --place, rest >>= 4)
        text[place] = "0123456789ABCDEF"[rest & 0xF];
    return {std::string_view(text.data(), 2 + shown), Number::whole(value, unit.name())};
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

/// The magnitude in which to show a value: the largest in which it is at least 1, the base unit for 0. Looked for from
/// `near` on.
template <class ReachesOne>
int autoscaled(const Traits& unit, bool isZero, int near, ReachesOne reachesOne)
{
    if (isZero)
        return 0;
    int magnitude = std::clamp(near, unit.smallest, unit.largest());
    while (magnitude < unit.largest() && reachesOne(magnitude + 1))
        ++magnitude;
    while (magnitude > unit.smallest && !reachesOne(magnitude))
        --magnitude;
    return magnitude;
}

int clamped(const Traits& unit, const OrbUnitMagnitude& magnitude)
{
    return std::clamp(magnitude.steps(), unit.smallest, unit.largest());
}

/// "3.2 GHz": what is left of the number once it is scaled.
OrbString shown(const Number& number, const Traits& unit, int magnitude, double scaled, int precision, Zeros trailing)
{
    std::array<char, kLongestDecimal + 8> text; // NOLINT(cppcoreguidelines-pro-type-member-init): written below
    char* end = writeDecimal(text.data(), scaled, precision, trailing);
    *end++ = ' ';
    for (const std::string_view part : {unit.prefix(magnitude), unit.symbol})
        end = std::ranges::copy(part, end).out;
    return {std::string_view(text.data(), end), number};
}

} // namespace

// clang-format off
const OrbUnitType& OrbUnitType::HERTZ()         { static constexpr OrbUnitType kUnit("HERTZ", kHertz); return kUnit; }
const OrbUnitType& OrbUnitType::BITS()          { static constexpr OrbUnitType kUnit("BITS", kBits); return kUnit; }
const OrbUnitType& OrbUnitType::BYTES()         { static constexpr OrbUnitType kUnit("BYTES", kBytes); return kUnit; }
const OrbUnitType& OrbUnitType::AMPS()          { static constexpr OrbUnitType kUnit("AMPS", kAmps); return kUnit; }
const OrbUnitType& OrbUnitType::VOLTS()         { static constexpr OrbUnitType kUnit("VOLTS", kVolts); return kUnit; }
const OrbUnitType& OrbUnitType::WATTS()         { static constexpr OrbUnitType kUnit("WATTS", kWatts); return kUnit; }
const OrbUnitType& OrbUnitType::WATTHOURS()     { static constexpr OrbUnitType kUnit("WATTHOURS", kWatthours); return kUnit; }
const OrbUnitType& OrbUnitType::SECONDS()       { static constexpr OrbUnitType kUnit("SECONDS", kSeconds); return kUnit; }
const OrbUnitType& OrbUnitType::RPM()           { static constexpr OrbUnitType kUnit("RPM", kRpm); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL8()  { static constexpr OrbUnitType kUnit("HEXADECIMAL8", kHexadecimal8); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL16() { static constexpr OrbUnitType kUnit("HEXADECIMAL16", kHexadecimal16); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL32() { static constexpr OrbUnitType kUnit("HEXADECIMAL32", kHexadecimal32); return kUnit; }
const OrbUnitType& OrbUnitType::HEXADECIMAL64() { static constexpr OrbUnitType kUnit("HEXADECIMAL64", kHexadecimal64); return kUnit; }

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
    const Traits& unit = unit_.traits();
    if (unit.hexDigits != 0)
        return asHexadecimal(value_, unit_);

    const auto divisor = [&](int to) { return static_cast<std::uint64_t>(power(unit.step, to)); };
    int to = clamped(unit, magnitude);
    if (magnitude == OrbUnitMagnitude::AUTOSCALEUNIT())
        to = autoscaled(unit, value_ == 0, 0,
                        [&](int candidate) { return candidate <= 0 || value_ >= divisor(candidate); });
    const double scaled = to < 0 ? product(value_, power(unit.step, -to)) : quotient(value_, divisor(to));
    return shown(Number::whole(value_, unit_.name()), unit, to, scaled, 2, Zeros::Drop);
}

OrbString OrbNonDiscreteMeasurement::toString(int precision, const OrbUnitMagnitude& magnitude) const
{
    const Traits& unit = unit_.traits();
    if (unit.hexDigits != 0)
        return asHexadecimal(static_cast<std::uint64_t>(value_), unit_);

    const int from = given_.steps();
    const auto& wanted = magnitude == OrbUnitMagnitude::NOTSET() ? shown_ : magnitude;
    int to = clamped(unit, wanted);
    if (wanted == OrbUnitMagnitude::AUTOSCALEUNIT())
        to = autoscaled(unit, value_ == 0, from,
                        [&](int candidate) { return reaches(value_, from, candidate, unit.step); });
    const auto number = unit.step == 1000 ? Number::real(value_, unit_.name(), 3 * from)
                                          : Number::real(value_, unit_.name(), 0, 10 * from);
    return shown(number, unit, to, converted(value_, from, to, unit.step), precision,
                 keepZeros_ ? Zeros::Keep : Zeros::Drop);
}

} // namespace orb5
