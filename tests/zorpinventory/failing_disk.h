// A disk that fails at the n-th change of it.
#pragma once

#include <cstddef>

namespace tests
{

/// SQLite's own file system, but for what happens from the n-th write, sync, truncation or deletion on, counted from 0.
class FailingDisk
{
public:
    enum class How {
        Full,   ///< all writes say that the disk is full
        Broken, ///< this one change fails, others do not
        Ends,   ///< the process ends
    };

    FailingDisk(How how, std::size_t n);
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    /// Whether it came to the n-th change.
    static bool struck();
};

} // namespace tests
