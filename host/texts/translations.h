// Localized texts: what a language has for the keys that modules and inventories ask for.
#pragma once

#include <string_view>

namespace embedded_host::texts
{

/// The language of the sources, which every other falls back to.
inline constexpr std::string_view kEnglish = "en";

/// The text of a key in a language ("en", "de", "zh_CN"), else in English; empty when neither has one. Keys are the
/// texts that modules ask for ("LocalizedString.devname_BIOS", "NotInstalled"), the display labels of properties
/// ("LocalizedString.propname_t17_sz") and the English enumeration texts themselves.
std::string_view translation(std::string_view language, std::string_view key);

/// An English text in a language; the text itself where the language has none.
std::string_view translated(std::string_view language, std::string_view english);

/// Whether there are texts in this language; English is always there.
bool speaks(std::string_view language);

} // namespace embedded_host::texts
