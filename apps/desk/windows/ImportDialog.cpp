#include "apps/desk/windows/ImportDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/QuestionnaireChooser.h"
#include "platform/files/CFile.h"
#include "questionnaire/FhirResponses.h"
#include "questionnaire/ResponseTable.h"

namespace tessalink::desk {

namespace {

constexpr QSize cImportSize(560, 420);
/// No more rows that were left out are listed one by one.
constexpr std::size_t cMaxListed = 200;

bool isFhir(const QString& file) {
    const QString ending = QFileInfo(file).suffix().toLower();
    return ending == "json" || ending == "ndjson";
}

}  // namespace

ImportDialog::ImportDialog(CaseStore& store, const QString& file, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_file(file),
      m_questionnaires(new QuestionnaireChooser(store, "", this)),
      m_missing(new QLineEdit(this)),
      m_hasDecimalComma(new QCheckBox(tr("Numbers have a decimal &comma"), this)),
      m_hasLabels(new QCheckBox(tr("Cells hold &labels instead of codes"), this)),
      m_outcome(new QPlainTextEdit(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Close, this)) {
    setObjectName("importDialog");
    setWindowTitle(tr("Import responses"));
    set_up();
    resize(cImportSize);
}

void ImportDialog::set_up() {
    m_missing->setObjectName("missingCodes");
    m_missing->setPlaceholderText(tr("for instance 9 99"));
    m_hasDecimalComma->setObjectName("decimalComma");
    m_hasLabels->setObjectName("labels");
    m_outcome->setObjectName("outcome");
    m_outcome->setReadOnly(true);
    m_outcome->setTabChangesFocus(true);
    m_outcome->setAccessibleName(tr("Outcome"));
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_missing), static_cast<QWidget*>(m_hasDecimalComma),
          static_cast<QWidget*>(m_hasLabels)}) {
        widget->setVisible(!isFhir(m_file));
    }

    auto* const form = new QFormLayout;
    form->addRow(tr("File:"), new QLabel(m_file, this));
    auto* const label = new QLabel(tr("&Questionnaire:"), this);
    label->setBuddy(m_questionnaires);
    form->addRow(label, m_questionnaires);
    if (!isFhir(m_file)) {
        form->addRow(tr("Codes for &missing answers:"), m_missing);
        form->addRow(m_hasDecimalComma);
        form->addRow(m_hasLabels);
    }
    auto* const start = m_buttons->addButton(tr("&Import"), QDialogButtonBox::ActionRole);
    start->setObjectName("import");
    start->setDefault(true);
    connect(start, &QPushButton::clicked, this, &ImportDialog::import);
    connect(m_questionnaires, &QuestionnaireChooser::faulty, m_outcome,
            &QPlainTextEdit::setPlainText);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_outcome, 1);
    layout->addWidget(m_buttons);
}

void ImportDialog::import() {
    try {
        if (!m_questionnaires->HasChoice()) {
            return m_outcome->setPlainText(tr("Choose the folder of a questionnaire."));
        }
        const Questionnaire questionnaire = m_questionnaires->Chosen();
        CFile file(pathOf(m_file), CFile::modeRead);
        ResponseTableOptions options;
        options.hasDecimalComma = m_hasDecimalComma->isChecked();
        options.hasLabels = m_hasLabels->isChecked();
        for (const QString& code : m_missing->text().split(' ', Qt::SkipEmptyParts)) {
            options.missingCodes.push_back(utf8Of(code));
        }
        std::unique_ptr<ResponseSource> source;
        if (isFhir(m_file)) {
            source = std::make_unique<FhirResponses>(file, questionnaire);
        } else {
            source = std::make_unique<ResponseTable>(file, questionnaire, options);
        }
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        const std::shared_ptr<void> restored(
            nullptr, [](void*) { QGuiApplication::restoreOverrideCursor(); });
        tell(importResponses(m_store, questionnaire, *source), source->Notes());
    } catch (const std::exception& fault) {
        m_outcome->setPlainText(
            tr("%1\nWhat was taken before is in the file; import once more to go on.")
                .arg(messageOf(fault)));
    }
}

void ImportDialog::tell(const ImportedCases& imported, const std::vector<std::string>& notes) {
    m_added.insert(m_added.end(), imported.ids.begin(), imported.ids.end());
    QStringList lines = {tr("%n case(s) added.", nullptr, static_cast<int>(imported.ids.size()))};
    for (const std::string& note : notes) lines += shown(std::string_view(note));
    if (!imported.leftOut.empty()) {
        lines += tr("%n row(s) left out:", nullptr, static_cast<int>(imported.leftOut.size()));
    }
    for (std::size_t i = 0; i < imported.leftOut.size() && i < cMaxListed; ++i) {
        const LeftOut& row = imported.leftOut[i];
        lines += tr("Line %1: %2 %3")
                     .arg(row.line)
                     .arg(shown(std::string_view(row.label)), shown(std::string_view(row.reason)));
    }
    if (imported.leftOut.size() > cMaxListed) lines += tr("... and further ones.");
    m_outcome->setPlainText(lines.join('\n'));
}

}  // namespace tessalink::desk
