#include "apps/desk/casestore/CaseStore.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>

#include "apps/desk/casestore/TrailTable.h"
#include "apps/desk/casestore/detail/Rescue.h"
#include "apps/desk/casestore/detail/StoreFile.h"
#include "apps/desk/casestore/detail/Words.h"
#include "platform/base/Windows1252.h"
#include "platform/files/FilePlace.h"

namespace tessalink::desk {

namespace {

using detail::Database;
using detail::Query;
using detail::Transaction;
using detail::valueOf;
using detail::wordOf;
using Kind = CaseStoreError::Kind;

std::int64_t systemClock() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

TrailAct actOf(EntryKind kind) {
    constexpr std::array acts = {TrailAct::Answer, TrailAct::SecondAnswer, TrailAct::Field};
    return acts[static_cast<std::size_t>(kind)];
}

std::optional<EntryKind> kindOf(TrailAct act) {
    if (act == TrailAct::Answer) return EntryKind::Answer;
    if (act == TrailAct::SecondAnswer) return EntryKind::SecondAnswer;
    return act == TrailAct::Field ? std::optional(EntryKind::Field) : std::nullopt;
}

/// A damaged file may say any number.
constexpr CaseId cMostCases = 10'000'000;
/// How many cases a notice names.
constexpr std::size_t cShownCases = 20;

constexpr const char* cSelectCases =
    "SELECT number, label, questionnaire, state, created, changed, answered FROM cases";
constexpr const char* cSelectTrail =
    "SELECT number, case_number, at, account, initials, act, name, from_value, to_value FROM trail";

}  // namespace

const char* nameOf(TrailAct act) {
    return wordOf(act);
}

struct CaseStore::Data {
    Data(detail::StoreFile opened, CaseStoreOptions given)
        : file(std::move(opened)), options(std::move(given)) {
        if (options.account.empty()) options.account = accountName().GetString();
        if (!options.clock) options.clock = systemClock;
    }

    Database& Db() { return file.Connection(); }

    /// Runs `act` in a transaction, and keeps what it has done or nothing.
    template <class ACT>
    auto Change(ACT act) {
        file.CheckWritable();
        return Guard([&] {
            Transaction transaction(Db());
            now = options.clock();
            auto result = act();
            Commit(transaction);
            file.NoteChange();
            return result;
        });
    }
    /// A disk may fail just after the moment in which the transaction is done: then it counts.
    void Commit(Transaction& transaction) {
        const std::int64_t act = LastAct();
        try {
            transaction.Commit();
        } catch (const CaseStoreError&) {
            transaction.Undo();
            if (LastAct() != act) throw;
        }
    }
    std::int64_t LastAct() { return Db().Number("SELECT max(number) FROM trail"); }
    /// Runs `act`; a store that meets damage writes no more.
    template <class ACT>
    auto Guard(ACT act) {
        try {
            return act();
        } catch (const CaseStoreError& error) {
            if (error.GetKind() == Kind::Damaged) file.NoteDamage("");
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
            if (error.GetKind() != Kind::Damaged) throw;
            file.NoteDamage("");
            return true;
        }
    }

