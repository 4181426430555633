// The menus of the main window, and what their actions do.
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QToolBar>
#include <algorithm>

#include "apps/desk/windows/CaseListPage.h"
#include "apps/desk/windows/CasePage.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/MainWindow.h"
#include "apps/desk/windows/NewCaseDialog.h"
#include "apps/desk/windows/QuestionnaireFaultText.h"
#include "apps/desk/windows/TrailDialog.h"

namespace tessalink::desk {

namespace {

constexpr int cMostRecent = 8;
constexpr int cMostInitials = 8;
constexpr const char* cNeeds = "needs";

/// When an action can be worked: all of its needs must be met.
enum Need : unsigned {
    cAlways = 0,
    cFile = 1,       ///< a file is open
    cWriting = 2,    ///< it can be written
    cCase = 4,       ///< a case is open
    cList = 8,       ///< the list shows
    cSelected = 16,  ///< a case is open, or some are selected
    cPass = 32,      ///< in a second pass
    cNoPass = 64,    ///< not in a second pass
};

}  // namespace

/// An action; one without a text is a line between others.
struct MainWindow::ActionSpec {
    const char* name;
    const char* text;
    QKeySequence shortcut;
    unsigned needs;
    Slot act;
};

// Making.

QMenu* MainWindow::make_menu(const char* name, const char* title,
                             std::span<const ActionSpec> actions) {
    QMenu* const menu = menuBar()->addMenu(tr(title));
    menu->setObjectName(name);
    for (const ActionSpec& spec : actions) {
        if (spec.text == nullptr) {
            menu->addSeparator();
            continue;
        }
        QAction* const made = menu->addAction(tr(spec.text));
        made->setObjectName(spec.name);
        made->setShortcut(spec.shortcut);
        made->setProperty(cNeeds, spec.needs);
        connect(made, &QAction::triggered, this, spec.act);
    }
    return menu;
}

void MainWindow::make_file_menu() {
    const ActionSpec actions[] = {
        {"newFile", QT_TR_NOOP("&New file of cases..."), QKeySequence("Ctrl+Shift+N"), cAlways,
         &MainWindow::choose_new_file},
        {"openFile", QT_TR_NOOP("&Open a file of cases..."), QKeySequence::Open, cAlways,
         &MainWindow::choose_file},
        {nullptr, nullptr, {}, 0, nullptr},
        {"initials", QT_TR_NOOP("Your &initials..."), {}, cAlways, &MainWindow::ask_initials},
        {nullptr, nullptr, {}, 0, nullptr},
        {"closeFile", QT_TR_NOOP("&Close the file"), QKeySequence::Close, cFile,
         &MainWindow::close_file},
        {"quit", QT_TR_NOOP("&Quit"), QKeySequence("Ctrl+Q"), cAlways, &MainWindow::leave},
    };
    QMenu* const menu = make_menu("fileMenu", QT_TR_NOOP("&File"), actions);
    m_recentMenu = new QMenu(tr("&Recent files"), this);
    m_recentMenu->setObjectName("recentMenu");
    menu->insertMenu(menu->actions().at(2), m_recentMenu);
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fill_recent);
    fill_recent();
}

void MainWindow::make_edit_menu() {
    const ActionSpec actions[] = {
        {"undo", QT_TR_NOOP("&Undo"), QKeySequence::Undo, cCase | cWriting | cNoPass,
         &MainWindow::undo},
        {"redo", QT_TR_NOOP("&Redo"), QKeySequence::Redo, cCase | cWriting | cNoPass,
         &MainWindow::redo},
        {nullptr, nullptr, {}, 0, nullptr},
        {"find", QT_TR_NOOP("&Find a case"), QKeySequence::Find, cFile, &MainWindow::find},
        {nullptr, nullptr, {}, 0, nullptr},
        {"beginSecondPass", QT_TR_NOOP("&Second keying"), QKeySequence("F2"),
         cCase | cWriting | cNoPass, &MainWindow::begin_second_pass},
        {"endSecondPass", QT_TR_NOOP("&End the second keying"), QKeySequence("F3"), cCase | cPass,
         &MainWindow::end_second_pass},
    };
    make_menu("editMenu", QT_TR_NOOP("&Edit"), actions);
}

