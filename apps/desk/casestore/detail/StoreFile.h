#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/casestore/detail/Database.h"
#include "platform/files/LockFile.h"

namespace tessalink::desk::detail {

/// The file of a store: opened in the way that its place and state allow, brought up to date,
/// synced, and cleared of what was deleted.
class StoreFile {
public:
    /// Makes the file with its tables.
    static StoreFile Create(const std::string& path, const CaseStoreOptions& options);
    static StoreFile Open(const std::string& path, const CaseStoreOptions& options);

    StoreFile(StoreFile&&) noexcept = default;
    StoreFile& operator=(StoreFile&&) noexcept = default;
    /// Syncs, and empties the log.
    ~StoreFile();

    /// Throws when nothing may be written, or the file is no longer where it was.
    void CheckWritable();
    /// To be called after each change.
    void NoteChange() { m_isDirty = true; }
    /// Reads on and writes no more.
    void NoteDamage(const std::string& what);
    void Sync();
    /// Makes sure that no byte of what was deleted remains.
    void Erase();
    /// Page by page, as they are.
    void CopyTo(const std::string& path);

    Database& Connection() { return *m_database; }
    const std::string& GetPath() const { return m_path; }
    CaseStore::Access GetAccess() const { return m_access; }
    const CaseStore::Notice& GetNotice() const { return m_notice; }

private:
    StoreFile(std::string path, const CaseStoreOptions& options);

    void take_lock();
    void open();
    void open_to_write();
    void open_to_read();
    void check_kind();
    void set_journal();
    void migrate();
    void refuse_writing(CaseStore::Reason reason);
    bool empty_log();

    std::string m_path;  ///< links followed
    std::string m_layer;
    std::vector<std::string> m_steps;
    bool m_isOnShare = false;
    std::optional<LockFile> m_lock;
    std::unique_ptr<Database> m_database;
    CaseStore::Access m_access = CaseStore::Access::Write;
    CaseStore::Notice m_notice;
    bool m_isDirty = false;
    bool m_isErasureDue = false;
};

}  // namespace tessalink::desk::detail
