// Links and files that appear whole, on Windows.
#include "files.h"

#include <memory>
#include <random>
#include <utility>

#include <windows.h>

#include <sddl.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail(const std::filesystem::path& path)
{
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), utf8FromPath(path));
}

HANDLE handleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

/// How much is read or written at once.
DWORD piece(std::size_t size)
{
    constexpr std::size_t kMost = 0x1000000;
    return static_cast<DWORD>(size < kMost ? size : kMost);
}

void writeAll(std::intptr_t handle, std::string_view bytes, const std::filesystem::path& path)
{
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(handleOf(handle), bytes.data(), piece(bytes.size()), &written, nullptr) == 0)
            fail(path);
        bytes.remove_prefix(written);
    }
}

/// A name beside the target that nobody can foresee.
std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    std::random_device random;
    auto name = target;
    name += L"." + std::to_wstring(random()) + L".tmp";
    return name;
}

/// Full access for the file's owner and for nobody else.
struct OwnerOnly
{
    OwnerOnly()
    {
        PSECURITY_DESCRIPTOR made = nullptr;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)", SDDL_REVISION_1, &made, nullptr);
        descriptor.reset(made);
        attributes.nLength = sizeof(attributes);
        attributes.lpSecurityDescriptor = made;
    }

    std::unique_ptr<void, decltype(&LocalFree)> descriptor{nullptr, LocalFree};
    SECURITY_ATTRIBUTES attributes{};
};

} // namespace

bool isLink(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

AtomicFile::AtomicFile(std::filesystem::path target, Readers readers) : AtomicFile(std::move(target))
{
    OwnerOnly ownerOnly;
    if (readers == Readers::Owner && !ownerOnly.descriptor)
        fail(target_);
    const auto name = temporaryBeside(target_);
    const HANDLE file =
        CreateFileW(name.c_str(), GENERIC_WRITE, 0, readers == Readers::Owner ? &ownerOnly.attributes : nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail(target_);
    handle_ = reinterpret_cast<std::intptr_t>(file);
    temporary_ = name;
}

AtomicFile::~AtomicFile()
{
    if (handle_ != -1)
        CloseHandle(handleOf(handle_));
    if (!temporary_.empty())
        DeleteFileW(temporary_.c_str());
}

void AtomicFile::write(std::string_view bytes) { writeAll(handle_, bytes, target_); }

void AtomicFile::commit()
{
    if (FlushFileBuffers(handleOf(handle_)) == 0)
        fail(target_);
    const auto handle = std::exchange(handle_, -1);
    if (CloseHandle(handleOf(handle)) == 0 ||
        MoveFileExW(temporary_.c_str(), target_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        fail(target_);
    temporary_.clear();
}

TemporaryFile::TemporaryFile()
{
    const auto name = temporaryBeside(std::filesystem::temp_directory_path() / L"zorp");
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail(name);
    handle_ = reinterpret_cast<std::intptr_t>(file);
}

TemporaryFile::~TemporaryFile() { CloseHandle(handleOf(handle_)); }

void TemporaryFile::append(std::string_view bytes) { writeAll(handle_, bytes, {}); }

void TemporaryFile::read(std::uint64_t offset, std::span<char> to) const
{
    while (!to.empty()) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD held = 0;
        if (ReadFile(handleOf(handle_), to.data(), piece(to.size()), &held, &place) == 0)
            fail({});
        to = to.subspan(held);
        offset += held;
    }
}

} // namespace embedded_host::platform
