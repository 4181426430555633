#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "apps/desk/windows/KeyedChoices.h"
#include "platform/qt/QtHost.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "responselists/DoubleKeying.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"

class QLabel;

namespace tessalink::desk {

/// A list of answers that says the texts of the questionnaire to assistive technology.
class AnswerList final : public ItemListCtl2 {
public:
    AnswerList() : ItemListCtl2(0, "", -1) {}

    /// What a cell is called, and what an answer in it reads.
    struct Reading {
        CString name;
        std::vector<KeyedChoice> choices;
    };
    void SetReadings(std::vector<Reading> readings) { m_readings = std::move(readings); }

protected:
    CString cell_name(int index) const override;
    CString cell_reading(int index, int value) const override;

private:
    std::vector<Reading> m_readings;
};

/// The answers of a case, keyed from paper, one key each; whole numbers that have no key stand in a
/// list of their own. Above stand the text of the current item and what its keys mean, below how
/// many are answered. A second pass compares: what is keyed in it are the second answers.
class AnswerSheet : public QWidget {
    Q_OBJECT

public:
    /// They keep an answer, and return false when that failed and was told already.
    struct Keeper {
        std::function<bool(std::size_t item, const Answer& answer)> answer;
        std::function<bool(std::size_t item, const Answer& answer)> secondAnswer;
    };

    explicit AnswerSheet(Keeper keeper, QWidget* parent = nullptr);
    ~AnswerSheet() override;

    /// Makes the lists of a questionnaire.
    void Build(const Questionnaire& questionnaire);
    void ShowAnswers(const std::vector<Answer>& answers);
    void SetReadOnly(bool isReadOnly);
    /// Makes an item's cell current; the focus stays.
    void ShowItem(std::size_t item);

    /// Starts a second pass in the list that has the focus, or else in the first one.
    bool BeginSecondPass();
    void EndSecondPass();
    bool IsSecondPass() const;

    void FocusSheet();
    /// What the current entry among the whole numbers holds.
    QString CurrentNumber() const;
    /// The lists that there are, and going to one; false when it is none of them.
    QList<QWidget*> Panes() const;
    bool FocusPane(const QWidget* pane);

Q_SIGNALS:
    void passChanged();

private:
    /// What the two lists share.
    struct Part {
        ColumnListCtl& list;
        std::vector<std::size_t> items;  ///< by position in the list
        DoubleKeying keying;
        WindowHolder* holder;
        QString end;  ///< how the last pass ended
    };

    const QuestionnaireModel& model() const { return m_questionnaire->Model(); }
    void set_up(Part& part, const char* name, const QString& title);
    void build_list();
    void build_numbers();
    HostWindow::Answer told(Part& part, UINT message, LPARAM record);
    void value_changed(Part& part, int index, int value);
    void pass_complete(Part& part, int corrections);
    void show_value(Part& part, std::size_t index, const Answer& answer);
    Answer answer_of(const Part& part, int value) const;
    Part* focused_part();
    void show_item(const Part& part);
    void show_counts();
    QString choices_of(std::size_t item) const;

    Keeper m_keeper;
    std::optional<Questionnaire> m_questionnaire;
    QLabel* m_text;
    QLabel* m_choices;
    QLabel* m_counts;
    std::vector<CString> m_numberNames;
    std::vector<const char*> m_numberTexts;
    std::vector<int> m_ranges;
    AnswerList m_list;
    NumberListCtl3 m_numbers;
    Part m_answers;
    Part m_wholes;
    std::vector<Answer> m_shown;
};

}  // namespace tessalink::desk
