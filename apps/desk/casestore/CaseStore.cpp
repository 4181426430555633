#include "apps/desk/casestore/CaseStore.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "apps/desk/casestore/TrailTable.h"
#include "apps/desk/casestore/detail/Rescue.h"
#include "apps/desk/casestore/detail/StoreRows.h"
#include "apps/desk/casestore/detail/Words.h"

namespace tessalink::desk {

namespace {

using detail::Query;
using detail::wordOf;
using ErrorKind = CaseStoreError::Kind;

TrailAct actOf(EntryKind kind) {
    constexpr std::array acts = {TrailAct::Answer, TrailAct::SecondAnswer, TrailAct::Field};
    return acts[static_cast<std::size_t>(kind)];
}

}  // namespace

const char* nameOf(TrailAct act) {
    return wordOf(act);
}

struct CaseStore::Data : detail::StoreRows {
    using StoreRows::StoreRows;
};

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
            m_data->Remove(id, name);
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
        m_data->Delete(id);
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
    std::optional copy(detail::StoreFile::Create(path, m_data->options));
    try {
        return detail::rescue(*this, copy->Connection());
    } catch (...) {
        copy.reset();
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
        throw;
    }
}

void CaseStore::SetInitials(const std::string& initials) {
    m_data->options.initials = initials;
}

std::vector<CaseSummary> CaseStore::Summaries() {
    std::vector<CaseSummary> summaries;
    const bool isDamaged = m_data->MeetsDamage([&] { summaries = m_data->Summaries(); });
    return isDamaged ? m_data->SummariesOneByOne() : summaries;
}

CaseSummary CaseStore::Summary(CaseId id) {
    return m_data->Known(id);
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
                ErrorKind::NoQuestionnaire, GetPath(),
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
            if (error.GetKind() != ErrorKind::NoQuestionnaire) throw;
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
