// The process's language and its texts.
#include "lum.h"
#include "texts/translations.h"

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
    const auto text = embedded_host::texts::translation(locale.language(), key);
    if (text.empty())
        return false;
    out = String(text);
    return true;
}

} // namespace lum
