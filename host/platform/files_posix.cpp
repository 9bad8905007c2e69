// Links and files that appear whole, on POSIX systems.
#include "files.h"

#include "naming.h"
#include "naming_common.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail(int error = errno) { throw std::system_error(error, std::generic_category()); }

int descriptor(const OpenFile& file) { return static_cast<int>(file.handle()); }

constexpr std::array kDeadlySignals{SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGXCPU, SIGXFSZ};

/// Names of files that are being written. Only where no file can do without a name are there any for long.
std::array<std::atomic<const char*>, 4> unfinished;

extern "C" void removeAndDie(int signal)
{
    removeUnfinishedFiles();
    raise(signal); // which is now what it was: the end
}

/// Has the files removed too when a signal ends the process. Signals that are ignored or handled stay so.
void removeAtSignals()
{
    for (const int signal : kDeadlySignals) {
        struct sigaction action
        {
        };
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = removeAndDie;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

/// Lets no signal end the process as long as this lives.
class SignalsHeld
{
public:
    SignalsHeld()
    {
        sigset_t deadly;
        sigemptyset(&deadly);
        for (const int signal : kDeadlySignals)
            sigaddset(&deadly, signal);
        sigprocmask(SIG_BLOCK, &deadly, &before_);
    }
    ~SignalsHeld() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t before_{};
};

/// What stands at the path itself; nothing when nothing does.
std::optional<struct stat> standingAt(const fs::path& path)
{
    struct stat found
    {
    };
    if (lstat(path.c_str(), &found) == 0)
        return found;
    if (errno != ENOENT)
        fail();
    return std::nullopt;
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

struct stat statusOf(int file)
{
    struct stat status
    {
    };
    if (fstat(file, &status) != 0)
        fail();
    return status;
}

void setMode(int file, mode_t mode)
{
    constexpr mode_t kPermissions = 01777; // the other bits do not outlive any writing
    if ((statusOf(file).st_mode & kPermissions) != (mode & kPermissions) && fchmod(file, mode & kPermissions) != 0)
        fail();
}

/// Gives the new file what the old one at the path has. Only root can give a file away, so whoever replaces another's
/// file owns the new one; but never does another group get the old one's rights.
void keep(const struct stat& old, const fs::path& path, int file)
{
    const auto fresh = statusOf(file);
    const bool otherGroup = old.st_gid != fresh.st_gid;
    const bool other = otherGroup || old.st_uid != fresh.st_uid;
    if (other && fchown(file, old.st_uid, old.st_gid) != 0 && otherGroup &&
        fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0)
        throw std::system_error(FileFault::GroupNotKept);
    copyAttributes(path, file);
    setMode(file, old.st_mode);
}

/// A new descriptor of the open file that the link stands for: this process's own one, so that writing goes on where
/// and how whoever opened it wanted, else one that writes behind what is there.
int followed(const fs::path& link)
{
    struct stat meant
    {
    };
    if (stat(link.c_str(), &meant) != 0)
        fail();
    const auto name = link.filename().string();
    if (std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; }) && name.size() < 8)
        if (struct stat own{}; fstat(std::stoi(name), &own) == 0 && isSame(own, meant))
            return fcntl(std::stoi(name), F_DUPFD_CLOEXEC, 0);
    return open(link.c_str(), O_WRONLY | O_APPEND | O_NOCTTY | O_CLOEXEC);
}

} // namespace

bool isLink(const fs::path& path)
{
    std::error_code ignored;
    return is_symlink(fs::symlink_status(path, ignored));
}

bool othersMayRead(const fs::path& path)
{
    // The group's bits are also the most that an access list gives.
    return (fs::status(path).permissions() & (fs::perms::group_read | fs::perms::others_read)) != fs::perms::none;
}

OpenFile::~OpenFile()
{
    if (isOpen())
        ::close(static_cast<int>(handle_));
}

void OpenFile::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor(*this), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            fail();
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OpenFile::read(std::uint64_t offset, std::span<char> to) const
{
    while (!to.empty()) {
        const auto held = pread(descriptor(*this), to.data(), to.size(), static_cast<off_t>(offset));
        if (held == 0)
            fail(EIO);
        if (held < 0 && errno != EINTR)
            fail();
        if (held > 0) {
            to = to.subspan(static_cast<std::size_t>(held));
            offset += static_cast<std::uint64_t>(held);
        }
    }
}

void OpenFile::close()
{
    if (::close(static_cast<int>(std::exchange(handle_, kNone))) != 0)
        fail();
}

void removeUnfinishedFiles()
{
    for (const auto& name : unfinished)
        if (const char* held = name.load(); held != nullptr)
            unlink(held);
}

