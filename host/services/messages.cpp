// Sentences with places for arguments.
#include "messages.h"

#include "lum.h"
#include "platform/files.h"
#include "texts/translations.h"

namespace embedded_host::services
{

std::string messageFrom(std::string_view english, const std::vector<std::string>& arguments)
{
    const auto sentence = texts::translated(lum::LumLocale::getGlobalLocale().language(), english);
    std::string text;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        const auto place = sentence[i] == '%' && i + 1 < sentence.size()
                               ? static_cast<std::size_t>(static_cast<unsigned char>(sentence[i + 1])) - '1'
                               : arguments.size();
        if (place < arguments.size()) {
            text += arguments[place];
            ++i;
        } else {
            text += sentence[i];
        }
    }
    return text;
}

std::string reason(const std::system_error& error) { return messageFrom(platform::reason(error), {}); }

} // namespace embedded_host::services
