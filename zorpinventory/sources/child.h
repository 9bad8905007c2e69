// Other programs, run for what they print.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace zorpinventory::sources
{

/// How far a program may go before it is ended.
struct Limits
{
    std::chrono::seconds time;
    std::size_t bytes;
};

/// Runs a program without a shell and returns what it prints on standard output, which is read while it runs; its
/// standard error is ours. Throws Problem when it cannot be started, goes too far, or does not end well.
std::string outputOf(const std::filesystem::path& program, const std::vector<std::string>& arguments, Limits limits);

} // namespace zorpinventory::sources
