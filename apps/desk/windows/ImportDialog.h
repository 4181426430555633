#pragma once

#include <QDialog>
#include <map>
#include <optional>
#include <string>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseTables.h"

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QPlainTextEdit;

namespace tessalink::desk {

/// Takes the respondents of a table (CSV), or of FHIR QuestionnaireResponse resources, into the
/// file of cases, and tells which could not be taken.
class ImportDialog : public QDialog {
    Q_OBJECT

public:
    /// `file` is what was chosen; the store must outlive the dialog.
    ImportDialog(CaseStore& store, const QString& file, QWidget* parent = nullptr);

    /// The cases that were added.
    const std::vector<CaseId>& Added() const { return m_added; }

private:
    void set_up();
    void add_questionnaire(const Questionnaire& questionnaire);
    void choose_folder();
    void import();
    void tell(const ImportedCases& imported, const std::vector<std::string>& notes);
    std::optional<Questionnaire> chosen();

    CaseStore& m_store;
    QString m_file;
    QComboBox* m_questionnaires;
    QLineEdit* m_missing;
    QCheckBox* m_hasDecimalComma;
    QCheckBox* m_hasLabels;
    QPlainTextEdit* m_outcome;
    QDialogButtonBox* m_buttons;
    std::map<std::string, Questionnaire> m_fromFolders;  ///< by hash
    std::vector<CaseId> m_added;
};

}  // namespace tessalink::desk
