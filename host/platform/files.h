// Files as this host needs them: read whole, or written so that they appear whole or not at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace embedded_host::platform
{

using Bytes = std::vector<unsigned char>;

/// The path that a UTF-8 text names, whatever the system's code page.
inline std::filesystem::path pathFromUtf8(std::string_view text) { return std::u8string(text.begin(), text.end()); }

/// The UTF-8 text of a path.
inline std::string utf8FromPath(const std::filesystem::path& path)
{
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

/// The content of a regular file; `room` more bytes fit behind it without a copy. Never waits. Throws
/// std::system_error; a file of more than `limit` bytes is file_too_large, a device, pipe or folder is not read at all.
Bytes readFile(const std::filesystem::path& path, std::size_t limit, std::size_t room = 0);

/// Whether the path itself is a symbolic link or another kind of signpost to elsewhere.
bool isLink(const std::filesystem::path& path);

/// Whether somebody beside its owner, and beside who may read everything, may read a file. Throws std::system_error.
bool othersMayRead(const std::filesystem::path& path);

/// Failures that the C library has no words for.
enum class FileFault {
    DanglingLink = 1,
    GroupNotKept,
    AttributesNotKept,
};
std::error_code make_error_code(FileFault fault);

/// Why an operation on a file failed, in the words of the C library whatever the system: "Permission denied".
std::string reason(const std::system_error& error);

/// An open file, as the system names it. Every failure is a std::system_error.
class OpenFile
{
public:
    static constexpr std::intptr_t kNone = -1;

    explicit OpenFile(std::intptr_t handle = kNone) : handle_(handle) {}
    OpenFile(OpenFile&& other) noexcept : handle_(std::exchange(other.handle_, kNone)) {}
    OpenFile& operator=(OpenFile&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~OpenFile();

    bool isOpen() const { return handle_ != kNone; }
    std::intptr_t handle() const { return handle_; }

    void write(std::string_view bytes);

    /// Reads as many bytes as there are in `to`, from the offset on.
    void read(std::uint64_t offset, std::span<char> to) const;

    /// Tells what the destructor cannot tell.
    void close();

private:
    std::intptr_t handle_;
};

/// Who may read a file that is being written.
enum class Readers {
    Owner,
    AsBefore, ///< who may read the file that it replaces; else as the system gives it to new files
};

/// A file that appears under its name when it is committed, complete and flushed to the disk, or not at all, however
/// the process ends. A symbolic link at the target is replaced, never followed. With Readers::AsBefore the new file has
/// the old one's mode, group, access list and extended attributes, and its owner where this process may give it away.
class AtomicFile
{
public:
    /// Throws std::system_error when the file cannot be made, as all of this does.
    AtomicFile(std::filesystem::path target, Readers readers);
    /// Removes what was written, unless it was committed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void write(std::string_view bytes) { file_.write(bytes); }
    void write(const Bytes& bytes) { write({reinterpret_cast<const char*>(bytes.data()), bytes.size()}); }

    /// Throws what is to be told when the file at this path may not be replaced.
    using Look = std::function<void(const std::filesystem::path& there)>;

    /// Makes the file appear. What it replaces was looked at, whoever put it there in the last moment: it may then have
    /// another name, and it is put back when it may not be replaced.
    void commit(const Look& mayReplace = nullptr);

private:
    /// Delegated to, so that the destructor also cleans up behind a constructor that fails half-way.
    struct Unmade
    {
    };
    AtomicFile(std::filesystem::path target, Readers readers, Unmade) : target_(std::move(target)), readers_(readers) {}

    void place(const Look& mayReplace);
    void replaceIf(const Look& mayReplace);
    void holdName(std::filesystem::path name);
    void releaseName();

    std::filesystem::path target_;
    Readers readers_;
    std::filesystem::path temporary_; ///< the name of what is removed in the end; empty while there is none
    OpenFile file_;
};

/// Removes the files that were not committed, where no destructor will: they may have names on some systems.
void removeUnfinishedFiles();

/// What a user names to be written. A regular file, also one that a symbolic link leads to, appears whole or not at all
/// and keeps its readers. A device, a pipe or an open descriptor (/dev/stdout) is written to as it stands.
class OutputFile
{
public:
    /// Throws std::system_error, as all of this does.
    explicit OutputFile(const std::filesystem::path& target);

    void write(std::string_view bytes) { whole_ ? whole_->write(bytes) : inPlace_.write(bytes); }

    /// Makes the file appear.
    void commit() { whole_ ? whole_->commit() : inPlace_.close(); }

private:
    std::optional<AtomicFile> whole_;
    OpenFile inPlace_;
};

/// A file without a name, for what memory should not hold. It is nobody else's to read and gone with this object.
class TemporaryFile
{
public:
    /// Throws std::system_error, as all of this does.
    TemporaryFile();

    /// Writes behind what was written before. All writing comes before any reading.
    void append(std::string_view bytes) { file_.write(bytes); }

    /// Reads as many bytes as there are in `to`, from the offset on.
    void read(std::uint64_t offset, std::span<char> to) const { file_.read(offset, to); }

private:
    OpenFile file_;
};

} // namespace embedded_host::platform

template <>
struct std::is_error_code_enum<embedded_host::platform::FileFault> : std::true_type
{
};
