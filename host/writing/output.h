// Where an inventory is written: standard output, or a file that appears whole or not at all.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string_view>

namespace embedded_host::writing
{

/// Collects text and hands it on in large pieces. Every failure is a std::system_error.
class Output
{
public:
    virtual ~Output() = default;

    void write(std::string_view text)
    {
        if (text.size() > kMostRoom - used_)
            writeInPieces(text);
        else
            used_ += text.copy(pending_.get() + used_, text.size());
    }

    /// The most that `room` gives, in bytes.
    static constexpr std::size_t kMostRoom = 0x10000;

    /// Memory for that many bytes of text. What is written there counts once `wrote` tells its end.
    char* room(std::size_t bytes)
    {
        if (bytes > kMostRoom - used_)
            writePending();
        return pending_.get() + used_;
    }
    void wrote(const char* end) { used_ = static_cast<std::size_t>(end - pending_.get()); }

    /// Hands on what was collected, for a reader who waits for it.
    void flush();

    /// Writes what is left and makes the output complete. Without it a file does not appear.
    void finish();

private:
    virtual void writeThrough(std::string_view text) = 0;
    virtual void complete() = 0;

    void writeInPieces(std::string_view text);
    void writePending();

    std::unique_ptr<char[]> pending_ = std::make_unique_for_overwrite<char[]>(kMostRoom);
    std::size_t used_ = 0; ///< of what is pending
};

std::unique_ptr<Output> standardOutput();

/// A file, as platform::OutputFile writes it.
std::unique_ptr<Output> fileOutput(const std::filesystem::path& path);

} // namespace embedded_host::writing
