#include "apps/desk/windows/CasePage.h"

#include <QLabel>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desk/windows/AnswerSheet.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/FieldForm.h"
#include "apps/desk/windows/ProfileView.h"
#include "apps/desk/windows/ScoresView.h"

namespace tessalink::desk {

namespace {

constexpr int cFormShare = 2;
constexpr int cSheetShare = 3;
constexpr int cProfileShare = 1;
constexpr int cScoresShare = 1;

}  // namespace

CasePage::CasePage(QWidget* parent)
    : QWidget(parent),
      m_heading(new QLabel(this)),
      m_columns(new QSplitter(Qt::Horizontal, this)),
      m_left(new QSplitter(Qt::Vertical)),
      m_right(new QSplitter(Qt::Vertical)) {
    setObjectName("casePage");
    m_resized.setSingleShot(true);
    connect(&m_resized, &QTimer::timeout, this, &CasePage::arrange);
    m_heading->setObjectName("caseHeading");
    m_heading->setTextFormat(Qt::PlainText);
    QFont bold = m_heading->font();
    bold.setBold(true);
    m_heading->setFont(bold);
    m_form = new FieldForm({[this](const std::string& label) {
                                return keep([&] { return m_session->SetLabel(label); });
                            },
                            [this](std::size_t field, const FieldValue& value) {
                                return keep([&] { return m_session->SetField(field, value); });
                            }});
    m_sheet =
        new AnswerSheet({[this](std::size_t item, const Answer& answer) {
                             return keep([&] { return m_session->SetAnswer(item, answer); });
                         },
                         [this](std::size_t item, const Answer& answer) {
                             return keep([&] { return m_session->SetSecondAnswer(item, answer); });
                         }});
    m_profile = new ProfileView;
    m_scores = new ScoresView;
    m_columns->setObjectName("columns");
    m_left->setObjectName("leftColumn");
    m_right->setObjectName("rightColumn");
    const auto add = [](QSplitter& splitter, QWidget* widget, int share) {
        splitter.addWidget(widget);
        splitter.setStretchFactor(splitter.count() - 1, share);
        splitter.setCollapsible(splitter.count() - 1, false);
    };
    add(*m_left, m_form, cFormShare);
    add(*m_left, m_sheet, cSheetShare);
    add(*m_right, m_profile, cProfileShare);
    add(*m_right, m_scores, cScoresShare);
    add(*m_columns, m_left, 1);
    add(*m_columns, m_right, 1);
    connect(m_left, &QSplitter::splitterMoved, this, [this] { m_isDivided = true; });
    auto* const column = new QVBoxLayout(this);
    column->addWidget(m_heading);
    column->addWidget(m_columns, 1);
    connect(m_form, &FieldForm::refused, this,
            [this](const QString& reason) { Q_EMIT said(MessageBar::Kind::Warning, reason); });
    connect(m_sheet, &AnswerSheet::passChanged, this, &CasePage::passChanged);
}

CasePage::~CasePage() = default;

void CasePage::Open(CaseStore& store, CaseId id) {
    auto session = std::make_unique<CaseSession>(store, id);
    Close();
    m_session = std::move(session);
    build();
    tell_what_is_missing();
}

void CasePage::Close() {
    if (m_session != nullptr) m_sheet->EndSecondPass();
    m_session.reset();
}

void CasePage::build() {
    const Questionnaire& questionnaire = m_session->GetQuestionnaire();
    m_form->Build(questionnaire);
    m_sheet->Build(questionnaire);
    m_scores->Build(questionnaire.Model());
    m_profile->Build(questionnaire);
    const bool isReadOnly = m_session->GetStore().GetAccess() == CaseStore::Access::ReadOnly;
    m_form->SetReadOnly(isReadOnly);
    m_sheet->SetReadOnly(isReadOnly);
    QWidget* before = nullptr;
    for (QWidget* const pane : Panes()) {
        if (before != nullptr) setTabOrder(before, pane);
        before = pane;
    }
    arrange();
    show_all();
}

/// The form gets the room that it needs, as long as nobody has divided the column otherwise.
void CasePage::arrange() {
    if (m_isDivided || m_left->height() == 0) return;
    const int form = std::min(m_form->WholeHeight(), m_left->height() / 2);
    m_left->setSizes({form, m_left->height() - form});
}

void CasePage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_session == nullptr) return;
    m_resized.start();
}

void CasePage::tell_what_is_missing() {
    QStringList sentences;
    for (const UnusedEntry& unused : m_session->GetUnusedEntries()) {
        sentences.append(
            tr("%1 = %2 stays in the file and is not shown: %3.")
                .arg(shown(unused.entry.name.id), shown(unused.entry.value), shown(unused.reason)));
    }
    for (const QString& field : m_form->UnshownFields()) {
        sentences.append(tr("%1 has letters that the form can't show. They are kept, printed and "
                            "exported, but can't be changed here.")
                             .arg(field));
    }
    if (!sentences.isEmpty()) Q_EMIT said(MessageBar::Kind::Information, sentences.join('\n'));
}

// Changes.

/// Runs what changes the session; what is thrown is told in the line above.
bool CasePage::keep(const std::function<bool()>& act) {
    if (m_session == nullptr) return false;
    try {
        if (act()) {
            show_scores();
            Q_EMIT changed();
        }
        return true;
    } catch (const std::exception& error) {
        Q_EMIT said(MessageBar::Kind::Fault, tr("This was not kept: %1").arg(messageOf(error)));
        return false;
    }
}

