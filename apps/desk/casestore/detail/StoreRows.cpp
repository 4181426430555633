#include "apps/desk/casestore/detail/StoreRows.h"

#include <chrono>

#include "apps/desk/casestore/detail/Words.h"
#include "platform/base/CodePage.h"
#include "platform/files/FilePlace.h"

namespace tessalink::desk::detail {

namespace {

using Kind = CaseStoreError::Kind;

constexpr const char* cSelectCases =
    "SELECT number, label, questionnaire, state, created, changed, answered FROM cases";
constexpr const char* cSelectTrail =
    "SELECT number, case_number, at, account, initials, act, name, from_value, to_value FROM trail";
constexpr const char* cLastAct = "SELECT max(number) FROM trail";

std::int64_t systemClock() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

/// 0 when the file has no questionnaire of the hash.
std::int64_t numberOf(Database& database, const std::string& hash) {
    Query query(database, "SELECT number FROM questionnaires WHERE hash = ?", hash);
    return query.Next() ? query.Number(0) : 0;
}

bool hasFiles(Database& database, std::int64_t questionnaire) {
    return Query(database, "SELECT 1 FROM questionnaire_files WHERE questionnaire = ?",
                 questionnaire)
        .Next();
}

}  // namespace

StoreRows::StoreRows(StoreFile opened, CaseStoreOptions given)
    : file(std::move(opened)), options(std::move(given)) {
    if (options.account.empty()) options.account = accountName().GetString();
    if (!options.clock) options.clock = systemClock;
}

/// A disk may fail just after the moment in which the transaction is done: then it counts.
void StoreRows::commit(Transaction& transaction) {
    const std::int64_t act = Db().Number(cLastAct);
    try {
        transaction.Commit();
    } catch (const CaseStoreError&) {
        transaction.Undo();
        if (Db().Number(cLastAct) != act) throw;
    }
}

void StoreRows::FailDamaged(const std::string& what) const {
    throw CaseStoreError(Kind::Damaged, file.GetPath(),
                         what + " is damaged and can't be read. Take your latest backup");
}

std::int64_t StoreRows::Keep(const Questionnaire& questionnaire) {
    std::int64_t number = numberOf(Db(), questionnaire.Hash());
    if (number == 0) {
        const QuestionnaireModel& model = questionnaire.Model();
        Query(Db(), "INSERT INTO questionnaires (hash, id, title, version) VALUES (?, ?, ?, ?)",
              questionnaire.Hash(), toUtf8(model.id.View()), toUtf8(model.title.View()),
              toUtf8(model.version.View()))
            .Run();
        number = Db().LastRow();
    }
    // A file that was saved from damage may know a questionnaire without its files.
    if (hasFiles(Db(), number)) return number;
    for (const auto& [name, bytes] : questionnaire.Files()) {
        Query(Db(),
              "INSERT INTO questionnaire_files (questionnaire, name, bytes) "
              "VALUES (?, ?, CAST(? AS BLOB))",
              number, name, bytes)
            .Run();
    }
    return number;
}

CaseId StoreRows::Add(const NewCase& added, std::int64_t questionnaire, const std::string& hash,
                      TrailAct act) {
    Query(Db(),
          "INSERT INTO cases (label, questionnaire, state, created, changed, answered) "
          "VALUES (?, ?, ?, ?, ?, 0)",
          added.label, questionnaire, wordOf(added.state), now, now)
        .Run();
    const CaseId id = Db().LastRow();
    for (const Entry& entry : added.entries) {
        if (!entry.value.empty()) Put(id, entry.name, entry.value);
    }
    if (!added.entries.empty()) {
        Query(Db(),
              "UPDATE cases SET answered = (SELECT count(*) FROM entries "
              "WHERE case_number = number AND kind = 'answer') WHERE number = ?",
              id)
            .Run();
    }
    Tell(id, act, hash, std::nullopt, added.label);
    return id;
}

void StoreRows::Put(CaseId id, const EntryName& name, const std::string& value) {
    Query(Db(), "INSERT OR REPLACE INTO entries (case_number, kind, id, value) VALUES (?, ?, ?, ?)",
          id, wordOf(name.kind), name.id, value)
        .Run();
}

void StoreRows::Remove(CaseId id, const EntryName& name) {
    Query(Db(), "DELETE FROM entries WHERE case_number = ? AND kind = ? AND id = ?", id,
          wordOf(name.kind), name.id)
        .Run();
}

void StoreRows::Touch(CaseId id, std::int64_t answeredMore) {
    Query(Db(), "UPDATE cases SET changed = ?, answered = answered + ? WHERE number = ?", now,
          answeredMore, id)
        .Run();
}

void StoreRows::Tell(CaseId id, TrailAct act, const std::string& name,
                     const std::optional<std::string>& from, const std::optional<std::string>& to) {
    Query(Db(),
          "INSERT INTO trail (case_number, at, account, initials, act, name, from_value, "
          "to_value) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
          id, now, options.account, options.initials, wordOf(act), name, from, to)
        .Run();
}

void StoreRows::Delete(CaseId id) {
    Query(Db(), "DELETE FROM entries WHERE case_number = ?", id).Run();
    Query(Db(), "DELETE FROM cases WHERE number = ?", id).Run();
    // The trail lets values be erased only when their case has gone.
    Query(Db(), "UPDATE trail SET from_value = NULL, to_value = NULL WHERE case_number = ?", id)
        .Run();
}

CaseSummary StoreRows::summary_of(const Query& row) {
    CaseSummary summary;
    summary.id = row.Number(0);
    summary.label = row.Text(1);
    summary.questionnaire = hash_of(row.Number(2));
    const auto state = valueOf<CaseState>(row.Text(3));
    if (!state) FailDamaged("case " + std::to_string(summary.id));
    summary.state = *state;
    summary.created = row.Number(4);
    summary.changed = row.Number(5);
    summary.answered = row.Number(6);
    return summary;
}

const std::string& StoreRows::hash_of(std::int64_t questionnaire) {
    const auto known = m_hashes.find(questionnaire);
    if (known != m_hashes.end()) return known->second;
    Query query(Db(), "SELECT hash FROM questionnaires WHERE number = ?", questionnaire);
    if (!query.Next()) FailDamaged("the questionnaire of a case");
    return m_hashes[questionnaire] = query.Text(0);
}

std::vector<CaseSummary> StoreRows::Summaries() {
    std::vector<CaseSummary> summaries;
    static const std::string sql = std::string(cSelectCases) + " ORDER BY number";
    Query query(Db(), sql.c_str());
    while (query.Next()) summaries.push_back(summary_of(query));
    return summaries;
}

std::optional<CaseSummary> StoreRows::find(CaseId id) {
    static const std::string sql = std::string(cSelectCases) + " WHERE number = ?";
    Query query(Db(), sql.c_str(), id);
    return query.Next() ? std::optional(summary_of(query)) : std::nullopt;
}

CaseSummary StoreRows::required(CaseId id, const std::optional<CaseSummary>& found) const {
    if (found) return *found;
    throw CaseStoreError(
        Kind::NoSuchCase, file.GetPath(),
        "there is no case " + std::to_string(id) + ": it was deleted. Read the list again");
}

CaseSummary StoreRows::Require(CaseId id) {
    return required(id, find(id));
}

CaseSummary StoreRows::Known(CaseId id) {
    return required(id, find_anywhere(id));
}

std::optional<std::string> StoreRows::ValueOf(CaseId id, const EntryName& name) {
    Query query(Db(), "SELECT value FROM entries WHERE case_number = ? AND kind = ? AND id = ?", id,
                wordOf(name.kind), name.id);
    return query.Next() ? query.TextIfAny(0) : std::nullopt;
}

std::vector<Entry> StoreRows::StoredEntries(CaseId id) {
    std::vector<Entry> entries;
    Query query(Db(), "SELECT kind, id, value FROM entries WHERE case_number = ? ORDER BY kind, id",
                id);
    while (query.Next()) {
        const auto kind = valueOf<EntryKind>(query.Text(0));
        if (!kind) FailDamaged("case " + std::to_string(id));
        entries.push_back({{*kind, query.Text(1)}, query.Text(2)});
    }
    return entries;
}

void StoreRows::ReadTrail(const std::optional<CaseId>& id,
                          const std::function<void(const TrailEntry&)>& use) {
    static const std::string all = std::string(cSelectTrail) + " WHERE ? IS NULL ORDER BY number";
    static const std::string ofCase =
        std::string(cSelectTrail) + " WHERE case_number = ? ORDER BY number";
    Query query(Db(), id ? ofCase.c_str() : all.c_str(), id);
    while (query.Next()) {
        const auto act = valueOf<TrailAct>(query.Text(5));
        if (!act) FailDamaged("the trail");
        use({query.Number(0), query.Number(1), query.Number(2), query.Text(3), query.Text(4), *act,
             query.Text(6), query.TextIfAny(7), query.TextIfAny(8)});
    }
}

}  // namespace tessalink::desk::detail
