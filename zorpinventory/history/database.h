// SQLite, as the history needs it. Every failure is a Problem that says which file, and that nothing in it was lost.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zorpinventory::history
{

class Database;

/// What the file is opened for.
enum class Access { Ask, Change };

/// A statement with its values. Rows come one by one; texts of a row live until the next.
class Statement
{
public:
    Statement(const Database& database, std::string_view sql);

    /// Gives ?1, ?2 and so on their values, for a new run. Texts have to live until the run's end.
    template <class... Values>
    Statement& with(const Values&... values)
    {
        reset();
        int place = 0;
        (bind(++place, values), ...);
        return *this;
    }

    /// Goes to the next row; false when there is none.
    bool next();

    /// Runs a statement that has no rows.
    void run()
    {
        next();
        reset();
    }

    std::int64_t integer(int column) const;
    std::string_view text(int column) const; ///< empty for null too
    bool isNull(int column) const;

private:
    void reset();
    void bind(int place, std::int64_t number);
    void bind(int place, std::string_view text);
    void bind(int place, const std::string& text) { bind(place, std::string_view(text)); }
    void bind(int place, const std::optional<std::string>& text);

    struct Close
    {
        void operator()(sqlite3_stmt* statement) const;
    };
    const Database& database_;
    std::unique_ptr<sqlite3_stmt, Close> statement_;
};

class Database
{
public:
    /// Opens a history, and makes one where the file is missing or empty and it may change. Brings up what an older
    /// program made. A file that is no history, or a newer program's, is never written to.
    Database(const std::filesystem::path& file, Access access);

    /// The identity of the row that was added last.
    std::int64_t lastRow() const;

    void run(const char* sql) const;
    std::int64_t integer(const char* sql) const;

    /// Throws Problem unless the file is new, or a history that this program or an older one made.
    void requireHistory() const;

    /// Throws the Problem that belongs to a code of SQLite's.
    [[noreturn]] void fail(int code) const;

    sqlite3* handle() const { return connection_.get(); }
    const std::string& name() const { return name_; }

private:
    struct Close
    {
        void operator()(sqlite3* connection) const;
    };

    std::string name_; ///< in sentences
    std::unique_ptr<sqlite3, Close> connection_;
};

/// The only way to write: all of it, or nothing when it is not committed.
class Transaction
{
public:
    /// Waits for other writers.
    explicit Transaction(const Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    void rollBack();

    const Database& database_;
    bool isOpen_ = true;
};

/// Brings the schema up to this program's. Throws Problem.
void migrate(const Database& database);

/// What tells a history from other programs' databases.
inline constexpr std::int64_t kApplication = 0x5A6F7270;

} // namespace zorpinventory::history
