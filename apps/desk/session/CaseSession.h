#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseContents.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/Scorer.h"

namespace tessalink::desk {

/// Why something has no standard scores.
struct ScoreFault {
    std::string name;      ///< the scale or field in question, UTF-8
    std::string sentence;  ///< UTF-8, why and what to do
};

/// A step that can be undone.
struct CaseStep {
    enum class Kind { Answer, SecondAnswer, Field, Label, State };

    Kind kind = Kind::Answer;
    std::string id;                   ///< of the item or field; empty for label and state
    std::optional<std::string> from;  ///< as the file has it
    std::optional<std::string> to;

    /// What menus show behind "Undo": "answer to Q7", "Date of birth", "id", "state"; UTF-8. The
    /// label of a field where the questionnaire has one.
    std::string name;
};

/// One case while it is worked on. Every change goes to the store first: one that throws a
/// CaseStoreError leaves session and file as they were. An undone step is a change like others and
/// has its place in the trail. The store must outlive the session.
class CaseSession {
public:
    /// Reads the case with the questionnaire that the file keeps for it. CaseStoreError: the case
    /// or its questionnaire can't be read.
    CaseSession(CaseStore& store, CaseId id);
    CaseSession(CaseSession&&) noexcept;
    CaseSession& operator=(CaseSession&&) noexcept;
    ~CaseSession();

    // Changes; positions are those of the questionnaire. False when nothing changes. A value that
    // the questionnaire does not allow is a std::invalid_argument that says why.
    bool SetAnswer(std::size_t item, const Answer& answer);
    bool SetSecondAnswer(std::size_t item, const Answer& answer);
    bool SetField(std::size_t field, const FieldValue& value);
    bool SetLabel(const std::string& label);
    bool SetState(CaseState state);

    bool CanUndo() const;
    bool CanRedo() const;
    /// The step that Undo or Redo would take; there must be one.
    const CaseStep& UndoStep() const;
    const CaseStep& RedoStep() const;
    /// Both do nothing when there is no step.
    void Undo();
    void Redo();

    /// Goes on with another version of the questionnaire, which the trail notes; entries stay. What
    /// was keyed before can't be undone afterwards.
    void SetQuestionnaire(const Questionnaire& questionnaire);

    CaseId GetId() const;
    CaseStore& GetStore() const;
    /// As the store has it now, without asking it.
    const CaseSummary& GetSummary() const;
    const Questionnaire& GetQuestionnaire() const;
    /// The answers and fields; its id is the label.
    const Respondent& GetRespondent() const;
    const std::vector<Answer>& GetSecondAnswers() const;
    /// Items whose two answers differ, where both are there.
    std::vector<std::size_t> Differences() const;
    const std::vector<UnusedEntry>& GetUnusedEntries() const;
    /// Up to date with every change. Scales that norms have nothing for have raw scores only.
    const Scores& GetScores() const;
    /// Why; empty when everything has its scores.
    const std::vector<ScoreFault>& GetScoreFaults() const;

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

}  // namespace tessalink::desk
