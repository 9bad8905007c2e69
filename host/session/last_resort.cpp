// What ends the program when memory runs out where nothing can catch it: before `main`, in a function that must not
// throw, or while the exception that tells of it is made. Linked into the program only, since other programs end as
// they like.
#include "lack_of_memory.h"
#include "platform/files.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>

namespace embedded_host::session
{

namespace
{

[[noreturn]] void end();

/// Declarations are made before `main`, and they may be what memory is missing for.
struct LastResort
{
    LastResort() : before(std::set_terminate(end)) {}
    std::terminate_handler before;
};
#ifdef __GNUC__
[[gnu::init_priority(101)]]
#endif
const LastResort lastResort;

/// Whether that is why the program ends. With no exception at all there was no memory to make one.
bool isForLackOfMemory()
{
    if (!std::current_exception())
        return true;
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (const std::length_error&) {
        return true;
    } catch (...) {
        return false;
    }
}

void end()
{
    if (!isForLackOfMemory())
        lastResort.before();
    platform::removeUnfinishedFiles(); // no destructor will
    logLackOfMemory();
    const auto sentence = lackOfMemory();
    std::printf("OrbException: %.*s\n", static_cast<int>(sentence.size()), sentence.data());
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS); // as every failed run ends
}

} // namespace

} // namespace embedded_host::session
