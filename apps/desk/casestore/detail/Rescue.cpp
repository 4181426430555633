#include "apps/desk/casestore/detail/Rescue.h"

#include <map>

#include "apps/desk/casestore/detail/Words.h"

namespace tessalink::desk::detail {

namespace {

class Rescuer {
public:
    Rescuer(CaseStore& from, Database& to) : m_from(from), m_to(to) {}

    std::vector<std::string> Run() {
        const std::vector<CaseSummary> cases = m_from.Summaries();
        Transaction transaction(m_to);
        copy_questionnaires(cases);
        for (const CaseSummary& summary : cases) copy_case(summary);
        copy_trail(cases);
        transaction.Commit();
        return m_lost;
    }

private:
    template <class ACT>
    bool try_to(const std::string& what, ACT act) {
        try {
            act();
            return true;
        } catch (const CaseStoreError& error) {
            using Kind = CaseStoreError::Kind;
            if (error.GetKind() != Kind::Damaged && error.GetKind() != Kind::NoQuestionnaire) throw;
            m_lost.push_back(what);
            return false;
        }
    }

    /// A questionnaire whose files are lost keeps its place: its folder can be chosen again.
    void copy_questionnaires(const std::vector<CaseSummary>& cases) {
        std::map<std::string, StoredQuestionnaire> known;
        for (const CaseSummary& summary : cases) {
            known[summary.questionnaire].hash = summary.questionnaire;
        }
        try_to("the list of questionnaires", [&] {
            for (const auto& stored : m_from.Questionnaires()) known[stored.hash] = stored;
        });
        for (const auto& one : known) copy_questionnaire(one.second);
    }

    void copy_questionnaire(const StoredQuestionnaire& stored) {
        Query(m_to, "INSERT INTO questionnaires (hash, id, title, version) VALUES (?, ?, ?, ?)",
              stored.hash, stored.id, stored.title, stored.version)
            .Run();
        const std::int64_t number = m_to.LastRow();
        m_numbers[stored.hash] = number;
        QuestionnaireFiles files;
        try_to("the questionnaire " + stored.title, [&] { files = m_from.FilesOf(stored.hash); });
        for (const auto& [name, bytes] : files) {
            Query(m_to,
                  "INSERT INTO questionnaire_files (questionnaire, name, bytes) "
                  "VALUES (?, ?, CAST(? AS BLOB))",
                  number, name, bytes)
                .Run();
        }
    }

    void copy_case(const CaseSummary& summary) {
        Query(m_to,
              "INSERT INTO cases (number, label, questionnaire, state, created, changed, answered) "
              "VALUES (?, ?, ?, ?, ?, ?, ?)",
              summary.id, summary.label, m_numbers[summary.questionnaire], wordOf(summary.state),
              summary.created, summary.changed, summary.answered)
            .Run();
        std::vector<Entry> entries;
        try_to("case " + std::to_string(summary.id) + " (" + summary.label + ")",
               [&] { entries = m_from.Entries(summary.id); });
        for (const Entry& entry : entries) {
            Query(m_to, "INSERT INTO entries (case_number, kind, id, value) VALUES (?, ?, ?, ?)",
                  summary.id, wordOf(entry.name.kind), entry.name.id, entry.value)
                .Run();
        }
    }

    /// As a whole as far as that goes, then case by case.
    void copy_trail(const std::vector<CaseSummary>& cases) {
        std::map<std::int64_t, TrailEntry> entries;
        const auto keep = [&](const TrailEntry& entry) { entries[entry.number] = entry; };
        if (!try_to("parts of the trail", [&] { m_from.ReadTrail(std::nullopt, keep); })) {
            for (const CaseSummary& summary : cases) {
                try_to("the trail of case " + std::to_string(summary.id),
                       [&] { m_from.ReadTrail(summary.id, keep); });
            }
        }
        for (const auto& [number, entry] : entries) {
            Query(m_to,
                  "INSERT INTO trail (number, case_number, at, account, initials, act, name, "
                  "from_value, to_value) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
                  number, entry.caseId, entry.when, entry.account, entry.initials,
                  wordOf(entry.act), entry.name, entry.from, entry.to)
                .Run();
        }
    }

    CaseStore& m_from;
    Database& m_to;
    std::map<std::string, std::int64_t> m_numbers;  ///< of questionnaires in the new file
    std::vector<std::string> m_lost;
};

}  // namespace

std::vector<std::string> rescue(CaseStore& from, Database& to) {
    return Rescuer(from, to).Run();
}

}  // namespace tessalink::desk::detail
