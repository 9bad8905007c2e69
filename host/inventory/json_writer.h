// RapidJSON's writer with this host's rule for texts.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string_view>

namespace embedded_host::inventory
{

/// Writes JSON without blanks. Texts may be any bytes: ill-formed UTF-8 is replaced, and what a terminal would obey is
/// written as an escape, so a document may be looked at anywhere.
class JsonWriter : private rapidjson::Writer<rapidjson::StringBuffer>
{
public:
    JsonWriter() { Reset(buffer_); }

    void beginObject() { StartObject(); }
    void endObject() { EndObject(); }
    void beginArray() { StartArray(); }
    void endArray() { EndArray(); }

    /// Keys are plain, as plainPrefix says it.
    void key(std::string_view name) { plain(name); }
    void member(std::string_view name, std::string_view value)
    {
        key(name);
        text(value);
    }
    void text(std::string_view value);
    /// A text that is known to be plain: the names that the device API gives its constants.
    void plain(std::string_view value);
    void number(double value) { Double(value); }
    void number(std::uint64_t value) { Uint64(value); }
    void number(int value) { Int(value); }
    void flag(bool value) { Bool(value); }
    void null() { Null(); }

    /// What was written so far.
    std::string_view written() const { return {buffer_.GetString(), buffer_.GetSize()}; }

    /// Starts a new document; the memory is kept.
    void clear()
    {
        buffer_.Clear();
        Reset(buffer_);
    }

private:
    rapidjson::StringBuffer buffer_;
};

} // namespace embedded_host::inventory
