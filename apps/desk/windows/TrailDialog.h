#pragma once

#include <QDialog>
#include <map>
#include <optional>
#include <string>

#include "apps/desk/casestore/CaseStore.h"

class QComboBox;
class QLabel;
class QTableWidget;

namespace tessalink::desk {

/// Who keyed what, and when: the trail of a case or of the whole file, with its export as CSV.
class TrailDialog : public QDialog {
    Q_OBJECT

public:
    /// `id` is the case to begin with; without one the trail of the file.
    TrailDialog(CaseStore& store, std::optional<CaseId> id, QWidget* parent = nullptr);

    /// Writes what is chosen, all of it; says so, or why not, in the dialog.
    bool Export(const QString& path);

private:
    std::optional<CaseId> chosen() const;
    void read();
    void add(const TrailEntry& entry);
    void choose_export();
    QString titled(const std::string& text) const;

    CaseStore& m_store;
    std::optional<CaseId> m_case;
    std::map<std::string, QString> m_titles;  ///< of questionnaires, by their hashes
    QComboBox* m_scope;
    QTableWidget* m_table;
    QLabel* m_remark;
};

}  // namespace tessalink::desk
