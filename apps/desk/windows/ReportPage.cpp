#include "apps/desk/windows/ReportPage.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfPageRenderer>
#include <QPdfView>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <QStackedLayout>
#include <QUrl>
#include <QVBoxLayout>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/PageMaker.h"
#include "apps/desk/windows/ReportFiles.h"

namespace tessalink::desk {

namespace {

/// Printers have more units, which pages of text and lines do not show.
constexpr int cPrintDpi = 300;

}  // namespace

struct ReportPage::Case {
    Questionnaire questionnaire;
    Respondent respondent;
    Scores scores;
};

ReportPage::ReportPage(QWidget* parent)
    : QWidget(parent),
      m_maker(new PageMaker(m_folder.IsValid() ? m_folder.PathOf({}) : QString(), this)),
      m_reports(new QComboBox(this)),
      m_elsewhere(new QPushButton(tr("&Open in another program"), this)),
      m_document(new QPdfDocument(this)),
      m_view(new QPdfView(this)),
      m_text(new QLabel(this)) {
    setObjectName("reportPage");
    set_up();
    connect(m_reports, &QComboBox::activated, this, &ReportPage::choose);
    connect(m_elsewhere, &QPushButton::clicked, this, &ReportPage::OpenElsewhere);
    connect(m_maker, &PageMaker::made, this, &ReportPage::show_pages);
}

ReportPage::~ReportPage() {
    // Its thread would outlive it.
    if (auto* const renderer = m_view->findChild<QPdfPageRenderer*>()) {
        renderer->setRenderMode(QPdfPageRenderer::RenderMode::SingleThreaded);
    }
    m_document->close();
}

void ReportPage::set_up() {
    auto* const label = new QLabel(tr("&Report:"), this);
    label->setBuddy(m_reports);
    m_reports->setObjectName("reports");
    m_reports->setAccessibleName(tr("Report"));
    m_elsewhere->setObjectName("openElsewhere");
    m_elsewhere->setAutoDefault(false);
    m_view->setObjectName("reportPages");
    m_view->setAccessibleName(tr("Pages of the report"));
    m_view->setDocument(m_document);
    m_view->setPageMode(QPdfView::PageMode::MultiPage);
    m_view->setZoomMode(QPdfView::ZoomMode::FitToWidth);
    m_text->setObjectName("reportText");
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);

    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_reports, 1);
    row->addWidget(m_elsewhere);
    m_pages = new QStackedLayout;
    m_pages->addWidget(m_text);
    m_pages->addWidget(m_view);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addLayout(m_pages, 1);
}

QList<QWidget*> ReportPage::Panes() const {
    return {m_reports, m_view};
}

bool ReportPage::HasPages() const {
    return m_document->status() == QPdfDocument::Status::Ready;
}

void ReportPage::Show(const CaseSession& session) {
    Clear();
    m_case = std::make_unique<Case>(
        Case{session.GetQuestionnaire(), session.GetRespondent(), session.GetScores()});
    for (const ReportTemplate& report : m_case->questionnaire.Model().reports) {
        m_reports->addItem(shown(report.title.IsEmpty() ? report.id : report.title));
    }
    m_reports->setEnabled(m_reports->count() > 0);
    if (m_reports->count() > 0) {
        choose(0);
    } else {
        say(tr("This questionnaire has no report."));
    }
}

void ReportPage::Clear() {
    m_maker->Stop();
    m_document->close();
    for (const QString& file : {m_rtf, m_pdf}) {
        if (!file.isEmpty()) QFile::remove(file);
    }
    m_rtf.clear();
    m_pdf.clear();
    m_elsewhere->setEnabled(false);
    m_case.reset();
    m_reports->clear();
    say({});
    Q_EMIT changed();
}