void MainWindow::make_case_menu() {
    const ActionSpec actions[] = {
        {"newCase", QT_TR_NOOP("&New case..."), QKeySequence::New, cFile | cWriting,
         &MainWindow::begin_case},
        {"openCase", QT_TR_NOOP("&Open the case"), QKeySequence("Ctrl+Return"), cList | cSelected,
         &MainWindow::open_selected},
        {"showList", QT_TR_NOOP("Back to the &list"), QKeySequence("Ctrl+L"), cCase,
         &MainWindow::show_list},
        {"nextCase", QT_TR_NOOP("Ne&xt case"), QKeySequence("Ctrl+PgDown"), cCase,
         &MainWindow::next_case},
        {"previousCase", QT_TR_NOOP("&Previous case"), QKeySequence("Ctrl+PgUp"), cCase,
         &MainWindow::previous_case},
        {nullptr, nullptr, {}, 0, nullptr},
        {"toggleState", QT_TR_NOOP("The case is &complete"), QKeySequence("Ctrl+D"),
         cCase | cWriting, &MainWindow::toggle_state},
        {"chooseVersion",
         QT_TR_NOOP("Score by another &version..."),
         {},
         cSelected | cWriting,
         &MainWindow::choose_version},
        {"showTrail", QT_TR_NOOP("&Trail..."), QKeySequence("Ctrl+T"), cFile,
         &MainWindow::show_trail},
        {nullptr, nullptr, {}, 0, nullptr},
        {"deleteCases", QT_TR_NOOP("&Delete..."), QKeySequence("Ctrl+Del"), cSelected | cWriting,
         &MainWindow::ask_delete},
    };
    make_menu("caseMenu", QT_TR_NOOP("&Case"), actions);
    action("toggleState")->setCheckable(true);
}

void MainWindow::make_view_menu() {
    const ActionSpec actions[] = {
        {"focusForm", QT_TR_NOOP("The person's &form"), QKeySequence("F7"), cCase,
         &MainWindow::focus_form},
        {"focusAnswers", QT_TR_NOOP("The &answers"), QKeySequence("F8"), cCase,
         &MainWindow::focus_answers},
        {nullptr, nullptr, {}, 0, nullptr},
        {"nextPane", QT_TR_NOOP("&Next part of the window"), QKeySequence("F6"), cFile,
         &MainWindow::next_pane},
        {"previousPane", QT_TR_NOOP("&Previous part of the window"), QKeySequence("Shift+F6"),
         cFile, &MainWindow::previous_pane},
        {nullptr, nullptr, {}, 0, nullptr},
        {"readCases", QT_TR_NOOP("&Read the list anew"), QKeySequence::Refresh, cList,
         &MainWindow::ReadCases},
    };
    make_menu("viewMenu", QT_TR_NOOP("&View"), actions);
}

void MainWindow::make_menus() {
    make_file_menu();
    make_edit_menu();
    make_case_menu();
    m_reportMenu = make_menu("reportMenu", QT_TR_NOOP("&Report"), {});
    m_dataMenu = make_menu("dataMenu", QT_TR_NOOP("&Data"), {});
    make_view_menu();
    const ActionSpec help[] = {
        {"about", QT_TR_NOOP("&About this program"), {}, cAlways, &MainWindow::about}};
    make_menu("helpMenu", QT_TR_NOOP("&Help"), help);
    // Acts are added later; a menu without any does not show.
    for (QMenu* const menu : {m_reportMenu, m_dataMenu}) menu->menuAction()->setVisible(false);
}

