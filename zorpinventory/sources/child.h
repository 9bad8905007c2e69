// Other programs, run for what they print.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zorpinventory::sources
{

/// How far a program may go before it is ended.
struct Limits
{
    std::chrono::seconds time; ///< for one output, or for one line where lines are taken
    std::size_t bytes;         ///< of the same
};

/// Runs a program without a shell and returns what it prints on standard output, which is read while it runs; its
/// standard error is ours. Throws Problem when it cannot be started, goes too far, or does not end well.
std::string outputOf(const std::filesystem::path& program, const std::vector<std::string>& arguments, Limits limits);

/// The same for a program that reads `input` and answers in lines: each is handed over as soon as it is there.
void eachLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                const std::string& input, Limits limits, const std::function<void(std::string line)>& take);

} // namespace zorpinventory::sources
