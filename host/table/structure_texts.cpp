// Strings of structures, and texts of enumerated fields in English and in the current language.
#include "library.h"
#include "smbios2.h"
#include "texts/enum_texts.h"
#include "texts/translations.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace libsmbios2
{

namespace
{

namespace table = embedded_host::table;
namespace texts = embedded_host::texts;

constexpr const char* kReserved = "Reserved";
constexpr const char* kOutOfRange = "Out of range";

bool isOneOf(const char* text, std::initializer_list<const char*> words)
{
    return std::ranges::any_of(words, [&](const char* word) { return std::strcmp(text, word) == 0; });
}

/// What a value of an enumerated field means.
struct Meaning
{
    const char* english;
    unsigned code;
};

/// Nothing when there is no table for the field.
std::optional<Meaning> lookUp(unsigned type, unsigned offset, unsigned value, unsigned width, unsigned shift)
{
    const auto* field = texts::findField(type, offset, width, shift);
    if (field == nullptr)
        return std::nullopt;
    const unsigned cut = width == 0 ? value : value >> shift & ((1u << width) - 1);
    const char* text = texts::findText(*field, cut);
    return Meaning{text != nullptr ? text : kOutOfRange, field->firstCode + cut};
}

/// The text in the current language. The same few are asked for over and over.
std::string_view localized(const char* english)
{
    struct Known
    {
        const char* english = nullptr;
        std::string_view text;
    };
    static std::array<Known, 512> known;
    static std::string knownLanguage;
    const auto& language = lum::LumLocale::getGlobalLocale().language();
    if (language == texts::kEnglish)
        return english;
    if (language != knownLanguage) {
        known.fill({});
        knownLanguage = language;
    }
    auto& place = known[std::hash<const void*>()(english) % known.size()];
    if (place.english != english)
        place = {english, texts::translated(language, english)};
    return place.text;
}

} // namespace

const char* Smbios2_SysInfo::getString(const type_hdr* structure, unsigned char number)
{
    if (number == 0)
        return nullptr;
    auto* strings = table::stringsInMemory(structure);
    table::StringSet elsewhere;
    if (strings == nullptr) {
        elsewhere.turnTo(structure);
        strings = &elsewhere;
    }
    const char* text = strings->find(number);
    if (text == nullptr)
        table::noteMissingString(structure, number);
    return text;
}

const char* Smbios2_SysInfo::getEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                                const unsigned int& value, unsigned char width, unsigned char shift)
{
    const auto meaning = lookUp(type, offset, value, width, shift);
    return meaning ? meaning->english : nullptr;
}

lum::String Smbios2_SysInfo::getLocalizedEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                                         const unsigned int& value, unsigned char width,
                                                         unsigned char shift)
{
    const auto meaning = lookUp(type, offset, value, width, shift);
    if (!meaning)
        return {};
    return lum::String::fixed(localized(meaning->english)).show(lum::Number::code(meaning->code));
}

bool Smbios2_SysInfo::isKnownEnum(const char* text)
{
    return text != nullptr && !isOneOf(text, {kReserved, kOutOfRange});
}

bool Smbios2_SysInfo::isDefinedEnum(const char* text)
{
    return isKnownEnum(text) && !isOneOf(text, {"Other", "Unknown", "None", "Undefined"});
}

} // namespace libsmbios2
