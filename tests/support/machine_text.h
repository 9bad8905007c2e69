// Reads the machines of the tests: a small text format that describes a table, one statement a line.
//
//     entry-point 64 3.2.0            # or: entry-point 32 2.7 | entry-point legacy 2.1
//     structure 17 0x0010 0x28        # type, handle, length of the formatted area
//         word 0x0C 0x2000            # byte, word, dword, qword: offset, value
//         text 0x10 "DIMM A"          # the offset that gets the string's number; escapes \\ and \"
//         string "not referenced"
//         bytes 0x08 01 AB            # offset, then pairs of hexadecimal digits
//     end
//
// Numbers are decimal or 0x; a # begins a comment, in a text too. The end of the table is a structure like the others;
// nothing is added.
#pragma once

#include "table_builder.h"

#include <filesystem>

namespace tests
{

struct Machine
{
    TableBuilder table; ///< for the same machine in other layouts
    Bytes image;        ///< the table in the layout that the text names
};

/// Throws std::runtime_error "file:line: what is wrong".
Machine readMachine(const std::filesystem::path& path);

} // namespace tests
