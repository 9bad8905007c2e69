// Asking a document.
#include "document.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace zorpinventory::document
{

bool Number::operator==(const Number& other) const
{
    return kind == other.kind && value == other.value && unit == other.unit && std::ranges::equal(codes, other.codes);
}

std::optional<unsigned> handleIn(std::string_view text)
{
    constexpr std::string_view kPrefix = "0x";
    constexpr unsigned kLast = 0xFFFF;
    constexpr int kHexadecimal = 16;
    if (!text.starts_with(kPrefix))
        return std::nullopt;
    text.remove_prefix(kPrefix.size());
    unsigned handle = 0;
    const auto* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, handle, kHexadecimal);
    return read == end && error == std::errc() && handle <= kLast ? std::optional(handle) : std::nullopt;
}

std::string handleText(unsigned handle)
{
    std::array<char, sizeof "0x0011"> text{};
    std::snprintf(text.data(), text.size(), "0x%04X", handle);
    return text.data();
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view textOf(const Value& value)
{
    struct Text
    {
        std::string_view operator()(std::string_view text) const { return trimmed(text); }
        std::string_view operator()(const Numeral& numeral) const { return numeral.digits; }
        std::string_view operator()(bool flag) const { return flag ? "true" : "false"; }
        std::string_view operator()(const Texts& /*list*/) const { return {}; }
        std::string_view operator()(const Measurement& measurement) const { return trimmed(measurement.text); }
    };
    return std::visit(Text(), value);
}

const Property* Device::find(std::string_view property) const
{
    const auto found = std::ranges::find(properties, property, &Property::name);
    return found != properties.end() ? &*found : nullptr;
}

std::string_view Device::text(std::string_view property) const
{
    const auto* found = find(property);
    return found != nullptr ? textOf(found->value) : std::string_view();
}

std::optional<double> Device::number(std::string_view property) const
{
    const auto* found = find(property);
    if (found == nullptr)
        return std::nullopt;
    Numeral numeral;
    if (const auto* own = std::get_if<Numeral>(&found->value))
        numeral = *own;
    else if (const auto* measurement = std::get_if<Measurement>(&found->value))
        numeral = measurement->value;
    else if (found->number != nullptr)
        numeral = found->number->value;
    double value = 0;
    const auto* end = numeral.digits.data() + numeral.digits.size();
    if (std::from_chars(numeral.digits.data(), end, value).ptr != end || numeral.digits.empty())
        return std::nullopt;
    return value;
}

} // namespace zorpinventory::document
