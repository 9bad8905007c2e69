// lum::LumValue.
#include "logging.h"
#include "lum.h"
#include "messages.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace lum
{

namespace
{

std::optional<bool> boolFrom(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    std::string word(first == std::string_view::npos ? "" : text.substr(first, last - first + 1));
    std::ranges::transform(word, word.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const char* yes : {"1", "true", "yes", "on"})
        if (word == yes)
            return true;
    for (const char* no : {"0", "false", "no", "off"})
        if (word == no)
            return false;
    return std::nullopt;
}

} // namespace

LumValue LumValue::getCorrectValue(const String& text, const LumType& /*type*/, bool quiet)
{
    using namespace embedded_host::services;
    if (const auto flag = boolFrom(text.bytes()))
        return LumValue(*flag);
    if (!quiet)
        log(kWarning, "settings",
            message("\"%1\" is neither of 1, true, yes, on nor of 0, false, no, off; ignored", text.bytes()));
    return {};
}

void LumValue::get(bool& out) const
{
    if (const auto* flag = std::get_if<bool>(&held_))
        out = *flag;
}

String LumValue::toString(unsigned digits) const
{
    if (const auto* flag = std::get_if<bool>(&held_))
        return *flag ? "true" : "false";
    const auto* number = std::get_if<unsigned>(&held_);
    std::string text = number != nullptr ? std::to_string(*number) : "";
    if (text.size() < digits)
        text.insert(0, digits - text.size(), '0');
    return String(text);
}

} // namespace lum
