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
    const std::less<const void*> before; // a total order, whatever is pointed into
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
    char* bytes = sum.inside_;
    if (sum.size_ > kInside) {
        const auto memory = std::make_shared<char[]>(sum.size_ + 1);
        sum.outside_ = bytes = memory.get();
        sum.owner_ = memory;
    }
    this->bytes().copy(bytes, size_);
    other.bytes().copy(bytes + size_, other.size_);
    return sum;
}

String& String::trim()
{
    constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
    const auto whole = bytes();
    const auto first = whole.find_first_not_of(kWhiteSpace);
    if (first == std::string_view::npos)
        return *this = String();
    const auto kept = whole.substr(first, whole.find_last_not_of(kWhiteSpace) - first + 1);
    if (kept.size() != whole.size())
        *this = String(kept);
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
