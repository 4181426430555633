#include "apps/desk/casestore/detail/StoreFile.h"

#include <array>
#include <filesystem>

#include "apps/desk/casestore/detail/FreeSpace.h"
#include "apps/desk/casestore/detail/Salvage.h"
#include "apps/desk/casestore/detail/Schema.h"
#include "platform/files/CFileException.h"
#include "platform/files/FilePlace.h"

namespace tessalink::desk::detail {

namespace {

namespace fs = std::filesystem;
using Access = CaseStore::Access;
using Kind = CaseStoreError::Kind;
using Reason = CaseStore::Reason;

constexpr const char* cLockEnding = "-lock";
constexpr const char* cBackupEnding = "-backup";
constexpr const char* cLogEnding = "-wal";
/// The log is copied into the file by Sync; only when nobody calls it for so many pages, by a
/// commit.
constexpr const char* cLongLog = "PRAGMA wal_autocheckpoint = 16000";
/// Files up to this size are checked as a whole when they are opened.
constexpr std::int64_t cQuicklyChecked = std::int64_t{8} << 20;

struct ReasonText {
    Reason reason;
    const char* text;
};
constexpr std::array<ReasonText, 5> cReasons = {{
    {Reason::None, ""},
    {Reason::Asked, "The file was opened for reading only."},
    {Reason::OtherDesk,
     "Another desk is writing in this file, so it is open for reading. Its changes are seen when "
     "the list is read again. To write, close the other desk and open the file again."},
    {Reason::NotWritable,
     "The file can't be written, so it is open for reading: its disk is full or read-only, or it "
     "belongs to somebody else. To write, make room or change its permissions and open it again, "
     "or copy it to a folder of your own."},
    {Reason::Damaged,
     "The file is damaged and open for reading only. What can be read is shown. Copy it into a new "
     "file and go on with that, or take your latest backup."},
}};

std::string realPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    return error ? path : real.string();
}

void makeEmpty(const std::string& path) {
    try {
        if (!makePrivateFile(path.c_str())) {
            throw CaseStoreError(Kind::Exists, path,
                                 "there is a file of this name. Choose another name, or open it");
        }
    } catch (const CFileException& error) {
        throw CaseStoreError(
            Kind::FileTrouble, path,
            std::string("the file can't be made. Choose another folder (") + error.what() + ")");
    }
}

/// Whether the file may be one of cases whose pages are damaged.
bool isDamage(const CaseStoreError& error) {
    return error.GetKind() == Kind::Damaged || error.GetKind() == Kind::NotACaseFile;
}

bool isLogEmpty(const std::string& path) {
    std::error_code error;
    const auto size = fs::file_size(path + cLogEnding, error);
    return error || size == 0;
}

/// Copies all pages into a file that is empty or another copy.
void copyPages(Database& from, const std::string& path, const std::string& layer) {
    Database to(path, Database::Mode::Write, layer);
    sqlite3_backup* const copy = sqlite3_backup_init(to.Handle(), "main", from.Handle(), "main");
    if (copy == nullptr) to.Fail(sqlite3_extended_errcode(to.Handle()));
    const int code = sqlite3_backup_step(copy, -1);
    sqlite3_backup_finish(copy);
    if (code != SQLITE_DONE) to.Fail(code);
    to.Run("PRAGMA journal_mode = DELETE");
}

}  // namespace

StoreFile::StoreFile(std::string path, const CaseStoreOptions& options)
    : m_path(std::move(path)),
      m_layer(options.layer),
      m_steps(schemaSteps(options.furtherVersions)),
      m_isOnShare(options.isOnShare.value_or(isOnNetworkShare(m_path.c_str()))) {}

StoreFile StoreFile::Create(const std::string& path, const CaseStoreOptions& options) {
    makeEmpty(path);
    StoreFile file(realPath(path), options);
    try {
        file.take_lock();
        file.m_database =
            std::make_unique<Database>(file.m_path, Database::Mode::Write, file.m_layer);
        file.Connection().Run(("PRAGMA page_size = " + std::to_string(cPageSize)).c_str());
        file.set_journal();
        runSteps(file.Connection(), file.m_steps);
        file.m_isDirty = true;
        file.Sync();
        return file;
    } catch (...) {
        file.m_database.reset();
        std::error_code ignored;
        fs::remove(file.m_path, ignored);
        throw;
    }
}

