#include "apps/desk/windows/NewCaseDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/QuestionnaireChooser.h"
#include "questionnaire/RespondentId.h"

namespace tessalink::desk {

namespace {

constexpr int cFaultLines = 8;

}  // namespace

NewCaseDialog::NewCaseDialog(CaseStore& store, const std::string& chosen, QWidget* parent)
    : QDialog(parent),
      m_questionnaires(new QuestionnaireChooser(store, chosen, this)),
      m_label(new QLineEdit(this)),
      m_remark(new QLabel(this)),
      m_faults(new QPlainTextEdit(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setObjectName("newCaseDialog");
    setWindowTitle(tr("New case"));
    m_label->setObjectName("newCaseId");
    m_label->setMaxLength(static_cast<int>(cMaxRespondentId));
    m_remark->setObjectName("newCaseRemark");
    m_remark->setWordWrap(true);
    m_faults->setObjectName("newCaseFaults");
    m_faults->setAccessibleName(tr("Faults of the questionnaire"));
    m_faults->setReadOnly(true);
    m_faults->setTabChangesFocus(true);
    m_faults->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_faults->setMinimumHeight(fontMetrics().lineSpacing() * cFaultLines);
    m_faults->hide();
    auto* const form = new QFormLayout;
    form->addRow(tr("&Questionnaire:"), m_questionnaires);
    form->addRow(tr("&Id:"), m_label);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_remark);
    column->addWidget(m_faults);
    column->addWidget(m_buttons);
    connect(m_label, &QLineEdit::textChanged, this, &NewCaseDialog::check);
    connect(m_questionnaires, &QuestionnaireChooser::changed, this, &NewCaseDialog::take_choice);
    connect(m_questionnaires, &QuestionnaireChooser::faulty, this, &NewCaseDialog::list_faults);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_label->setFocus();
    check();
}

bool NewCaseDialog::AddFolder(const QString& folder) {
    return m_questionnaires->AddFolder(folder);
}

void NewCaseDialog::take_choice() {
    m_faults->hide();
    m_label->setFocus();
    check();
}

void NewCaseDialog::list_faults(const QString& text) {
    m_remark->setText(
        tr("This folder can't be used. Mend what is listed here and choose it again:"));
    m_faults->setPlainText(text);
    m_faults->show();
    m_faults->setFocus();
}

void NewCaseDialog::check() {
    const bool hasQuestionnaire = m_questionnaires->HasChoice();
    const bool hasLabel = respondentIdFault(utf8Of(Label())).empty();
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(hasQuestionnaire && hasLabel);
    if (m_faults->isVisible()) return;
    if (!hasQuestionnaire) {
        m_remark->setText(tr("The file holds no questionnaire yet: choose its folder."));
    } else if (!hasLabel && !Label().isEmpty()) {
        m_remark->setText(
            tr("The id names files: no / \\ < > : \" | ? *, no full stop at its ends."));
    } else {
        m_remark->setText(tr("The id tells persons apart, and names the files of reports."));
    }
}

Questionnaire NewCaseDialog::Chosen() const {
    return m_questionnaires->Chosen();
}

QString NewCaseDialog::Label() const {
    return m_label->text().trimmed();
}

}  // namespace tessalink::desk
