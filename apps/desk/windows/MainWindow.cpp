#include "apps/desk/windows/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desk/windows/CaseListPage.h"
#include "apps/desk/windows/CasePage.h"
#include "apps/desk/windows/DataActions.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/StoreTexts.h"
#include "platform/base/HostServices.h"
#include "platform/files/FilePlace.h"

namespace tessalink::desk {

namespace {

constexpr QSize cFirstSize(1180, 760);
/// How long nobody keys before what was keyed is written to the disk.
constexpr int cQuietMilliseconds = 1000;

}  // namespace

MainWindow::MainWindow(QSettings& settings, QWidget* parent)
    : QMainWindow(parent),
      m_settings(settings),
      m_messages(new MessageBar),
      m_pages(new QStackedWidget),
      m_list(new CaseListPage),
      m_case(new CasePage),
      m_fileState(new QLabel) {
    setObjectName("deskWindow");
    resize(cFirstSize);
    auto* const middle = new QWidget;
    middle->setObjectName("middle");
    auto* const column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_messages);
    column->addWidget(m_pages, 1);
    setCentralWidget(middle);
    make_start_page();
    m_pages->setObjectName("pages");
    m_pages->addWidget(m_start);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_case);
    m_fileState->setObjectName("fileState");
    statusBar()->addPermanentWidget(m_fileState);
    make_menus();
    make_toolbar();
    new DataActions(*this);
    connect(m_list, &CaseListPage::opened, this, &MainWindow::OpenCase);
    connect(m_list, &CaseListPage::selectionChanged, this, &MainWindow::update_actions);
    connect(m_case, &CasePage::changed, this, &MainWindow::case_changed);
    connect(m_case, &CasePage::passChanged, this, &MainWindow::update_actions);
    connect(m_case, &CasePage::said, this, &MainWindow::Say);
    m_syncTimer.setSingleShot(true);
    m_syncTimer.setInterval(cQuietMilliseconds);
    connect(&m_syncTimer, &QTimer::timeout, this, &MainWindow::sync);
    lead_messages();
    qApp->installEventFilter(this);
    restoreGeometry(m_settings.value("window/geometry").toByteArray());
    restoreState(m_settings.value("window/state").toByteArray());
    m_case->RestoreState(m_settings);
    m_start->setFocus();
    update_actions();
}

MainWindow::~MainWindow() {
    HostServices services = hostServices();
    services.messageBox = m_messageBox;
    setHostServices(std::move(services));
    m_case->Close();
}

/// Messages of the library's lists, which would stop the keys, are said in the line instead.
void MainWindow::lead_messages() {
    HostServices services = hostServices();
    m_messageBox = services.messageBox;
    services.messageBox = [this](const char* text, UINT flags) {
        constexpr UINT cButtons = 0x0F;
        if ((flags & cButtons) != MB_OK) return m_messageBox(text, flags);
        tessalink::MessageBeep(MB_ICONHAND);
        Say(MessageBar::Kind::Warning, shown(CString(text)));
        return IDOK;
    };
    setHostServices(std::move(services));
}

void MainWindow::make_start_page() {
    m_start = new QWidget;
    m_start->setObjectName("startPage");
    auto* const create = new QPushButton(tr("New file of cases..."));
    create->setObjectName("startNew");
    auto* const open = new QPushButton(tr("Open a file of cases..."));
    open->setObjectName("startOpen");
    auto* const column = new QVBoxLayout(m_start);
    column->addStretch();
    for (QPushButton* const button : {create, open}) {
        button->setMinimumWidth(fontMetrics().averageCharWidth() * 36);
        column->addWidget(button, 0, Qt::AlignHCenter);
    }
    column->addStretch();
    m_start->setFocusProxy(open);
    connect(create, &QPushButton::clicked, this, &MainWindow::choose_new_file);
    connect(open, &QPushButton::clicked, this, &MainWindow::choose_file);
}

// Saying and trying.

void MainWindow::Say(MessageBar::Kind kind, const QString& text) {
    m_messages->Say(kind, text);
}

bool MainWindow::Try(const std::function<void()>& act) {
    try {
        act();
        return true;
    } catch (const std::exception& error) {
        Say(MessageBar::Kind::Fault, messageOf(error));
        return false;
    }
}

// Files.

CaseStoreOptions MainWindow::options() const {
    CaseStoreOptions options;
    options.initials = utf8Of(m_settings.value("initials").toString());
    if (options.initials.empty()) {
        options.initials = utf8Of(shown(accountName()).left(2).toUpper());
    }
    return options;
}

bool MainWindow::CreateFile(const QString& path) {
    return Try([&] {
        CaseStore store = CaseStore::Create(utf8Of(path), options());
        if (CloseFile()) take_store(std::move(store));
    });
}

bool MainWindow::OpenFile(const QString& path) {
    // The same file again is no second desk.
    if (m_store != nullptr && QFileInfo(shown(m_store->GetPath())) == QFileInfo(path)) return true;
    return Try([&] {
        CaseStore store = CaseStore::Open(utf8Of(path), options());
        if (CloseFile()) take_store(std::move(store));
    });
}

void MainWindow::take_store(CaseStore store) {
    m_store = std::make_unique<CaseStore>(std::move(store));
    m_messages->Clear();
    ReadCases();
    m_pages->setCurrentWidget(m_list);
    m_list->setFocus();
    remember_file(shown(m_store->GetPath()));
    const CaseStore::Notice& notice = m_store->GetNotice();
    if (!notice.text.empty()) Say(MessageBar::Kind::Warning, noticeText(notice));
    update_actions();
}

