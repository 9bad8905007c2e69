// lum::String.
#include "shared_memory.h"

#include "lum.h"

#include <algorithm>
#include <functional>

namespace lum
{

namespace
{

struct Memory
{
    std::span<const unsigned char> bytes;
    std::weak_ptr<const void> owner;
};

/// What was announced last.
Memory& shared()
{
    static Memory memory;
    return memory;
}

bool contains(std::span<const unsigned char> memory, const void* text)
{
    const std::less<> before; // a total order, whatever is pointed into
    return !before(text, memory.data()) && before(text, memory.data() + memory.size());
}

} // namespace

String String::fixed(std::string_view text)
{
    String made;
    made.outside_ = text.data();
    made.size_ = text.size();
    return made;
}

void String::holdLong(std::string_view text, Source source)
{
    size_ = text.size();
    if (source == Source::Terminated && contains(shared().bytes, text.data()))
        owner_ = shared().owner.lock(); // nobody where it has gone: other bytes may lie there now
    if (owner_ != nullptr) {
        outside_ = text.data();
    } else {
        const auto copy = std::make_shared<char[]>(size_ + 1);
        text.copy(copy.get(), size_);
        outside_ = copy.get();
        owner_ = copy;
    }
}

String String::operator+(const String& other) const
{
    String sum;
    sum.size_ = size_ + other.size_;
    char* bytes = sum.inside_.data();
    if (sum.size_ > kInside) {
        const auto memory = std::make_shared<char[]>(sum.size_ + 1);
        sum.outside_ = bytes = memory.get();
        sum.owner_ = memory;
    }
    this->bytes().copy(bytes, size_);
    other.bytes().copy(bytes + size_, other.size_);
    return sum;
}

String& String::operator+=(const String& other)
{
    if (outside_ != nullptr || size_ + other.size_ > kInside)
        return *this = *this + other;
    size_ += other.bytes().copy(inside_.data() + size_, other.size_);
    inside_[size_] = '\0';
    number_ = {};
    return *this;
}

String& String::trim()
{
    const auto isWhite = [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); };
    const auto whole = bytes();
    const auto* first = std::ranges::find_if_not(whole, isWhite);
    const auto* behind = whole.end();
    while (behind != first && isWhite(behind[-1]))
        --behind;
    if (first != whole.begin() || behind != whole.end())
        *this = String(std::string_view(first, behind));
    return *this;
}

void String::remove(unsigned pos, unsigned count)
{
    const auto whole = bytes();
    if (pos < whole.size())
        *this =
            String(whole.substr(0, pos)) + String(whole.substr(std::min<std::size_t>(pos + std::size_t{count}, size_)));
}

} // namespace lum

namespace embedded_host::services
{

void shareMemory(std::span<const unsigned char> memory, const std::shared_ptr<const void>& owner)
{
    lum::shared() = {memory, owner};
}

} // namespace embedded_host::services
