// Texts that are safe to print: valid UTF-8, and nothing in them that a terminal would obey.
#pragma once

#include <string>
#include <string_view>

namespace embedded_host::services
{

/// How many bytes at the start of a text stand for themselves wherever it is shown: printable ASCII without quotation
/// mark and backslash.
std::size_t plainPrefix(std::string_view text);

/// Copies these bytes to where there is room for the whole text. Returns how many they are.
std::size_t copyPlainPrefix(std::string_view text, char* out);

/// Takes the first character off a text that is not empty; U+FFFD for a maximal ill-formed part.
char32_t takeCharacter(std::string_view& text);

/// Where to cut a text so that a piece of about that many bytes is read as it is in the whole.
std::size_t characterEnd(std::string_view text, std::size_t bytes);

/// Whether a terminal would act on the character instead of showing it: controls, separators, and the marks that
/// change the direction of the text around them.
bool isObeyed(char32_t code);

/// Whether the character is not seen although it is there, so that two texts which differ in it look the same.
bool isHidden(char32_t code);

/// Columns that a terminal takes for a character that it shows: 0 for what stands on the character before it, 2 for the
/// wide characters of East Asia.
std::size_t columnsOf(char32_t code);

/// Columns of a text.
std::size_t columnsOf(std::string_view text);

/// Writes the character as UTF-8, at most 4 bytes. Returns the end.
char* writeUtf8(char* out, char32_t code);

/// The most bytes that one character is written in for a person.
inline constexpr std::size_t kMostPrinted = 10;

/// Writes the character as it may be shown to a person: what a terminal would obey and what is hidden as an escape
/// (\n, \x1B, \u202E, \U000E0001), at most kMostPrinted bytes. Returns the end.
char* writePrintable(char* out, char32_t code);

/// Columns that writePrintable's bytes take.
std::size_t columnsPrinted(char32_t code);

/// Appends the text so; ill-formed parts become U+FFFD.
void appendPrintable(std::string& out, std::string_view text);

/// The text so.
std::string printable(std::string_view text);

} // namespace embedded_host::services
