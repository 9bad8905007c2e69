// What stands for a secret: its keyed hash, in the secret's own kinds of characters. Nothing can be learnt from it
// without the key, and the same key makes the same of it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct gcry_md_handle;

namespace zorpinventory::anonymize
{

class Keyed
{
public:
    using Bytes = std::vector<unsigned char>;

    /// Throws Problem when the library cannot do it.
    explicit Keyed(std::span<const unsigned char> key);

    /// A key that nobody has had before.
    static Bytes freshKey();

    /// A text of small letters in which other digits stand for digits, letters for letters. Each attempt makes another.
    std::string text(std::string_view secret, std::uint32_t attempt);

    /// Bytes in whose hexadecimal form other digits stand for digits, letters for letters. What tells a UUID's version
    /// and variant stays.
    Bytes bytes(std::span<const unsigned char> secret, std::uint32_t attempt);

    /// A number of 16 bits.
    std::uint16_t number(std::uint16_t secret, std::uint32_t attempt);

private:
    enum class Domain : unsigned char { Text = 1, LongText, Digest, Plain, Number };

    std::span<const unsigned char> hash(Domain domain, std::uint32_t attempt, std::uint32_t block,
                                        std::string_view secret);

    /// As many numbers of 16 bits as there are places.
    void draw(std::span<std::uint16_t> numbers, Domain domain, std::uint32_t attempt, std::string_view secret);

    struct Close
    {
        void operator()(gcry_md_handle* handle) const;
    };
    std::unique_ptr<gcry_md_handle, Close> handle_;
    std::vector<std::uint16_t> drawn_;
};

} // namespace zorpinventory::anonymize
