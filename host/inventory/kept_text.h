// A long text that is written first and read afterwards, piece by piece.
#pragma once

#include "platform/files.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace embedded_host::inventory
{

/// The start is held in memory; the rest, which no real machine has, in a temporary file, so that memory stays small
/// however long the text is.
class KeptText
{
public:
    /// The most that is held in memory, in bytes: the text form of 200 usual machines.
    static constexpr std::size_t kMostInMemory = 0x100000;

    /// Writes behind what was written before. All writing comes before any reading. Throws orb5::OrbException when
    /// there is no room, as reading does when the file fails.
    void append(std::string_view bytes);

    /// How much was written.
    std::uint64_t size() const { return size_; }

    /// So many bytes from the offset on, valid until the next call.
    std::string_view read(std::uint64_t offset, std::size_t count)
    {
        const auto before = offset - at_;
        if (before <= near_.size() && count <= near_.size() - before)
            return near_.substr(before, count);
        return readAnew(offset, count);
    }

private:
    static constexpr std::size_t kPage = 0x4000;
    using Page = std::array<char, kPage>;

    void flush();
    std::string_view readAnew(std::uint64_t offset, std::size_t count);
    void copyTo(char* to, std::uint64_t offset, std::size_t count);

    std::uint64_t size_ = 0;
    std::vector<std::unique_ptr<Page>> pages_;    ///< in memory
    std::string pending_;                         ///< for the file
    std::optional<platform::TemporaryFile> file_; ///< what is behind the pages
    std::string window_;                          ///< of the file
    std::uint64_t at_ = 0;                        ///< what is near begins there
    std::string_view near_;                       ///< a page or the window, in which the last reading began
    std::string assembled_;                       ///< what was read last, where it lay in no such piece
};

} // namespace embedded_host::inventory
