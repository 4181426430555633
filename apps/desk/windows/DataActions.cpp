#include "apps/desk/windows/DataActions.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <algorithm>
#include <filesystem>

#include "apps/desk/session/CaseTables.h"
#include "apps/desk/windows/BatchDialog.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/ImportDialog.h"
#include "apps/desk/windows/MainWindow.h"
#include "apps/desk/windows/ReportDialog.h"
#include "apps/desk/windows/ReportFiles.h"
#include "questionnaire/FhirResponses.h"

namespace tessalink::desk {

DataActions::DataActions(MainWindow& window) : QObject(&window), m_window(window) {
    add_actions();
    connect(&window, &MainWindow::stateChanged, this, &DataActions::update_actions);
    update_actions();
}

void DataActions::add_actions() {
    QMenu& report = m_window.ReportMenu();
    add(report, ReportOfCase, "showReport", tr("&Show the report"), QKeySequence(tr("Ctrl+R")),
        &DataActions::ShowReport);
    add(report, Reports, "batchReports", tr("Reports of se&veral cases..."),
        QKeySequence(tr("Ctrl+Shift+R")), &DataActions::ask_reports);
    QMenu& data = m_window.DataMenu();
    add(data, ImportTable, "import", tr("&Import responses..."), QKeySequence(tr("Ctrl+I")),
        &DataActions::ask_import);
    data.addSeparator();
    add(data, Scores, "exportScores", tr("Export &scores..."), QKeySequence(tr("Ctrl+E")),
        &DataActions::ask_scores);
    add(data, Case, "exportCase", tr("Export this case as &FHIR..."), {}, &DataActions::ask_case);
    data.addSeparator();
    add(data, Copy, "saveCopy", tr("Save a &copy of the file..."), {}, &DataActions::ask_copy);
}

QAction* DataActions::add(QMenu& menu, Act act, const char* name, const QString& text,
                          const QKeySequence& keys, void (DataActions::*run)()) {
    auto* const action = new QAction(text, &menu);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, run);
    menu.addAction(action);
    m_actions[act] = action;
    return action;
}

void DataActions::update_actions() {
    const bool hasFile = m_window.Store() != nullptr;
    const bool hasCase = m_window.Session() != nullptr;
    const bool mayWrite = hasFile && m_window.Store()->GetAccess() == CaseStore::Access::Write;
    m_actions[ReportOfCase]->setEnabled(hasCase);
    m_actions[Reports]->setEnabled(hasFile);
    m_actions[ImportTable]->setEnabled(mayWrite);
    m_actions[Scores]->setEnabled(hasFile);
    m_actions[Case]->setEnabled(hasCase);
    m_actions[Copy]->setEnabled(hasFile);
}

std::vector<CaseSummary> DataActions::chosen() const {
    std::vector<CaseId> ids = m_window.SelectedCases();
    // One row is always selected, whether it is meant or not.
    if (m_window.Session() == nullptr && ids.size() < 2) ids = m_window.ShownCases();
    std::vector<CaseSummary> cases;
    cases.reserve(ids.size());
    for (const CaseId id : ids) cases.push_back(m_window.Store()->Summary(id));
    return cases;
}

std::optional<std::vector<CaseSummary>> DataActions::chosen_alike() {
    if (!m_window.FinishTyping()) return std::nullopt;
    std::vector<CaseSummary> cases;
    if (!m_window.Try([&] { cases = chosen(); })) return std::nullopt;
    if (cases.empty()) {
        m_window.Say(MessageBar::Kind::Information, tr("There are no cases to choose from."));
        return std::nullopt;
    }
    const bool areAlike = std::ranges::all_of(cases, [&](const CaseSummary& summary) {
        return summary.questionnaire == cases.front().questionnaire;
    });
    if (areAlike) return cases;
    m_window.Say(MessageBar::Kind::Warning,
                 tr("The cases have several questionnaires: choose one in the list first."));
    return std::nullopt;
}

QString DataActions::ask_name(const QString& title, const QString& proposed,
                              const QString& filter) const {
    return QFileDialog::getSaveFileName(&m_window, title, proposed, filter);
}

