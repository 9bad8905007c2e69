// Child processes, with Boost.Process.
#include "child.h"

#include "document/problem.h"
#include "platform/files.h"
#include "services/messages.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/write.hpp>
#include <boost/process/args.hpp>
#include <boost/process/async.hpp>
#include <boost/process/async_pipe.hpp>
#include <boost/process/child.hpp>
#include <boost/process/exe.hpp>
#include <boost/process/io.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace zorpinventory::sources
{

using embedded_host::services::message;

namespace
{

/// What a piece of output means for the program that printed it.
enum class Verdict {
    GoOn,
    BeginAnew, ///< it has done something, and is given the whole time again
    TooMuch,
};

/// Runs a program; `take` gets its output in pieces.
void run(const std::filesystem::path& program, const std::vector<std::string>& arguments, const std::string& input,
         std::chrono::seconds limit, const std::function<Verdict(std::string_view piece)>& take)
{
    namespace process = boost::process;
    const auto name = embedded_host::platform::utf8FromPath(program.filename());
    // On Windows arguments are spelt as paths are.
    std::vector<std::filesystem::path::string_type> spelt;
    std::ranges::transform(arguments, std::back_inserter(spelt), [](const std::string& argument) {
        return embedded_host::platform::pathFromUtf8(argument).native();
    });

    boost::asio::io_context events;
    process::async_pipe output(events);
    process::async_pipe list(events);
    std::error_code failure;
    // Its output may end before it does, and the other way round: both are waited for.
    const auto ended = [](int, const std::error_code&) {};
    process::child child(process::exe = program.native(), process::args = spelt, process::std_out > output,
                         process::std_err > stderr, process::std_in < list, process::on_exit = ended, events, failure);
    if (failure)
        throw Problem(message("cannot start %1: %2", embedded_host::platform::utf8FromPath(program),
                              embedded_host::services::reason(std::system_error(failure))));

    boost::asio::async_write(list, boost::asio::buffer(input),
                             [&](const boost::system::error_code&, std::size_t) { list.close(); });
    std::array<char, 0x10000> piece{};
    bool tooLong = false;
    const auto fromNow = [&] { return std::chrono::steady_clock::now() + limit; };
    auto deadline = fromNow();
    std::function<void()> readOn = [&] {
        output.async_read_some(boost::asio::buffer(piece), [&](const auto& error, std::size_t size) {
            const auto verdict = take({piece.data(), size});
            tooLong = verdict == Verdict::TooMuch;
            if (verdict == Verdict::BeginAnew)
                deadline = fromNow();
            if (tooLong)
                events.stop();
            else if (!error)
                readOn();
        });
    };
    readOn();
    while (!events.stopped() && std::chrono::steady_clock::now() < deadline)
        events.run_until(deadline);
    const bool tooSlow = !events.stopped();
    if (tooSlow || tooLong)
        child.terminate(failure);
    if (tooSlow)
        throw Problem(message("%1 was still not done after %2 seconds and was ended", name, limit.count()));
    if (tooLong)
        throw Problem(message("%1 printed more than any inventory and was ended", name));
    if (child.exit_code() != 0)
        throw Problem(message("%1 ended with code %2 before it was done", name, child.exit_code()));
}

} // namespace

std::string outputOf(const std::filesystem::path& program, const std::vector<std::string>& arguments, Limits limits)
{
    std::string all;
    run(program, arguments, {}, limits.time, [&](std::string_view piece) {
        all += piece;
        return all.size() > limits.bytes ? Verdict::TooMuch : Verdict::GoOn;
    });
    return all;
}

void eachLineOf(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                const std::string& input, Limits limits, const std::function<void(std::string line)>& take)
{
    std::string line;
    run(program, arguments, input, limits.time, [&](std::string_view piece) {
        auto verdict = Verdict::GoOn;
        for (;;) {
            const auto end = piece.find('\n');
            line += piece.substr(0, end);
            if (end == std::string_view::npos)
                return line.size() > limits.bytes ? Verdict::TooMuch : verdict;
            take(std::exchange(line, {}));
            verdict = Verdict::BeginAnew;
            piece.remove_prefix(end + 1);
        }
    });
}

} // namespace zorpinventory::sources
