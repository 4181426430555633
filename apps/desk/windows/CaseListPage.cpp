#include "apps/desk/windows/CaseListPage.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

namespace {

// In average characters, in the order of the columns.
constexpr std::array<int, CaseListModel::cColumns> cWidths = {28, 34, 20, 26, 26, 17};

}  // namespace

CaseListPage::CaseListPage(QWidget* parent)
    : QWidget(parent),
      m_search(new QLineEdit(this)),
      m_questionnaires(new QComboBox(this)),
      m_states(new QComboBox(this)),
      m_table(new QTableView(this)),
      m_count(new QLabel(this)),
      m_model(new CaseListModel(this)) {
    setObjectName("caseListPage");
    m_search->setObjectName("search");
    m_search->setPlaceholderText(tr("Words of the id or the questionnaire"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_questionnaires->setObjectName("questionnaireFilter");
    m_questionnaires->setAccessibleName(tr("Questionnaires shown"));
    m_questionnaires->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_states->setObjectName("stateFilter");
    m_states->setAccessibleName(tr("States shown"));
    m_states->addItem(tr("Open and complete"));
    m_states->addItem(tr("Open"), static_cast<int>(CaseState::Open));
    m_states->addItem(tr("Complete"), static_cast<int>(CaseState::Complete));
    m_count->setObjectName("caseCount");
    auto* const searchLabel = new QLabel(tr("&Search:"), this);
    searchLabel->setBuddy(m_search);
    auto* const line = new QHBoxLayout;
    line->addWidget(searchLabel);
    line->addWidget(m_search, 1);
    line->addWidget(m_questionnaires);
    line->addWidget(m_states);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(line);
    column->addWidget(m_table, 1);
    column->addWidget(m_count);
    set_up_table();
    set_up_focus();
    connect(m_search, &QLineEdit::textChanged, this, &CaseListPage::filter);
    connect(m_questionnaires, &QComboBox::currentIndexChanged, this, &CaseListPage::filter);
    connect(m_states, &QComboBox::currentIndexChanged, this, &CaseListPage::filter);
}

void CaseListPage::set_up_table() {
    m_table->setObjectName("cases");
    m_table->setAccessibleName(tr("Cases"));
    m_table->setModel(m_model);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->setShowGrid(false);
    m_table->setAlternatingRowColors(true);
    m_table->setCornerButtonEnabled(false);
    QHeaderView* const rows = m_table->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    QHeaderView* const columns = m_table->horizontalHeader();
    columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    columns->setHighlightSections(false);
    for (std::size_t i = 0; i < cWidths.size(); ++i) {
        m_table->setColumnWidth(static_cast<int>(i), cWidths[i] * fontMetrics().averageCharWidth());
    }
    columns->setSectionResizeMode(static_cast<int>(CaseOrder::Column::Questionnaire),
                                  QHeaderView::Stretch);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(0, Qt::AscendingOrder);
    m_table->installEventFilter(this);
    connect(m_table, &QTableView::doubleClicked, this, &CaseListPage::open_current);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CaseListPage::selectionChanged);
    connect(m_model, &QAbstractItemModel::modelReset, this, &CaseListPage::selectionChanged);
}

void CaseListPage::set_up_focus() {
    setFocusProxy(m_table);
    QWidget* const order[] = {m_search, m_questionnaires, m_states, m_table};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

QList<QWidget*> CaseListPage::Panes() const {
    return {m_search, m_table};
}

void CaseListPage::read_titles(CaseStore& store) {
    m_titles.clear();
    const QVariant before = m_questionnaires->currentData();
    const QSignalBlocker quiet(m_questionnaires);
    m_questionnaires->clear();
    m_questionnaires->addItem(tr("All questionnaires"));
    for (const StoredQuestionnaire& stored : store.Questionnaires()) {
        m_titles[stored.hash] = utf8Of(titleOf(stored));
        m_questionnaires->addItem(titleOf(stored), shown(stored.hash));
    }
    m_questionnaires->setCurrentIndex(std::max(m_questionnaires->findData(before), 0));
}

void CaseListPage::ReadCases(CaseStore& store) {
    std::vector<CaseSummary> cases = store.Summaries();
    const std::vector<CaseId> selected = SelectedCases();
    read_titles(store);
    m_model->SetCases(std::move(cases), m_titles);
    filter();
    keep_selected(selected);
}

void CaseListPage::Update(CaseStore& store, const CaseSummary& summary) {
    if (!m_titles.contains(summary.questionnaire)) {
        read_titles(store);
        m_model->AddTitle(summary.questionnaire, m_titles[summary.questionnaire]);
    }
    m_model->Update(summary);
    count();
    Select(summary.id);
}

void CaseListPage::Remove(CaseId id) {
    const int row = m_model->RowOf(id);
    m_model->Remove(id);
    count();
    if (row >= 0 && m_model->rowCount() > 0) {
        select_row(std::min(row, m_model->rowCount() - 1));
    }
}

void CaseListPage::Clear() {
    m_titles.clear();
    m_search->clear();
    m_questionnaires->clear();
    m_states->setCurrentIndex(0);
    m_model->SetCases({}, {});
    count();
}

void CaseListPage::filter() {
    const std::vector<CaseId> selected = SelectedCases();
    CaseFilter wanted;
    wanted.words = utf8Of(m_search->text());
    if (m_questionnaires->currentIndex() > 0) {
        wanted.questionnaire = utf8Of(m_questionnaires->currentData().toString());
    }
    if (m_states->currentIndex() > 0) {
        wanted.state = static_cast<CaseState>(m_states->currentData().toInt());
    }
    m_model->SetFilter(wanted);
    count();
    keep_selected(selected);
}

void CaseListPage::count() {
    const QLocale locale;
    const int all = m_model->AllCount();
    const int shownCases = m_model->rowCount();
    m_count->setText(
        all == 0 ? tr("There are no cases yet. Case > New case begins one.")
                 : tr("%1 of %2 cases").arg(locale.toString(shownCases), locale.toString(all)));
}

void CaseListPage::keep_selected(const std::vector<CaseId>& selected) {
    const int row = selected.size() == 1 ? m_model->RowOf(selected.front()) : -1;
    if (m_model->rowCount() > 0) select_row(std::max(row, 0));
}

/// Whatever keys are held, which the table's own selectRow heeds.
void CaseListPage::select_row(int row) {
    m_table->selectionModel()->setCurrentIndex(
        m_model->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void CaseListPage::Select(CaseId id) {
    const int row = m_model->RowOf(id);
    if (row < 0) return;
    select_row(row);
    m_table->scrollTo(m_model->index(row, 0));
}

std::vector<CaseId> CaseListPage::SelectedCases() const {
    std::vector<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    std::vector<CaseId> cases;
    cases.reserve(rows.size());
    for (const int row : rows) cases.push_back(m_model->CaseAt(row).id);
    return cases;
}

std::vector<CaseId> CaseListPage::ShownCases() const {
    std::vector<CaseId> cases;
    for (int row = 0; row < m_model->rowCount(); ++row) cases.push_back(m_model->CaseAt(row).id);
    return cases;
}

void CaseListPage::FocusSearch() {
    m_search->setFocus();
    m_search->selectAll();
}

void CaseListPage::open_current() {
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid()) Q_EMIT opened(m_model->CaseAt(current.row()).id);
}

bool CaseListPage::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(object, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        open_current();
        return true;
    }
    // From the search into what it has found.
    if (object == m_search && key == Qt::Key_Down && m_model->rowCount() > 0) {
        m_table->setFocus();
        return true;
    }
    return QWidget::eventFilter(object, event);
}

}  // namespace tessalink::desk
