#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tessalink::desk::detail {

/// One connection to a file of SQLite, set up so that what the file itself says can do no harm.
/// Faults are CaseStoreErrors.
class Database {
public:
    enum class Mode {
        Write,
        ReadOnly,
        Immutable,  ///< of a file that nobody writes, in a folder where nothing can be written
    };

    /// Opens a file that exists; `layer` is a VFS by its name, empty for the usual one.
    Database(const std::string& path, Mode mode, const std::string& layer);
    /// An empty database in memory.
    Database();
    /// The bytes of a file, read only; the path is for messages.
    Database(const std::string& path, std::string_view bytes);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Whether calls wait some seconds for other programs before they give up.
    void SetPatience(bool isPatient);
    /// Runs statements that give no rows, or whose rows don't matter.
    void Run(const char* sql);
    /// Throws what the last fault was.
    [[noreturn]] void Fail(int code) const;
    /// How many rows the last statement has changed.
    std::int64_t Changes() const { return sqlite3_changes64(m_handle.get()); }
    std::int64_t LastRow() const { return sqlite3_last_insert_rowid(m_handle.get()); }
    bool IsInTransaction() const { return sqlite3_get_autocommit(m_handle.get()) == 0; }
    /// The value of a pragma, or of any other statement with one.
    std::int64_t Number(const char* sql);
    std::string Text(const char* sql);

    sqlite3* Handle() const { return m_handle.get(); }
    const std::string& GetPath() const { return m_path; }

private:
    friend class Query;

    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };

    void open(const char* name, int flags, const char* layer);
    void protect();
    sqlite3_stmt* prepared(const char* sql);

    std::string m_path;
    std::unique_ptr<sqlite3, Close> m_handle;
    /// By their texts, kept for the next time.
    std::map<std::string_view, std::unique_ptr<sqlite3_stmt, Close>> m_statements;
};

/// One run of a statement. The text must last as long as the database; each run of a text ends
/// before the next one begins.
class Query {
public:
    template <class... VALUES>
    explicit Query(Database& database, const char* sql, const VALUES&... values)
        : m_database(database), m_statement(database.prepared(sql)) {
        int place = 0;
        (bind(++place, values), ...);
    }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    ~Query();

    /// Moves to the next row; false behind the last.
    bool Next();
    /// Runs a statement to its end.
    void Run() {
        while (Next()) {
        }
    }

    // Columns of the row, from 0.
    std::int64_t Number(int column) const { return sqlite3_column_int64(m_statement, column); }
    std::string Text(int column) const;
    std::optional<std::string> TextIfAny(int column) const;

private:
    void bind(int place, std::int64_t value);
    void bind(int place, std::string_view value);
    void bind(int place, const std::string& value) { bind(place, std::string_view(value)); }
    void bind(int place, const char* value) { bind(place, std::string_view(value)); }
    template <class VALUE>
    void bind(int place, const std::optional<VALUE>& value) {
        if (value) return bind(place, *value);
        check(sqlite3_bind_null(m_statement, place));
    }
    void check(int code) const;

    Database& m_database;
    sqlite3_stmt* m_statement;
};

/// A transaction that writes. What is not committed is undone.
class Transaction {
public:
    explicit Transaction(Database& database);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void Commit();
    /// Undoes what has been done, unless it is committed. Never throws.
    void Undo() noexcept;

private:
    Database& m_database;
    bool m_isDone = false;
};

}  // namespace tessalink::desk::detail