    [[noreturn]] void FailDamaged(const std::string& what) const {
        throw CaseStoreError(Kind::Damaged, file.GetPath(),
                             what + " is damaged and can't be read. Take your latest backup");
    }
    /// A case that every call expects to be there.
    CaseSummary Require(CaseId id) {
        static const std::string sql = std::string(cSelectCases) + " WHERE number = ?";
        Query query(Db(), sql.c_str(), id);
        if (query.Next()) return SummaryOf(query);
        throw CaseStoreError(
            Kind::NoSuchCase, file.GetPath(),
            "there is no case " + std::to_string(id) + ": it was deleted. Read the list again");
    }
    CaseSummary SummaryOf(const Query& row) {
        CaseSummary summary;
        summary.id = row.Number(0);
        summary.label = row.Text(1);
        summary.questionnaire = HashOf(row.Number(2));
        const auto state = valueOf<CaseState>(row.Text(3));
        if (!state) FailDamaged("case " + std::to_string(summary.id));
        summary.state = *state;
        summary.created = row.Number(4);
        summary.changed = row.Number(5);
        summary.answered = row.Number(6);
        return summary;
    }
    const std::string& HashOf(std::int64_t number) {
        const auto known = hashes.find(number);
        if (known != hashes.end()) return known->second;
        Query query(Db(), "SELECT hash FROM questionnaires WHERE number = ?", number);
        if (!query.Next()) FailDamaged("the questionnaire of a case");
        return hashes[number] = query.Text(0);
    }
    /// 0 when the file has no questionnaire of the hash.
    std::int64_t NumberOf(const std::string& hash) {
        Query query(Db(), "SELECT number FROM questionnaires WHERE hash = ?", hash);
        return query.Next() ? query.Number(0) : 0;
    }
    bool HasFiles(std::int64_t questionnaire) {
        return Query(Db(), "SELECT 1 FROM questionnaire_files WHERE questionnaire = ?",
                     questionnaire)
            .Next();
    }
    std::int64_t Keep(const Questionnaire& questionnaire);
    CaseId Add(const NewCase& added, std::int64_t questionnaire, const std::string& hash,
               TrailAct act);
    void Tell(CaseId id, TrailAct act, const std::string& name,
              const std::optional<std::string>& from, const std::optional<std::string>& to) {
        Query(Db(),
              "INSERT INTO trail (case_number, at, account, initials, act, name, from_value, "
              "to_value) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
              id, now, options.account, options.initials, wordOf(act), name, from, to)
            .Run();
    }
    void Touch(CaseId id, std::int64_t answeredMore) {
        Query(Db(), "UPDATE cases SET changed = ?, answered = answered + ? WHERE number = ?", now,
              answeredMore, id)
            .Run();
    }
    std::optional<std::string> ValueOf(CaseId id, const EntryName& name) {
        Query query(Db(), "SELECT value FROM entries WHERE case_number = ? AND kind = ? AND id = ?",
                    id, wordOf(name.kind), name.id);
        return query.Next() ? query.TextIfAny(0) : std::nullopt;
    }
    void Put(CaseId id, const EntryName& name, const std::string& value) {
        Query(Db(),
              "INSERT OR REPLACE INTO entries (case_number, kind, id, value) "
              "VALUES (?, ?, ?, ?)",
              id, wordOf(name.kind), name.id, value)
            .Run();
    }
    void ReadTrail(const std::optional<CaseId>& id,
                   const std::function<void(const TrailEntry&)>& use);
    /// A case for reading: as the trail tells it where its own row is damaged.
    CaseSummary Known(CaseId id);
    std::optional<CaseSummary> FromTrail(CaseId id);
    std::vector<Entry> StoredEntries(CaseId id);
    std::vector<Entry> EntriesFromTrail(CaseId id);
    std::vector<CaseSummary> SummariesOneByOne();
    CaseId LastCase();