bool MainWindow::CloseFile() {
    if (m_store == nullptr) return true;
    if (!FinishTyping() || !sync_before_closing()) return false;
    m_syncTimer.stop();
    m_case->Close();
    m_list->Clear();
    m_store.reset();
    m_messages->Clear();
    m_pages->setCurrentWidget(m_start);
    update_actions();
    return true;
}

/// False when what was keyed is not on the disk and the user wants to see to that.
bool MainWindow::sync_before_closing() {
    try {
        m_store->Sync();
        return true;
    } catch (const std::exception& error) {
        const QString text = tr("%1\n\nClose all the same?").arg(messageOf(error));
        return QMessageBox::warning(this, tr("Not on the disk yet"), text,
                                    QMessageBox::Close | QMessageBox::Cancel,
                                    QMessageBox::Cancel) == QMessageBox::Close;
    }
}

void MainWindow::sync() {
    if (m_store != nullptr) Try([this] { m_store->Sync(); });
}

// Cases.

void MainWindow::ReadCases() {
    if (m_store != nullptr) Try([this] { m_list->ReadCases(*m_store); });
    update_actions();
}

bool MainWindow::open_session(CaseId id) {
    try {
        m_case->Open(*m_store, id);
        return true;
    } catch (const CaseStoreError& error) {
        QString text = messageOf(error);
        if (error.GetKind() == CaseStoreError::Kind::NoQuestionnaire) {
            text += '\n' + tr("Case > Score by another version takes it from a folder.");
        }
        Say(MessageBar::Kind::Fault, text);
    } catch (const std::exception& error) {
        Say(MessageBar::Kind::Fault, messageOf(error));
    }
    return false;
}

bool MainWindow::OpenCase(CaseId id) {
    if (m_store == nullptr || !FinishTyping()) return false;
    m_messages->Clear();
    const bool isOpen = open_session(id);
    if (isOpen) {
        m_list->Select(id);
        m_pages->setCurrentWidget(m_case);
        m_case->FocusForm();
    }
    update_actions();
    return isOpen;
}

bool MainWindow::AddCase(const Questionnaire& questionnaire, const QString& label) {
    if (m_store == nullptr || !FinishTyping()) return false;
    CaseId id = 0;
    const bool isAdded = Try([&] {
        id = m_store->AddCase(questionnaire, utf8Of(label));
        m_list->Update(*m_store, m_store->Summary(id));
    });
    if (isAdded) m_syncTimer.start();
    return isAdded && OpenCase(id);
}

bool MainWindow::DeleteCases(const std::vector<CaseId>& cases) {
    if (m_store == nullptr) return false;
    const CaseSession* const session = Session();
    const bool isOpen =
        session != nullptr && std::count(cases.begin(), cases.end(), session->GetId()) > 0;
    if (isOpen) {
        m_case->Close();
        m_pages->setCurrentWidget(m_list);
        m_list->setFocus();
    }
    const bool isDone = Try([&] {
        for (const CaseId id : cases) {
            m_store->Delete(id);
            m_list->Remove(id);
        }
    });
    update_actions();
    return isDone;
}

bool MainWindow::ShowList() {
    if (m_store == nullptr || !FinishTyping()) return false;
    if (CaseSession* const session = Session()) {
        const CaseSummary summary = session->GetSummary();
        m_case->Close();
        m_list->Update(*m_store, summary);
        sync();
    }
    m_pages->setCurrentWidget(m_list);
    m_list->setFocus();
    update_actions();
    return true;
}

CaseSession* MainWindow::Session() {
    return m_case->Session();
}

std::vector<CaseId> MainWindow::SelectedCases() const {
    if (const CaseSession* const session = m_case->Session()) return {session->GetId()};
    return m_list->SelectedCases();
}

std::vector<CaseId> MainWindow::ShownCases() const {
    return m_list->ShownCases();
}

bool MainWindow::FinishTyping() {
    return m_case->FinishTyping();
}

void MainWindow::case_changed() {
    m_syncTimer.start();
    m_messages->ClearWarning();
    update_undo();
    update_title();
    Q_EMIT stateChanged();
}

// Events.

void MainWindow::closeEvent(QCloseEvent* event) {
    m_settings.setValue("window/geometry", saveGeometry());
    m_settings.setValue("window/state", saveState());
    m_case->SaveState(m_settings);
    event->setAccepted(CloseFile());
}

/// Boxes take undo and redo for what is being typed; when there is none of that, it is the case's.
bool MainWindow::passes_undo(QEvent& event) const {
    const auto& key = static_cast<QKeyEvent&>(event);
    const bool isUndo = key.matches(QKeySequence::Undo);
    if (!isUndo && !key.matches(QKeySequence::Redo)) return false;
    const auto* const box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    return box != nullptr && m_case->isAncestorOf(box) &&
           !(isUndo ? m_case->IsTyping(box->text()) : box->isRedoAvailable());
}

bool MainWindow::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && object == QApplication::focusWidget() &&
        passes_undo(*event)) {
        event->ignore();
        return true;
    }
    return QMainWindow::eventFilter(object, event);
}

}  // namespace tessalink::desk
