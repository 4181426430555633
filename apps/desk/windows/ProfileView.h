#pragma once

#include <QWidget>
#include <memory>

#include "graphs/file/DescribedGraph.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/RespondentReports.h"

class QComboBox;

namespace tessalink::desk {

/// A sheet with one graph of a questionnaire, drawn as in its reports.
class GraphSheetView : public QWidget {
    Q_OBJECT

public:
    explicit GraphSheetView(QWidget* parent = nullptr);

    void ShowGraph(std::unique_ptr<DescribedGraph> graph);
    /// A sentence in place of the graph.
    void ShowSentence(const QString& sentence);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect sheet_place() const;

    std::unique_ptr<DescribedGraph> m_graph;
    QString m_sentence;
};

/// The profile of a case: the graphs that its questionnaire describes, one of which is chosen. What
/// it shows is told to assistive technology in words.
class ProfileView : public QWidget {
    Q_OBJECT

public:
    explicit ProfileView(QWidget* parent = nullptr);
    ~ProfileView() override;

    void Build(const Questionnaire& questionnaire);
    void ShowPerson(const Respondent& respondent, const Scores& scores);
    /// What F6 leads to: the choice of the graph.
    QList<QWidget*> Panes() const;

private:
    void list_graphs();
    void draw_anew();

    QComboBox* m_names;
    GraphSheetView* m_sheet;
    std::unique_ptr<Questionnaire> m_questionnaire;
    std::unique_ptr<RespondentReports> m_person;  ///< makes the variables of the person
    bool m_hasPerson = false;
};

}  // namespace tessalink::desk
