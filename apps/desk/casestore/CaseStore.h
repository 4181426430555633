#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "apps/desk/casestore/Case.h"
#include "apps/desk/casestore/CaseStoreError.h"
#include "questionnaire/Questionnaire.h"

namespace tessalink::desk {

/// How a file of cases is opened.
struct CaseStoreOptions {
    std::string account = {};   ///< of the system, for the trail; empty: that of the process
    std::string initials = {};  ///< of who keys, for the trail
    std::function<std::int64_t()> clock = {};  ///< seconds since 1970, UTC; empty: the system's
    bool mayWrite = true;
    std::optional<bool> isOnShare = {};  ///< nothing: the system tells
    std::string layer = {};  ///< the file layer (a VFS of SQLite) by its name; empty: the usual one
    /// What leads to versions of the tables behind the last one, as SQL: for tests of migration.
    std::vector<std::string> furtherVersions = {};
};

/// A file of cases: SQLite, readable by anyone (docs/case-files.md). One thread at a time uses a
/// store. Every call that changes something is one transaction with its entry of the trail: when it
/// returns, what was keyed is kept whatever the program does next; when it throws, nothing of it
/// was done (where a disk goes for good in the very moment, perhaps all of it). Sync adds that a
/// power failure takes nothing either.
///
/// Faults are CaseStoreErrors. A store that meets damage while it works reads on and writes no
/// more.
class CaseStore {
public:
    enum class Access { Write, ReadOnly };
    /// Why a file is open for reading only.
    enum class Reason {
        None,
        Asked,        ///< by CaseStoreOptions::mayWrite
        OtherDesk,    ///< another desk writes; its changes are seen
        NotWritable,  ///< the file, its folder or the disk is read-only
        Damaged,      ///< what can be read is read
    };
    struct Notice {
        Reason reason = Reason::None;
        std::string text;  ///< UTF-8, why and what to do; empty when there is nothing to say
    };

    /// Makes a new file, readable by its owner only. Exists when there is one.
    static CaseStore Create(const std::string& path, CaseStoreOptions options);
    /// Opens a file. One of an older version is brought up to date. Where it can't be written it is
    /// opened for reading, and GetNotice says so; on a network share a second desk is refused
    /// (Busy).
    static CaseStore Open(const std::string& path, CaseStoreOptions options);

    CaseStore(CaseStore&& other) noexcept;
    CaseStore& operator=(CaseStore&& other) noexcept;
    /// Syncs and closes; faults are lost. A program that must know calls Sync before.
    ~CaseStore();

    /// A new case of a questionnaire, which the file keeps a copy of.
    CaseId AddCase(const Questionnaire& questionnaire, const std::string& label);
    /// Adds all or none, for imports. Ascending ids, in the order given.
    std::vector<CaseId> AddCases(const Questionnaire& questionnaire,
                                 std::span<const NewCase> cases);
    /// Puts a value in the place of what was there; nothing, or an empty text, removes it. False
    /// when that is what was there already: then nothing is written.
    bool SetEntry(CaseId id, const EntryName& name, const std::optional<std::string>& value);
    bool SetLabel(CaseId id, const std::string& label);
    bool SetState(CaseId id, CaseState state);
    /// From now on the case is read and scored by another version of its questionnaire. Its entries
    /// stay as they are.
    bool SetQuestionnaire(CaseId id, const Questionnaire& questionnaire);
    /// Deletes the case, its values in the trail, and every byte of them in the file. Where a
    /// reader has the log in use, or the disk is in trouble, the bytes go at a later Sync.
    void Delete(CaseId id);

    /// Waits until everything is on the disk; without changes since the last time it costs nothing.
    void Sync();
    /// Writes the file into a new one, readable by its owner only: of a damaged one all that can be
    /// read, into a sound one. Returns what could not be read, as FindDamage does.
    std::vector<std::string> CopyTo(const std::string& path);
    /// Whose initials the trail names from now on.
    void SetInitials(const std::string& initials);

    // Reading. Where a row of a damaged file can't be read, the trail tells what it was; where that
    // can't be read either, or doesn't tell all, it is Damaged. GetNotice has the whole.

    /// All cases, by ascending id; of a damaged file those that can be read.
    std::vector<CaseSummary> Summaries();
    CaseSummary Summary(CaseId id);
    /// By kind and id.
    std::vector<Entry> Entries(CaseId id);
    /// The entries of the trail, in their order: of one case, or of all.
    std::vector<TrailEntry> Trail(std::optional<CaseId> id = std::nullopt);
    /// The same one by one, for long ones; `use` must not use the store.
    void ReadTrail(std::optional<CaseId> id, const std::function<void(const TrailEntry&)>& use);
    std::vector<StoredQuestionnaire> Questionnaires();
    /// The files of a questionnaire, byte by byte. Damaged when they have another hash now;
    /// NoQuestionnaire when there are none.
    QuestionnaireFiles FilesOf(const std::string& hash);
    /// Reads everything and tells which cases can't be read; empty for a sound file. Takes its
    /// time.
    std::vector<std::string> FindDamage();

    const std::string& GetPath() const;
    Access GetAccess() const;
    const Notice& GetNotice() const;
    const std::string& GetInitials() const;

private:
    struct Data;
    explicit CaseStore(std::unique_ptr<Data> data);

    std::unique_ptr<Data> m_data;
};

}  // namespace tessalink::desk
