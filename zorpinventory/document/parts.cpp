// Taking documents apart: what was read before needs no second look at what is JSON.
#include "parts.h"

#include <algorithm>

namespace zorpinventory::document
{

namespace
{

constexpr std::string_view kBlanks = " \t\r\n";

class Scanner
{
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    /// The next character that is no blank; stays before it. NUL at the end.
    char next()
    {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
        return rest_.empty() ? '\0' : rest_.front();
    }

    /// Takes the next character if it is this one.
    bool take(char wanted)
    {
        if (next() != wanted)
            return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// Takes a value or a key and appends it without the blanks in it.
    void copy(std::string& to)
    {
        std::size_t depth = 0;
        do {
            const char c = next();
            if (c == '\0')
                return;
            std::size_t length = 1;
            if (c == '"') {
                length = text();
            } else if (c == '{' || c == '[') {
                ++depth;
            } else if (c == '}' || c == ']') {
                --depth;
            } else if (c != ',' && c != ':') {
                length = std::min(rest_.find_first_of(",:]} \t\r\n"), rest_.size());
            }
            to.append(rest_.substr(0, length));
            rest_.remove_prefix(length);
        } while (depth != 0);
    }

private:
    /// The length of the text that begins here, its quotation marks included.
    std::size_t text() const
    {
        std::size_t end = 1;
        while (end < rest_.size() && rest_[end] != '"')
            end += rest_[end] == '\\' ? 2U : 1U;
        return std::min(end + 1, rest_.size());
    }

    std::string_view rest_;
};

} // namespace

Parts partsOf(std::string_view text)
{
    Parts parts;
    auto* frame = &parts.before;
    Scanner scanner(text);
    scanner.take('{');
    *frame = "{";
    while (scanner.next() == '"') {
        std::string key;
        scanner.copy(key);
        scanner.take(':');
        if (key == R"("source")") {
            std::string left;
            scanner.copy(left);
        } else {
            if (frame->back() != '{')
                *frame += ',';
            *frame += key + ":";
            if (key == R"("devices")" && scanner.take('[')) {
                *frame += '[';
                while (scanner.next() == '{') {
                    scanner.copy(parts.devices.emplace_back());
                    scanner.take(',');
                }
                scanner.take(']');
                frame = &parts.after;
                *frame = "]";
            } else {
                scanner.copy(*frame);
            }
        }
        scanner.take(',');
    }
    *frame += '}';
    return parts;
}

} // namespace zorpinventory::document