    detail::StoreFile file;
    CaseStoreOptions options;
    std::int64_t now = 0;                        ///< when the present change is made
    std::map<std::int64_t, std::string> hashes;  ///< of questionnaires, by their numbers
};

/// The number of a questionnaire, which the file has from now on.
std::int64_t CaseStore::Data::Keep(const Questionnaire& questionnaire) {
    std::int64_t number = NumberOf(questionnaire.Hash());
    if (number == 0) {
        const QuestionnaireModel& model = questionnaire.Model();
        Query(Db(), "INSERT INTO questionnaires (hash, id, title, version) VALUES (?, ?, ?, ?)",
              questionnaire.Hash(), toUtf8(model.id.View()), toUtf8(model.title.View()),
              toUtf8(model.version.View()))
            .Run();
        number = Db().LastRow();
    }
    // A file that was saved from damage may know a questionnaire without its files.
    if (HasFiles(number)) return number;
    for (const auto& [name, bytes] : questionnaire.Files()) {
        Query(Db(),
              "INSERT INTO questionnaire_files (questionnaire, name, bytes) "
              "VALUES (?, ?, CAST(? AS BLOB))",
              number, name, bytes)
            .Run();
    }
    return number;
}

CaseId CaseStore::Data::Add(const NewCase& added, std::int64_t questionnaire,
                            const std::string& hash, TrailAct act) {
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

CaseStore::CaseStore(std::unique_ptr<Data> data) : m_data(std::move(data)) {}
CaseStore::CaseStore(CaseStore&& other) noexcept = default;
CaseStore& CaseStore::operator=(CaseStore&& other) noexcept = default;
CaseStore::~CaseStore() = default;

CaseStore CaseStore::Create(const std::string& path, CaseStoreOptions options) {
    auto file = detail::StoreFile::Create(path, options);
    return CaseStore(std::make_unique<Data>(std::move(file), std::move(options)));
}

CaseStore CaseStore::Open(const std::string& path, CaseStoreOptions options) {
    auto file = detail::StoreFile::Open(path, options);
    return CaseStore(std::make_unique<Data>(std::move(file), std::move(options)));
}

CaseId CaseStore::AddCase(const Questionnaire& questionnaire, const std::string& label) {
    return m_data->Change([&] {
        return m_data->Add({label}, m_data->Keep(questionnaire), questionnaire.Hash(),
                           TrailAct::Added);
    });
}

std::vector<CaseId> CaseStore::AddCases(const Questionnaire& questionnaire,
                                        std::span<const NewCase> cases) {
    return m_data->Change([&] {
        const std::int64_t number = m_data->Keep(questionnaire);
        std::vector<CaseId> ids;
        ids.reserve(cases.size());
        for (const NewCase& added : cases) {
            ids.push_back(m_data->Add(added, number, questionnaire.Hash(), TrailAct::Imported));
        }
        return ids;
    });
}

bool CaseStore::SetEntry(CaseId id, const EntryName& name,
                         const std::optional<std::string>& value) {
    return m_data->Change([&] {
        m_data->Require(id);
        const auto before = m_data->ValueOf(id, name);
        const auto after = value && !value->empty() ? value : std::nullopt;
        if (before == after) return false;
        if (after) {
            m_data->Put(id, name, *after);
        } else {
            Query(m_data->Db(), "DELETE FROM entries WHERE case_number = ? AND kind = ? AND id = ?",
                  id, wordOf(name.kind), name.id)
                .Run();
        }
        const int more = static_cast<int>(after.has_value()) - static_cast<int>(before.has_value());
        m_data->Touch(id, name.kind == EntryKind::Answer ? more : 0);
        m_data->Tell(id, actOf(name.kind), name.id, before, after);
        return true;
    });
}

bool CaseStore::SetLabel(CaseId id, const std::string& label) {
    return m_data->Change([&] {
        const CaseSummary before = m_data->Require(id);
        if (before.label == label) return false;
        Query(m_data->Db(), "UPDATE cases SET label = ? WHERE number = ?", label, id).Run();
        m_data->Touch(id, 0);
        m_data->Tell(id, TrailAct::Label, "", before.label, label);
        return true;
    });
}

bool CaseStore::SetState(CaseId id, CaseState state) {
    return m_data->Change([&] {
        const CaseSummary before = m_data->Require(id);
        if (before.state == state) return false;
        Query(m_data->Db(), "UPDATE cases SET state = ? WHERE number = ?", wordOf(state), id).Run();
        m_data->Touch(id, 0);
        m_data->Tell(id, TrailAct::State, "", wordOf(before.state), wordOf(state));
        return true;
    });
}

bool CaseStore::SetQuestionnaire(CaseId id, const Questionnaire& questionnaire) {
    return m_data->Change([&] {
        const CaseSummary before = m_data->Require(id);
        const std::int64_t number = m_data->Keep(questionnaire);
        if (before.questionnaire == questionnaire.Hash()) return false;
        Query(m_data->Db(), "UPDATE cases SET questionnaire = ? WHERE number = ?", number, id)
            .Run();
        m_data->Touch(id, 0);
        m_data->Tell(id, TrailAct::Questionnaire, "", before.questionnaire, questionnaire.Hash());
        return true;
    });
}

void CaseStore::Delete(CaseId id) {
    m_data->Change([&] {
        m_data->Require(id);
        Query(m_data->Db(), "DELETE FROM entries WHERE case_number = ?", id).Run();
        Query(m_data->Db(), "DELETE FROM cases WHERE number = ?", id).Run();
        // The trail lets values be erased only when their case has gone.
        Query(m_data->Db(),
              "UPDATE trail SET from_value = NULL, to_value = NULL WHERE case_number = ?", id)
            .Run();
        m_data->Tell(id, TrailAct::Deleted, "", std::nullopt, std::nullopt);
        return true;
    });
    try {
        m_data->Guard([&] { m_data->file.Erase(); });
    } catch (const CaseStoreError&) {
        // The case has gone; its bytes go at the next Sync, which tells what is wrong.
    }
}

void CaseStore::Sync() {
    m_data->Guard([&] { m_data->file.Sync(); });
}

std::vector<std::string> CaseStore::CopyTo(const std::string& path) {
    if (GetNotice().reason != Reason::Damaged) {
        m_data->file.CopyTo(path);
        return {};
    }
    auto copy = detail::StoreFile::Create(path, m_data->options);
    return detail::rescue(*this, copy.Connection());
}

void CaseStore::SetInitials(const std::string& initials) {
    m_data->options.initials = initials;
}

std::vector<CaseSummary> CaseStore::Summaries() {
    std::vector<CaseSummary> summaries;
    const bool isDamaged = m_data->MeetsDamage([&] {
        static const std::string sql = std::string(cSelectCases) + " ORDER BY number";
        Query query(m_data->Db(), sql.c_str());
        while (query.Next()) summaries.push_back(m_data->SummaryOf(query));
    });
    return isDamaged ? m_data->SummariesOneByOne() : summaries;
}

/// The highest number that a case can have, from whatever of the file can be read.
CaseId CaseStore::Data::LastCase() {
    CaseId last = 0;
    for (const char* const sql :
         {"SELECT max(number) FROM cases", "SELECT seq FROM sqlite_sequence WHERE name = 'cases'",
          "SELECT max(case_number) FROM entries", "SELECT max(case_number) FROM trail"}) {
        MeetsDamage([&] { last = std::max(last, Db().Number(sql)); });
    }
    return std::min(last, cMostCases);
}

std::vector<CaseSummary> CaseStore::Data::SummariesOneByOne() {
    std::vector<CaseSummary> summaries;
    std::string unread;
    std::size_t count = 0;
    const CaseId last = LastCase();
    for (CaseId id = 1; id <= last; ++id) {
        const bool isUnread = MeetsDamage([&] {
            try {
                summaries.push_back(Known(id));
            } catch (const CaseStoreError& error) {
                if (error.GetKind() != Kind::NoSuchCase) throw;
            }
        });
        if (!isUnread) continue;
        if (count < cShownCases) unread += (count == 0 ? "" : ", ") + std::to_string(id);
        if (count++ == cShownCases) unread += " ...";
    }
    file.NoteDamage(count == 0 ? "All cases of the list can be read."
                               : "Cases that can't be read: " + std::to_string(count) +
                                     ", with the numbers " + unread + ".");
    return summaries;
}

CaseSummary CaseStore::Data::Known(CaseId id) {
    std::optional<CaseSummary> summary;
    if (!MeetsDamage([&] { summary = Require(id); })) return *summary;
    summary = FromTrail(id);
    if (!summary) FailDamaged("case " + std::to_string(id));
    return *summary;
}

/// A case as all that was done to it leaves it; nothing when it was deleted or never there.
std::optional<CaseSummary> CaseStore::Data::FromTrail(CaseId id) {
    std::optional<CaseSummary> summary;
    ReadTrail(id, [&](const TrailEntry& entry) {
        if (entry.act == TrailAct::Added || entry.act == TrailAct::Imported) {
            summary = CaseSummary{id, entry.to.value_or(""), entry.name};
            summary->created = entry.when;
        }
        if (!summary) return;
        summary->changed = entry.when;
        const std::string to = entry.to.value_or("");
        if (entry.act == TrailAct::Label) summary->label = to;
        if (entry.act == TrailAct::Questionnaire) summary->questionnaire = to;
        if (entry.act == TrailAct::State) {
            summary->state = valueOf<CaseState>(to).value_or(CaseState::Open);
        }
        if (entry.act == TrailAct::Answer) {
            summary->answered +=
                static_cast<int>(entry.to.has_value()) - static_cast<int>(entry.from.has_value());
        }
        if (entry.act == TrailAct::Deleted) summary.reset();
    });
    if (!summary) return summary;
    // The trail doesn't count those that came with an import.
    MeetsDamage([&] {
        Query query(Db(), "SELECT count(*) FROM entries WHERE case_number = ? AND kind = 'answer'",
                    id);
        if (query.Next()) summary->answered = query.Number(0);
    });
    return summary;
}

CaseSummary CaseStore::Summary(CaseId id) {
    return m_data->Known(id);
}

std::vector<Entry> CaseStore::Data::StoredEntries(CaseId id) {
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

/// The entries as all that was keyed leaves them. That of an imported case doesn't tell all.
std::vector<Entry> CaseStore::Data::EntriesFromTrail(CaseId id) {
    std::map<EntryName, std::string> values;
    bool isWhole = false;
    ReadTrail(id, [&](const TrailEntry& entry) {
        if (entry.act == TrailAct::Added) isWhole = true;
        const auto kind = kindOf(entry.act);
        if (!kind) return;
        values.erase({*kind, entry.name});
        if (entry.to) values[{*kind, entry.name}] = *entry.to;
    });
    if (!isWhole) FailDamaged("case " + std::to_string(id));
    std::vector<Entry> entries;
    entries.reserve(values.size());
    for (const auto& [name, value] : values) entries.push_back({name, value});
    return entries;
}

std::vector<Entry> CaseStore::Entries(CaseId id) {
    m_data->Known(id);
    std::vector<Entry> entries;
    const bool isDamaged = m_data->MeetsDamage([&] { entries = m_data->StoredEntries(id); });
    if (isDamaged) entries = m_data->EntriesFromTrail(id);
    std::sort(entries.begin(), entries.end(),
              [](const Entry& one, const Entry& other) { return one.name < other.name; });
    return entries;
}

void CaseStore::Data::ReadTrail(const std::optional<CaseId>& id,
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

std::vector<TrailEntry> CaseStore::Trail(std::optional<CaseId> id) {
    std::vector<TrailEntry> entries;
    ReadTrail(id, [&](const TrailEntry& entry) { entries.push_back(entry); });
    return entries;
}

void CaseStore::ReadTrail(std::optional<CaseId> id,
                          const std::function<void(const TrailEntry&)>& use) {
    m_data->Guard([&] { m_data->ReadTrail(id, use); });
}

std::vector<StoredQuestionnaire> CaseStore::Questionnaires() {
    return m_data->Guard([&] {
        std::vector<StoredQuestionnaire> questionnaires;
        Query query(m_data->Db(),
                    "SELECT hash, id, title, version FROM questionnaires ORDER BY number");
        while (query.Next()) {
            questionnaires.push_back({query.Text(0), query.Text(1), query.Text(2), query.Text(3)});
        }
        return questionnaires;
    });
}

QuestionnaireFiles CaseStore::FilesOf(const std::string& hash) {
    return m_data->Guard([&] {
        QuestionnaireFiles files;
        Query query(m_data->Db(),
                    "SELECT name, bytes FROM questionnaire_files JOIN questionnaires "
                    "ON questionnaire = number WHERE hash = ? ORDER BY name",
                    hash);
        while (query.Next()) files[query.Text(0)] = query.Text(1);
        if (files.empty()) {
            throw CaseStoreError(
                Kind::NoQuestionnaire, GetPath(),
                "the file has no copy of the questionnaire " + hash + ". Choose its folder");
        }
        if (hashOf(files) != hash) m_data->FailDamaged("a questionnaire");
        return files;
    });
}

std::vector<std::string> CaseStore::FindDamage() {
    std::vector<std::string> found;
    const auto look = [&](const std::string& what, auto act) {
        try {
            if (m_data->MeetsDamage(act)) found.push_back(what);
        } catch (const CaseStoreError& error) {
            if (error.GetKind() != Kind::NoQuestionnaire) throw;
            found.push_back(what);
        }
    };
    look("the pages of the file", [&] {
        const std::string verdict = m_data->Db().Text("PRAGMA integrity_check(1)");
        if (verdict != "ok") m_data->FailDamaged("a page (" + verdict + ")");
    });
    look("the trail", [&] { ReadTrail(std::nullopt, [](const TrailEntry&) {}); });
    look("the questionnaires", [&] {
        for (const StoredQuestionnaire& questionnaire : Questionnaires()) {
            look("the questionnaire " + questionnaire.title, [&] { FilesOf(questionnaire.hash); });
        }
    });
    for (const CaseSummary& summary : Summaries()) {
        look("case " + std::to_string(summary.id) + " (" + summary.label + ")",
             [&] { Entries(summary.id); });
    }
    return found;
}

const std::string& CaseStore::GetPath() const {
    return m_data->file.GetPath();
}

CaseStore::Access CaseStore::GetAccess() const {
    return m_data->file.GetAccess();
}

const CaseStore::Notice& CaseStore::GetNotice() const {
    return m_data->file.GetNotice();
}

const std::string& CaseStore::GetInitials() const {
    return m_data->options.initials;
}

}  // namespace tessalink::desk
