#pragma once

#include <QWidget>
#include <cstddef>

#include "apps/desk/session/CaseSession.h"
#include "apps/desk/windows/PrivateFolder.h"

class QComboBox;
class QLabel;
class QPdfDocument;
class QPdfView;
class QPushButton;
class QStackedLayout;

namespace tessalink::desk {

class PageMaker;

/// The reports of a case: the pages of the one that is chosen, which can be saved and printed.
class ReportPage : public QWidget {
    Q_OBJECT

public:
    explicit ReportPage(QWidget* parent = nullptr);
    ~ReportPage() override;

    /// Shows the reports of a case as it is now. Nothing is kept of the session.
    void Show(const CaseSession& session);
    /// Forgets the case, and removes its pages.
    void Clear();
    /// Whether a report is there to be saved.
    bool HasReport() const { return !m_rtf.isEmpty(); }
    /// Whether its pages are there to be saved as PDF and printed.
    bool HasPages() const;

    void SaveRtf();
    void SavePdf();
    void Print();
    /// Opens the report in the system's program for RTF.
    void OpenElsewhere();
    /// What F6 leads to.
    QList<QWidget*> Panes() const;

Q_SIGNALS:
    /// What was done, or went wrong and what to do.
    void told(const QString& text, bool isFault);
    /// HasReport or HasPages has changed.
    void changed();

private:
    struct Case;

    void set_up();
    void choose(int report);
    void show_pages(const QStringList& pdfs);
    void say(const QString& text);
    QString ask_name(const QString& title, const QString& ending);
    void save(const QString& file, const QString& title, const QString& ending);

    PrivateFolder m_folder;
    PageMaker* m_maker;
    QComboBox* m_reports;
    QPushButton* m_elsewhere;
    QPdfDocument* m_document;
    QPdfView* m_view;
    QLabel* m_text;
    QStackedLayout* m_pages;
    std::unique_ptr<Case> m_case;
    QString m_rtf;  ///< in the private folder; empty: none
    QString m_pdf;
    int m_number = 0;  ///< of the report: each has names of its own, so that none is mixed up
};

}  // namespace tessalink::desk
