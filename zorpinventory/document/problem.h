// Why something could not be done.
#pragma once

#include <stdexcept>
#include <string>

namespace zorpinventory
{

/// It could not be done. `what()` is one sentence, in the user's language, that says what, where and what to do; `main`
/// alone prints it. It may quote texts from outside as they are.
class Problem : public std::runtime_error
{
public:
    explicit Problem(const std::string& sentence) : std::runtime_error(sentence) {}
};

} // namespace zorpinventory
