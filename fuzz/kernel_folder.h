// A folder in the manner of /sys/firmware/dmi/tables.
#pragma once

#include "support/memory_file.h"
#include "table/table_file.h"

namespace fuzz
{

/// Entry point and table under the names that the kernel gives them; what they hold is in memory.
class KernelFolder
{
public:
    KernelFolder()
    {
        std::filesystem::create_directory(path_);
        std::filesystem::create_symlink(entryPoint_.path(), path_ / embedded_host::table::kEntryPointFile);
        std::filesystem::create_symlink(table_.path(), path_ / embedded_host::table::kTableFile);
    }
    ~KernelFolder() { std::filesystem::remove_all(path_); }
    KernelFolder(const KernelFolder&) = delete;
    KernelFolder& operator=(const KernelFolder&) = delete;

    /// The folder with this dump's entry point and table.
    const std::filesystem::path& holding(embedded_host::table::View dump)
    {
        const auto middle = std::min(dump.size(), embedded_host::table::kDumpTableOffset);
        entryPoint_.hold(dump.first(middle));
        table_.hold(dump.subspan(middle));
        return path_;
    }

private:
    tests::MemoryFile entryPoint_;
    tests::MemoryFile table_;
    std::filesystem::path path_ = std::filesystem::temp_directory_path() / ("zorp-fuzz-" + std::to_string(getpid()));
};

} // namespace fuzz
