// A file system for SQLite that wraps its own.
#include "failing_disk.h"

#include <sqlite3.h>

#include <unistd.h>

namespace tests
{

namespace
{

struct Disk
{
    sqlite3_vfs vfs;
    sqlite3_vfs* real;
    FailingDisk::How how;
    std::size_t left;
    bool struck;
};

Disk disk;

/// Whether this change fails.
bool strikes(bool isWrite)
{
    const bool isTheOne = !disk.struck && disk.left-- == 0;
    disk.struck = disk.struck || isTheOne;
    if (isTheOne && disk.how == FailingDisk::How::Ends)
        _exit(1);
    return disk.how == FailingDisk::How::Full ? disk.struck && isWrite : isTheOne;
}

/// What the real file system does with an open file of one kind, and the same but for what may fail.
struct Methods
{
    sqlite3_io_methods failing;
    const sqlite3_io_methods* real;
};
Methods methods[4];

const sqlite3_io_methods* real(const sqlite3_file* file)
{
    return reinterpret_cast<const Methods*>(file->pMethods)->real;
}

int write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset)
{
    if (!strikes(true))
        return real(file)->xWrite(file, bytes, count, offset);
    // Half of it is there already.
    real(file)->xWrite(file, bytes, count / 2, offset);
    return disk.how == FailingDisk::How::Full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
}

int truncate(sqlite3_file* file, sqlite3_int64 size)
{
    return strikes(false) ? SQLITE_IOERR_TRUNCATE : real(file)->xTruncate(file, size);
}

int sync(sqlite3_file* file, int flags) { return strikes(false) ? SQLITE_IOERR_FSYNC : real(file)->xSync(file, flags); }

int remove(sqlite3_vfs* /*vfs*/, const char* name, int syncFolder)
{
    return strikes(false) ? SQLITE_IOERR_DELETE : disk.real->xDelete(disk.real, name, syncFolder);
}

int open(sqlite3_vfs* /*vfs*/, const char* name, sqlite3_file* file, int flags, int* result)
{
    const int code = disk.real->xOpen(disk.real, name, file, flags, result);
    if (file->pMethods == nullptr)
        return code;
    auto* known = methods;
    while (known->real != nullptr && known->real != file->pMethods)
        ++known;
    *known = {*file->pMethods, file->pMethods};
    known->failing.xWrite = write;
    known->failing.xTruncate = truncate;
    known->failing.xSync = sync;
    file->pMethods = &known->failing;
    return code;
}

} // namespace

FailingDisk::FailingDisk(How how, std::size_t n)
{
    auto* real = sqlite3_vfs_find(nullptr);
    disk = {*real, real, how, n, false};
    disk.vfs.zName = "failing";
    disk.vfs.xOpen = open;
    disk.vfs.xDelete = remove;
    sqlite3_vfs_register(&disk.vfs, 1);
}

FailingDisk::~FailingDisk()
{
    sqlite3_vfs_unregister(&disk.vfs);
    sqlite3_vfs_register(disk.real, 1);
}

bool FailingDisk::struck() { return disk.struck; }

} // namespace tests
