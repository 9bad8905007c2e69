// How raw numbers become values: functions from a number to a value, which compose.
//
// Made inside functions only, never at file scope: the framework's units need not exist before main.
#pragma once

#include "construction.h"
#include "fields.h"

#include <bit>
#include <cstdlib>
#include <memory>

namespace zorpsysinfosmbios2
{

/// A plain number.
inline orb5::Value asInteger(unsigned raw) { return orb5::Value(static_cast<int>(raw)); }

/// A handle as text.
inline orb5::Value asHandle(unsigned raw) { return orb5::Value(handleText(raw)); }

/// A percentage as text, the number as it stands.
inline orb5::Value percent(double raw) { return orb5::Value(orb5::Value(raw, orb5::DataType::PERCENT()).toString()); }

/// The number, which fits an int, formatted by a printf format for one.
inline auto formatted(const char* format)
{
    return [format](unsigned raw) { return orb5::Value(lum::SprintfFormat(format, static_cast<int>(raw))); };
}

/// A discrete measurement as text, scaled by itself; the HEXADECIMAL units show hexadecimal numbers.
inline auto discrete(const orb5::OrbUnitType& unit)
{
    return [&unit](std::uint64_t raw) {
        return orb5::Value(orb5::OrbDiscreteMeasurement(unit, raw).toString(orb5::OrbUnitMagnitude::AUTOSCALEUNIT()));
    };
}

/// A measurement as text with at most two decimals, scaled by itself, the number being given in this magnitude.
/// `decimals` 1 shows both decimals always.
inline auto measured(const orb5::OrbUnitType& unit, const orb5::OrbUnitMagnitude& given, int decimals = 0)
{
    return [&unit, &given, decimals](double raw) {
        using orb5::OrbUnitMagnitude;
        const orb5::OrbNonDiscreteMeasurement measurement(unit, raw, given, OrbUnitMagnitude::AUTOSCALEUNIT(),
                                                          decimals);
        return orb5::Value(measurement.toString(2, OrbUnitMagnitude::NOTSET()));
    };
}

/// The same, but one number means something that has its own text.
template <class Rendering>
auto exceptAt(std::uint64_t marker, const char* text, Rendering rendering)
{
    return [=](auto raw) { return raw == marker ? orb5::Value(text) : rendering(raw); };
}

/// The same, but one number means that the value is not known.
template <class Rendering>
auto unknownAt(std::uint64_t marker, Rendering rendering)
{
    return exceptAt(marker, "UNKNOWN", rendering);
}

/// `count` bytes as "01-AB"; no text for none.
inline orb5::Value hexBytes(const unsigned char* bytes, unsigned char count)
{
    const std::unique_ptr<char, decltype(&std::free)> text(formatHexBytes(bytes, count), std::free);
    return orb5::Value(text.get());
}

/// The standard's text for a field's value, in the user's language.
template <class T>
lum::String enumText(Structure s, Field<T> field)
{
    return libsmbios2::Smbios2_SysInfo::getLocalizedEnumFieldString(s.type(), field.offset, s[field], field.width,
                                                                    field.shift);
}

inline orb5::Value emptyList() { return orb5::Value(orb5::DataType::STRINGARRAY()); }

/// Appends the text of every set bit that the standard gives a meaning, lowest bit first. The texts of a field are
/// looked up by bit number.
inline void appendKnownBits(orb5::Value& list, unsigned char type, unsigned offset, std::uint64_t bits)
{
    using libsmbios2::Smbios2_SysInfo;
    for (; bits != 0; bits &= bits - 1) {
        const auto bit = static_cast<unsigned>(std::countr_zero(bits));
        const char* english = Smbios2_SysInfo::getEnumFieldString(type, offset, bit, 0, 0);
        if (english != nullptr && Smbios2_SysInfo::isKnownEnum(english))
            list.append(Smbios2_SysInfo::getLocalizedEnumFieldString(type, offset, bit, 0, 0));
    }
}

/// The texts of a bit field's set bits.
template <class T>
orb5::Value knownBits(Structure s, Field<T> field)
{
    auto list = emptyList();
    appendKnownBits(list, s.type(), field.offset, s[field]);
    return list;
}

} // namespace zorpsysinfosmbios2
