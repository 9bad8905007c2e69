// The language in which the program speaks.
#pragma once

#include <string>

namespace embedded_host::services
{

/// Speaks a language from now on, as users and systems name it: "de_DE.UTF-8" is spoken as "de_DE", else as "de", else
/// English. Returns whether it is the one that was wanted.
bool speak(const std::string& wanted);

/// The language that is spoken: "de".
const std::string& language();

} // namespace embedded_host::services
