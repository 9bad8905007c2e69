// Child processes, with Boost.Process.
#include "child.h"

#include "document/problem.h"
#include "platform/files.h"
#include "services/messages.h"

#include <boost/asio/io_context.hpp>
#include <boost/process/args.hpp>
#include <boost/process/async_pipe.hpp>
#include <boost/process/child.hpp>
#include <boost/process/exe.hpp>
#include <boost/process/io.hpp>

#include <array>
#include <functional>

namespace zorpinventory::sources
{

using embedded_host::services::message;

std::string outputOf(const std::filesystem::path& program, const std::vector<std::string>& arguments, Limits limits)
{
    namespace process = boost::process;
    const auto name = embedded_host::platform::utf8FromPath(program.filename());

    boost::asio::io_context events;
    process::async_pipe pipe(events);
    std::error_code failure;
    process::child child(process::exe = program.string(), process::args = arguments, process::std_out > pipe,
                         process::std_in < process::null, failure);
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
            if (!error && !tooLong)
                readOn();
        });
    };
    readOn();
    events.run_for(limits.time);
    const bool tooSlow = !events.stopped();
    if (tooSlow || tooLong)
        child.terminate(failure);
    // Whoever has closed its output has nothing left to do but to end.
    child.wait(failure);
    if (tooSlow)
        throw Problem(message("%1 was still not done after %2 seconds and was ended", name, limits.time.count()));
    if (tooLong)
        throw Problem(message("%1 printed more than any inventory and was ended", name));
    if (child.exit_code() != 0)
        throw Problem(message("%1 ended with code %2 before it was done", name, child.exit_code()));
    return output;
}

} // namespace zorpinventory::sources
