// Labels, names and safe texts.
#include "texts.h"

#include "services/localization.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "texts/translations.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zorpinventory::tell
{

namespace services = embedded_host::services;
namespace texts = embedded_host::texts;

std::string label(std::string_view property, const std::string& language)
{
    const auto text = texts::translation(language, "LocalizedString.propname_" + std::string(property));
    return std::string(text.empty() ? property : text);
}

bool isDeclared(std::string_view property)
{
    return !texts::translation(texts::kEnglish, "LocalizedString.propname_" + std::string(property)).empty();
}

std::string kindName(const knowledge::Kind& kind)
{
    const auto key = "LocalizedString.devname_" + std::string(kind.key);
    const auto text = *kind.key == '\0' ? std::string_view() : texts::translation(services::language(), key);
    return text.empty() ? services::message(kind.name) : std::string(text);
}

std::string deviceName(std::string_view name)
{
    const auto& language = services::language();
    // The keys of most are their words.
    std::string key(name);
    std::erase(key, ' ');
    for (const auto& kind : knowledge::kKinds)
        if (name == kind.name && *kind.key != '\0')
            key = kind.key;
    if (name == "On Board Devices (Extended Information)")
        key = "OnBoardDevicesExt";
    const auto text = texts::translation(language, "LocalizedString.devname_" + key);
    return printable(text.empty() ? texts::translated(language, name) : text);
}

std::string sizeText(std::uint64_t bytes)
{
    constexpr std::array kUnits = {"B", "KB", "MB", "GB", "TB", "PB", "EB"};
    constexpr std::uint64_t kStep = 1024;
    std::size_t unit = 0;
    std::uint64_t scale = 1;
    while (unit + 1 < kUnits.size() && bytes / scale >= kStep) {
        scale *= kStep;
        ++unit;
    }
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.2f", static_cast<double>(bytes) / static_cast<double>(scale));
    std::string text = digits.data();
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text + " " + kUnits[unit];
}

std::string printable(std::string_view text)
{
    std::string shown;
    services::appendPrintable(shown, document::trimmed(text));
    return shown;
}

namespace
{

/// Takes the next word off a text that is not empty, or the next wide character: lines go on before and behind it.
std::string_view takeWord(std::string_view& text)
{
    constexpr std::size_t kWide = 2;
    auto rest = text;
    const bool isWide = services::columnsOf(services::takeCharacter(rest)) == kWide;
    while (!isWide && !rest.empty() && rest.front() != ' ') {
        auto next = rest;
        if (services::columnsOf(services::takeCharacter(next)) == kWide)
            break;
        rest = next;
    }
    const auto word = text.substr(0, text.size() - rest.size());
    text = rest;
    return word;
}

} // namespace

std::string wrapped(std::string_view text, std::size_t columns, std::size_t indent)
{
    std::string lines;
    std::size_t used = indent;
    while (!text.empty()) {
        const auto word = takeWord(text);
        const auto width = services::columnsOf(word);
        if (used > indent && used + width > columns) {
            lines.erase(lines.find_last_not_of(' ') + 1);
            lines += "\n" + std::string(indent, ' ');
            used = indent;
        }
        lines += word;
        used += width;
        for (; text.starts_with(' '); text.remove_prefix(1), ++used)
            lines += ' ';
    }
    return lines;
}

std::string padded(std::string text, std::size_t columns)
{
    const auto used = services::columnsOf(text);
    text.append(columns - std::min(columns, used), ' ');
    return text;
}

} // namespace zorpinventory::tell