void MainWindow::make_toolbar() {
    QToolBar* const bar = addToolBar(tr("Tool bar"));
    bar->setObjectName("toolBar");
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const char* const name : {"showList", "newCase", "undo", "redo", "toggleState"}) {
        bar->addAction(action(name));
    }
}

QAction* MainWindow::action(const char* name) const {
    return findChild<QAction*>(name);
}

// Whether actions can be worked, and what they say.

void MainWindow::update_actions() {
    const bool hasCase = m_case->Session() != nullptr;
    const bool isList = m_pages->currentWidget() == m_list;
    const bool isPass = hasCase && m_case->IsSecondPass();
    unsigned met = 0;
    const auto meet = [&](bool isMet, unsigned need) { met |= isMet ? need : 0; };
    meet(m_store != nullptr, cFile);
    meet(m_store != nullptr && m_store->GetAccess() == CaseStore::Access::Write, cWriting);
    meet(hasCase, cCase);
    meet(isList, cList);
    meet(hasCase || (isList && !m_list->SelectedCases().empty()), cSelected);
    meet(isPass, cPass);
    meet(!isPass, cNoPass);
    for (QAction* const one : findChildren<QAction*>()) {
        const QVariant needs = one->property(cNeeds);
        if (needs.isValid()) one->setEnabled((needs.toUInt() & ~met) == 0);
    }
    for (QMenu* const menu : {m_reportMenu, m_dataMenu}) {
        menu->menuAction()->setVisible(!menu->isEmpty());
    }
    update_undo();
    update_title();
    Q_EMIT stateChanged();
}

void MainWindow::update_undo() {
    QAction* const undoing = action("undo");
    QAction* const redoing = action("redo");
    const bool isWriting = action("newCase")->isEnabled();
    undoing->setEnabled(isWriting && m_case->CanUndo());
    redoing->setEnabled(isWriting && m_case->CanRedo());
    const auto say = [](QAction& one, const QString& text, const QString& what) {
        one.setText(what.isEmpty() ? text : text + ": " + what);
        one.setIconText(QString(text).remove('&'));
    };
    const CaseSession* const session = m_case->Session();
    say(*undoing, tr("&Undo"),
        m_case->CanUndo() ? m_case->StepName(session->UndoStep()) : QString());
    say(*redoing, tr("&Redo"),
        m_case->CanRedo() ? m_case->StepName(session->RedoStep()) : QString());
    action("toggleState")
        ->setChecked(session != nullptr && session->GetSummary().state == CaseState::Complete);
}

void MainWindow::update_title() {
    QString title = tr("Tessalink Desk");
    m_fileState->clear();
    if (m_store != nullptr) {
        const bool isReadOnly = m_store->GetAccess() == CaseStore::Access::ReadOnly;
        title = QFileInfo(shown(m_store->GetPath())).fileName() + " - " + title;
        if (const CaseSession* const session = m_case->Session()) {
            title = shown(session->GetSummary().label) + " - " + title;
        }
        m_fileState->setText(isReadOnly ? tr("Read-only") : shown(m_store->GetInitials()));
    }
    setWindowTitle(title);
}

// File.

void MainWindow::choose_new_file() {
    QString path = QFileDialog::getSaveFileName(this, tr("New file of cases"), {},
                                                tr("Files of cases (*.cases)"));
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += ".cases";
    CreateFile(path);
}

void MainWindow::choose_file() {
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Open a file of cases"), {},
                                     tr("Files of cases (*.cases)") + ";;" + tr("All files (*)"));
    if (!path.isEmpty()) OpenFile(path);
}

void MainWindow::close_file() {
    CloseFile();
}

void MainWindow::leave() {
    close();
}

void MainWindow::remember_file(const QString& path) {
    QStringList files = m_settings.value("recentFiles").toStringList();
    const QString whole = QFileInfo(path).absoluteFilePath();
    files.removeAll(whole);
    files.prepend(whole);
    while (files.size() > cMostRecent) files.removeLast();
    m_settings.setValue("recentFiles", files);
    fill_recent();
}

