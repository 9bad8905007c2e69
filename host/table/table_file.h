// Saved tables: every layout that the field's tools write, told apart by content.
#pragma once

#include "image.h"

#include <filesystem>

namespace embedded_host::table
{

/// The files of a folder in the manner of /sys/firmware/dmi/tables.
constexpr const char* kEntryPointFile = "smbios_entry_point";
constexpr const char* kTableFile = "DMI";

/// No table of any real machine comes near this size.
constexpr std::size_t kLargestFile = 0x4000000;

/// Reads a saved table: a dump with its entry point in front, a raw structure table (with `smbios_entry_point` beside
/// it, if there is one), a folder holding both, or a RawSMBIOSData block. Where no entry point vouches for it, a table
/// has to look like one. Throws TableError.
RawTable readTableFile(const std::filesystem::path& path, Faults& faults);

/// An entry point and the bytes in which its table begins at `start`, which lies inside: cut to the announced length.
/// That they are fewer than promised is a fault of the source of this name.
RawTable joined(EntryPoint entryPoint, Bytes bytes, const std::string& name, Faults& faults, std::size_t start = 0);

/// The RawSMBIOSData block that Windows returns (and that its users save): a table behind eight bytes. Throws
/// TableError when it is none.
RawTable readWindowsBlock(Bytes block, const std::string& name, Faults& faults);

/// What a dump may take the place of.
enum class Replaces { Nothing, Dumps };

/// Writes a dump: whole or not at all. A symbolic link, and anything that is no dump, is never overwritten. Throws
/// std::runtime_error with the reason.
void writeDump(const Bytes& dump, const std::filesystem::path& path, Replaces replaces, platform::Readers readers);

} // namespace embedded_host::table