AtomicFile::AtomicFile(fs::path target, Readers readers) : AtomicFile(std::move(target), readers, Unmade{})
{
    // What replaces a file gets its readers in the end; before that, nobody but the owner reads it.
    constexpr mode_t kOwnerOnly = 0600;
    constexpr mode_t kAsOthers = 0666;
    const mode_t mode = readers == Readers::AsBefore && !standingAt(target_) ? kAsOthers : kOwnerOnly;

    file_ = OpenFile(openNameless(folderOf(target_), mode));
    if (!file_.isOpen()) {
        auto name = temporaryBeside(target_);
        removeAtSignals();
        const SignalsHeld held;
        file_ = OpenFile(open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (!file_.isOpen())
            fail();
        holdName(std::move(name));
    }
    if (readers == Readers::Owner)
        setMode(descriptor(file_), kOwnerOnly); // whatever the umask
}

AtomicFile::~AtomicFile()
{
    if (!temporary_.empty())
        unlink(temporary_.c_str());
    releaseName();
}

void AtomicFile::holdName(fs::path name)
{
    temporary_ = std::move(name);
    for (auto& place : unfinished)
        if (const char* nobody = nullptr; place.compare_exchange_strong(nobody, temporary_.c_str()))
            return;
}

void AtomicFile::releaseName()
{
    for (auto& place : unfinished)
        if (const char* own = temporary_.c_str(); place.compare_exchange_strong(own, nullptr))
            break;
    temporary_.clear();
}

void AtomicFile::commit(const Look& mayReplace)
{
    const int file = descriptor(file_);
    if (const auto old = standingAt(target_); old && readers_ == Readers::AsBefore) {
        if (!S_ISREG(old->st_mode))
            throw std::system_error(std::make_error_code(std::errc::not_supported));
        keep(*old, target_, file);
    }
    if (fsync(file) != 0)
        fail();
    place(mayReplace);

    // The new name must survive a power cut too; a folder that cannot be synced still holds the whole file.
    if (const OpenFile folder(open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)); folder.isOpen())
        fsync(descriptor(folder));
}

/// Gives the complete file its name.
void AtomicFile::place(const Look& mayReplace)
{
    const SignalsHeld held; // a name beside the target is there for an instant only
    if (temporary_.empty()) {
        const int file = descriptor(file_);
        if (giveName(file, target_))
            return;
        if (errno != EEXIST)
            fail();
        auto name = temporaryBeside(target_);
        if (!giveName(file, name))
            fail();
        holdName(std::move(name));
    }
    if (mayReplace && !renameToNew(temporary_, target_))
        replaceIf(mayReplace);
    else if (!mayReplace && rename(temporary_.c_str(), target_.c_str()) != 0)
        fail();
    else
        releaseName();
}

/// Replaces what stands at the target when it may be replaced. It is looked at after the exchange, when nobody can slip
/// in anything else any more.
void AtomicFile::replaceIf(const Look& mayReplace)
{
    if (!exchange(temporary_, target_)) {
        // Some file systems cannot exchange. What is put there between this look and the renaming is then lost, but
        // only to somebody who writes into a folder that others write into, to the very name of a table's dump.
        mayReplace(target_);
        if (rename(temporary_.c_str(), target_.c_str()) != 0)
            fail();
        releaseName();
        return;
    }
    try {
        mayReplace(temporary_);
    } catch (...) {
        const bool back = exchange(temporary_, target_);
        const auto own = standingAt(temporary_);
        if (!back || !own || !isSame(*own, statusOf(descriptor(file_))))
            releaseName(); // it is somebody else's
        throw;
    }
}

OutputFile::OutputFile(const fs::path& target)
{
    // Links are followed one by one, since the text of one that stands for an open file does not lead to it.
    constexpr int kMostLinks = 40; // as the kernel
    fs::path path = target;
    for (int links = 0;; ++links) {
        const auto found = standingAt(path);
        if (!found && links != 0)
            throw std::system_error(FileFault::DanglingLink);
        if (!found || S_ISREG(found->st_mode)) {
            whole_.emplace(std::move(path), Readers::AsBefore);
            return;
        }
        if (S_ISDIR(found->st_mode))
            fail(EISDIR);
        const bool link = S_ISLNK(found->st_mode);
        if (!link || standsForOpenFile(path)) {
            inPlace_ = OpenFile(link ? followed(path) : open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
            if (!inPlace_.isOpen())
                fail();
            return;
        }
        if (links == kMostLinks)
            fail(ELOOP);
        path = folderOf(path) / fs::read_symlink(path);
    }
}

TemporaryFile::TemporaryFile()
{
    const auto folder = fs::temp_directory_path();
    file_ = OpenFile(openNameless(folder, 0600));
    if (file_.isOpen())
        return;
    const auto name = temporaryBeside(folder / "any");
    const SignalsHeld held;
    file_ = OpenFile(open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file_.isOpen())
        fail();
    unlink(name.c_str());
}

} // namespace embedded_host::platform
