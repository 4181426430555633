#include "apps/desk/session/CaseTables.h"

#include <set>

#include "apps/desk/session/CaseContents.h"
#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "platform/files/CFile.h"
#include "questionnaire/RespondentId.h"
#include "questionnaire/ScoreTable.h"
#include "questionnaire/Scorer.h"
#include "questionnaire/ValueText.h"

namespace tessalink::desk {

namespace {

constexpr const char* cRowEnd = "\r\n";

void write(const std::string& text, CFile& output) {
    output.Write(text.data(), text.size());
}

void addEntry(EntryKind kind, const CString& id, std::string text, std::vector<Entry>& entries) {
    if (!text.empty()) entries.push_back({{kind, toUtf8(id.View())}, std::move(text)});
}

NewCase caseOf(const QuestionnaireModel& model, const Respondent& respondent) {
    NewCase added{respondent.id, {}, CaseState::Complete};
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        addEntry(EntryKind::Field, model.fields[i].id,
                 fieldText(model.fields[i], respondent.fields[i]), added.entries);
    }
    for (std::size_t i = 0; i < model.items.size(); ++i) {
        const Item& item = model.items[i];
        addEntry(EntryKind::Answer, item.id,
                 answerText(model.responseSets[item.responses], respondent.answers[i]),
                 added.entries);
    }
    return added;
}

/// Takes the respondents of a source, one block at a time.
class Import {
public:
    Import(CaseStore& store, const Questionnaire& questionnaire)
        : m_store(store), m_questionnaire(questionnaire) {
        for (const CaseSummary& summary : store.Summaries()) {
            if (summary.questionnaire == questionnaire.Hash()) {
                m_taken.insert(foldRespondentId(summary.label));
            }
        }
    }

    ImportedCases Run(ResponseSource& source) {
        ResponseBlock block;
        while (source.ReadBlock(block)) {
            m_cases.clear();
            source.Parse(block, [this](RespondentRow& row) { take(row); });
            const std::vector<CaseId> ids = m_store.AddCases(m_questionnaire, m_cases);
            m_imported.ids.insert(m_imported.ids.end(), ids.begin(), ids.end());
        }
        return std::move(m_imported);
    }

private:
    void take(const RespondentRow& row) {
        const std::string& id = row.respondent.id;
        std::string fault = faultOf(row);
        if (fault.empty() && !m_taken.insert(foldRespondentId(id)).second) {
            fault = "has a case already: change the id, or delete that case first";
        }
        if (fault.empty()) {
            m_cases.push_back(caseOf(m_questionnaire.Model(), row.respondent));
        } else {
            m_imported.leftOut.push_back({row.line, id, std::move(fault)});
        }
    }

    static std::string faultOf(const RespondentRow& row) {
        if (!row.failure) return respondentIdFault(row.respondent.id);
        const RowFailure& failure = *row.failure;
        if (failure.column.empty()) return failure.reason;
        return failure.column + ": " + failure.value + " " + failure.reason;
    }

    CaseStore& m_store;
    const Questionnaire& m_questionnaire;
    std::set<std::string> m_taken;  ///< folded ids
    std::vector<NewCase> m_cases;   ///< of the block
    ImportedCases m_imported;
};

}  // namespace

std::vector<LeftOut> writeScores(CaseStore& store, const std::string& questionnaire,
                                 std::span<const CaseSummary> cases, CFile& output) {
    const Questionnaire read = readQuestionnaire(store, questionnaire);
    const Scorer scorer(read);
    std::string text = "id,state";
    for (const CString& column : scoreColumns(read.Model())) {
        text += ',';
        appendCell(toUtf8(column.View()), text);
    }
    write(text + cRowEnd, output);
    std::vector<LeftOut> leftOut;
    Scores scores;
    for (const CaseSummary& summary : cases) {
        try {
            const CaseContents contents = readContents(store, summary, read);
            scorer.ScoreWhatCan(contents.respondent, scores);
        } catch (const CaseStoreError& fault) {
            leftOut.push_back({0, summary.label, fault.what()});
            continue;
        }
        text.clear();
        appendCell(summary.label, text);
        text += summary.state == CaseState::Open ? ",open" : ",complete";
        appendScores(read.Model(), scores, text);
        write(text + cRowEnd, output);
    }
    return leftOut;
}

ImportedCases importResponses(CaseStore& store, const Questionnaire& questionnaire,
                              ResponseSource& source) {
    return Import(store, questionnaire).Run(source);
}

}  // namespace tessalink::desk
