// How numbers become text: units, scales, rounding.
#include "inventory/numbers.h"
#include "orb5.h"
#include "services/decimal.h"

#include <array>
#include <gtest/gtest.h>

namespace
{

using namespace orb5;

std::string text(const OrbString& string) { return string.getUTF8Buffer(); }

TEST(Renderings, DiscreteMeasurements)
{
    const auto shown = [](const OrbUnitType& unit, std::uint64_t value,
                          const OrbUnitMagnitude& magnitude = OrbUnitMagnitude::AUTOSCALEUNIT()) {
        return text(OrbDiscreteMeasurement(unit, value).toString(magnitude));
    };
    EXPECT_EQ(shown(OrbUnitType::HEXADECIMAL8(), 0x0F), "0x0F");
    EXPECT_EQ(shown(OrbUnitType::HEXADECIMAL8(), 0x100), "0x100");
    EXPECT_EQ(shown(OrbUnitType::HEXADECIMAL16(), 0x123456789), "0x123456789");
    EXPECT_EQ(shown(OrbUnitType::HEXADECIMAL64(), ~std::uint64_t{0}), "0xFFFFFFFFFFFFFFFF");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 0), "0 B");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 1023), "1023 B");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 4660), "4.55 KB");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 1048575), "1024 KB"); // scaled before rounding
    EXPECT_EQ(shown(OrbUnitType::BYTES(), ~std::uint64_t{0}), "16 EB");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 4660, OrbUnitMagnitude::BASEUNIT()), "4660 B");
    EXPECT_EQ(shown(OrbUnitType::BYTES(), 512, OrbUnitMagnitude::KILO()), "0.5 KB");
    EXPECT_EQ(shown(OrbUnitType::VOLTS(), 3, OrbUnitMagnitude::MILLI()), "3000 mV");
    EXPECT_EQ(shown(OrbUnitType::BITS(), 65536), "65536 bits");
    // 2^53 + 1 and its likes: the quotient is rounded once, not the number first.
    EXPECT_EQ(shown(OrbUnitType::WATTS(), 9007199254740993, OrbUnitMagnitude::BASEUNIT()), "9007199254740992 W");
    EXPECT_EQ(shown(OrbUnitType::HERTZ(), 9007199254740993, OrbUnitMagnitude::MILLI()), "9007199254740993024 mHz");
    EXPECT_EQ(shown(OrbUnitType::WATTS(), 10582057716445789124u, OrbUnitMagnitude::KILO()), "10582057716445790 kW");
}

TEST(Renderings, NonDiscreteMeasurements)
{
    const auto& base = OrbUnitMagnitude::BASEUNIT();
    const auto& kilo = OrbUnitMagnitude::KILO();
    const auto& mega = OrbUnitMagnitude::MEGA();
    const auto& milli = OrbUnitMagnitude::MILLI();
    const auto& nano = OrbUnitMagnitude::NANO();
    const struct
    {
        const OrbUnitType& unit;
        double value;
        const OrbUnitMagnitude& given;
        int flag;
        const char* expected;
    } cases[] = {
        {OrbUnitType::HERTZ(), 999, mega, 0, "999 MHz"},
        {OrbUnitType::HERTZ(), 65535, mega, 0, "65.53 GHz"}, // the double below 65.535
        {OrbUnitType::VOLTS(), 1.2F, base, 1, "1.20 V"},
        {OrbUnitType::AMPS(), 0, milli, 1, "0.00 A"},
        {OrbUnitType::SECONDS(), 0.25, nano, 0, "0.25 ns"}, // nothing is smaller
        {OrbUnitType::SECONDS(), 1e15, nano, 0, "1 Ms"},
        {OrbUnitType::WATTS(), 0.001, base, 0, "1 mW"},
        {OrbUnitType::WATTS(), 5e15, base, 0, "5000 TW"}, // nothing is larger
        {OrbUnitType::BITS(), 2, kilo, 0, "2000 bits"},
        {OrbUnitType::RPM(), 12000, base, 0, "12000 RPM"},
    };
    for (const auto& each : cases) {
        const OrbNonDiscreteMeasurement measurement(each.unit, each.value, each.given,
                                                    OrbUnitMagnitude::AUTOSCALEUNIT(), each.flag);
        EXPECT_EQ(text(measurement.toString(2, OrbUnitMagnitude::NOTSET())), each.expected);
    }
    const OrbNonDiscreteMeasurement speed(OrbUnitType::HERTZ(), 1866, mega, mega, 0);
    EXPECT_EQ(text(speed.toString(2, OrbUnitMagnitude::NOTSET())), "1866 MHz");
    EXPECT_EQ(text(speed.toString(1, base)), "1866000000 Hz");
}

