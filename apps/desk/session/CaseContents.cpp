#include "apps/desk/session/CaseContents.h"

#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "questionnaire/ValueText.h"

namespace tessalink::desk {

std::string CaseContents::Take(const Questionnaire& questionnaire, const Entry& entry) {
    const QuestionnaireModel& model = questionnaire.Model();
    const std::string id = fromUtf8(entry.name.id).text;
    if (entry.name.kind == EntryKind::Field) {
        const auto field = questionnaire.FindField(id);
        if (!field) return "the questionnaire has no such field";
        return readField(model.fields[*field], entry.value, respondent.fields[*field]);
    }
    const auto item = questionnaire.FindItem(id);
    if (!item) return "the questionnaire has no such item";
    auto& answers = entry.name.kind == EntryKind::Answer ? respondent.answers : secondAnswers;
    return readAnswer(model.responseSets[model.items[*item].responses], entry.value,
                      answers[*item]);
}

CaseContents readContents(CaseStore& store, const CaseSummary& summary,
                          const Questionnaire& questionnaire) {
    const QuestionnaireModel& model = questionnaire.Model();
    CaseContents contents;
    contents.respondent.id = summary.label;
    contents.respondent.answers.resize(model.items.size());
    contents.respondent.fields.resize(model.fields.size());
    contents.secondAnswers.resize(model.items.size());
    for (const Entry& entry : store.Entries(summary.id)) {
        std::string reason = contents.Take(questionnaire, entry);
        if (!reason.empty()) contents.unused.push_back({entry, std::move(reason)});
    }
    return contents;
}

Questionnaire readQuestionnaire(CaseStore& store, const std::string& hash) {
    try {
        return Questionnaire::Read(store.FilesOf(hash), CString(std::string_view(hash)));
    } catch (const QuestionnaireFaults& faults) {
        throw CaseStoreError(
            CaseStoreError::Kind::Damaged, store.GetPath(),
            std::string("the questionnaire of the case can't be read: ") + faults.what());
    }
}

}  // namespace tessalink::desk
