#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "apps/desk/session/CaseSession.h"
#include "apps/desk/windows/MessageBar.h"

class QLabel;
class QSettings;
class QSplitter;

namespace tessalink::desk {

class AnswerSheet;
class FieldForm;
class ProfileView;
class ScoresView;

/// One case: the person's form and the answers on the left, the profile and the scores on the
/// right, all of which follow every key.
class CasePage : public QWidget {
    Q_OBJECT

public:
    explicit CasePage(QWidget* parent = nullptr);
    ~CasePage() override;

    /// Shows a case. CaseStoreErrors pass through; then the page is as it was.
    void Open(CaseStore& store, CaseId id);
    /// Lets the case go. What is being typed must be kept before (FinishTyping).
    void Close();
    /// Null when no case is open.
    CaseSession* Session() const { return m_session.get(); }

    /// Keeps what stands in a box that is being typed into; false when it is refused.
    bool FinishTyping();
    /// Whether a text in a box that has the focus is not kept yet.
    bool IsTyping(const QString& text) const;
    void Undo();
    void Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    /// What menus call a step.
    QString StepName(const CaseStep& step) const;
    void SetState(CaseState state);
    /// Goes on with another version of the questionnaire. CaseStoreErrors pass through.
    void SetQuestionnaire(const Questionnaire& questionnaire);

    bool BeginSecondPass();
    void EndSecondPass();
    bool IsSecondPass() const;

    void FocusForm();
    void FocusAnswers();
    /// The parts that F6 leads to, and going to one of them.
    QList<QWidget*> Panes() const;
    void FocusPane(QWidget* pane);
    void SaveState(QSettings& settings) const;
    void RestoreState(const QSettings& settings);

Q_SIGNALS:
    /// Something was kept, undone or redone.
    void changed();
    void passChanged();
    /// Something to be said, in a line above the page.
    void said(MessageBar::Kind kind, const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool keep(const std::function<bool()>& act);
    void build();
    void arrange();
    void show_all();
    void show_scores();
    void show_heading();
    void show_step(const CaseStep& step);
    void tell_what_is_missing();

    QLabel* m_heading;
    QSplitter* m_columns;
    QSplitter* m_left;
    QSplitter* m_right;
    FieldForm* m_form;
    AnswerSheet* m_sheet;
    ProfileView* m_profile;
    ScoresView* m_scores;
    std::unique_ptr<CaseSession> m_session;
    QTimer m_resized;          ///< once the parts have their new places
    bool m_isDivided = false;  ///< the left column, by the user
};

}  // namespace tessalink::desk
