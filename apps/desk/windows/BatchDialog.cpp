#include "apps/desk/windows/BatchDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/PageMaker.h"
#include "apps/desk/windows/ReportFiles.h"
#include "questionnaire/RespondentId.h"

namespace tessalink::desk {

namespace {

constexpr QSize cBatchSize(560, 420);
/// So long reports are written before the window looks at keys again.
constexpr int cStepMilliseconds = 30;
/// So many reports go to LibreOffice at a time: it starts slowly.
constexpr qsizetype cPagesAtOnce = 20;

}  // namespace

BatchDialog::BatchDialog(CaseStore& store, std::vector<CaseSummary> cases, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_cases(std::move(cases)),
      m_questionnaire(readQuestionnaire(store, m_cases.at(0).questionnaire)),
      m_scorer(m_questionnaire),
      m_writer(m_questionnaire),
      m_maker(new PageMaker(m_private.IsValid() ? m_private.PathOf({}) : QString(), this)),
      m_timer(new QTimer(this)),
      m_reports(new QComboBox(this)),
      m_folder(new QLineEdit(this)),
      m_pdf(new QCheckBox(tr("As &PDF"), this)),
      m_progress(new QProgressBar(this)),
      m_outcome(new QPlainTextEdit(this)),
      m_start(new QPushButton(tr("&Start"), this)),
      m_stop(new QPushButton(tr("S&top"), this)) {
    setObjectName("batchDialog");
    setWindowTitle(tr("Reports of %n case(s)", nullptr, static_cast<int>(m_cases.size())));
    set_up();
    resize(cBatchSize);
    connect(m_timer, &QTimer::timeout, this, &BatchDialog::step);
    connect(m_maker, &PageMaker::made, this, &BatchDialog::take_pages);
    connect(m_start, &QPushButton::clicked, this, &BatchDialog::start);
    connect(m_stop, &QPushButton::clicked, this, &BatchDialog::stop);
}

BatchDialog::~BatchDialog() = default;

void BatchDialog::set_up() {
    for (const ReportTemplate& report : m_questionnaire.Model().reports) {
        m_reports->addItem(shown(report.title.IsEmpty() ? report.id : report.title));
    }
    m_reports->setObjectName("report");
    m_folder->setObjectName("folder");
    m_folder->setAccessibleName(tr("Folder"));
    m_pdf->setObjectName("pdf");
    m_pdf->setEnabled(m_private.IsValid() && !PageMaker::FindProgram().isEmpty());
    if (!m_pdf->isEnabled()) m_pdf->setToolTip(PageMaker::MissingText());
    m_progress->setObjectName("progress");
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setRange(0, static_cast<int>(m_cases.size()));
    m_progress->setValue(0);
    m_outcome->setObjectName("outcome");
    m_outcome->setReadOnly(true);
    m_outcome->setTabChangesFocus(true);
    m_outcome->setAccessibleName(tr("Outcome"));
    m_start->setObjectName("start");
    m_start->setDefault(true);
    m_start->setEnabled(m_reports->count() > 0);
    m_stop->setObjectName("stop");
    m_stop->setEnabled(false);

    auto* const choose = new QPushButton(tr("&Choose..."), this);
    choose->setObjectName("chooseFolder");
    choose->setAutoDefault(false);
    connect(choose, &QPushButton::clicked, this, &BatchDialog::choose_folder);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_folder, 1);
    row->addWidget(choose);
    auto* const form = new QFormLayout;
    form->addRow(tr("&Report:"), m_reports);
    auto* const label = new QLabel(tr("&Folder:"), this);
    label->setBuddy(m_folder);
    form->addRow(label, row);
    form->addRow(m_pdf);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(m_start, QDialogButtonBox::ActionRole);
    buttons->addButton(m_stop, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &BatchDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_progress);
    layout->addWidget(m_outcome, 1);
    layout->addWidget(buttons);
}

void BatchDialog::choose_folder() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Folder for the reports"), m_folder->text());
    if (!folder.isEmpty()) m_folder->setText(folder);
}