bool CasePage::IsTyping(const QString& text) const {
    const QWidget* const focus = window()->focusWidget();
    const bool isForm = m_form->isAncestorOf(focus);
    return text != (isForm ? m_form->CurrentText() : m_sheet->CurrentNumber());
}

void CasePage::Undo() {
    if (!CanUndo()) return;
    const CaseStep step = m_session->UndoStep();
    keep([this] {
        m_session->Undo();
        return true;
    });
    show_all();
    show_step(step);
}

void CasePage::Redo() {
    if (!CanRedo()) return;
    const CaseStep step = m_session->RedoStep();
    keep([this] {
        m_session->Redo();
        return true;
    });
    show_all();
    show_step(step);
}

/// Goes where the step was made.
void CasePage::show_step(const CaseStep& step) {
    if (step.kind == CaseStep::Kind::Answer || step.kind == CaseStep::Kind::SecondAnswer) {
        const auto item = m_session->GetQuestionnaire().FindItem(windowText(shown(step.id)).View());
        if (item) m_sheet->ShowItem(*item);
    } else if (step.kind == CaseStep::Kind::Field) {
        const auto field =
            m_session->GetQuestionnaire().FindField(windowText(shown(step.id)).View());
        if (field) m_form->ShowField(*field);
    }
}

bool CasePage::CanUndo() const {
    return m_session != nullptr && !IsSecondPass() && m_session->CanUndo();
}

bool CasePage::CanRedo() const {
    return m_session != nullptr && !IsSecondPass() && m_session->CanRedo();
}

QString CasePage::StepName(const CaseStep& step) const {
    switch (step.kind) {
        case CaseStep::Kind::Answer:
            return tr("answer to %1").arg(shown(step.id));
        case CaseStep::Kind::SecondAnswer:
            return tr("second answer to %1").arg(shown(step.id));
        case CaseStep::Kind::Label:
            return tr("id");
        case CaseStep::Kind::State:
            return tr("state of the case");
        case CaseStep::Kind::Field:
            break;
    }
    return shown(step.name);
}

void CasePage::SetState(CaseState state) {
    keep([&] { return m_session->SetState(state); });
    show_heading();
}

void CasePage::SetQuestionnaire(const Questionnaire& questionnaire) {
    m_sheet->EndSecondPass();
    m_session->SetQuestionnaire(questionnaire);
    build();
    tell_what_is_missing();
    Q_EMIT changed();
}

bool CasePage::FinishTyping() {
    return m_session == nullptr || commitEntries(*this);
}

bool CasePage::BeginSecondPass() {
    return m_session != nullptr && m_sheet->BeginSecondPass();
}

void CasePage::EndSecondPass() {
    m_sheet->EndSecondPass();
}

bool CasePage::IsSecondPass() const {
    return m_sheet->IsSecondPass();
}

// What shows.

void CasePage::show_all() {
    if (m_session == nullptr) return;
    const Respondent& respondent = m_session->GetRespondent();
    m_form->ShowValues(respondent);
    m_sheet->ShowAnswers(respondent.answers);
    show_scores();
}

void CasePage::show_scores() {
    m_scores->ShowScores(*m_session);
    m_profile->ShowPerson(m_session->GetRespondent(), m_session->GetScores());
    show_heading();
}

void CasePage::show_heading() {
    if (m_session == nullptr) return;
    const CaseSummary& summary = m_session->GetSummary();
    const QuestionnaireModel& model = m_session->GetQuestionnaire().Model();
    const QString state = summary.state == CaseState::Open ? tr("open") : tr("complete");
    QString heading =
        tr("%1: %2 %3, %4", "id: questionnaire version, state")
            .arg(shown(summary.label), shown(model.title), shown(model.version), state);
    const auto differences = static_cast<int>(m_session->Differences().size());
    if (differences > 0) {
        heading += ", " + tr("%n answer(s) differ between both keyings", nullptr, differences);
    }
    m_heading->setText(heading);
}

void CasePage::FocusForm() {
    m_form->FocusForm();
}

void CasePage::FocusAnswers() {
    m_sheet->FocusSheet();
}

QList<QWidget*> CasePage::Panes() const {
    QList<QWidget*> panes = {m_form->Pane()};
    panes += m_sheet->Panes();
    panes += m_profile->Panes();
    panes += m_scores->Pane();
    panes.removeAll(nullptr);
    return panes;
}

void CasePage::FocusPane(QWidget* pane) {
    if (pane == m_form->Pane()) {
        m_form->FocusForm();
    } else if (!m_sheet->FocusPane(pane)) {
        pane->setFocus(Qt::ShortcutFocusReason);
    }
}

void CasePage::SaveState(QSettings& settings) const {
    for (const QSplitter* const splitter : {m_columns, m_left, m_right}) {
        if (splitter == m_left && !m_isDivided) continue;
        settings.setValue("splitters/" + splitter->objectName(), splitter->saveState());
    }
}

void CasePage::RestoreState(const QSettings& settings) {
    for (QSplitter* const splitter : {m_columns, m_left, m_right}) {
        const bool isKept = splitter->restoreState(
            settings.value("splitters/" + splitter->objectName()).toByteArray());
        if (splitter == m_left) m_isDivided = isKept;
    }
}

}  // namespace tessalink::desk
