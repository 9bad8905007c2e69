// Linked into the program: lets each of its allocations fail in turn, in a process of its own, once alone and once with
// all that follow, and judges how the program ends. WATCHED names the file that the arguments have it write, if any;
// EVERY leaves some allocations out.
#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own allocator
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace
{

long failing = LONG_MAX; ///< the number of the allocation that fails
bool andAllThatFollow = false;
long made = 0;
long* tellMade = &made;

bool fails()
{
    const long number = (*tellMade)++;
    if (number != failing && !(andAllThatFollow && number > failing))
        return false;
    errno = ENOMEM;
    return true;
}

} // namespace

extern "C" {
void* malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) { return fails() ? nullptr : __libc_calloc(count, size); }
void* realloc(void* old, std::size_t size) { return fails() ? nullptr : __libc_realloc(old, size); }
}

namespace
{

struct Ending
{
    int status;
    std::string output;
    std::string log;
    std::optional<std::string> file;
};

std::optional<std::string> contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string taken(int file)
{
    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    const bool whole = pread(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size());
    return whole && ftruncate(file, 0) == 0 && lseek(file, 0, SEEK_SET) == 0 ? text : "cannot be read";
}

/// What is wrong with how a starved run ended; null when nothing is.
const char* fault(const Ending& run, const Ending& fed, const std::optional<std::string>& before)
{
    if (run.status != 0)
        return "it crashed";
    if (run.file != before && run.file != fed.file)
        return "the file is neither the old one nor the whole new one";
    if (run.output == fed.output) {
        const bool told = run.log.find("Cannot allocate memory") != std::string::npos;
        return run.file == fed.file || told ? nullptr : "nobody was told that the file was not written";
    }
    const auto sentence = run.output.rfind("OrbException: ");
    if (sentence == std::string::npos || (run.output.find("memory", sentence) == std::string::npos &&
                                          run.output.find("Arbeitsspeicher", sentence) == std::string::npos))
        return "no sentence";
    if (!fed.output.starts_with(run.output.substr(0, sentence)))
        return "what was printed before the sentence is no beginning of the inventory";
    if (sentence != 0 && run.log.find("[5] output: ") == std::string::npos)
        return "nobody was told that standard output has only a part";
    return nullptr;
}

/// Returns in the processes that run the program; ends in the one that watches them. This comes before all
/// declarations.
[[gnu::constructor(101)]] void starve()
{
    const int output = memfd_create("output", 0);
    const int log = memfd_create("log", 0);
    const char* given = std::getenv("WATCHED");
    const char* watched = given == nullptr || *given == '\0' ? nullptr : given;
    auto* shared =
        static_cast<long*>(mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

    Ending fed;
    long total = 0;
    long runs = 0;
    int faults = 0;
    const auto run = [&](long number, bool rest) -> std::optional<Ending> {
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            dup2(output, STDOUT_FILENO);
            dup2(log, STDERR_FILENO);
            *shared = 0;
            tellMade = shared;
            failing = number;
            andAllThatFollow = rest;
            return std::nullopt;
        }
        ++runs;
        Ending ending{};
        waitpid(child, &ending.status, 0);
        ending.output = taken(output);
        ending.log = taken(log);
        ending.file = watched == nullptr ? std::nullopt : contentOf(watched);
        return ending;
    };
    if (auto ending = run(LONG_MAX, false))
        fed = *ending;
    else
        return;
    total = *shared;

    const char* every = std::getenv("EVERY");
    const long step = every == nullptr ? 1 : std::atol(every);
    // A run finds no file, or the one that the last run left.
    for (long number = 0; number < total; number += step + std::max(0L, number - 2000) / 50) {
        for (const bool rest : {false, true}) {
            if (watched != nullptr && number % 2 == 0)
                unlink(watched);
            const auto before = watched == nullptr ? std::nullopt : contentOf(watched);
            const auto ending = run(number, rest);
            if (!ending)
                return;
            const char* found = fault(*ending, fed, before);
            if (found != nullptr && ++faults <= 10) {
                std::printf("allocation %ld%s: %s (status %x)\n%s%s\n", number, rest ? " and all that follow" : "",
                            found, static_cast<unsigned>(ending->status), ending->output.c_str(), ending->log.c_str());
                std::fflush(stdout); // before the next process gets a copy of it
            }
        }
    }
    std::printf("%ld allocations, %ld runs, %d faults\n", total, runs, faults);
    std::fflush(stdout);
    _exit(faults == 0 ? 0 : 1);
}

} // namespace