bool BatchDialog::is_running() const {
    return m_stop->isEnabled();
}

bool BatchDialog::is_pdf() const {
    return m_pdf->isChecked();
}

void BatchDialog::start() {
    const QString folder = m_folder->text();
    if (folder.isEmpty() || !QDir().mkpath(folder)) {
        return m_outcome->setPlainText(
            tr("Choose a folder for the reports that can be written to."));
    }
    m_outcome->clear();
    m_next = m_done = 0;
    m_waiting.clear();
    m_progress->setValue(0);
    m_start->setEnabled(false);
    m_stop->setEnabled(true);
    m_stop->setFocus();
    m_timer->start(0);
}

void BatchDialog::stop() {
    m_maker->Stop();
    finish(tr("Stopped. %n report(s) are in the folder.", nullptr, static_cast<int>(m_done)));
}

void BatchDialog::step() {
    QElapsedTimer clock;
    clock.start();
    while (m_next < m_cases.size() && clock.elapsed() < cStepMilliseconds) {
        if (m_maker->IsBusy() && m_waiting.size() >= cPagesAtOnce) return;
        write_report(m_cases[m_next++]);
        m_progress->setValue(static_cast<int>(m_next));
        if (m_waiting.size() >= cPagesAtOnce) make_pages();
    }
    if (m_next < m_cases.size() || m_maker->IsBusy()) return;
    if (!m_waiting.isEmpty()) return make_pages();
    finish(tr("%n report(s) are in the folder.", nullptr, static_cast<int>(m_done)));
}

void BatchDialog::write_report(const CaseSummary& summary) {
    const QString label = shown(std::string_view(summary.label));
    if (const std::string fault = respondentIdFault(summary.label); !fault.empty()) {
        return leave_out(label, shown(std::string_view(fault)));
    }
    const QString name = label + ".rtf";
    const QString path = is_pdf() ? m_private.PathOf(name) : QDir(m_folder->text()).filePath(name);
    try {
        const CaseContents contents = readContents(m_store, summary, m_questionnaire);
        Scores scores;
        m_scorer.ScoreWhatCan(contents.respondent, scores);
        m_writer.SetRespondent(contents.respondent, scores);
        writeReport(m_writer, static_cast<std::size_t>(m_reports->currentIndex()), path);
    } catch (const std::exception& fault) {
        return leave_out(label, messageOf(fault));
    }
    if (is_pdf()) {
        m_waiting += path;
    } else {
        ++m_done;
    }
}

void BatchDialog::make_pages() {
    if (!m_maker->IsBusy()) m_maker->Make(std::exchange(m_waiting, {}), m_private.PathOf({}));
}

void BatchDialog::take_pages(const QStringList& pdfs, const QStringList& failed) {
    for (const QString& pdf : pdfs) {
        const QFileInfo made(pdf);
        const QString fault = copyWhole(pdf, QDir(m_folder->text()).filePath(made.fileName()));
        if (fault.isEmpty()) {
            ++m_done;
        } else {
            leave_out(made.completeBaseName(), fault);
        }
        QFile::remove(pdf);
        QFile::remove(m_private.PathOf(made.completeBaseName() + ".rtf"));
    }
    for (const QString& rtf : failed) {
        leave_out(QFileInfo(rtf).completeBaseName(),
                  tr("LibreOffice has made no pages of this report."));
        QFile::remove(rtf);
    }
}

void BatchDialog::leave_out(const QString& label, const QString& reason) {
    m_outcome->appendPlainText(label + ": " + reason);
}

void BatchDialog::finish(const QString& outcome) {
    m_timer->stop();
    m_outcome->appendPlainText(outcome);
    m_start->setEnabled(true);
    m_stop->setEnabled(false);
}

void BatchDialog::reject() {
    if (is_running()) stop();
    QDialog::reject();
}

}  // namespace tessalink::desk
