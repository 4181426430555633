#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/windows/CaseListModel.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace tessalink::desk {

/// The list of cases with its search.
class CaseListPage : public QWidget {
    Q_OBJECT

public:
    explicit CaseListPage(QWidget* parent = nullptr);

    /// Reads all cases anew. CaseStoreErrors pass through.
    void ReadCases(CaseStore& store);
    /// A case has changed, or is new.
    void Update(CaseStore& store, const CaseSummary& summary);
    void Remove(CaseId id);
    void Clear();

    void Select(CaseId id);
    /// In the order of the list.
    std::vector<CaseId> SelectedCases() const;
    /// What the list shows: all cases that the search lets through, in its order.
    std::vector<CaseId> ShownCases() const;

    void FocusSearch();
    /// What F6 leads to.
    QList<QWidget*> Panes() const;

Q_SIGNALS:
    void opened(CaseId id);
    void selectionChanged();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void set_up_table();
    void set_up_focus();
    void read_titles(CaseStore& store);
    void filter();
    void count();
    void keep_selected(const std::vector<CaseId>& selected);
    void select_row(int row);
    void open_current();

    QLineEdit* m_search;
    QComboBox* m_questionnaires;
    QComboBox* m_states;
    QTableView* m_table;
    QLabel* m_count;
    CaseListModel* m_model;
    std::map<std::string, std::string> m_titles;
};

}  // namespace tessalink::desk
