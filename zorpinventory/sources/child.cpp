// Child processes, with Boost.Process.
#include "child.h"

#include "document/problem.h"
#include "platform/files.h"
#include "services/messages.h"

#include <boost/asio/io_context.hpp>
#include <boost/process/args.hpp>
#include <boost/process/async.hpp>
#include <boost/process/async_pipe.hpp>
#include <boost/process/child.hpp>
#include <boost/process/exe.hpp>
#include <boost/process/io.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

namespace zorpinventory::sources
{

using embedded_host::services::message;

std::string outputOf(const std::filesystem::path& program, const std::vector<std::string>& arguments, Limits limits)
{
    namespace process = boost::process;
    const auto name = embedded_host::platform::utf8FromPath(program.filename());
    // On Windows arguments are spelt as paths are.
    std::vector<std::filesystem::path::string_type> spelt;
    std::ranges::transform(arguments, std::back_inserter(spelt), [](const std::string& argument) {
        return embedded_host::platform::pathFromUtf8(argument).native();
    });

    boost::asio::io_context events;
    process::async_pipe pipe(events);
    std::error_code failure;
    // Its output may end before it does, and the other way round: both are waited for.
    const auto ended = [](int, const std::error_code&) {};
    process::child child(process::exe = program.native(), process::args = spelt, process::std_out > pipe,
                         process::std_err > stderr, process::std_in < process::null, process::on_exit = ended, events,
                         failure);
    if (failure)
        throw Problem(message("cannot start %1: %2", embedded_host::platform::utf8FromPath(program),
                              embedded_host::services::reason(std::system_error(failure))));

    std::string output;
    std::array<char, 0x10000> piece{};
    bool tooLong = false;
    std::function<void()> readOn = [&] {
        pipe.async_read_some(boost::asio::buffer(piece), [&](const boost::system::error_code& error, std::size_t size) {
            output.append(piece.data(), size);
            tooLong = output.size() > limits.bytes;
            if (tooLong)
                events.stop();
            else if (!error)
                readOn();
        });
    };
    readOn();
    events.run_for(limits.time);
    const bool tooSlow = !events.stopped();
    if (tooSlow || tooLong)
        child.terminate(failure);
    if (tooSlow)
        throw Problem(message("%1 was still not done after %2 seconds and was ended", name, limits.time.count()));
    if (tooLong)
        throw Problem(message("%1 printed more than any inventory and was ended", name));
    if (child.exit_code() != 0)
        throw Problem(message("%1 ended with code %2 before it was done", name, child.exit_code()));
    return output;
}

} // namespace zorpinventory::sources
