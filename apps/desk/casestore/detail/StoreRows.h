#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/casestore/detail/StoreFile.h"

namespace tessalink::desk::detail {

/// The rows of a file's tables as plain values, and the acts that they are changed by. What an
/// operation does not say of the trail, its caller tells.
class StoreRows {
public:
    StoreRows(StoreFile opened, CaseStoreOptions given);

    /// Runs `act` in a transaction, and keeps what it has done or nothing.
    template <class ACT>
    auto Change(ACT act) {
        file.CheckWritable();
        return Guard([&] {
            Transaction transaction(Db());
            now = options.clock();
            auto result = act();
            commit(transaction);
            file.NoteChange();
            return result;
        });
    }
    /// Runs `act`; a store that meets damage writes no more.
    template <class ACT>
    auto Guard(ACT act) {
        try {
            return act();
        } catch (const CaseStoreError& error) {
            if (error.GetKind() == CaseStoreError::Kind::Damaged) file.NoteDamage("");
            throw;
        }
    }
    /// Whether `act` meets damage, which is noted.
    template <class ACT>
    bool MeetsDamage(ACT act) {
        try {
            act();
            return false;
        } catch (const CaseStoreError& error) {
            if (error.GetKind() != CaseStoreError::Kind::Damaged) throw;
            file.NoteDamage("");
            return true;
        }
    }
    [[noreturn]] void FailDamaged(const std::string& what) const;

    // Writing, within a change.

    /// The number of a questionnaire, which the file has from now on.
    std::int64_t Keep(const Questionnaire& questionnaire);
    CaseId Add(const NewCase& added, std::int64_t questionnaire, const std::string& hash,
               TrailAct act);
    void Put(CaseId id, const EntryName& name, const std::string& value);
    void Remove(CaseId id, const EntryName& name);
    /// Notes when a case was changed, and how many answers more it has.
    void Touch(CaseId id, std::int64_t answeredMore);
    void Tell(CaseId id, TrailAct act, const std::string& name,
              const std::optional<std::string>& from, const std::optional<std::string>& to);
    /// Removes a case, its entries and its values in the trail.
    void Delete(CaseId id);

    // Reading.

    /// All cases, from their rows.
    std::vector<CaseSummary> Summaries();
    /// A case from its row; NoSuchCase when there is none.
    CaseSummary Require(CaseId id);
    /// A case from its row, or from the trail where that is damaged.
    CaseSummary Known(CaseId id);
    /// All cases that can be read in either way; the notice names the others.
    std::vector<CaseSummary> SummariesOneByOne();
    std::optional<std::string> ValueOf(CaseId id, const EntryName& name);
    std::vector<Entry> StoredEntries(CaseId id);
    /// The entries as all that was keyed leaves them. That of an imported case doesn't tell all.
    std::vector<Entry> EntriesFromTrail(CaseId id);
    void ReadTrail(const std::optional<CaseId>& id,
                   const std::function<void(const TrailEntry&)>& use);

    Database& Db() { return file.Connection(); }

    StoreFile file;
    CaseStoreOptions options;
    std::int64_t now = 0;  ///< when the present change is made

private:
    void commit(Transaction& transaction);
    CaseSummary summary_of(const Query& row);
    const std::string& hash_of(std::int64_t questionnaire);
    std::optional<CaseSummary> find(CaseId id);
    std::optional<CaseSummary> find_anywhere(CaseId id);
    CaseSummary required(CaseId id, const std::optional<CaseSummary>& found) const;
    std::optional<CaseSummary> from_trail(CaseId id);
    CaseId last_case();

    std::map<std::int64_t, std::string> m_hashes;  ///< of questionnaires, by their numbers
};

}  // namespace tessalink::desk::detail
