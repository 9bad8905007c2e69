// RapidJSON's writer with this host's rule for texts.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdlib>
#include <new>
#include <string_view>

namespace embedded_host::writing
{

/// RapidJSON never asks whether its allocator had anything to give, so this one throws when it has not.
class ThrowingAllocator
{
public:
    // RapidJSON's names.
    static constexpr bool kNeedFree = true;
    static void* Malloc(std::size_t size) { return size == 0 ? nullptr : given(std::malloc(size)); }
    static void* Realloc(void* old, std::size_t /*oldSize*/, std::size_t size)
    {
        if (size != 0)
            return given(std::realloc(old, size));
        Free(old);
        return nullptr;
    }
    static void Free(void* memory) { std::free(memory); }

private:
    static void* given(void* memory) { return memory != nullptr ? memory : throw std::bad_alloc(); }
};

using JsonBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, ThrowingAllocator>;

/// Writes JSON without blanks. Texts may be any bytes: ill-formed UTF-8 is replaced, and what a terminal would obey is
/// written as an escape, so a document may be looked at anywhere.
class JsonWriter : private rapidjson::Writer<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>
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
    JsonBuffer buffer_;
};

} // namespace embedded_host::writing
