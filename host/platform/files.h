// Files as this host needs them: read whole, or written so that they appear whole or not at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
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

/// Why an operation on a file failed, in the words of the C library whatever the system: "Permission denied".
std::string reason(const std::system_error& error);

/// Who may read a file that is being written.
enum class Readers { Owner, Usual };

/// A file that appears under its name when it is committed, complete and flushed to the disk, or not at all. It is
/// written beside its target and renamed, so a symbolic link at the target is replaced, never followed.
class AtomicFile
{
public:
    /// Throws std::system_error when the file cannot be made.
    AtomicFile(std::filesystem::path target, Readers readers);
    /// Removes what was written, unless it was committed.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Throws std::system_error.
    void write(std::string_view bytes);
    void write(const Bytes& bytes) { write({reinterpret_cast<const char*>(bytes.data()), bytes.size()}); }

    /// Makes the file appear. Throws std::system_error.
    void commit();

private:
    /// Delegated to, so that the destructor also cleans up behind a constructor that fails half-way.
    explicit AtomicFile(std::filesystem::path target) : target_(std::move(target)) {}

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::intptr_t handle_ = -1; ///< as the system names open files; -1 for none
};

/// A file without a name, for what memory should not hold. It is nobody else's to read and gone with this object.
class TemporaryFile
{
public:
    /// Throws std::system_error, as all of this does.
    TemporaryFile();
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Writes behind what was written before. All writing comes before any reading.
    void append(std::string_view bytes);

    /// Reads as many bytes as there are in `to`, from the offset on.
    void read(std::uint64_t offset, std::span<char> to) const;

private:
    std::intptr_t handle_;
};

} // namespace embedded_host::platform
