#pragma once

#include <QDialog>

#include "apps/desk/windows/MessageBar.h"
#include "apps/desk/windows/ReportPage.h"

class QPushButton;

namespace tessalink::desk {

/// A window with the reports of a case, beside the one in which it is keyed.
class ReportDialog : public QDialog {
    Q_OBJECT

public:
    explicit ReportDialog(QWidget* parent = nullptr);

    /// Shows the reports of the case as it is now.
    void Show(const CaseSession& session);
    ReportPage& Page() { return *m_page; }

private:
    QPushButton* add_button(const char* name, const QString& text, void (ReportPage::*act)());
    void update_buttons();
    void tell(const QString& text, bool isFault);

    ReportPage* m_page;
    MessageBar* m_messages;
    QPushButton* m_rtf;
    QPushButton* m_pdf;
    QPushButton* m_print;
};

}  // namespace tessalink::desk
