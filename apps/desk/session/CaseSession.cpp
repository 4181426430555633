#include "apps/desk/session/CaseSession.h"

#include <stdexcept>
#include <utility>

#include "platform/base/CodePage.h"
#include "questionnaire/RespondentId.h"
#include "questionnaire/ValueText.h"

namespace tessalink::desk {

namespace {

using Kind = CaseStep::Kind;

std::string utf8(const CString& text) {
    return toUtf8(text.View());
}

std::optional<std::string> valueOf(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

EntryKind entryKindOf(Kind kind) {
    if (kind == Kind::Answer) return EntryKind::Answer;
    return kind == Kind::SecondAnswer ? EntryKind::SecondAnswer : EntryKind::Field;
}

const char* textOf(CaseState state) {
    return state == CaseState::Open ? "open" : "complete";
}

CaseState stateOf(const std::string& text) {
    return text == textOf(CaseState::Open) ? CaseState::Open : CaseState::Complete;
}

}  // namespace

struct CaseSession::Data {
    Data(CaseStore& given, CaseId id)
        : store(&given),
          summary(given.Summary(id)),
          questionnaire(readQuestionnaire(given, summary.questionnaire)),
          scorer(std::make_unique<Scorer>(questionnaire)) {
        Load();
    }

    void Load();
    void Score();

    /// Makes a change in the store and here; false when there is none.
    bool Apply(Kind kind, const std::string& id, const std::optional<std::string>& value);
    bool Keep(Kind kind, const std::string& id, const std::optional<std::string>& value);
    void Refresh();
    std::optional<std::string> ValueOf(Kind kind, const std::string& id) const;
    /// Makes a change that can be undone.
    bool Do(Kind kind, const std::string& id, std::optional<std::string> value);
    std::string NameOf(Kind kind, const std::string& id) const;
    void SetAnswerOf(Kind kind, std::size_t item, const Answer& answer);

    const QuestionnaireModel& Model() const { return questionnaire.Model(); }
    const ResponseSet& SetOf(std::size_t item) const {
        return Model().responseSets[Model().items[item].responses];
    }