void DataActions::ShowReport() {
    if (m_window.Session() == nullptr || !m_window.FinishTyping()) return;
    if (!m_report) m_report = new ReportDialog(&m_window);
    m_window.Try([this] { m_report->Show(*m_window.Session()); });
}

void DataActions::ask_reports() {
    auto cases = chosen_alike();
    if (!cases) return;
    m_window.Try([&] { BatchDialog(*m_window.Store(), std::move(*cases), &m_window).exec(); });
}

void DataActions::ask_import() {
    const QString file = QFileDialog::getOpenFileName(
        &m_window, tr("Import responses"), {},
        tr("Tables of responses and FHIR resources (*.csv *.txt *.tsv *.json *.ndjson);;All files "
           "(*)"));
    if (!file.isEmpty()) Import(file);
}

void DataActions::Import(const QString& file) {
    m_window.Try([&] {
        ImportDialog dialog(*m_window.Store(), file, &m_window);
        dialog.exec();
        if (!dialog.Added().empty()) m_window.ReadCases();
    });
}

void DataActions::ask_scores() {
    const QString file =
        ask_name(tr("Export scores"), QStringLiteral("scores.csv"), tr("Tables (*.csv)"));
    if (!file.isEmpty()) ExportScores(file);
}

void DataActions::ExportScores(const QString& file) {
    const auto cases = chosen_alike();
    if (!cases) return;
    m_window.Try([&] {
        WholeFile output = outputFile(file);
        const std::vector<LeftOut> leftOut =
            writeScores(*m_window.Store(), cases->front().questionnaire, *cases, output);
        output.Commit();
        if (leftOut.empty()) {
            m_window.Say(MessageBar::Kind::Information, tr("The scores of %n case(s) are in %1.",
                                                           nullptr, static_cast<int>(cases->size()))
                                                            .arg(file));
            return;
        }
        QStringList lines = {tr("Left out of %1:").arg(file)};
        for (const LeftOut& one : leftOut) {
            lines +=
                shown(std::string_view(one.label)) + ": " + shown(std::string_view(one.reason));
        }
        m_window.Say(MessageBar::Kind::Warning, lines.join('\n'));
    });
}

void DataActions::ask_case() {
    const QString label = shown(std::string_view(m_window.Session()->GetSummary().label));
    const QString file = ask_name(tr("Export the case"), label + ".json", tr("FHIR (*.json)"));
    if (!file.isEmpty()) ExportCase(file);
}

void DataActions::ExportCase(const QString& file) {
    if (!m_window.FinishTyping()) return;
    m_window.Try([&] {
        const CaseSession& session = *m_window.Session();
        const std::string resource =
            writeFhirResponse(session.GetQuestionnaire(), session.GetRespondent()) + '\n';
        WholeFile output = outputFile(file);
        output.Write(resource.data(), resource.size());
        output.Commit();
        m_window.Say(MessageBar::Kind::Information, tr("The case is in %1.").arg(file));
    });
}

void DataActions::ask_copy() {
    const QString file =
        ask_name(tr("Save a copy of the file"), {}, tr("Files of cases (*.cases)"));
    if (!file.isEmpty()) SaveCopy(file);
}

void DataActions::SaveCopy(const QString& file) {
    if (!m_window.FinishTyping()) return;
    if (QFileInfo(file) == QFileInfo(shown(std::string_view(m_window.Store()->GetPath())))) {
        return m_window.Say(MessageBar::Kind::Warning,
                            tr("This is the file itself: choose another name for the copy."));
    }
    m_window.Try([&] {
        // The user has agreed to replace a file of this name; it stays until the copy is whole.
        const QString made = QFile::exists(file) ? file + ".new" : file;
        const std::vector<std::string> missing = m_window.Store()->CopyTo(utf8Of(made));
        if (made != file) std::filesystem::rename(utf8Of(made), utf8Of(file));
        if (missing.empty()) {
            return m_window.Say(MessageBar::Kind::Information, tr("The copy is in %1.").arg(file));
        }
        QStringList lines = {tr("The copy is in %1. It lacks what can't be read:").arg(file)};
        for (const std::string& one : missing) lines += shown(std::string_view(one));
        m_window.Say(MessageBar::Kind::Warning, lines.join('\n'));
    });
}

}  // namespace tessalink::desk
