// Strings of structures, and texts of enumerated fields in English and in the current language.
#include "library.h"
#include "smbios2.h"
#include "texts/enum_texts.h"
#include "texts/translations.h"

#include <cstring>

namespace libsmbios2
{

namespace
{

namespace texts = embedded_host::texts;

constexpr const char* kReserved = "Reserved";
constexpr const char* kOutOfRange = "Out of range";

bool isOneOf(const char* text, std::initializer_list<const char*> words)
{
    return std::ranges::any_of(words, [&](const char* word) { return std::strcmp(text, word) == 0; });
}

} // namespace

const char* Smbios2_SysInfo::getString(const type_hdr* structure, unsigned char number)
{
    if (number == 0)
        return nullptr;
    // An empty text ends the numbering; the zeros behind the table end a set that was cut.
    const auto* text = static_cast<const char*>(static_cast<const void*>(structure)) + structure->length;
    unsigned left = number;
    while (*text != '\0') {
        if (--left == 0)
            return text;
        text += std::strlen(text) + 1;
    }
    embedded_host::table::noteMissingString(structure, number);
    return nullptr;
}

const char* Smbios2_SysInfo::getEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                                const unsigned int& value, unsigned char width, unsigned char shift)
{
    const auto* field = texts::findField(type, offset, width, shift);
    if (field == nullptr)
        return nullptr;
    const unsigned cut = width == 0 ? value : value >> shift & ((1u << width) - 1);
    const char* text = texts::findText(*field, cut);
    return text != nullptr ? text : kOutOfRange;
}

lum::String Smbios2_SysInfo::getLocalizedEnumFieldString(const unsigned char& type, const unsigned int& offset,
                                                         const unsigned int& value, unsigned char width,
                                                         unsigned char shift)
{
    const char* english = getEnumFieldString(type, offset, value, width, shift);
    if (english == nullptr)
        return {};
    return lum::String(texts::translated(lum::LumLocale::getGlobalLocale().language(), english));
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
