// Labels, names and safe texts.
#include "texts.h"

#include "services/localization.h"
#include "services/messages.h"
#include "services/utf8.h"
#include "texts/translations.h"

#include <algorithm>

namespace zorpinventory::tell
{

namespace services = embedded_host::services;
namespace texts = embedded_host::texts;

std::string label(std::string_view property, const std::string& language)
{
    const auto text = texts::translation(language, "LocalizedString.propname_" + std::string(property));
    return std::string(text.empty() ? property : text);
}

std::string kindName(const knowledge::Kind& kind)
{
    const auto key = "LocalizedString.devname_" + std::string(kind.key);
    const auto text = *kind.key == '\0' ? std::string_view() : texts::translation(services::language(), key);
    return text.empty() ? services::message(kind.name) : std::string(text);
}

std::string printable(std::string_view text)
{
    std::string shown;
    services::appendPrintable(shown, document::trimmed(text));
    return shown;
}

std::string padded(std::string text, std::size_t columns)
{
    const auto used = services::columnsOf(text);
    text.append(columns - std::min(columns, used), ' ');
    return text;
}

} // namespace zorpinventory::tell
