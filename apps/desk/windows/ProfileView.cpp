#include "apps/desk/windows/ProfileView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desk/windows/DeskText.h"
#include "graphs/file/GraphPicture.h"
#include "platform/graphics/CDC.h"
#include "platform/qt/PainterDevice.h"

namespace tessalink::desk {

namespace {

constexpr QSize cSheetHint(480, 320);
constexpr int cSheetMargin = 6;

}  // namespace

// The sheet.

GraphSheetView::GraphSheetView(QWidget* parent) : QWidget(parent) {
    setObjectName("graphSheet");
    setMinimumSize(cSheetHint / 3);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void GraphSheetView::ShowGraph(std::unique_ptr<DescribedGraph> graph) {
    m_graph = std::move(graph);
    m_sentence.clear();
    setAccessibleName(shown(m_graph->GetSheet().title));
    setAccessibleDescription(shown(textAlternative(*m_graph)));
    update();
}

void GraphSheetView::ShowSentence(const QString& sentence) {
    m_graph.reset();
    m_sentence = sentence;
    setAccessibleName(sentence);
    setAccessibleDescription({});
    update();
}

QSize GraphSheetView::sizeHint() const {
    return cSheetHint;
}

/// As large as there is room, in the proportions of the sheet.
QRect GraphSheetView::sheet_place() const {
    const QRect room = rect().adjusted(cSheetMargin, cSheetMargin, -cSheetMargin, -cSheetMargin);
    const GraphSheet& sheet = m_graph->GetSheet();
    const QSizeF size = QSizeF(sheet.width, sheet.height).scaled(room.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size.toSize());
    place.moveCenter(room.center());
    return place;
}

void GraphSheetView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_graph == nullptr) {
        painter.drawText(rect().adjusted(cSheetMargin, cSheetMargin, -cSheetMargin, -cSheetMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_sentence);
        return;
    }
    // Paper, in dark themes too.
    const QRect place = sheet_place();
    painter.fillRect(place, Qt::white);
    PainterDevice device(painter);
    CDC dc(device);
    m_graph->Draw(dc, CRect(place.left(), place.top(), place.left() + place.width(),
                            place.top() + place.height()));
}

// The profile.

ProfileView::ProfileView(QWidget* parent)
    : QWidget(parent), m_names(new QComboBox(this)), m_sheet(new GraphSheetView(this)) {
    setObjectName("profileView");
    m_names->setObjectName("graphNames");
    m_names->setAccessibleName(tr("Graph"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_names);
    column->addWidget(m_sheet, 1);
    connect(m_names, &QComboBox::currentIndexChanged, this, &ProfileView::draw_anew);
}

ProfileView::~ProfileView() = default;

void ProfileView::Build(const Questionnaire& questionnaire) {
    m_questionnaire = std::make_unique<Questionnaire>(questionnaire);
    m_person = std::make_unique<RespondentReports>(questionnaire);
    m_hasPerson = false;
    const QSignalBlocker quiet(m_names);
    m_names->clear();
    m_names->hide();
    if (questionnaire.Graphs() == nullptr) {
        m_sheet->ShowSentence(tr("This questionnaire has no graph."));
    }
}

/// Graphs that lack a variable are parts of reports, whose templates make it.
void ProfileView::list_graphs() {
    const QSignalBlocker quiet(m_names);
    const GraphFile& graphs = *m_questionnaire->Graphs();
    for (const CString& name : graphs.GetNames()) {
        try {
            graphs.Make(name.View(), m_person->GetVariables());
            m_names->addItem(shown(name));
        } catch (const InputError&) {
            continue;
        }
    }
    m_names->setVisible(m_names->count() > 1);
}

void ProfileView::ShowPerson(const Respondent& respondent, const Scores& scores) {
    if (m_questionnaire->Graphs() == nullptr) return;
    try {
        m_hasPerson = false;
        m_person->SetRespondent(respondent, scores);
        m_hasPerson = true;
        if (m_names->count() == 0) list_graphs();
        draw_anew();
    } catch (const std::exception& error) {
        m_sheet->ShowSentence(tr("The graph can't be drawn: %1").arg(messageOf(error)));
    }
}

void ProfileView::draw_anew() {
    if (!m_hasPerson || m_names->count() == 0) return;
    try {
        const CString name = windowText(m_names->currentText());
        m_sheet->ShowGraph(m_questionnaire->Graphs()->Make(name.View(), m_person->GetVariables()));
    } catch (const std::exception& error) {
        m_sheet->ShowSentence(tr("The graph can't be drawn: %1").arg(messageOf(error)));
    }
}

QList<QWidget*> ProfileView::Panes() const {
    if (m_names->count() < 2) return {};
    return {m_names};
}

}  // namespace tessalink::desk
