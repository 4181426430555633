#include "apps/desk/windows/ReportDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

namespace {

/// A page can be read at this size, and the window fits a small screen.
constexpr QSize cReportSize(820, 680);

}  // namespace

ReportDialog::ReportDialog(QWidget* parent)
    : QDialog(parent), m_page(new ReportPage(this)), m_messages(new MessageBar(this)) {
    setObjectName("reportDialog");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(cReportSize);
    m_rtf = add_button("saveRtf", tr("Save as R&TF..."), &ReportPage::SaveRtf);
    m_pdf = add_button("savePdf", tr("Save as P&DF..."), &ReportPage::SavePdf);
    m_print = add_button("print", tr("&Print..."), &ReportPage::Print);
    auto* const close = new QPushButton(tr("&Close"), this);
    close->setObjectName("close");
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* const row = new QHBoxLayout;
    for (QPushButton* const button : {m_rtf, m_pdf, m_print}) row->addWidget(button);
    row->addStretch(1);
    row->addWidget(close);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_messages);
    layout->addWidget(m_page, 1);
    layout->addLayout(row);
    connect(m_page, &ReportPage::changed, this, &ReportDialog::update_buttons);
    connect(m_page, &ReportPage::told, this, &ReportDialog::tell);
    connect(this, &QDialog::finished, m_page, &ReportPage::Clear);
    update_buttons();
}

QPushButton* ReportDialog::add_button(const char* name, const QString& text,
                                      void (ReportPage::*act)()) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, m_page, act);
    return button;
}

void ReportDialog::Show(const CaseSession& session) {
    setWindowTitle(tr("Report of %1").arg(shown(std::string_view(session.GetSummary().label))));
    m_messages->Clear();
    m_page->Show(session);
    show();
    raise();
    activateWindow();
}

void ReportDialog::update_buttons() {
    m_rtf->setEnabled(m_page->HasReport());
    m_pdf->setEnabled(m_page->HasPages());
    m_print->setEnabled(m_page->HasPages());
}

void ReportDialog::tell(const QString& text, bool isFault) {
    m_messages->Say(isFault ? MessageBar::Kind::Fault : MessageBar::Kind::Information, text);
}

}  // namespace tessalink::desk
