// Naming files on POSIX systems with nothing beyond the standard.
#include "naming.h"

#include <cerrno>
#include <unistd.h>

namespace embedded_host::platform
{

namespace
{

template <class Result>
Result unsupported(Result result)
{
    errno = ENOTSUP;
    return result;
}

} // namespace

int openNameless(const fs::path& /*folder*/, mode_t /*mode*/) { return unsupported(-1); }

bool giveName(int /*file*/, const fs::path& /*name*/) { return unsupported(false); }

bool renameToNew(const fs::path& from, const fs::path& to)
{
    return link(from.c_str(), to.c_str()) == 0 && unlink(from.c_str()) == 0;
}

bool exchange(const fs::path& /*one*/, const fs::path& /*other*/) { return unsupported(false); }

void copyAttributes(const fs::path& /*from*/, int /*to*/) {}

bool standsForOpenFile(const fs::path& /*link*/) { return false; }

} // namespace embedded_host::platform