void MainWindow::fill_recent() {
    m_recentMenu->clear();
    int number = 0;
    for (const QString& path : m_settings.value("recentFiles").toStringList()) {
        QAction* const made = m_recentMenu->addAction(
            QString("&%1  %2").arg(++number).arg(QString(path).replace('&', "&&")));
        made->setObjectName(QString("recent%1").arg(number));
        connect(made, &QAction::triggered, this, [this, path] { OpenFile(path); });
    }
    m_recentMenu->setEnabled(number > 0);
}

void MainWindow::ask_initials() {
    bool isOk = false;
    const QString initials =
        QInputDialog::getText(this, tr("Your initials"),
                              tr("The trail names who has keyed. Your initials:"),
                              QLineEdit::Normal, shown(options().initials), &isOk)
            .trimmed()
            .left(cMostInitials);
    if (!isOk || initials.isEmpty()) return;
    m_settings.setValue("initials", initials);
    if (m_store != nullptr) m_store->SetInitials(utf8Of(initials));
    update_title();
}

// Cases.

void MainWindow::begin_case() {
    if (!FinishTyping()) return;
    const CaseSession* const session = m_case->Session();
    std::optional<NewCaseDialog> dialog;
    const std::string chosen =
        session != nullptr ? session->GetSummary().questionnaire : std::string();
    if (!Try([&] { dialog.emplace(*m_store, chosen, this); })) return;
    if (dialog->exec() != QDialog::Accepted) return;
    std::optional<Questionnaire> questionnaire;
    if (Try([&] { questionnaire = dialog->Chosen(); })) AddCase(*questionnaire, dialog->Label());
}

void MainWindow::open_selected() {
    const std::vector<CaseId> cases = m_list->SelectedCases();
    if (!cases.empty()) OpenCase(cases.front());
}

void MainWindow::show_list() {
    ShowList();
}

void MainWindow::next_case() {
    step_case(1);
}

void MainWindow::previous_case() {
    step_case(-1);
}

void MainWindow::step_case(int step) {
    const std::vector<CaseId> cases = m_list->ShownCases();
    const auto here = std::find(cases.begin(), cases.end(), Session()->GetId());
    const auto there = (here - cases.begin()) + step;
    if (here == cases.end() || there < 0 || there >= std::ssize(cases)) {
        QApplication::beep();
        return;
    }
    const CaseSummary summary = Session()->GetSummary();
    if (!OpenCase(cases[static_cast<std::size_t>(there)])) return;
    m_list->Update(*m_store, summary);
    sync();
}

void MainWindow::toggle_state() {
    const bool isComplete = Session()->GetSummary().state == CaseState::Complete;
    if (FinishTyping()) m_case->SetState(isComplete ? CaseState::Open : CaseState::Complete);
    if (!isComplete) sync();
    update_undo();
}

void MainWindow::choose_version() {
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Folder of the other version"));
    if (!folder.isEmpty() && FinishTyping()) ScoreByFolder(folder);
}

/// Of which questionnaire a case is; nothing when the file doesn't know it any more.
std::optional<std::string> MainWindow::questionnaire_of(CaseId id) {
    const std::string hash = m_store->Summary(id).questionnaire;
    for (const StoredQuestionnaire& stored : m_store->Questionnaires()) {
        if (stored.hash == hash) return stored.id;
    }
    return std::nullopt;
}

