// Enumeration texts of type 13: BIOS languages (DSP0134).
#pragma once

#include "enum_texts.h"

namespace embedded_host::texts
{

inline constexpr EnumText kLanguageFormat[] = {{0, "Long format"}, {1, "Abbreviated format"}};

inline constexpr FieldTexts kStringListsFields[] = {
    {13, 0x05, 1, 7, kLanguageFormat},
};

} // namespace embedded_host::texts
