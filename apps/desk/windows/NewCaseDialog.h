#pragma once

#include <QDialog>
#include <string>

#include "apps/desk/casestore/CaseStore.h"
#include "questionnaire/Questionnaire.h"

class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tessalink::desk {

class QuestionnaireChooser;

/// Asks for the questionnaire and the respondent's id of a new case. Questionnaires are those that
/// the file holds, and any folder; all faults of one are listed.
class NewCaseDialog : public QDialog {
    Q_OBJECT

public:
    /// `chosen` is the hash of the questionnaire to begin with; may be empty.
    NewCaseDialog(CaseStore& store, const std::string& chosen, QWidget* parent = nullptr);

    /// Reads the folder of a questionnaire and chooses it; false when it has faults, which are
    /// listed then.
    bool AddFolder(const QString& folder);

    /// The questionnaire that was chosen; read when it is asked for. CaseStoreErrors and
    /// QuestionnaireFaults pass through.
    Questionnaire Chosen() const;
    QString Label() const;

private:
    void take_choice();
    void check();
    void list_faults(const QString& text);

    QuestionnaireChooser* m_questionnaires;
    QLineEdit* m_label;
    QLabel* m_remark;
    QPlainTextEdit* m_faults;
    QDialogButtonBox* m_buttons;
};

}  // namespace tessalink::desk
