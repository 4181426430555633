#pragma once

#include <QAbstractTableModel>
#include <map>
#include <string>
#include <vector>

#include "apps/desk/session/CaseFilter.h"

namespace tessalink::desk {

/// The cases of a file as a table, searched and sorted by CaseIndex.
class CaseListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Its columns stand in the order of CaseOrder::Column.
    static constexpr int cColumns = 6;

    using QAbstractTableModel::QAbstractTableModel;

    /// Takes over all cases of a file; titles by the hashes of questionnaires.
    void SetCases(std::vector<CaseSummary> cases, const std::map<std::string, std::string>& titles);
    void Update(const CaseSummary& summary);
    void Remove(CaseId id);
    void AddTitle(const std::string& hash, const std::string& title);
    void SetFilter(const CaseFilter& filter);

    int AllCount() const { return static_cast<int>(m_index.Cases().size()); }
    const CaseSummary& CaseAt(int row) const;
    /// The row that shows a case, or -1.
    int RowOf(CaseId id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    void find_anew();
    QString cell(const CaseSummary& summary, CaseOrder::Column column) const;

    CaseIndex m_index;
    CaseFilter m_filter;
    CaseOrder m_order;
    std::vector<std::size_t> m_shown;  ///< positions in the index
};

}  // namespace tessalink::desk
