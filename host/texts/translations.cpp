// The languages of the program.
#include "translations.h"

#include "catalogue.h"

#include <algorithm>

namespace embedded_host::texts
{

namespace
{

const Catalogue* catalogueOf(std::string_view language)
{
    const auto all = catalogues();
    const auto found = std::ranges::find(all, language, &Catalogue::language);
    return found != all.end() ? &*found : nullptr;
}

} // namespace

std::string_view translation(std::string_view language, std::string_view key)
{
    const auto* catalogue = catalogueOf(language);
    const auto text = catalogue == nullptr ? std::string_view() : catalogue->find(key);
    return text.empty() && language != kEnglish ? translation(kEnglish, key) : text;
}

std::string_view translated(std::string_view language, std::string_view english)
{
    if (language == kEnglish)
        return english;
    const auto text = translation(language, english);
    return text.empty() ? english : text;
}

bool speaks(std::string_view language) { return catalogueOf(language) != nullptr; }

} // namespace embedded_host::texts
