#include "apps/desk/windows/NewCaseDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <algorithm>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/QuestionnaireFaultText.h"
#include "questionnaire/RespondentId.h"

namespace tessalink::desk {

namespace {

constexpr int cFaultLines = 8;

QString titleOf(const std::string& title, const std::string& version) {
    return (shown(title) + ' ' + shown(version)).trimmed();
}

}  // namespace

NewCaseDialog::NewCaseDialog(CaseStore& store, const std::string& chosen, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_questionnaires(new QComboBox(this)),
      m_label(new QLineEdit(this)),
      m_remark(new QLabel(this)),
      m_faults(new QPlainTextEdit(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setObjectName("newCaseDialog");
    setWindowTitle(tr("New case"));
    m_questionnaires->setObjectName("newCaseQuestionnaire");
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
    auto* const folder = new QPushButton(tr("From a &folder..."), this);
    folder->setObjectName("newCaseFolder");
    folder->setAutoDefault(false);
    auto* const form = new QFormLayout;
    form->addRow(tr("&Questionnaire:"), m_questionnaires);
    form->addRow(QString(), folder);
    form->addRow(tr("&Id:"), m_label);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_remark);
    column->addWidget(m_faults);
    column->addWidget(m_buttons);
    for (const StoredQuestionnaire& stored : m_store.Questionnaires()) {
        m_sources.push_back({stored.hash, std::nullopt});
        m_questionnaires->addItem(titleOf(stored.title, stored.version));
        if (stored.hash == chosen) m_questionnaires->setCurrentIndex(m_questionnaires->count() - 1);
    }
    connect(folder, &QPushButton::clicked, this, &NewCaseDialog::choose_folder);
    connect(m_label, &QLineEdit::textChanged, this, &NewCaseDialog::check);
    connect(m_questionnaires, &QComboBox::currentIndexChanged, this, &NewCaseDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_label->setFocus();
    check();
}

void NewCaseDialog::choose_folder() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Folder of the questionnaire"));
    if (!folder.isEmpty()) AddFolder(folder);
}

bool NewCaseDialog::AddFolder(const QString& folder) {
    m_faults->hide();
    try {
        Questionnaire read = Questionnaire::Read(pathOf(folder));
        const auto known = std::find_if(m_sources.begin(), m_sources.end(),
                                        [&](const Source& one) { return one.hash == read.Hash(); });
        const auto position = static_cast<int>(known - m_sources.begin());
        if (known == m_sources.end()) {
            const QuestionnaireModel& model = read.Model();
            m_sources.push_back({read.Hash(), read});
            m_questionnaires->addItem((shown(model.title) + ' ' + shown(model.version)).trimmed());
        }
        m_questionnaires->setCurrentIndex(position);
    } catch (const QuestionnaireFaults& faults) {
        list_faults(faultText(faults));
        return false;
    } catch (const std::exception& error) {
        list_faults(folder + ": " + messageOf(error));
        return false;
    }
    m_label->setFocus();
    check();
    return true;
}

void NewCaseDialog::list_faults(const QString& text) {
    m_remark->setText(
        tr("This folder can't be used. Mend what is listed here and choose it again:"));
    m_faults->setPlainText(text);
    m_faults->show();
    m_faults->setFocus();
}

void NewCaseDialog::check() {
    const bool hasQuestionnaire = m_questionnaires->currentIndex() >= 0;
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
    const Source& source = m_sources[static_cast<std::size_t>(m_questionnaires->currentIndex())];
    if (source.read) return *source.read;
    return Questionnaire::Read(m_store.FilesOf(source.hash),
                               CString(std::string_view(source.hash)));
}

QString NewCaseDialog::Label() const {
    return m_label->text().trimmed();
}

}  // namespace tessalink::desk
