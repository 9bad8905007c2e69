// The state behind Smbios2: which table is in memory, and for which discovery.
#pragma once

#include "image.h"

namespace embedded_host::table
{

/// Tells the table library that a new discovery begins: a table that an earlier one took from a file is no longer the
/// source, unless this one asks for a file again. The memory stays until the table is replaced.
void beginDiscovery();

/// Tells the table library that a device was published. It was made of the structure that was handed out last, unless
/// the module has been told since that there are no more of that type: modules publish a structure's devices while they
/// look at it, and devices that stand for all structures of a type behind the last of them. Handles would not tell
/// which structure it was, since they repeat.
void noteDevice();

/// The strings of a structure of the table in memory; null for one that lies elsewhere.
StringSet* stringsInMemory(const libsmbios2::type_hdr* structure);

/// Tells the table library that the structure lacks a string that it was asked for.
void noteMissingString(const void* structure, unsigned char number);

/// Tells the table library that the structure that was handed out last has a memory size of 2 to the power of
/// `exponent` MB, as the module said in the message of this number.
void noteUnrealisticSize(unsigned exponent, unsigned message);

/// What is told of a table as a whole.
struct Summary
{
    bool fromFile;       ///< else from the firmware
    std::string version; ///< as Smbios2::getVersionString tells it
    std::size_t bytes;
    std::size_t structures; ///< all that were found, an end marker among them
};

/// Of the table of the discovery that is under way or was the last; nothing when it has none.
std::optional<Summary> summary();

/// Why the last table that was asked for cannot be had; empty when it can.
const std::string& failure();

/// The structures of this table of which no device was made so far, in table order.
std::vector<StructurePlace> structuresWithoutDevice();

/// What is wrong with this table and its sources.
const Faults& faults();

} // namespace embedded_host::table
