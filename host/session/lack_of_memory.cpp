// Telling that memory ran out.
#include "lack_of_memory.h"

#include "lum.h"
#include "services/logging.h"
#include "services/messages.h"
#include "texts/translations.h"

#include <cstdio>

namespace embedded_host::session
{

std::string_view lackOfMemory()
{
    return texts::translated(lum::LumLocale::getGlobalLocale().language(),
                             services::translatable("there is not enough memory for the whole inventory"));
}

void logLackOfMemory()
{
    const auto sentence = lackOfMemory();
    std::fprintf(stderr, "[%d] output: %.*s\n", services::kFatal, static_cast<int>(sentence.size()), sentence.data());
}

} // namespace embedded_host::session
