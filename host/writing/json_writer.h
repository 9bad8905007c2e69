// JSON, written straight into an output.
#pragma once

#include "output.h"

#include <charconv>
#include <concepts>

namespace embedded_host::writing
{

/// Writes JSON without blanks. Texts may be any bytes: ill-formed UTF-8 is replaced, and what a terminal would obey is
/// written as an escape, so a document may be looked at anywhere. Commas come by themselves; that every object and
/// array ends is the caller's part.
class JsonWriter
{
public:
    explicit JsonWriter(Output& output) : output_(output) {}

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    /// Keys are plain, as plainPrefix says it.
    void key(std::string_view name)
    {
        char* out = quoted(beginValue(name.size() + 3), name);
        *out++ = ':';
        output_.wrote(out);
        comma_ = false;
    }
    /// A key of any bytes.
    void textKey(std::string_view name)
    {
        text(name);
        comma_ = false;
        open(':');
    }
    void member(std::string_view name, std::string_view value)
    {
        key(name);
        text(value);
    }
    void text(std::string_view value);
    /// A text that is known to be plain and short: the names that the device API gives its constants.
    void plain(std::string_view value) { output_.wrote(quoted(beginValue(value.size() + 2), value)); }
    void number(std::integral auto value)
    {
        char* out = beginValue(kLongestInteger);
        output_.wrote(std::to_chars(out, out + kLongestInteger, value).ptr);
    }
    /// As ECMAScript prints numbers.
    void number(double value);
    /// A number that is written already.
    void number(std::string_view digits) { put(digits); }
    void flag(bool value) { put(value ? "true" : "false"); }
    void null() { put("null"); }

    /// Begins a line for the next value.
    void newLine() { open('\n'); }
    /// Ends a line behind a value.
    void endLine()
    {
        close('\n');
        comma_ = false;
    }

private:
    static constexpr std::size_t kLongestInteger = 20;

    /// Room for so many bytes of a value, behind a comma where one is due.
    char* beginValue(std::size_t bytes)
    {
        char* out = output_.room(bytes + 1);
        if (comma_)
            *out++ = ',';
        comma_ = true;
        return out;
    }
    static char* quoted(char* out, std::string_view text)
    {
        *out++ = '"';
        out += text.copy(out, text.size());
        *out++ = '"';
        return out;
    }
    void put(std::string_view text)
    {
        char* out = beginValue(text.size());
        output_.wrote(out + text.copy(out, text.size()));
    }
    void put(char character)
    {
        char* out = beginValue(1);
        *out++ = character;
        output_.wrote(out);
    }
    void open(char bracket)
    {
        put(bracket);
        comma_ = false;
    }
    void close(char bracket)
    {
        comma_ = false;
        put(bracket);
    }

    Output& output_;
    bool comma_ = false; ///< before the next value
};

} // namespace embedded_host::writing
