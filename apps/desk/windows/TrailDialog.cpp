#include "apps/desk/windows/TrailDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <array>
#include <deque>

#include "apps/desk/casestore/TrailTable.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/ReportFiles.h"

namespace tessalink::desk {

namespace {

/// So many entries are shown, the last ones; the export has all.
constexpr std::size_t cMostShown = 5'000;
constexpr QSize cTrailSize(860, 480);

// In the order of TrailAct.
constexpr std::array<const char*, 9> cActs = {
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "new case"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "import"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "answer"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "second answer"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "form"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "id"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "state"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "questionnaire"),
    QT_TRANSLATE_NOOP("tessalink::desk::TrailDialog", "deleted"),
};

}  // namespace

TrailDialog::TrailDialog(CaseStore& store, std::optional<CaseId> id, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_case(id),
      m_scope(new QComboBox(this)),
      m_table(new QTableWidget(this)),
      m_remark(new QLabel(this)) {
    setObjectName("trailDialog");
    setWindowTitle(tr("Trail"));
    resize(cTrailSize);
    m_scope->setObjectName("trailScope");
    m_scope->setAccessibleName(tr("What the trail tells of"));
    if (id) m_scope->addItem(tr("This case"));
    m_scope->addItem(tr("All cases"));
    m_table->setObjectName("trail");
    m_table->setAccessibleName(tr("Trail"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    const QStringList headings = {tr("Number"),  tr("Case"),     tr("When"),
                                  tr("Account"), tr("Initials"), tr("What"),
                                  tr("Name"),    tr("From"),     tr("To")};
    m_table->setColumnCount(static_cast<int>(headings.size()));
    m_table->setHorizontalHeaderLabels(headings);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_remark->setObjectName("trailRemark");
    m_remark->setWordWrap(true);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* const save = buttons->addButton(tr("&Export as CSV..."), QDialogButtonBox::ActionRole);
    save->setObjectName("trailExport");
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_scope);
    column->addWidget(m_table, 1);
    column->addWidget(m_remark);
    column->addWidget(buttons);
    connect(m_scope, &QComboBox::currentIndexChanged, this, &TrailDialog::read);
    connect(save, &QPushButton::clicked, this, &TrailDialog::choose_export);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    read();
    m_table->setFocus();
}

std::optional<CaseId> TrailDialog::chosen() const {
    return m_case && m_scope->currentIndex() == 0 ? m_case : std::nullopt;
}

void TrailDialog::read() {
    m_table->setRowCount(0);
    std::deque<TrailEntry> last;
    std::size_t all = 0;
    try {
        for (const StoredQuestionnaire& stored : m_store.Questionnaires()) {
            m_titles[stored.hash] = titleOf(stored);
        }
        m_store.ReadTrail(chosen(), [&](const TrailEntry& entry) {
            ++all;
            last.push_back(entry);
            if (last.size() > cMostShown) last.pop_front();
        });
    } catch (const std::exception& error) {
        m_remark->setText(messageOf(error));
        return;
    }
    for (const TrailEntry& entry : last) add(entry);
    m_table->resizeColumnsToContents();
    if (!last.empty()) m_table->setCurrentCell(static_cast<int>(last.size()) - 1, 0);
    m_table->scrollToBottom();
    const QLocale locale;
    m_remark->setText(all > last.size()
                          ? tr("The last %1 of %2 entries; the export has all.")
                                .arg(locale.toString(static_cast<qlonglong>(last.size())),
                                     locale.toString(static_cast<qlonglong>(all)))
                          : tr("%n entries", nullptr, static_cast<int>(all)));
}

/// A text of the trail; that of a questionnaire instead of its hash.
QString TrailDialog::titled(const std::string& text) const {
    const auto title = m_titles.find(text);
    return title != m_titles.end() ? title->second : shown(text);
}

void TrailDialog::add(const TrailEntry& entry) {
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    const QLocale locale;
    const QString cells[] = {locale.toString(static_cast<qlonglong>(entry.number)),
                             locale.toString(static_cast<qlonglong>(entry.caseId)),
                             momentText(entry.when),
                             shown(entry.account),
                             shown(entry.initials),
                             tr(cActs[static_cast<std::size_t>(entry.act)]),
                             titled(entry.name),
                             titled(entry.from.value_or("")),
                             titled(entry.to.value_or(""))};
    for (int column = 0; column < m_table->columnCount(); ++column) {
        m_table->setItem(row, column, new QTableWidgetItem(cells[column]));
    }
}

void TrailDialog::choose_export() {
    const QString path = QFileDialog::getSaveFileName(this, tr("Export the trail"), "trail.csv",
                                                      tr("Tables (*.csv)"));
    if (!path.isEmpty()) Export(path);
}

bool TrailDialog::Export(const QString& path) {
    try {
        WholeFile file = outputFile(path);
        writeTrail(m_store, chosen(), file);
        file.Commit();
        m_remark->setText(tr("Written: %1").arg(path));
        return true;
    } catch (const std::exception& error) {
        m_remark->setText(tr("Not written: %1").arg(messageOf(error)));
        return false;
    }
}

}  // namespace tessalink::desk
