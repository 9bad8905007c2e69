// Regular files on Windows.
#include "regular_file.h"

#include <algorithm>
#include <system_error>

#include <windows.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail() { throw std::system_error(static_cast<int>(GetLastError()), std::system_category()); }

HANDLE handleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::intptr_t opened(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        fail();
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_READ, kEverybody, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        fail();
    return reinterpret_cast<std::intptr_t>(file);
}

} // namespace

RegularFile::RegularFile(const std::filesystem::path& path) : RegularFile(opened(path))
{
    // Pipes and consoles are opened like files.
    if (GetFileType(handleOf(handle_)) != FILE_TYPE_DISK)
        throw std::system_error(std::make_error_code(std::errc::not_supported));
    LARGE_INTEGER size{};
    if (GetFileSizeEx(handleOf(handle_), &size) == 0)
        fail();
    size_ = static_cast<std::uint64_t>(size.QuadPart);
}

RegularFile::~RegularFile() { CloseHandle(handleOf(handle_)); }

std::size_t RegularFile::read(std::span<unsigned char> to)
{
    constexpr std::size_t kMost = 0x1000000;
    DWORD held = 0;
    if (ReadFile(handleOf(handle_), to.data(), static_cast<DWORD>(std::min(to.size(), kMost)), &held, nullptr) == 0)
        fail();
    return held;
}

} // namespace embedded_host::platform
