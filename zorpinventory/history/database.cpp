// SQLite: opening, running, and what its failures mean.
#include "database.h"

#include "document/problem.h"
#include "migrations.h"
#include "platform/files.h"
#include "platform/own_files.h"
#include "services/messages.h"

#include <sqlite3.h>

#include <new>
#include <system_error>

namespace zorpinventory::history
{

using embedded_host::services::message;

namespace
{

constexpr int kPatienceInMilliseconds = 30'000;

std::string reasonOf(int systemError)
{
    return embedded_host::services::reason(std::system_error(systemError, std::generic_category()));
}

Problem notWritten(const std::string& name, const std::string& why)
{
    return Problem(
        message("cannot write %1: %2; what was told as recorded is in it, and nothing by halves", name, why));
}

} // namespace

void Statement::Close::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

void Database::Close::operator()(sqlite3* connection) const { sqlite3_close(connection); }

Statement::Statement(const Database& database, std::string_view sql) : database_(database)
{
    sqlite3_stmt* statement = nullptr;
    const int code =
        sqlite3_prepare_v2(database.handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    if (code != SQLITE_OK)
        database.fail(code);
    statement_.reset(statement);
}

void Statement::reset() { sqlite3_reset(statement_.get()); }

bool Statement::next()
{
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW)
        return true;
    reset();
    if (code != SQLITE_DONE)
        database_.fail(code);
    return false;
}

void Statement::bind(int place, std::int64_t number)
{
    if (const int code = sqlite3_bind_int64(statement_.get(), place, number); code != SQLITE_OK)
        database_.fail(code);
}

void Statement::bind(int place, std::string_view text)
{
    // An empty view may point nowhere, which would be null.
    const int code = sqlite3_bind_text64(statement_.get(), place, text.empty() ? "" : text.data(), text.size(), nullptr,
                                         SQLITE_UTF8);
    if (code != SQLITE_OK)
        database_.fail(code);
}

void Statement::bind(int place, const std::optional<std::string>& text)
{
    if (text)
        bind(place, std::string_view(*text));
    else if (const int code = sqlite3_bind_null(statement_.get(), place); code != SQLITE_OK)
        database_.fail(code);
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }

std::string_view Statement::text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
    return text == nullptr
               ? std::string_view()
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column)));
}

bool Statement::isNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }

Database::Database(const std::filesystem::path& file, Access access)
    : name_(embedded_host::platform::utf8FromPath(file))
{
    namespace platform = embedded_host::platform;
    if (platform::isLink(file))
        throw Problem(
            message("%1 is a symbolic link, which is not followed; name the file that it leads to with --db", name_));
    if (std::error_code ignored; std::filesystem::exists(file, ignored) && !is_regular_file(file, ignored))
        throw Problem(message("%1 is no file; name another with --db", name_));
    if (access == Access::Change && platform::isAnothers(file))
        throw Problem(message("%1 belongs to another user and is left alone; name another file with --db", name_));

    const auto open = [&](int flags) {
        sqlite3* connection = nullptr;
        const int code = sqlite3_open_v2(name_.c_str(), &connection, flags, nullptr);
        connection_.reset(connection);
        if (connection == nullptr)
            throw std::bad_alloc();
        if (code != SQLITE_OK)
            fail(code);
        sqlite3_extended_result_codes(connection, 1);
        sqlite3_busy_timeout(connection, kPatienceInMilliseconds);
        // What stands in a file that somebody handed over runs nothing and hides nothing.
        sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    };
    if (access == Access::Change) {
        // Whose the file is must be right before anything is in it.
        try {
            if (std::filesystem::exists(file)) {
                open(SQLITE_OPEN_READONLY);
                requireHistory();
            }
            platform::makeOwnFile(file);
        } catch (const std::system_error& error) {
            throw Problem(message("cannot write %1: %2", name_, embedded_host::services::reason(error)));
        }
    }
    open(SQLITE_OPEN_READWRITE);
    requireHistory();
    // One small write a day and one file to copy: the rollback journal, and the folder too is on the disk before a
    // record counts as kept. A question needs nothing but the file.
    run("PRAGMA synchronous = EXTRA");
    run("PRAGMA foreign_keys = ON");
    run("PRAGMA secure_delete = ON");
    run("PRAGMA cell_size_check = ON");
    if (integer("PRAGMA user_version") != newestVersion())
        migrate(*this);
}

void Database::requireHistory() const
{
    const auto application = integer("PRAGMA application_id");
    const auto version = integer("PRAGMA user_version");
    const bool isNew = application == 0 && version == 0 && integer("SELECT count(*) FROM sqlite_schema") == 0;
    if (!isNew && application != kApplication)
        fail(SQLITE_NOTADB);
    if (version > newestVersion())
        throw Problem(
            message("%1 was written by a newer zorpinventory and is left alone; use that one, or name another "
                    "file with --db",
                    name_));
}

std::int64_t Database::lastRow() const { return sqlite3_last_insert_rowid(connection_.get()); }

void Database::run(const char* sql) const
{
    if (const int code = sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr); code != SQLITE_OK)
        fail(code);
}

std::int64_t Database::integer(const char* sql) const
{
    Statement statement(*this, sql);
    return statement.next() ? statement.integer(0) : 0;
}

void Database::fail(int code) const
{
    const int systemError = sqlite3_system_errno(connection_.get());
    switch (code & 0xFF) {
    case SQLITE_NOMEM:
        throw std::bad_alloc();
    case SQLITE_NOTADB:
        throw Problem(
            message("%1 is no history of zorpinventory and is left alone; name another file with --db", name_));
    case SQLITE_CORRUPT:
        throw Problem(message("%1 is damaged; put a copy of it back, or move it away to begin a new one", name_));
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw Problem(message("%1 is kept busy by another program; try again when that one is done", name_));
    case SQLITE_FULL:
        throw notWritten(name_, reasonOf(ENOSPC));
    case SQLITE_READONLY:
        throw notWritten(name_, reasonOf(EACCES));
    default:
        break;
    }
    const auto why = systemError != 0 ? reasonOf(systemError) : std::string(sqlite3_errmsg(connection_.get()));
    if ((code & 0xFF) == SQLITE_CANTOPEN)
        throw Problem(message("cannot open %1: %2", name_, why));
    if (code == SQLITE_IOERR_READ || code == SQLITE_IOERR_SHORT_READ)
        throw Problem(message("cannot read %1: %2", name_, why));
    throw notWritten(name_, why);
}

Transaction::Transaction(const Database& database) : database_(database)
{
    database_.run("BEGIN IMMEDIATE");
    try {
        // A newer program may have brought it up since.
        database_.requireHistory();
    } catch (...) {
        rollBack();
        throw;
    }
}

Transaction::~Transaction() { rollBack(); }

void Transaction::rollBack()
{
    // After some failures it has ended by itself.
    if (isOpen_ && sqlite3_get_autocommit(database_.handle()) == 0)
        sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit()
{
    database_.run("COMMIT");
    isOpen_ = false;
}

} // namespace zorpinventory::history