    CaseStore* store;
    CaseSummary summary;
    Questionnaire questionnaire;
    std::unique_ptr<Scorer> scorer;
    CaseContents contents;
    Scores scores;
    std::vector<ScoreFault> faults;
    std::vector<CaseStep> steps;
    std::size_t done = 0;  ///< how many of the steps are done; those behind can be redone
};

void CaseSession::Data::Load() {
    contents = readContents(*store, summary, questionnaire);
    Score();
}

void CaseSession::Data::Score() {
    faults.clear();
    for (const ScoringError& error : scorer->ScoreWhatCan(contents.respondent, scores)) {
        faults.push_back({utf8(error.GetName()), toUtf8(error.what())});
    }
}

std::optional<std::string> CaseSession::Data::ValueOf(Kind kind, const std::string& id) const {
    if (kind == Kind::Label) return summary.label;
    if (kind == Kind::State) return textOf(summary.state);
    const std::string known = fromUtf8(id).text;
    if (kind == Kind::Field) {
        const std::size_t field = *questionnaire.FindField(known);
        return valueOf(fieldText(Model().fields[field], contents.respondent.fields[field]));
    }
    const std::size_t item = *questionnaire.FindItem(known);
    const auto& answers =
        kind == Kind::Answer ? contents.respondent.answers : contents.secondAnswers;
    return valueOf(answerText(SetOf(item), answers[item]));
}

/// Makes a change in the store.
bool CaseSession::Data::Keep(Kind kind, const std::string& id,
                             const std::optional<std::string>& value) {
    if (kind == Kind::Label) return store->SetLabel(summary.id, *value);
    if (kind == Kind::State) return store->SetState(summary.id, stateOf(*value));
    return store->SetEntry(summary.id, {entryKindOf(kind), id}, value);
}

/// Reads the summary after a change. What was changed is kept, whether it can be read or not.
void CaseSession::Data::Refresh() {
    try {
        summary = store->Summary(summary.id);
    } catch (const CaseStoreError&) {
        // Times and counts of the list stay behind until the next change.
    }
}

bool CaseSession::Data::Apply(Kind kind, const std::string& id,
                              const std::optional<std::string>& value) {
    const bool isChanged = Keep(kind, id, value);
    if (kind == Kind::Label) summary.label = *value;
    if (kind == Kind::State) summary.state = stateOf(*value);
    contents.respondent.id = summary.label;
    Refresh();
    if (kind != Kind::Label && kind != Kind::State) {
        contents.Take(questionnaire, {{entryKindOf(kind), id}, value.value_or("")});
        std::erase_if(contents.unused, [&](const UnusedEntry& entry) {
            return entry.entry.name == EntryName{entryKindOf(kind), id};
        });
        Score();
    }
    return isChanged;
}

std::string CaseSession::Data::NameOf(Kind kind, const std::string& id) const {
    switch (kind) {
        case Kind::Answer:
            return "answer to " + id;
        case Kind::SecondAnswer:
            return "second answer to " + id;
        case Kind::Field: {
            const Field& field = Model().fields[*questionnaire.FindField(fromUtf8(id).text)];
            return field.label.IsEmpty() ? id : utf8(field.label);
        }
        case Kind::Label:
            return "id";
        case Kind::State:
            break;
    }
    return "state";
}

bool CaseSession::Data::Do(Kind kind, const std::string& id, std::optional<std::string> value) {
    CaseStep step{kind, id, ValueOf(kind, id), std::move(value), NameOf(kind, id)};
    if (!Apply(kind, id, step.to)) return false;
    steps.resize(done);
    steps.push_back(std::move(step));
    done = steps.size();
    return true;
}

CaseSession::CaseSession(CaseStore& store, CaseId id) : m_data(std::make_unique<Data>(store, id)) {}
CaseSession::CaseSession(CaseSession&&) noexcept = default;
CaseSession& CaseSession::operator=(CaseSession&&) noexcept = default;
CaseSession::~CaseSession() = default;

namespace {

/// The text of an answer or field that is allowed; otherwise std::invalid_argument.
std::string checkedAnswer(const ResponseSet& set, const Answer& answer) {
    if (answer && set.HasChoices() &&
        (*answer < 1 || static_cast<std::size_t>(*answer) > set.choices.size())) {
        throw std::invalid_argument("there is no such choice");
    }
    std::string text = answerText(set, answer);
    Answer read;
    const std::string fault = readAnswer(set, text, read);
    if (!fault.empty()) throw std::invalid_argument(text + " " + fault);
    return text;
}

std::string checkedField(const Field& field, const FieldValue& value) {
    const auto* const position = std::get_if<std::int32_t>(&value);
    if (field.type == Field::Type::Choice && position != nullptr &&
        (*position < 1 || static_cast<std::size_t>(*position) > field.choices.size())) {
        throw std::invalid_argument("there is no such choice");
    }
    std::string text = fieldText(field, value);
    FieldValue read;
    const std::string fault = readField(field, text, read);
    if (!fault.empty()) throw std::invalid_argument(text + " " + fault);
    return text;
}

}  // namespace

bool CaseSession::SetAnswer(std::size_t item, const Answer& answer) {
    return m_data->Do(Kind::Answer, utf8(m_data->Model().items.at(item).id),
                      valueOf(checkedAnswer(m_data->SetOf(item), answer)));
}

bool CaseSession::SetSecondAnswer(std::size_t item, const Answer& answer) {
    return m_data->Do(Kind::SecondAnswer, utf8(m_data->Model().items.at(item).id),
                      valueOf(checkedAnswer(m_data->SetOf(item), answer)));
}

bool CaseSession::SetField(std::size_t field, const FieldValue& value) {
    const Field& known = m_data->Model().fields.at(field);
    return m_data->Do(Kind::Field, utf8(known.id), valueOf(checkedField(known, value)));
}

bool CaseSession::SetLabel(const std::string& label) {
    const std::string fault = respondentIdFault(label);
    if (!fault.empty()) throw std::invalid_argument(fault);
    return m_data->Do(Kind::Label, "", label);
}

bool CaseSession::SetState(CaseState state) {
    return m_data->Do(Kind::State, "", textOf(state));
}

bool CaseSession::CanUndo() const {
    return m_data->done > 0;
}

bool CaseSession::CanRedo() const {
    return m_data->done < m_data->steps.size();
}

const CaseStep& CaseSession::UndoStep() const {
    return m_data->steps.at(m_data->done - 1);
}

const CaseStep& CaseSession::RedoStep() const {
    return m_data->steps.at(m_data->done);
}

void CaseSession::Undo() {
    if (!CanUndo()) return;
    const CaseStep& step = UndoStep();
    m_data->Apply(step.kind, step.id, step.from);
    --m_data->done;
}

void CaseSession::Redo() {
    if (!CanRedo()) return;
    const CaseStep& step = RedoStep();
    m_data->Apply(step.kind, step.id, step.to);
    ++m_data->done;
}

void CaseSession::SetQuestionnaire(const Questionnaire& questionnaire) {
    auto scorer = std::make_unique<Scorer>(questionnaire);
    auto contents = readContents(*m_data->store, m_data->summary, questionnaire);
    if (!m_data->store->SetQuestionnaire(m_data->summary.id, questionnaire)) return;
    m_data->steps.clear();
    m_data->done = 0;
    m_data->scorer = std::move(scorer);
    m_data->questionnaire = questionnaire;
    m_data->contents = std::move(contents);
    m_data->summary.questionnaire = questionnaire.Hash();
    m_data->Refresh();
    m_data->Score();
}

CaseId CaseSession::GetId() const {
    return m_data->summary.id;
}

CaseStore& CaseSession::GetStore() const {
    return *m_data->store;
}

const CaseSummary& CaseSession::GetSummary() const {
    return m_data->summary;
}

const Questionnaire& CaseSession::GetQuestionnaire() const {
    return m_data->questionnaire;
}

const Respondent& CaseSession::GetRespondent() const {
    return m_data->contents.respondent;
}

const std::vector<Answer>& CaseSession::GetSecondAnswers() const {
    return m_data->contents.secondAnswers;
}

std::vector<std::size_t> CaseSession::Differences() const {
    std::vector<std::size_t> items;
    for (std::size_t i = 0; i < m_data->contents.secondAnswers.size(); ++i) {
        const Answer& first = m_data->contents.respondent.answers[i];
        const Answer& second = m_data->contents.secondAnswers[i];
        if (first && second && first != second) items.push_back(i);
    }
    return items;
}

const std::vector<UnusedEntry>& CaseSession::GetUnusedEntries() const {
    return m_data->contents.unused;
}

const Scores& CaseSession::GetScores() const {
    return m_data->scores;
}

const std::vector<ScoreFault>& CaseSession::GetScoreFaults() const {
    return m_data->faults;
}

}  // namespace tessalink::desk
