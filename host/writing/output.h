// Where an inventory is written: standard output, or a file that appears whole or not at all.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>
#include <string_view>

namespace embedded_host::writing
{

/// Collects text and hands it on in large pieces. Every failure is a std::system_error.
class Output
{
public:
    virtual ~Output() = default;

    void write(std::string_view text);

    /// Writes what is left and makes the output complete. Without it a file does not appear.
    void finish();

private:
    virtual void writeThrough(std::string_view text) = 0;
    virtual void complete() = 0;

    std::string pending_;
};

std::unique_ptr<Output> standardOutput();

/// A file; a device or pipe that is already there is written to as it stands.
std::unique_ptr<Output> fileOutput(const std::filesystem::path& path);

} // namespace embedded_host::writing
