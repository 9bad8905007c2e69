// The first process of the emulated machine: does the steps that the kernel's command line names, tells on the serial
// console what came of them, and powers the machine off.
//
//   +sysfs, +devices     mount /sys, mount /dev
//   +user                let the program run as an ordinary user from here on
//   +run NAME [OPTION]…  run the program; its outputs and its exit code are told as NAME.out, NAME.err, NAME.exit
//
// A text is told as a line "=== NAME LENGTH", its bytes, and a line "=== end"; the last line of all is "=== done".
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
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

void redirect(int descriptor, const std::string& path)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    require(file >= 0 && dup2(file, descriptor) == descriptor, path);
}

void becomeOrdinaryUser()
{
    require(setgroups(0, nullptr) == 0 && setgid(kOrdinaryUser) == 0 && setuid(kOrdinaryUser) == 0, "setuid");
}

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void run(const std::string& name, const std::vector<std::string>& options, bool asOrdinaryUser)
{
    const std::string out = "/tmp/" + name + ".out";
    const std::string err = "/tmp/" + name + ".err";
    std::fflush(stdout);
    const pid_t child = fork();
    require(child >= 0, "fork");
    if (child == 0) {
        try {
            redirect(STDOUT_FILENO, out);
            redirect(STDERR_FILENO, err);
            if (asOrdinaryUser)
                becomeOrdinaryUser();
            std::vector<std::string> words{kProgram};
            words.insert(words.end(), options.begin(), options.end());
            std::vector<char*> arguments;
            arguments.reserve(words.size() + 1);
            for (auto& word : words)
                arguments.push_back(word.data());
            arguments.push_back(nullptr);
            execv(kProgram, arguments.data());
            require(false, kProgram);
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

void doSteps(const std::vector<std::string>& words)
{
    bool asOrdinaryUser = false;
    for (auto word = words.begin(); word != words.end();) {
        const std::string step = *word++;
        std::vector<std::string> operands;
        while (word != words.end() && word->front() != '+')
            operands.push_back(*word++);
        if (step == "+sysfs")
            mountAt("/sys", "sysfs");
        else if (step == "+devices")
            mountAt("/dev", "devtmpfs");
        else if (step == "+user")
            asOrdinaryUser = true;
        else if (step == "+run" && !operands.empty())
            run(operands.front(), {operands.begin() + 1, operands.end()}, asOrdinaryUser);
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
