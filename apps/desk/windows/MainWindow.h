#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseSession.h"
#include "apps/desk/windows/MessageBar.h"

class QAction;
class QLabel;
class QMenu;
class QSettings;
class QStackedWidget;

namespace tessalink::desk {

class CaseListPage;
class CasePage;

/// The desk's window: a file of cases, the list of them, and the case that is worked on. What the
/// program has to say stands in a line above the page; boxes only ask before something that can't
/// be undone.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `settings` hold the state of the window and the files used last, and must outlive it.
    explicit MainWindow(QSettings& settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Files. They say what is wrong and return false then; the file before stays open.
    bool CreateFile(const QString& path);
    bool OpenFile(const QString& path);
    /// False when something that is being typed is refused, or the user wants to stay.
    bool CloseFile();

    // Cases of the open file.
    bool OpenCase(CaseId id);
    /// A new case of a questionnaire, which is opened.
    bool AddCase(const Questionnaire& questionnaire, const QString& label);
    /// Scores the open or selected case by the version of its questionnaire in a folder from now
    /// on, and opens it.
    bool ScoreByFolder(const QString& folder);
    /// Without asking.
    bool DeleteCases(const std::vector<CaseId>& cases);
    /// Goes back from a case to the list.
    bool ShowList();
    /// Reads the list anew: cases were added behind its back.
    void ReadCases();

    /// The open file; null without one.
    CaseStore* Store() { return m_store.get(); }
    /// The case that is open; null when the list shows.
    CaseSession* Session();
    /// The case that is open, or those that are selected in the list, in its order.
    std::vector<CaseId> SelectedCases() const;
    /// All that the list shows, in its order.
    std::vector<CaseId> ShownCases() const;
    /// Keeps what is being typed; false when it is refused. Before anything that reads the case.
    bool FinishTyping();

    void Say(MessageBar::Kind kind, const QString& text);
    /// Runs an act; what it throws is said in the line above the page. False then.
    bool Try(const std::function<void()>& act);

    // Menus for acts that are added: reports, import and export.
    QMenu& ReportMenu() { return *m_reportMenu; }
    QMenu& DataMenu() { return *m_dataMenu; }

Q_SIGNALS:
    /// A file, case or selection is another one, or a case has changed: what actions depend on.
    void stateChanged();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    using Slot = void (MainWindow::*)();
    struct ActionSpec;

    // Menus and what their actions do.
    void make_menus();
    void make_file_menu();
    void make_edit_menu();
    void make_case_menu();
    void make_view_menu();
    void make_toolbar();
    QMenu* make_menu(const char* name, const char* title, std::span<const ActionSpec> actions);
    QAction* action(const char* name) const;
    void update_actions();
    void update_undo();
    void update_title();
    void choose_new_file();
    void choose_file();
    void close_file();
    void leave();
    void ask_initials();
    void begin_case();
    void open_selected();
    void show_list();
    void next_case();
    void previous_case();
    void step_case(int step);
    void toggle_state();
    void choose_version();
    std::optional<std::string> questionnaire_of(CaseId id);
    void ask_delete();
    void show_trail();
    void find();
    void undo();
    void redo();
    void begin_second_pass();
    void end_second_pass();
    void focus_form();
    void focus_answers();
    void next_pane();
    void previous_pane();
    void move_pane(int step);
    void about();

    bool open_session(CaseId id);
    void lead_messages();
    void make_start_page();
    void take_store(CaseStore store);
    CaseStoreOptions options() const;
    void remember_file(const QString& path);
    void fill_recent();
    void case_changed();
    void sync();
    bool sync_before_closing();
    bool passes_undo(QEvent& event) const;

    QSettings& m_settings;
    std::unique_ptr<CaseStore> m_store;
    MessageBar* m_messages;
    QStackedWidget* m_pages;
    QWidget* m_start = nullptr;
    CaseListPage* m_list;
    CasePage* m_case;
    QLabel* m_fileState;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_reportMenu = nullptr;
    QMenu* m_dataMenu = nullptr;
    QTimer m_syncTimer;
    /// What shows messages of the library when there is no such window.
    std::function<int(const char* text, unsigned flags)> m_messageBox;
};

}  // namespace tessalink::desk
