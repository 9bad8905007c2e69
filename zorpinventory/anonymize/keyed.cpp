// HMAC-SHA-256, from libgcrypt.
#include "keyed.h"

#include "document/problem.h"
#include "letters.h"
#include "services/messages.h"

#include <array>
#include <gcrypt.h>

namespace zorpinventory::anonymize
{

namespace
{

constexpr std::size_t kHash = 32; ///< bytes

void initialise()
{
    static const bool done = [] {
        if (gcry_check_version(GCRYPT_VERSION) == nullptr)
            return false;
        gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
        gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
        return true;
    }();
    if (!done)
        throw Problem(embedded_host::services::message("the library libgcrypt is older than this program; renew it"));
}

void require(gcry_error_t error)
{
    if (error != 0)
        throw Problem(embedded_host::services::message("the library libgcrypt says: %1", gcry_strerror(error)));
}

unsigned nibbleLike(unsigned nibble, unsigned number) { return nibble < 10 ? number % 10 : 10 + number % 6; }

std::string_view asText(std::span<const unsigned char> bytes)
{
    return {static_cast<const char*>(static_cast<const void*>(bytes.data())), bytes.size()};
}

} // namespace

void Keyed::Close::operator()(gcry_md_handle* handle) const { gcry_md_close(handle); }

Keyed::Keyed(std::span<const unsigned char> key)
{
    initialise();
    gcry_md_hd_t handle = nullptr;
    require(gcry_md_open(&handle, GCRY_MD_SHA256, GCRY_MD_FLAG_HMAC));
    handle_.reset(handle);
    require(gcry_md_setkey(handle, key.data(), key.size()));
}

Keyed::Bytes Keyed::freshKey()
{
    initialise();
    Bytes key(kHash);
    gcry_randomize(key.data(), key.size(), GCRY_STRONG_RANDOM);
    return key;
}

std::span<const unsigned char> Keyed::hash(Domain domain, std::uint32_t attempt, std::uint32_t block,
                                           std::string_view secret)
{
    std::array<unsigned char, 9> head{static_cast<unsigned char>(domain)};
    for (unsigned i = 0; i < 4; ++i) {
        head[1 + i] = static_cast<unsigned char>(attempt >> 8 * i);
        head[5 + i] = static_cast<unsigned char>(block >> 8 * i);
    }
    gcry_md_reset(handle_.get());
    gcry_md_write(handle_.get(), head.data(), head.size());
    gcry_md_write(handle_.get(), secret.data(), secret.size());
    return {gcry_md_read(handle_.get(), GCRY_MD_SHA256), kHash};
}

void Keyed::draw(std::span<std::uint16_t> numbers, Domain domain, std::uint32_t attempt, std::string_view secret)
{
    std::span<const unsigned char> bytes;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::size_t at = 2 * i % kHash;
        if (at == 0)
            bytes = hash(domain, attempt, static_cast<std::uint32_t>(2 * i / kHash), secret);
        numbers[i] = static_cast<std::uint16_t>(bytes[at] | bytes[at + 1] << 8);
    }
}

std::string Keyed::text(std::string_view secret, std::uint32_t attempt)
{
    std::string like = inSmallLetters(secret);
    drawn_.resize(like.size());
    if (like.size() <= 2 * kHash) {
        draw(drawn_, Domain::Text, attempt, like);
    } else { // the whole of it is hashed once, not for each piece that is needed
        const auto digest = std::string(asText(hash(Domain::Digest, 0, 0, like)));
        draw(drawn_, Domain::LongText, attempt, digest);
    }
    for (std::size_t i = 0; i < like.size(); ++i)
        if (isDigit(like[i]))
            like[i] = static_cast<char>('0' + drawn_[i] % 10);
        else if (isSmall(like[i]))
            like[i] = static_cast<char>('a' + drawn_[i] % 26);
    return like;
}

Keyed::Bytes Keyed::bytes(std::span<const unsigned char> secret, std::uint32_t attempt)
{
    drawn_.resize(2 * secret.size());
    draw(drawn_, Domain::Plain, attempt, asText(secret));
    Bytes like(secret.size());
    for (std::size_t i = 0; i < secret.size(); ++i) {
        const unsigned byte = secret[i];
        auto high = nibbleLike(byte >> 4, drawn_[2 * i]);
        if (i == 6 || i == 7) // the version, in either byte order
            high = byte >> 4;
        else if (i == 8) // the variant
            high = (byte >> 4 & 0xE) | (high & 1);
        like[i] = static_cast<unsigned char>(high << 4 | nibbleLike(byte & 0xF, drawn_[2 * i + 1]));
    }
    return like;
}

std::uint16_t Keyed::number(std::uint16_t secret, std::uint32_t attempt)
{
    const std::array bytes{static_cast<char>(secret & 0xFF), static_cast<char>(secret >> 8)};
    std::uint16_t number = 0;
    draw({&number, 1}, Domain::Number, attempt, {bytes.data(), bytes.size()});
    return number;
}

} // namespace zorpinventory::anonymize
