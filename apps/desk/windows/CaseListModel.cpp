#include "apps/desk/windows/CaseListModel.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <utility>

#include "apps/desk/windows/DeskText.h"

namespace tessalink::desk {

namespace {

using Column = CaseOrder::Column;

constexpr std::array<const char*, CaseListModel::cColumns> cHeadings = {
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "Id"),
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "Questionnaire"),
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "State"),
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "Created"),
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "Changed"),
    QT_TRANSLATE_NOOP("tessalink::desk::CaseListModel", "Answers"),
};

}  // namespace

void CaseListModel::SetCases(std::vector<CaseSummary> cases,
                             const std::map<std::string, std::string>& titles) {
    beginResetModel();
    m_index = CaseIndex(std::move(cases), titles);
    m_shown = m_index.Find(m_filter, m_order);
    endResetModel();
}

void CaseListModel::Update(const CaseSummary& summary) {
    beginResetModel();
    m_index.Update(summary);
    m_shown = m_index.Find(m_filter, m_order);
    endResetModel();
}

void CaseListModel::Remove(CaseId id) {
    beginResetModel();
    m_index.Remove(id);
    m_shown = m_index.Find(m_filter, m_order);
    endResetModel();
}

void CaseListModel::AddTitle(const std::string& hash, const std::string& title) {
    m_index.AddTitle(hash, title);
}

void CaseListModel::SetFilter(const CaseFilter& filter) {
    m_filter = filter;
    find_anew();
}

void CaseListModel::find_anew() {
    beginResetModel();
    m_shown = m_index.Find(m_filter, m_order);
    endResetModel();
}

const CaseSummary& CaseListModel::CaseAt(int row) const {
    return m_index.Cases()[m_shown[static_cast<std::size_t>(row)]];
}

int CaseListModel::RowOf(CaseId id) const {
    const auto& cases = m_index.Cases();
    const auto found = std::find_if(m_shown.begin(), m_shown.end(),
                                    [&](std::size_t position) { return cases[position].id == id; });
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

int CaseListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int CaseListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cColumns;
}

QString CaseListModel::cell(const CaseSummary& summary, CaseOrder::Column column) const {
    switch (column) {
        case Column::Label:
            return shown(summary.label);
        case Column::Questionnaire:
            return shown(m_index.TitleOf(summary));
        case Column::State:
            return summary.state == CaseState::Open ? tr("open") : tr("complete");
        case Column::Created:
            return momentText(summary.created);
        case Column::Changed:
            return momentText(summary.changed);
        case Column::Answered:
            break;
    }
    return QLocale().toString(static_cast<qlonglong>(summary.answered));
}

QVariant CaseListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto column = static_cast<Column>(index.column());
    if (role == Qt::DisplayRole) return cell(CaseAt(index.row()), column);
    if (role == Qt::TextAlignmentRole && column == Column::Answered) {
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    return {};
}

QVariant CaseListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return tr(cHeadings[static_cast<std::size_t>(section)]);
}

void CaseListModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= cColumns) return;
    m_order = {static_cast<Column>(column), order == Qt::DescendingOrder};
    find_anew();
}

}  // namespace tessalink::desk
