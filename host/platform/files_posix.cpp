// Links and files that appear whole, on POSIX systems.
#include "files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail(const std::filesystem::path& path)
{
    throw std::system_error(errno, std::generic_category(), path.string());
}

std::filesystem::path folderOf(const std::filesystem::path& path)
{
    return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

void writeAll(std::intptr_t handle, std::string_view bytes, const std::filesystem::path& path)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor(handle), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            fail(path);
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// The mode that any other program's new files get.
mode_t usualMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

bool isLink(const std::filesystem::path& path)
{
    std::error_code ignored;
    return is_symlink(std::filesystem::symlink_status(path, ignored));
}

AtomicFile::AtomicFile(std::filesystem::path target, Readers readers) : AtomicFile(std::move(target))
{
    // mkstemp makes a new file that only its owner can read, under a name that nobody can foresee.
    std::string name = target_.string() + ".XXXXXX";
    handle_ = mkstemp(name.data());
    if (handle_ < 0)
        fail(target_);
    temporary_ = name;
    if (readers == Readers::Usual && fchmod(descriptor(handle_), usualMode()) != 0)
        fail(target_);
}

AtomicFile::~AtomicFile()
{
    if (handle_ >= 0)
        close(descriptor(handle_));
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

void AtomicFile::write(std::string_view bytes) { writeAll(handle_, bytes, target_); }

void AtomicFile::commit()
{
    if (fsync(descriptor(handle_)) != 0)
        fail(target_);
    const auto handle = std::exchange(handle_, -1);
    if (close(descriptor(handle)) != 0 || rename(temporary_.c_str(), target_.c_str()) != 0)
        fail(target_);
    temporary_.clear();

    // The new name must survive a power cut too; a folder that cannot be synced still holds the whole file.
    if (const int folder = open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

TemporaryFile::TemporaryFile()
{
    const auto folder = std::filesystem::temp_directory_path();
    std::string name = folder / "zorp-XXXXXX";
    handle_ = mkstemp(name.data());
    if (handle_ < 0)
        fail(folder);
    unlink(name.c_str());
}

TemporaryFile::~TemporaryFile() { close(descriptor(handle_)); }

void TemporaryFile::append(std::string_view bytes) { writeAll(handle_, bytes, {}); }

void TemporaryFile::read(std::uint64_t offset, std::span<char> to) const
{
    while (!to.empty()) {
        const auto held = pread(descriptor(handle_), to.data(), to.size(), static_cast<off_t>(offset));
        if (held == 0)
            errno = EIO;
        if (held == 0 || (held < 0 && errno != EINTR))
            fail({});
        if (held > 0) {
            to = to.subspan(static_cast<std::size_t>(held));
            offset += static_cast<std::uint64_t>(held);
        }
    }
}

} // namespace embedded_host::platform