TEST(Renderings, ValuesAsText)
{
    Value list(DataType::STRINGARRAY());
    EXPECT_EQ(text(list.toString()), "");
    list.append("a");
    list.append("b");
    EXPECT_EQ(list.stringArraySize(), 2u);
    EXPECT_EQ(text(list.toString()), "a, b");

    EXPECT_EQ(text(Value(-1).toString()), "-1");
    EXPECT_EQ(text(Value(4294967295u).toString()), "4294967295");
    EXPECT_EQ(text(Value(0.125, DataType::PERCENT()).toString()), "0.12%");

    EXPECT_THROW(Value("text").append("element"), OrbException);
    EXPECT_THROW(Value(1.0, DataType::STRING()), OrbException);
}

TEST(Renderings, TemperaturesHaveExactlyTheirDecimals)
{
    const auto shown = [](float value, unsigned char decimals) {
        const lum::Temperature temperature(value, decimals, 0, lum::TEMPERATURE_ABSOLUTE);
        return text(temperature.toString(9, lum::TEMPERATURE_CELSIUS));
    };
    EXPECT_EQ(shown(0.005F, 3), "0.005 °C");
    EXPECT_EQ(shown(25.0F, 0), "25 °C");
    EXPECT_EQ(shown(2.0F, 1), "2.0 °C");
    EXPECT_EQ(shown(0.5F, 0), "0 °C");
    EXPECT_EQ(shown(1.0F, 20), "1.000000000 °C");
}

std::string number(const lum::Number& number)
{
    std::array<char, embedded_host::services::kLongestNumber> digits{};
    return {digits.begin(), embedded_host::inventory::writeNumber(digits.begin(), number)};
}

TEST(Renderings, NumbersAreExact)
{
    using lum::Number;
    constexpr int kKibi = 10;
    const std::pair<Number, const char*> cases[] = {
        {Number::code(26), "26"},
        {Number::whole(~std::uint64_t{0}, "HEXADECIMAL64"), "18446744073709551615"},
        {Number::real(3200, "HERTZ", 6), "3200000000"},
        {Number::real(2.1, "VOLTS", -3), "0.0021"},
        {Number::real(60, "SECONDS", -9), "6e-8"},
        {Number::real(1e-6, "SECONDS"), "0.000001"},
        {Number::real(3276.9F, "CELSIUS"), "3276.9"}, // the float's digits, not those of the double next to it
        {Number::real(1.2F, "VOLTS"), "1.2"},
        {Number::real(0.5, "BYTES", 0, kKibi), "512"},
        {Number::real(0.1, "BYTES", 0, kKibi), "102.4"},
        {Number::real(-2147483648.0, "BYTES", 0, 2 * kKibi), "-2251799813685248"},
        {Number::real(0x1p63, "BYTES"), "9223372036854776000"}, // the fewest digits of what was given
        {Number::real(0x1p31, "BYTES", 0, 2 * kKibi), "2251799813685248"},
        {Number::real(1e22, "WATTS"), "1e+22"},
        {Number::real(0, "HERTZ", 6), "0"},
    };
    for (const auto& [given, expected] : cases) {
        EXPECT_EQ(number(given), expected);
        EXPECT_EQ(embedded_host::inventory::amount(given), std::stod(expected));
    }
}

TEST(Renderings, TextsShowTheirNumberUntilTheyChange)
{
    const auto made = OrbDiscreteMeasurement(OrbUnitType::BYTES(), 4660).toString(OrbUnitMagnitude::AUTOSCALEUNIT());
    auto copy = made;
    EXPECT_EQ(number(copy.lumString().number()), "4660");
    lum::String kept = copy.lumString();
    EXPECT_EQ(number(kept.trim().number()), "4660") << "nothing was cut";
    kept.remove(0, 1);
    copy += "";
    const auto kind = [](const lum::String& text) { return text.number().kind(); };
    for (const auto& changed : {kept, copy.lumString(), (made + made).lumString(), lum::SprintfFormat("%i U", 2),
                                Value(2).toString().lumString(), lum::SprintfFormat("Family %04X", 2)})
        EXPECT_EQ(kind(changed), lum::Number::Kind::None) << changed.bytes();
    EXPECT_EQ(number(lum::SprintfFormat("%d", -8).number()), "-8");
    EXPECT_EQ(number(lum::SprintfFormat("%u", ~0u).number()), "4294967295");
    EXPECT_STREQ(Value(50, DataType::PERCENT()).toString().lumString().number().unit(), "PERCENT");
}

} // namespace
