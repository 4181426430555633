#include "apps/desk/windows/ScoresView.h"

#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "apps/desk/windows/DeskText.h"
#include "questionnaire/ScoreTable.h"

namespace tessalink::desk {

namespace {

// Columns before those of the standard scores.
enum ScoreColumn { cTitle, cRaw, cMissingItems, cFirstStandard };

/// The narrowest column, in characters.
constexpr int cNarrowest = 10;
const QChar cDash(0x2013);
constexpr int cPercent = 100;

QString optionalNumber(const std::optional<double>& number) {
    return number ? numberText(*number) : QString();
}

/// "57 (50-64)"; the interval of a whole score in whole numbers.
QString standardText(const StandardResult& result) {
    if (!result.score) return {};
    QString text = numberText(*result.score);
    if (result.confidence) {
        const int decimals = *result.score == std::round(*result.score) ? 0 : cScoreDecimals;
        text += " (" + numberText(result.confidence->low, decimals) + cDash +
                numberText(result.confidence->high, decimals) + ")";
    }
    return text;
}

/// Whether there are confidence intervals of a standard score.
bool hasInterval(const QuestionnaireModel& model, const CString& score) {
    if (!model.norms->confidence) return false;
    const std::vector<CString> columns = scoreColumns(model);
    return std::any_of(model.scales.begin(), model.scales.end(), [&](const Scale& scale) {
        const CString low = scale.id + "_" + score + "_Low";
        return std::find(columns.begin(), columns.end(), low) != columns.end();
    });
}

QString indexTitle(const AnsweringIndex& index) {
    switch (index.kind) {
        case AnsweringIndex::Kind::Missing:
            return ScoresView::tr("Answers missing");
        case AnsweringIndex::Kind::LongestRun:
            return ScoresView::tr("Equal answers in a row, at most");
        case AnsweringIndex::Kind::Shares:
            return ScoresView::tr("Shares of the choices");
        case AnsweringIndex::Kind::Inconsistency:
            break;
    }
    return ScoresView::tr("Inconsistency");
}

QString indexText(const QuestionnaireModel& model, const AnsweringIndex& index,
                  const std::vector<std::optional<double>>& values) {
    if (index.kind != AnsweringIndex::Kind::Shares) {
        return values.empty() ? QString() : optionalNumber(values.front());
    }
    QStringList shares;
    const auto& choices = model.responseSets[index.responses].choices;
    for (std::size_t i = 0; i < values.size() && i < choices.size(); ++i) {
        if (!values[i]) continue;
        const double percent = std::round(*values[i] * cPercent);
        shares.append(ScoresView::tr("%1: %2 %").arg(shown(choices[i].code), numberText(percent)));
    }
    return shares.join(", ");
}

}  // namespace

ScoresView::ScoresView(QWidget* parent)
    : QWidget(parent), m_table(new QTableWidget(this)), m_faults(new QLabel(this)) {
    setObjectName("scoresView");
    m_table->setObjectName("scores");
    m_table->setAccessibleName(tr("Scores"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setMinimumSectionSize(cNarrowest *
                                                       fontMetrics().averageCharWidth());
    m_faults->setObjectName("scoreFaults");
    m_faults->setTextFormat(Qt::PlainText);
    m_faults->setWordWrap(true);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_table, 1);
    column->addWidget(m_faults);
    m_faults->hide();
}

void ScoresView::add_row(const QString& title) {
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    for (int column = 0; column < m_table->columnCount(); ++column) {
        auto* const item = new QTableWidgetItem;
        if (column != cTitle) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(row, column, item);
    }
    m_table->item(row, cTitle)->setText(title);
    m_table->item(row, cTitle)->setToolTip(title);
}

void ScoresView::Build(const QuestionnaireModel& model) {
    m_table->clearSpans();
    m_table->setRowCount(0);
    QStringList headings = {tr("Scale"), tr("Raw"), tr("Missing")};
    if (model.norms) {
        for (const CString& score : model.norms->scores) {
            headings.append(
                hasInterval(model, score)
                    ? tr("%1 (%2 %)").arg(shown(score), numberText(*model.norms->confidence))
                    : shown(score));
        }
    }
    m_table->setColumnCount(static_cast<int>(headings.size()));
    m_table->setHorizontalHeaderLabels(headings);
    for (const Scale& scale : model.scales) add_row(shown(scale.title));
    for (const VectorScore& vector : model.vectors) add_row(shown(vector.title));
    const int firstIndex = m_table->rowCount();
    for (const AnsweringIndex& index : model.indexes) add_row(indexTitle(index));
    const int more = m_table->columnCount() - cRaw;
    for (int row = firstIndex - static_cast<int>(model.vectors.size()); row < m_table->rowCount();
         ++row) {
        if (more > 1) m_table->setSpan(row, cRaw, 1, more);
        m_table->item(row, cRaw)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
    QHeaderView* const columns = m_table->horizontalHeader();
    columns->setSectionResizeMode(QHeaderView::Interactive);
    columns->setSectionResizeMode(cTitle, QHeaderView::Stretch);
    for (int column = cRaw; column < m_table->columnCount(); ++column) {
        const QString widest = column < cFirstStandard ? "000.00" : "000 (000-000)";
        const int room = fontMetrics().averageCharWidth() * 2;
        m_table->setColumnWidth(column, std::max(columns->sectionSizeHint(column),
                                                 fontMetrics().horizontalAdvance(widest) + room));
    }
}

void ScoresView::set_cell(int row, int column, const QString& text) {
    QTableWidgetItem* const item = m_table->item(row, column);
    if (item->text() == text) return;
    item->setText(text);
    item->setToolTip(text);
}

int ScoresView::show_scales(const QuestionnaireModel& model, const Scores& scores) {
    int row = 0;
    for (std::size_t i = 0; i < model.scales.size(); ++i, ++row) {
        const ScaleResult& result = scores.scales[i];
        set_cell(row, cRaw, optionalNumber(result.raw));
        set_cell(row, cMissingItems, QLocale().toString(result.missing));
        for (int column = cFirstStandard; column < m_table->columnCount(); ++column) {
            const auto score = static_cast<std::size_t>(column - cFirstStandard);
            set_cell(
                row, column,
                score < result.standard.size() ? standardText(result.standard[score]) : QString());
        }
    }
    return row;
}

int ScoresView::show_vectors(const QuestionnaireModel& model, const Scores& scores, int row) {
    for (std::size_t i = 0; i < model.vectors.size(); ++i, ++row) {
        const VectorResult& result = scores.vectors[i];
        QString text = optionalNumber(result.length);
        if (result.angle) text += tr(", at %1 degrees").arg(numberText(std::round(*result.angle)));
        if (result.sector) {
            const auto sector = static_cast<std::size_t>(*result.sector) - 1;
            text += ", " + shown(model.vectors[i].sectors[sector]);
        }
        set_cell(row, cRaw, text);
    }
    return row;
}

void ScoresView::show_indexes(const QuestionnaireModel& model, const Scores& scores, int row) {
    for (std::size_t i = 0; i < model.indexes.size(); ++i, ++row) {
        set_cell(row, cRaw, indexText(model, model.indexes[i], scores.indexes[i]));
    }
}

void ScoresView::ShowScores(const CaseSession& session) {
    const QuestionnaireModel& model = session.GetQuestionnaire().Model();
    const Scores& scores = session.GetScores();
    const int row = show_scales(model, scores);
    show_indexes(model, scores, show_vectors(model, scores, row));
    QStringList sentences;
    for (const ScoreFault& fault : session.GetScoreFaults()) {
        const QString sentence = shown(fault.name) + ": " + shown(fault.sentence);
        if (!sentences.contains(sentence)) sentences.append(sentence);
    }
    m_faults->setText(sentences.join('\n'));
    m_faults->setVisible(!sentences.isEmpty());
}

QWidget* ScoresView::Pane() const {
    return m_table;
}

}  // namespace tessalink::desk
