// What the host tells its user, in the user's language.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace embedded_host::services
{

/// The sentence's translation, `%1` to `%9` in it replaced by the arguments.
std::string messageFrom(std::string_view english, const std::vector<std::string>& arguments);

inline std::string messageArgument(std::string_view text) { return std::string(text); }
std::string messageArgument(std::integral auto number) { return std::to_string(number); }

/// A sentence of the host's, which catalogues translate: `message("%1: not written, %2", name, why)`.
template <class... Arguments>
std::string message(const char* english, const Arguments&... arguments)
{
    return messageFrom(english, {messageArgument(arguments)...});
}

/// Marks a sentence that is translated elsewhere, so that the template of translations has it.
constexpr const char* translatable(const char* english) { return english; }

/// Why an operation on a file failed: "Permission denied".
std::string reason(const std::system_error& error);

} // namespace embedded_host::services
