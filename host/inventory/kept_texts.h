// Texts that are kept until their place is known.
#pragma once

#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace embedded_host::inventory
{

/// Texts by number. The first are held in memory; the rest, which only a hostile table has, in a temporary file, so
/// that memory stays small whatever the texts come to.
class KeptTexts
{
public:
    /// The most that is held in memory, in bytes: more than the text form of any real machine.
    static constexpr std::size_t kMostInMemory = 0x1000000;

    /// Keeps the text under the next number, from 0. Throws orb5::OrbException when there is no room.
    void add(std::string_view text);

    /// The text of this number, valid until the next call. Throws likewise.
    std::string_view operator[](std::size_t number);

    std::size_t size() const { return inMemory_.size() + inFile_.size(); }

private:
    struct Place
    {
        std::uint64_t offset;
        std::size_t size;
    };

    std::vector<std::string> inMemory_;
    std::size_t bytesInMemory_ = 0;
    std::vector<Place> inFile_; ///< the texts behind those in memory
    std::optional<platform::TemporaryFile> file_;
    std::string read_; ///< the text of the file that was asked for last
};

} // namespace embedded_host::inventory
