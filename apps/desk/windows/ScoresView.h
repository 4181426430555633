#pragma once

#include <QWidget>
#include <vector>

#include "apps/desk/session/CaseSession.h"

class QLabel;
class QTableWidget;

namespace tessalink::desk {

/// The scores of a case as a table: scales with raw and standard scores and their confidence
/// intervals, vectors, indexes of answering; below it why there are no standard scores, where there
/// are none.
class ScoresView : public QWidget {
    Q_OBJECT

public:
    explicit ScoresView(QWidget* parent = nullptr);

    /// Makes the rows and columns of a questionnaire.
    void Build(const QuestionnaireModel& model);
    void ShowScores(const CaseSession& session);
    QWidget* Pane() const;

private:
    void add_row(const QString& title);
    void set_cell(int row, int column, const QString& text);
    int show_scales(const QuestionnaireModel& model, const Scores& scores);
    int show_vectors(const QuestionnaireModel& model, const Scores& scores, int row);
    void show_indexes(const QuestionnaireModel& model, const Scores& scores, int row);

    QTableWidget* m_table;
    QLabel* m_faults;
};

}  // namespace tessalink::desk
