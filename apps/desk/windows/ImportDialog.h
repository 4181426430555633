#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseTables.h"

class QCheckBox;
class QDialogButtonBox;
class QLineEdit;
class QPlainTextEdit;

namespace tessalink::desk {

class QuestionnaireChooser;

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
    void import();
    void tell(const ImportedCases& imported, const std::vector<std::string>& notes);

    CaseStore& m_store;
    QString m_file;
    QuestionnaireChooser* m_questionnaires;
    QLineEdit* m_missing;
    QCheckBox* m_hasDecimalComma;
    QCheckBox* m_hasLabels;
    QPlainTextEdit* m_outcome;
    QDialogButtonBox* m_buttons;
    std::vector<CaseId> m_added;
};

}  // namespace tessalink::desk
