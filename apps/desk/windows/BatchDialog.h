#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/session/CaseContents.h"
#include "apps/desk/windows/PrivateFolder.h"
#include "questionnaire/RespondentReports.h"
#include "questionnaire/Scorer.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTimer;

namespace tessalink::desk {

class PageMaker;

/// Writes a report of each of several cases of one questionnaire into a folder, as RTF or PDF.
class BatchDialog : public QDialog {
    Q_OBJECT

public:
    /// The cases must have one questionnaire. The store must outlive the dialog.
    BatchDialog(CaseStore& store, std::vector<CaseSummary> cases, QWidget* parent = nullptr);
    ~BatchDialog() override;

    /// Stops what is under way first.
    void reject() override;

private:
    void set_up();
    void choose_folder();
    void start();
    void stop();
    /// Some cases, or the outcome when all are done; the window stays usable between.
    void step();
    void write_report(const CaseSummary& summary);
    void make_pages();
    void take_pages(const QStringList& pdfs, const QStringList& failed);
    void finish(const QString& outcome);
    void leave_out(const QString& label, const QString& reason);
    bool is_running() const;
    bool is_pdf() const;

    CaseStore& m_store;
    std::vector<CaseSummary> m_cases;
    Questionnaire m_questionnaire;
    Scorer m_scorer;
    RespondentReports m_writer;
    PrivateFolder m_private;
    PageMaker* m_maker;
    QTimer* m_timer;
    QComboBox* m_reports;
    QLineEdit* m_folder;
    QCheckBox* m_pdf;
    QProgressBar* m_progress;
    QPlainTextEdit* m_outcome;
    QPushButton* m_start;
    QPushButton* m_stop;
    std::size_t m_next = 0;  ///< the case to come
    std::size_t m_done = 0;  ///< reports that are in the folder
    QStringList m_waiting;   ///< RTF files of which pages are to be made
};

}  // namespace tessalink::desk
