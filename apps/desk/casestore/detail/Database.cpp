#include "apps/desk/casestore/detail/Database.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <new>

#include "apps/desk/casestore/CaseStoreError.h"

namespace tessalink::desk::detail {

namespace {

using Kind = CaseStoreError::Kind;

/// How long another program's use of the file is waited for.
constexpr int cPatience = 2000;  // ms
constexpr int cPrimaryMask = 0xFF;

struct Meaning {
    int code;
    Kind kind;
    const char* text;
};

constexpr const char* cDamaged =
    "the file is damaged. What can be read is shown; copy it into a new file, or take your latest "
    "backup";
constexpr const char* cBusy = "another program is using the file. Close it there, then try again";

/// What the codes of SQLite mean to the one who keys.
constexpr std::array<Meaning, 10> cMeanings = {{
    {SQLITE_CORRUPT, Kind::Damaged, cDamaged},
    {SQLITE_CONSTRAINT, Kind::Damaged, cDamaged},
    {SQLITE_ERROR, Kind::Damaged, cDamaged},
    {SQLITE_NOTADB, Kind::NotACaseFile,
     "is no file of cases, or its first page is destroyed. Open another file, or take your latest "
     "backup"},
    {SQLITE_BUSY, Kind::Busy, cBusy},
    {SQLITE_LOCKED, Kind::Busy, cBusy},
    {SQLITE_PROTOCOL, Kind::Busy, cBusy},
    {SQLITE_FULL, Kind::DiskFull,
     "the disk is full. Nothing keyed before is lost; make room, then key the last value again"},
    {SQLITE_READONLY, Kind::ReadOnly,
     "the file can't be written. Nothing keyed before is lost; make it writable, then open it "
     "again"},
    {SQLITE_PERM, Kind::ReadOnly, "the file may not be used. Ask for the right to write it"},
}};

/// Whether a call failed for want of room: memory shared with others is room on the disk, too.
bool isForRoom(int code, int systemError) {
    return code == SQLITE_IOERR_SHMSIZE || systemError == ENOSPC || systemError == EDQUOT;
}

bool isGone(const std::string& path) {
    std::error_code error;
    return !std::filesystem::exists(path, error);
}

}  // namespace

Database::Database(const std::string& path, Mode mode, const std::string& layer) : m_path(path) {
    const char* const vfs = layer.empty() ? nullptr : layer.c_str();
    if (mode != Mode::Immutable) {
        open(path.c_str(), mode == Mode::Write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY, vfs);
        return;
    }
    std::string name = "file:";
    constexpr std::string_view special = "%?#";
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (const char ch : path) {
        if (special.find(ch) == std::string_view::npos) {
            name += ch;
        } else {
            const auto byte = static_cast<unsigned char>(ch);
            (name += '%') += digits[byte >> 4U];
            name += digits[byte & 15U];
        }
    }
    open((name + "?immutable=1").c_str(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, vfs);
}

Database::Database() : m_path(":memory:") {
    open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
}

Database::Database(const std::string& path, std::string_view bytes) : m_path(path) {
    open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, nullptr);
    auto* const copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
    if (copy == nullptr) throw std::bad_alloc();
    std::copy(bytes.begin(), bytes.end(), copy);
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    const int code =
        sqlite3_deserialize(Handle(), "main", copy, size, size,
                            SQLITE_DESERIALIZE_READONLY | SQLITE_DESERIALIZE_FREEONCLOSE);
    if (code != SQLITE_OK) Fail(code);
}

Database::~Database() = default;

void Database::open(const char* name, int flags, const char* layer) {
    sqlite3* handle = nullptr;
    const int code =
        sqlite3_open_v2(name, &handle, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, layer);
    m_handle.reset(handle);
    if (code != SQLITE_OK) Fail(code);
    SetPatience(true);
    protect();
}

void Database::SetPatience(bool isPatient) {
    sqlite3_busy_timeout(Handle(), isPatient ? cPatience : 0);
}

void Database::protect() {
    constexpr std::array<std::pair<int, int>, 5> settings = {{
        {SQLITE_DBCONFIG_DEFENSIVE, 1},
        {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
        {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
        {SQLITE_DBCONFIG_DQS_DDL, 0},
        {SQLITE_DBCONFIG_DQS_DML, 0},
    }};
    for (const auto& setting : settings) {
        sqlite3_db_config(Handle(), setting.first, setting.second, nullptr);
    }
    Run("PRAGMA foreign_keys = ON; PRAGMA recursive_triggers = ON; PRAGMA secure_delete = ON;"
        "PRAGMA temp_store = MEMORY; PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0;");
}

void Database::Run(const char* sql) {
    const int code = sqlite3_exec(Handle(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) Fail(code);
}

void Database::Fail(int code) const {
    int primary = code & cPrimaryMask;
    if (primary == SQLITE_IOERR && isForRoom(code, sqlite3_system_errno(Handle()))) {
        primary = SQLITE_FULL;
    }
    if (primary == SQLITE_NOMEM) throw std::bad_alloc();
    if (isGone(m_path) || code == SQLITE_READONLY_DBMOVED) {
        throw CaseStoreError(Kind::Vanished, m_path,
                             "the file is no longer there. What was keyed before is in it: bring "
                             "it or its share back, then open it again");
    }
    const auto* const found =
        std::find_if(cMeanings.begin(), cMeanings.end(),
                     [&](const Meaning& meaning) { return meaning.code == primary; });
    const std::string detail =
        std::string(" (") + sqlite3_errstr(code) + ", " + std::to_string(code) + ")";
    if (found != cMeanings.end()) {
        throw CaseStoreError(found->kind, m_path, found->text + detail);
    }
    throw CaseStoreError(Kind::FileTrouble, m_path,
                         "the system can't read or write the file. Nothing keyed before is lost; "
                         "check the disk, then open it again" +
                             detail);
}

sqlite3_stmt* Database::prepared(const char* sql) {
    auto& statement = m_statements[sql];
    if (statement == nullptr) {
        sqlite3_stmt* made = nullptr;
        const int code =
            sqlite3_prepare_v3(Handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &made, nullptr);
        if (code != SQLITE_OK) Fail(code);
        statement.reset(made);
    }
    return statement.get();
}

std::int64_t Database::Number(const char* sql) {
    Query query(*this, sql);
    return query.Next() ? query.Number(0) : 0;
}

std::string Database::Text(const char* sql) {
    Query query(*this, sql);
    return query.Next() ? query.Text(0) : std::string();
}

Query::~Query() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

bool Query::Next() {
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) m_database.Fail(code);
    return false;
}

std::string Query::Text(int column) const {
    const void* const bytes = sqlite3_column_blob(m_statement, column);
    const int size = sqlite3_column_bytes(m_statement, column);
    if (bytes == nullptr || size <= 0) return {};
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

std::optional<std::string> Query::TextIfAny(int column) const {
    if (sqlite3_column_type(m_statement, column) == SQLITE_NULL) return std::nullopt;
    return Text(column);
}

void Query::bind(int place, std::int64_t value) {
    check(sqlite3_bind_int64(m_statement, place, value));
}

void Query::bind(int place, std::string_view value) {
    // An empty view may hold a null pointer, which would bind no text at all.
    const char* const bytes = value.empty() ? "" : value.data();
    check(sqlite3_bind_text64(m_statement, place, bytes, value.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void Query::check(int code) const {
    if (code != SQLITE_OK) m_database.Fail(code);
}

Transaction::Transaction(Database& database) : m_database(database) {
    Query(database, "BEGIN IMMEDIATE").Run();
}

Transaction::~Transaction() {
    Undo();
}

void Transaction::Undo() noexcept {
    if (m_isDone || !m_database.IsInTransaction()) return;
    sqlite3_exec(m_database.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
    Query(m_database, "COMMIT").Run();
    m_isDone = true;
}

}  // namespace tessalink::desk::detail