StoreFile StoreFile::Open(const std::string& path, const CaseStoreOptions& options) {
    std::error_code error;
    if (!fs::exists(path, error)) {
        throw CaseStoreError(Kind::NotFound, path,
                             "there is no such file. Look whether it was moved or its share is "
                             "connected");
    }
    StoreFile file(realPath(path), options);
    if (options.mayWrite) {
        file.take_lock();
    } else {
        file.refuse_writing(Reason::Asked);
    }
    file.open();
    return file;
}

StoreFile::~StoreFile() {
    if (m_database == nullptr || m_access == Access::ReadOnly) return;
    try {
        Sync();
        empty_log();
    } catch (const std::exception&) {
        // What is not synced is in the log, from which the next one to open the file takes it.
    }
}

void StoreFile::take_lock() {
    try {
        m_lock.emplace((m_path + cLockEnding).c_str());
    } catch (const CFileException& error) {
        if (error.m_cause != CFileException::sharingViolation) {
            return refuse_writing(Reason::NotWritable);
        }
        if (m_isOnShare) {
            throw CaseStoreError(Kind::Busy, m_path,
                                 "another desk has the file open, and on a network share one at a "
                                 "time may use it. Close it there, then open it again");
        }
        refuse_writing(Reason::OtherDesk);
    }
}

void StoreFile::refuse_writing(Reason reason) {
    m_access = Access::ReadOnly;
    m_notice = {reason, cReasons[static_cast<std::size_t>(reason)].text};
    m_lock.reset();
}

void StoreFile::open() {
    if (m_access == Access::Write) {
        try {
            open_to_write();
        } catch (const CaseStoreError& error) {
            m_database.reset();
            if (error.GetKind() == Kind::ReadOnly || error.GetKind() == Kind::DiskFull) {
                refuse_writing(Reason::NotWritable);
            } else if (isDamage(error)) {
                refuse_writing(Reason::Damaged);
            } else {
                throw;
            }
        }
    }
    if (m_access == Access::Write) return;
    try {
        open_to_read();
    } catch (const CaseStoreError& error) {
        m_database.reset();
        if (!isDamage(error)) throw;
        m_database = salvage(m_path, m_steps);
        if (m_database == nullptr) throw;
        refuse_writing(Reason::Damaged);
    }
}

void StoreFile::open_to_write() {
    m_database = std::make_unique<Database>(m_path, Database::Mode::Write, m_layer);
    if (sqlite3_db_readonly(m_database->Handle(), "main") == 1) {
        return refuse_writing(Reason::NotWritable);
    }
    if (m_isOnShare) m_database->Run("PRAGMA locking_mode = EXCLUSIVE");
    check_kind();
    const auto version = static_cast<std::size_t>(versionOf(*m_database));
    if (!hasSchema(*m_database, std::span(m_steps).first(version))) {
        throw CaseStoreError(Kind::Damaged, m_path, "its tables were changed");
    }
    const std::int64_t size =
        m_database->Number("PRAGMA page_count") * m_database->Number("PRAGMA page_size");
    if (size <= cQuicklyChecked && m_database->Text("PRAGMA quick_check(1)") != "ok") {
        throw CaseStoreError(Kind::Damaged, m_path, "a page of it is damaged");
    }
    set_journal();
    if (!m_isOnShare && !isLogEmpty(m_path)) empty_log();
    if (version < m_steps.size()) migrate();
    std::error_code ignored;
    fs::remove(m_path + cBackupEnding, ignored);
}

void StoreFile::open_to_read() {
    const auto connect = [this](Database::Mode mode) {
        m_database = std::make_unique<Database>(m_path, mode, m_layer);
        if (mode == Database::Mode::ReadOnly && m_isOnShare) {
            m_database->Run("PRAGMA locking_mode = EXCLUSIVE");
        }
        check_kind();
    };
    try {
        connect(Database::Mode::ReadOnly);
    } catch (const CaseStoreError& error) {
        const bool isPlace = error.GetKind() == Kind::FileTrouble ||
                             error.GetKind() == Kind::ReadOnly || error.GetKind() == Kind::DiskFull;
        if (!isPlace || !isLogEmpty(m_path)) throw;
        connect(Database::Mode::Immutable);
    }
    if (static_cast<std::size_t>(versionOf(*m_database)) < m_steps.size()) {
        throw CaseStoreError(Kind::OlderVersion, m_path,
                             "was written by an older version of this program and has to be "
                             "brought up to date, but can't be written now. Open it where it can "
                             "be, or close the other desk first");
    }
    if (m_notice.reason != Reason::Damaged && !hasSchema(*m_database, m_steps)) {
        refuse_writing(Reason::Damaged);
    }
}

