// The catalogues of localized texts, one table for each language, each sorted by key.
#include "translations.h"

#include "english.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace embedded_host::texts
{

namespace
{

struct Catalogue
{
    std::string_view language;
    std::span<const Translation> translations;
};

constexpr Catalogue kCatalogues[] = {{"en", kEnglish}};

static_assert(std::ranges::all_of(kCatalogues,
                                  [](const Catalogue& catalogue) {
                                      return std::ranges::is_sorted(catalogue.translations, {}, &Translation::key);
                                  }),
              "a catalogue is not sorted by key");

const Catalogue* catalogueOf(std::string_view language)
{
    const auto* found = std::ranges::find(kCatalogues, language, &Catalogue::language);
    return found != std::end(kCatalogues) ? found : nullptr;
}

} // namespace

std::string_view translation(std::string_view language, std::string_view key)
{
    const auto* catalogue = catalogueOf(language);
    if (catalogue == nullptr)
        return {};
    const auto found = std::ranges::lower_bound(catalogue->translations, key, {}, &Translation::key);
    return found != catalogue->translations.end() && found->key == key ? found->text : std::string_view();
}

std::string_view translated(std::string_view language, std::string_view english)
{
    if (language == "en")
        return english;
    const auto text = translation(language, english);
    return text.empty() ? english : text;
}

bool speaks(std::string_view language) { return catalogueOf(language) != nullptr; }

} // namespace embedded_host::texts