bool MainWindow::ScoreByFolder(const QString& folder) {
    const std::vector<CaseId> cases = SelectedCases();
    if (cases.size() != 1) {
        Say(MessageBar::Kind::Warning, tr("Choose one case in the list first."));
        return false;
    }
    try {
        const Questionnaire questionnaire = Questionnaire::Read(pathOf(folder));
        const QString offered = shown(questionnaire.Model().id);
        const std::optional<std::string> own = questionnaire_of(cases.front());
        if (own && shown(*own) != offered) {
            Say(MessageBar::Kind::Warning,
                tr("%1 holds the questionnaire %2, the case is one of %3. Choose a folder of %3.")
                    .arg(folder, offered, shown(*own)));
            return false;
        }
        if (Session() != nullptr) {
            m_case->SetQuestionnaire(questionnaire);
        } else {
            m_store->SetQuestionnaire(cases.front(), questionnaire);
        }
        m_list->Update(*m_store, m_store->Summary(cases.front()));
        m_syncTimer.start();
    } catch (const QuestionnaireFaults& faults) {
        Say(MessageBar::Kind::Fault, faultText(faults));
        return false;
    } catch (const std::exception& error) {
        Say(MessageBar::Kind::Fault, messageOf(error));
        return false;
    }
    if (Session() == nullptr && !OpenCase(cases.front())) return false;
    Say(MessageBar::Kind::Information,
        tr("From now on the case is scored by this version; the trail says so."));
    update_actions();
    return true;
}

void MainWindow::ask_delete() {
    const std::vector<CaseId> cases = SelectedCases();
    if (cases.empty()) return;
    QMessageBox question(this);
    question.setObjectName("deleteQuestion");
    question.setIcon(QMessageBox::Warning);
    question.setTextFormat(Qt::PlainText);
    QString what = tr("Delete %n cases?", nullptr, static_cast<int>(cases.size()));
    if (cases.size() == 1) {
        const bool isKnown = Try([&] {
            what = tr("Delete the case %1?").arg(shown(m_store->Summary(cases.front()).label));
        });
        if (!isKnown) return;
    }
    question.setText(what);
    question.setInformativeText(
        tr("What was keyed is erased from the file and from its trail. This can't be undone."));
    auto* const erase = question.addButton(tr("&Delete"), QMessageBox::DestructiveRole);
    erase->setObjectName("deleteYes");
    question.setDefaultButton(question.addButton(QMessageBox::Cancel));
    question.exec();
    if (question.clickedButton() == erase) DeleteCases(cases);
}

void MainWindow::show_trail() {
    if (!FinishTyping()) return;
    const std::vector<CaseId> cases = SelectedCases();
    const auto id = cases.size() == 1 ? std::optional(cases.front()) : std::nullopt;
    TrailDialog(*m_store, id, this).exec();
}

// Edit and view.

void MainWindow::find() {
    if (ShowList()) m_list->FocusSearch();
}

void MainWindow::undo() {
    m_case->Undo();
}

void MainWindow::redo() {
    m_case->Redo();
}

void MainWindow::begin_second_pass() {
    if (!FinishTyping() || !m_case->BeginSecondPass()) QApplication::beep();
}

void MainWindow::end_second_pass() {
    m_case->EndSecondPass();
}

void MainWindow::focus_form() {
    m_case->FocusForm();
}

void MainWindow::focus_answers() {
    m_case->FocusAnswers();
}

void MainWindow::next_pane() {
    move_pane(1);
}

void MainWindow::previous_pane() {
    move_pane(-1);
}

void MainWindow::move_pane(int step) {
    const bool isCase = m_pages->currentWidget() == m_case;
    const QList<QWidget*> panes = isCase ? m_case->Panes() : m_list->Panes();
    if (panes.isEmpty()) return;
    const QWidget* const focus = QApplication::focusWidget();
    const auto holds = [focus](const QWidget* pane) {
        return focus != nullptr && (pane == focus || pane->isAncestorOf(focus));
    };
    const auto here = std::find_if(panes.begin(), panes.end(), holds);
    const auto count = std::ssize(panes);
    const auto start = here == panes.end() ? (step > 0 ? -1 : count) : here - panes.begin();
    QWidget* const next = panes.at((start + step + count) % count);
    isCase ? m_case->FocusPane(next) : next->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::about() {
    QMessageBox::about(this, tr("About this program"),
                       tr("Tessalink Desk: assessments are keyed, scored and reported. "
                          "Questionnaires are folders of plain files."));
}

}  // namespace tessalink::desk
