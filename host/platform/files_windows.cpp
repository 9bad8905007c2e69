// Links and files that appear whole, on Windows.
#include "files.h"

#include "naming_common.h"

#include <memory>
#include <utility>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

namespace embedded_host::platform
{

namespace
{

[[noreturn]] void fail(DWORD error = GetLastError())
{
    throw std::system_error(static_cast<int>(error), std::system_category());
}

HANDLE handleOf(const OpenFile& file) { return reinterpret_cast<HANDLE>(file.handle()); }

OpenFile owned(HANDLE handle) { return OpenFile(reinterpret_cast<std::intptr_t>(handle)); }

/// How much is read or written at once.
DWORD piece(std::size_t size)
{
    constexpr std::size_t kMost = 0x1000000;
    return static_cast<DWORD>(size < kMost ? size : kMost);
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

/// Has the file vanish when it is closed, also by the end of the process, or not. Not every file system can, and the
/// destructor cleans up behind all but a killed process.
void vanishOnClose(const OpenFile& file, bool vanishes)
{
    FILE_DISPOSITION_INFO wanted{};
    wanted.DeleteFile = vanishes ? TRUE : FALSE;
    SetFileInformationByHandle(handleOf(file), FileDispositionInfo, &wanted, sizeof(wanted));
}

/// Where a link leads. Throws when that is nowhere.
std::filesystem::path linked(const std::filesystem::path& link)
{
    const auto end = owned(CreateFileW(link.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!end.isOpen())
        throw std::system_error(FileFault::DanglingLink);
    std::wstring name(0x8000, L'\0'); // no path is longer
    const DWORD length = GetFinalPathNameByHandleW(handleOf(end), name.data(), static_cast<DWORD>(name.size()), 0);
    if (length == 0 || length >= name.size())
        fail();
    name.resize(length);
    return name;
}

} // namespace

bool isLink(const std::filesystem::path& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool othersMayRead(const std::filesystem::path& path)
{
    PSID owner = nullptr;
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR read = nullptr;
    const DWORD error =
        GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                              &owner, nullptr, &list, nullptr, &read);
    if (error != ERROR_SUCCESS)
        fail(error);
    const std::unique_ptr<void, decltype(&LocalFree)> descriptor(read, LocalFree);
    if (list == nullptr)
        return true; // nobody is kept away
    for (WORD i = 0; i < list->AceCount; ++i) {
        void* entry = nullptr;
        if (GetAce(list, i, &entry) == 0)
            fail();
        const auto* allowed = static_cast<const ACCESS_ALLOWED_ACE*>(entry);
        if (allowed->Header.AceType != ACCESS_ALLOWED_ACE_TYPE ||
            (allowed->Mask & (FILE_READ_DATA | GENERIC_READ | GENERIC_ALL)) == 0)
            continue;
        auto* whom = const_cast<DWORD*>(&allowed->SidStart);
        if (EqualSid(whom, owner) == 0 && IsWellKnownSid(whom, WinLocalSystemSid) == 0 &&
            IsWellKnownSid(whom, WinBuiltinAdministratorsSid) == 0 &&
            IsWellKnownSid(whom, WinCreatorOwnerRightsSid) == 0)
            return true;
    }
    return false;
}

OpenFile::~OpenFile()
{
    if (isOpen())
        CloseHandle(handleOf(*this));
}

void OpenFile::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(handleOf(*this), bytes.data(), piece(bytes.size()), &written, nullptr) == 0)
            fail();
        bytes.remove_prefix(written);
    }
}

void OpenFile::read(std::uint64_t offset, std::span<char> to) const
{
    while (!to.empty()) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD held = 0;
        if (ReadFile(handleOf(*this), to.data(), piece(to.size()), &held, &place) == 0)
            fail();
        to = to.subspan(held);
        offset += held;
    }
}

void OpenFile::close()
{
    if (CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, kNone))) == 0)
        fail();
}

void removeUnfinishedFiles() {} // the system does

AtomicFile::AtomicFile(std::filesystem::path target, Readers readers) : AtomicFile(std::move(target), readers, Unmade{})
{
    OwnerOnly ownerOnly;
    if (readers == Readers::Owner && !ownerOnly.descriptor)
        fail();
    target_ = std::filesystem::absolute(target_); // Wine replaces no others
    auto name = temporaryBeside(target_);
    file_ = owned(CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, 0,
                              readers == Readers::Owner ? &ownerOnly.attributes : nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file_.isOpen())
        fail();
    holdName(std::move(name));
    vanishOnClose(file_, true);
}

AtomicFile::~AtomicFile()
{
    file_ = OpenFile();
    releaseName();
}

void AtomicFile::holdName(std::filesystem::path name) { temporary_ = std::move(name); }

void AtomicFile::releaseName()
{
    if (!temporary_.empty()) {
        SetFileAttributesW(temporary_.c_str(), FILE_ATTRIBUTE_NORMAL); // one that may not be written cannot be deleted
        DeleteFileW(temporary_.c_str());
    }
    temporary_.clear();
}

void AtomicFile::commit(const Look& mayReplace)
{
    if (FlushFileBuffers(handleOf(file_)) == 0)
        fail();
    // A file that is to vanish cannot be renamed. From here to the renaming it is left behind if the process is killed.
    vanishOnClose(file_, false);
    file_.close();
    place(mayReplace);
}

void AtomicFile::place(const Look& mayReplace)
{
    if (MoveFileExW(temporary_.c_str(), target_.c_str(), MOVEFILE_WRITE_THROUGH) != 0) {
        temporary_.clear();
        return;
    }
    if (const DWORD error = GetLastError(); error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS)
        fail(error);
    if (mayReplace) {
        replaceIf(mayReplace);
        return;
    }
    // This gives the new file the old one's access list, attributes and streams, or fails.
    if (ReplaceFileW(target_.c_str(), temporary_.c_str(), nullptr, 0, nullptr, nullptr) == 0)
        fail();
    temporary_.clear();
}

/// Replaces what stands at the target when it may be replaced. It is looked at after it was put aside, when nobody can
/// slip in anything else any more. (ReplaceFileW, which does the same in two steps, would keep the old one's readers.)
void AtomicFile::replaceIf(const Look& mayReplace)
{
    const auto aside = temporaryBeside(target_);
    const auto move = [](const std::filesystem::path& from, const std::filesystem::path& to) {
        return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    };
    if (!move(target_, aside))
        fail();
    try {
        mayReplace(aside);
        if (!move(temporary_, target_))
            fail();
    } catch (...) {
        move(aside, target_); // where somebody has taken the name, it stays aside
        throw;
    }
    temporary_ = aside;
}

OutputFile::OutputFile(const std::filesystem::path& target)
{
    const auto path = isLink(target) ? linked(target) : target;
    if (const DWORD attributes = GetFileAttributesW(path.c_str());
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    inPlace_ = owned(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (inPlace_.isOpen() && GetFileType(handleOf(inPlace_)) != FILE_TYPE_DISK)
        return;
    if (!inPlace_.isOpen() && GetLastError() != ERROR_FILE_NOT_FOUND)
        fail();
    inPlace_ = OpenFile();
    whole_.emplace(path, Readers::AsBefore);
}

TemporaryFile::TemporaryFile()
{
    const auto name = temporaryBeside(std::filesystem::temp_directory_path() / L"any");
    file_ = owned(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (!file_.isOpen())
        fail();
}

} // namespace embedded_host::platform