void ReportPage::choose(int report) {
    if (!m_case || report < 0) return;
    if (!m_folder.IsValid()) {
        return say(
            tr("No private folder for the pages can be made: make room in the folder of "
               "temporary files."));
    }
    m_maker->Stop();
    m_document->close();
    const QString name = QStringLiteral("report%1").arg(++m_number);
    m_rtf = m_folder.PathOf(name + ".rtf");
    m_pdf = m_folder.PathOf(name + ".pdf");
    try {
        RespondentReports reports(m_case->questionnaire);
        reports.SetRespondent(m_case->respondent, m_case->scores);
        writeReport(reports, static_cast<std::size_t>(report), m_rtf);
    } catch (const std::exception& fault) {
        m_rtf.clear();
        m_elsewhere->setEnabled(false);
        say(tr("The report can't be made: %1").arg(messageOf(fault)));
        Q_EMIT changed();
        return;
    }
    m_elsewhere->setEnabled(true);
    Q_EMIT changed();
    if (PageMaker::FindProgram().isEmpty()) {
        say(PageMaker::MissingText() + '\n' +
            tr("The report opens in the system's program for RTF files instead."));
        return OpenElsewhere();
    }
    say(tr("Making the pages..."));
    m_maker->Make({m_rtf}, m_folder.PathOf({}));
}

void ReportPage::show_pages(const QStringList& pdfs) {
    if (pdfs.isEmpty() || m_document->load(pdfs.front()) != QPdfDocument::Error::None) {
        return say(
            tr("LibreOffice has made no pages of the report: close it if it is open "
               "elsewhere, or open the report in another program."));
    }
    m_pages->setCurrentWidget(m_view);
    Q_EMIT changed();
}

void ReportPage::say(const QString& text) {
    m_text->setText(text);
    m_pages->setCurrentWidget(m_text);
}

QString ReportPage::ask_name(const QString& title, const QString& ending) {
    const QString proposed = shown(m_case->respondent.id) + ending;
    QString name = QFileDialog::getSaveFileName(this, title, proposed, '*' + ending);
    if (!name.isEmpty() && !name.endsWith(ending, Qt::CaseInsensitive)) name += ending;
    return name;
}

void ReportPage::save(const QString& file, const QString& title, const QString& ending) {
    const QString name = ask_name(title, ending);
    if (name.isEmpty()) return;
    const QString fault = copyWhole(file, name);
    if (fault.isEmpty()) {
        Q_EMIT told(tr("Saved as %1.").arg(name), false);
    } else {
        Q_EMIT told(fault, true);
    }
}

void ReportPage::SaveRtf() {
    if (HasReport()) save(m_rtf, tr("Save the report as RTF"), ".rtf");
}

void ReportPage::SavePdf() {
    if (HasPages()) save(m_pdf, tr("Save the report as PDF"), ".pdf");
}

void ReportPage::OpenElsewhere() {
    if (!HasReport()) return;
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(m_rtf))) {
        Q_EMIT told(tr("The system has no program for RTF files: save the report and open it "
                       "elsewhere."),
                    true);
    }
}

void ReportPage::Print() {
    if (!HasPages()) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setResolution(cPrintDpi);
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_document->pageCount());
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted) return;
    const bool isRange = printer.printRange() == QPrinter::PageRange;
    const int first = isRange ? printer.fromPage() : 1;
    const int last = isRange ? printer.toPage() : m_document->pageCount();
    QPainter painter;
    bool isGood = painter.begin(&printer);
    for (int page = first; isGood && page <= last; ++page) {
        if (page > first) isGood = printer.newPage();
        const QSize size = printer.pageLayout().fullRectPixels(cPrintDpi).size();
        painter.drawImage(QRect(QPoint(), size), m_document->render(page - 1, size));
    }
    isGood = isGood && painter.end();
    if (isGood) {
        Q_EMIT told(tr("Sent to the printer."), false);
    } else {
        Q_EMIT told(tr("The printer has not taken the pages: see whether it is on and has paper."),
                    true);
    }
}

}  // namespace tessalink::desk
