// The first process of the emulated machine: does the steps that the kernel's command line names, tells on the serial
// console what came of them, and powers the machine off.
//
//   +sysfs, +devices     mount /sys, mount /dev
//   +user                let the program run as an ordinary user from here on
//   +run NAME [OPTION]…  run the program; its outputs and its exit code are told as NAME.out, NAME.err, NAME.exit
//
// A text is told as a line "=== NAME LENGTH", its bytes, and a line "=== end"; the last line of all is "=== done".
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <grp.h>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <sys/reboot.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char* kProgram = "/program";
constexpr unsigned kOrdinaryUser = 1000;

/// Throws when a system call has failed.
void require(bool done, const std::string& what)
{
    if (!done)
        throw std::runtime_error(what + ": " + std::strerror(errno));
}

/// The console must not turn line feeds into anything else: what is told is compared byte for byte.
void makeConsoleTransparent()
{
    termios settings{};
    require(tcgetattr(STDOUT_FILENO, &settings) == 0, "console settings");
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    require(tcsetattr(STDOUT_FILENO, TCSANOW, &settings) == 0, "console settings");
}

void tell(const std::string& name, const std::string& text)
{
    std::printf("\n=== %s %zu\n", name.c_str(), text.size());
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::printf("\n=== end\n");
}

void mountAt(const char* folder, const char* type)
{
    require(mkdir(folder, 0755) == 0 || errno == EEXIST, folder);
    require(mount(type, folder, type, 0, nullptr) == 0, std::string("mounting ") + folder);
}

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// Replaces this process by the program.
void become(char** arguments, const std::string& out, const std::string& err, bool asOrdinaryUser)
{
    require(std::freopen(out.c_str(), "w", stdout) != nullptr, out);
    require(std::freopen(err.c_str(), "w", stderr) != nullptr, err);
    if (asOrdinaryUser)
        require(setgroups(0, nullptr) == 0 && setgid(kOrdinaryUser) == 0 && setuid(kOrdinaryUser) == 0, "setuid");
    execv(kProgram, arguments);
    require(false, kProgram);
}

/// Runs the program; the first argument is what its outputs are told as.
void run(char** arguments, bool asOrdinaryUser)
{
    const std::string name = arguments[0];
    const std::string out = "/tmp/" + name + ".out";
    const std::string err = "/tmp/" + name + ".err";
    std::fflush(stdout);
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) {
        try {
            become(arguments, out, err, asOrdinaryUser);
        } catch (const std::exception& wrong) {
            std::fprintf(stderr, "guest_init: %s\n", wrong.what());
        }
        std::fflush(stderr);
        _exit(125);
    }
    int status = 0;
    require(waitpid(child, &status, 0) == child, "waitpid");
    tell(name + ".out", contentOf(out));
    tell(name + ".err", contentOf(err));
    tell(name + ".exit", std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)));
}

/// Each step's words end where the next begins.
void doSteps(const std::vector<char*>& words)
{
    bool asOrdinaryUser = false;
    for (auto word = words.begin(); word != words.end();) {
        const std::string step = *word++;
        const auto end = std::find_if(word, words.end(), [](const char* next) { return *next == '+'; });
        std::vector<char*> operands(word, end);
        operands.push_back(nullptr);
        word = end;
        if (step == "+sysfs")
            mountAt("/sys", "sysfs");
        else if (step == "+devices")
            mountAt("/dev", "devtmpfs");
        else if (step == "+user")
            asOrdinaryUser = true;
        else if (step == "+run" && operands.size() > 1)
            run(operands.data(), asOrdinaryUser);
        else
            throw std::runtime_error("no such step: " + step);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    try {
        makeConsoleTransparent();
        umask(0);
        require(mkdir("/tmp", 01777) == 0 || errno == EEXIST, "/tmp");
        umask(022);
        doSteps({argv + 1, argv + argc});
        std::printf("\n=== done\n");
    } catch (const std::exception& wrong) {
        std::printf("\nguest_init: %s\n", wrong.what());
    }
    // What still lies in the line's buffer is lost with the power.
    std::fflush(stdout);
    tcdrain(STDOUT_FILENO);
    reboot(RB_POWER_OFF);
    return 1;
}