/// Throws unless it is a file of cases of a version known here.
void StoreFile::check_kind() {
    if (!isCaseFile(*m_database)) {
        throw CaseStoreError(Kind::NotACaseFile, m_path, "is no file of cases. Open another file");
    }
    const int version = versionOf(*m_database);
    if (version < 1 || static_cast<std::size_t>(version) > m_steps.size()) {
        throw CaseStoreError(Kind::NewerVersion, m_path,
                             "was written by a newer version of this program (its version is " +
                                 std::to_string(version) + ", this program knows " +
                                 std::to_string(m_steps.size()) + "). Install that version");
    }
}

void StoreFile::set_journal() {
    if (m_isOnShare) {
        // The log needs memory that programs share, which a share has not. The rollback journal is
        // emptied: one that is to be deleted would keep its bytes while the lock is held.
        m_database->Run(
            "PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = TRUNCATE;"
            "PRAGMA synchronous = FULL");
        return;
    }
    m_database->Run("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL");
    m_database->Run(cLongLog);
}

void StoreFile::migrate() {
    const std::string backup = m_path + cBackupEnding;
    try {
        makePrivateFile(backup.c_str());
    } catch (const CFileException& error) {
        throw CaseStoreError(Kind::FileTrouble, m_path,
                             std::string("was written by an older version of this program, and "
                                         "there is no room for a backup (") +
                                 error.what() + "). The file is as it was");
    }
    copyPages(*m_database, backup, m_layer);
    runSteps(*m_database, m_steps);
    m_isDirty = true;
    Sync();
}

void StoreFile::CheckWritable() {
    if (m_access == Access::ReadOnly) {
        throw CaseStoreError(Kind::ReadOnly, m_path, m_notice.text);
    }
    int hasMoved = 0;
    sqlite3_file_control(m_database->Handle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    if (hasMoved != 0) m_database->Fail(SQLITE_READONLY_DBMOVED);
}

void StoreFile::NoteDamage(const std::string& what) {
    if (what.empty() && m_notice.reason == Reason::Damaged) return;
    refuse_writing(Reason::Damaged);
    if (!what.empty()) m_notice.text += " " + what;
}

void StoreFile::Sync() {
    if (m_access == Access::ReadOnly) return;
    if (m_isDirty && !m_isOnShare) {
        sqlite3_file* log = nullptr;
        sqlite3_file_control(m_database->Handle(), "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
        if (log != nullptr && log->pMethods != nullptr) {
            const int code = log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
            if (code != SQLITE_OK) m_database->Fail(code);
        }
        const int code = sqlite3_wal_checkpoint_v2(m_database->Handle(), "main",
                                                   SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        if (code != SQLITE_OK && code != SQLITE_BUSY) m_database->Fail(code);
    }
    m_isDirty = false;
    if (m_isErasureDue) Erase();
}

/// Copies the log into the file and empties it; false when a reader keeps it in use.
bool StoreFile::empty_log() {
    if (m_isOnShare) return true;
    m_database->SetPatience(false);
    const int code = sqlite3_wal_checkpoint_v2(m_database->Handle(), "main",
                                               SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    m_database->SetPatience(true);
    if (code != SQLITE_OK && code != SQLITE_BUSY) m_database->Fail(code);
    return code == SQLITE_OK;
}

void StoreFile::Erase() {
    m_isErasureDue = true;
    if (!empty_log()) return;
    clearFreeSpace(*m_database);
    m_isErasureDue = !empty_log();
}

void StoreFile::CopyTo(const std::string& path) {
    makeEmpty(path);
    try {
        copyPages(*m_database, path, m_layer);
    } catch (...) {
        std::error_code ignored;
        fs::remove(path, ignored);
        throw;
    }
}

}  // namespace tessalink::desk::detail
