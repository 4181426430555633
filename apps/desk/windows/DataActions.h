#pragma once

#include <QObject>
#include <QPointer>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/Case.h"

class QAction;
class QMenu;

namespace tessalink::desk {

class MainWindow;
class ReportDialog;

/// What a window does with whole cases: reports, import, export and copies. Its actions stand in
/// the window's menus.
class DataActions : public QObject {
    Q_OBJECT

public:
    /// The window owns the object.
    explicit DataActions(MainWindow& window);

    // The acts behind the questions for names of files.
    void ShowReport();
    void Import(const QString& file);
    void ExportScores(const QString& file);
    void ExportCase(const QString& file);
    void SaveCopy(const QString& file);

private:
    enum Act { ReportOfCase, Reports, ImportTable, Scores, Case, Copy, cActCount };

    void add_actions();
    QAction* add(QMenu& menu, Act act, const char* name, const QString& text,
                 const QKeySequence& keys, void (DataActions::*run)());
    void update_actions();
    void ask_reports();
    void ask_import();
    void ask_scores();
    void ask_case();
    void ask_copy();
    QString ask_name(const QString& title, const QString& proposed, const QString& filter) const;
    /// The case that is open; in the list those that are selected, when there are several, and
    /// otherwise all that it shows.
    std::vector<CaseSummary> chosen() const;
    /// The same, when they have one questionnaire; otherwise says what to do.
    std::optional<std::vector<CaseSummary>> chosen_alike();

    MainWindow& m_window;
    QPointer<ReportDialog> m_report;
    std::array<QAction*, cActCount> m_actions{};
};

}  // namespace tessalink::desk
