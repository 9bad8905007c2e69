// The table of this machine's firmware.
#pragma once

#include "table_file.h"

#include <memory>

namespace embedded_host::table
{

/// The firmware's table, found and identified but not yet read.
class FirmwareTable
{
public:
    virtual ~FirmwareTable() = default;
    virtual Version version() const = 0;

    /// Reads the table. Throws TableError.
    virtual RawTable read(Faults& faults) = 0;
};

/// Finds the table. Throws TableError that says what was tried and what to do about it.
std::unique_ptr<FirmwareTable> findFirmwareTable(Faults& faults);

} // namespace embedded_host::table
