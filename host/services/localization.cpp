// The process's language and its texts.
#include "localization.h"

#include "lum.h"
#include "texts/translations.h"

#include <algorithm>

namespace embedded_host::services
{

bool speak(const std::string& wanted)
{
    std::string name = wanted.substr(0, wanted.find_first_of(".@"));
    std::ranges::replace(name, '-', '_');
    for (const auto& candidate : {name, name.substr(0, name.find('_'))}) {
        if (texts::speaks(candidate)) {
            lum::LumLocale::setGlobalLanguage(candidate);
            return true;
        }
    }
    lum::LumLocale::setGlobalLanguage(std::string(texts::kEnglish));
    return name.empty() || name == "C" || name == "POSIX";
}

const std::string& language() { return lum::LumLocale::getGlobalLocale().language(); }

} // namespace embedded_host::services

namespace lum
{

LumLocale& LumLocale::global()
{
    static LumLocale locale;
    return locale;
}

const LumLocale& LumLocale::getGlobalLocale() { return global(); }

void LumLocale::setGlobalLanguage(std::string language) { global().language_ = std::move(language); }

bool Resource::getString(const char* /*section*/, const char* key, String& out, const LumLocale& locale)
{
    // A module asks for the same name for every structure of a type.
    static std::string lastKey;
    static std::string lastLanguage;
    static std::string_view lastText;
    if (lastKey != key || lastLanguage != locale.language()) {
        lastKey = key;
        lastLanguage = locale.language();
        lastText = embedded_host::texts::translation(lastLanguage, lastKey);
    }
    if (lastText.empty())
        return false;
    out = String::fixed(lastText);
    return true;
}

} // namespace lum
