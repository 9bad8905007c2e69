// Why a table could not be had.
#pragma once

#include "services/messages.h"
#include "smbios2.h"

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace embedded_host::table
{

/// No table: the result that the table library reports, an errno value, and a sentence with the cause.
class TableError : public std::runtime_error
{
public:
    TableError(libsmbios2::POPULATE_TABLE_RESULT result, int error, const std::string& cause)
        : std::runtime_error(cause), result_(result), error_(error)
    {
    }

    /// The bytes were had, but they are no table.
    static TableError malformed(const std::string& cause)
    {
        return {libsmbios2::POPULATE_TABLE_MALFORMED, EINVAL, cause};
    }

    /// A file could not be read.
    static TableError unreadable(const std::system_error& error, const std::string& file)
    {
        const auto& code = error.code();
        const int number = code.default_error_condition().value();
        const std::string cause = file + ": " + services::reason(error);
        if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted)
            return {libsmbios2::POPULATE_TABLE_NO_PERMISSION, number, cause};
        if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory)
            return {libsmbios2::POPULATE_TABLE_NONE, number, cause};
        return {libsmbios2::POPULATE_TABLE_MALFORMED, number, cause};
    }

    libsmbios2::POPULATE_TABLE_RESULT result() const { return result_; }
    int error() const { return error_; }

private:
    libsmbios2::POPULATE_TABLE_RESULT result_;
    int error_;
};

} // namespace embedded_host::table
