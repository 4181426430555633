// Random work on a case by real events: what the window shows is what the file holds, and every
// step is undone and redone as a plain list of states says.
#include <gtest/gtest.h>

#include <QAccessible>
#include <array>
#include <map>
#include <vector>

#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/FieldTexts.h"
#include "questionnaire/ValueText.h"
#include "tests/desk/StoreParts.h"
#include "tests/desk/windows/DeskDriver.h"
#include "tests/support/Dice.h"
#include "tests/support/EventCount.h"

namespace tessalink::desk::test {

namespace {

using tessalink::test::Dice;

/// All that is keyed of a case, as texts.
using State = std::map<std::string, std::string>;

State stateOf(const CaseSession& session) {
    const QuestionnaireModel& model = session.GetQuestionnaire().Model();
    const Respondent& respondent = session.GetRespondent();
    State state = {{"id", respondent.id},
                   {"state", session.GetSummary().state == CaseState::Open ? "open" : "complete"}};
    for (std::size_t i = 0; i < model.items.size(); ++i) {
        const ResponseSet& set = model.responseSets[model.items[i].responses];
        state["item " + std::to_string(i)] = answerText(set, respondent.answers[i]);
    }
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        state["field " + std::to_string(i)] = fieldText(model.fields[i], respondent.fields[i]);
    }
    return state;
}

/// The same from the file.
State stateOf(CaseStore& store, CaseId id, const State& like) {
    State state;
    for (const auto& [name, value] : like) state[name] = "";
    const CaseSummary summary = store.Summary(id);
    state["id"] = summary.label;
    state["state"] = summary.state == CaseState::Open ? "open" : "complete";
    const Questionnaire& questionnaire = smallQuestionnaire();
    for (const Entry& entry : store.Entries(id)) {
        const bool isField = entry.name.kind == EntryKind::Field;
        const auto position = isField ? questionnaire.FindField(entry.name.id)
                                      : questionnaire.FindItem(entry.name.id);
        if (entry.name.kind == EntryKind::SecondAnswer || !position) continue;
        state[(isField ? "field " : "item ") + std::to_string(*position)] = entry.value;
    }
    return state;
}

class DeskEvents {
public:
    explicit DeskEvents(std::uint64_t seed) : m_dice(seed) {
        EXPECT_TRUE(m_desk.Window().CreateFile(m_desk.Path("random.cases")));
        EXPECT_TRUE(m_desk.Window().AddCase(smallQuestionnaire(), "P-1"));
        m_states.push_back(stateOf(m_desk.Session()));
    }

    void Step() {
        static constexpr std::array cSteps = {
            &DeskEvents::answer, &DeskEvents::answer, &DeskEvents::number, &DeskEvents::field,
            &DeskEvents::field,  &DeskEvents::undo,   &DeskEvents::undo,   &DeskEvents::redo,
            &DeskEvents::move,   &DeskEvents::finish};
        (this->*m_dice.Pick(cSteps))();
        Compare();
    }

    void Compare() {
        const CaseSession& session = m_desk.Session();
        const State state = stateOf(session);
        EXPECT_EQ(state, stateOf(*m_desk.Window().Store(), session.GetId(), state));
        EXPECT_EQ(state, m_states[m_now]);
        EXPECT_EQ(session.CanUndo(), m_now > 0);
        EXPECT_EQ(session.CanRedo(), m_now + 1 < m_states.size());
        EXPECT_EQ(m_desk.Find<QAction>("undo").isEnabled(), m_now > 0);
        compare_shown(session);
    }

    /// The program again.
    void Restart() {
        const State last = stateOf(m_desk.Session());
        ASSERT_TRUE(m_desk.Window().close());
        m_desk.Start();
        ASSERT_TRUE(m_desk.Window().OpenFile(m_desk.Path("random.cases")));
        ASSERT_TRUE(m_desk.Window().OpenCase(1));
        EXPECT_EQ(stateOf(m_desk.Session()), last);
        m_states = {last};
        m_now = 0;
    }

private:
    /// What assistive technology is told of the parts of a window.
    QStringList values(const char* name) {
        QStringList values;
        const QAccessibleInterface* const list = m_desk.Accessible(name);
        for (int i = 0; i < list->childCount(); ++i) {
            values.append(list->child(i)->text(QAccessible::Value));
        }
        return values;
    }
    void compare_shown(const CaseSession& session) {
        const QuestionnaireModel& model = session.GetQuestionnaire().Model();
        const Respondent& respondent = session.GetRespondent();
        QStringList answers;
        for (std::size_t i = 0; i < 2; ++i) {
            const auto& answer = respondent.answers[i];
            answers.append(!answer ? "" : *answer == 1 ? "no" : "yes");
        }
        EXPECT_EQ(values("answerListHolder").mid(0, 2), answers);
        const auto& number = respondent.answers[2];
        EXPECT_EQ(values("numberListHolder").value(0), number ? QString::number(*number) : "");
        QStringList fields = {shown(respondent.id)};
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            const bool isChoice = model.fields[i].type == Field::Type::Choice;
            const bool isMissing = std::holds_alternative<std::monostate>(respondent.fields[i]);
            fields.append(!isChoice   ? fieldShown(model.fields[i], respondent.fields[i])
                          : isMissing ? QString()
                                      : "female");
        }
        EXPECT_EQ(values("fieldFormHolder").mid(0, fields.size()).join('|').toStdString(),
                  fields.join('|').toStdString());
    }

    /// Something may have been kept: the model takes over what is new.
    void kept() {
        const State now = stateOf(m_desk.Session());
        if (now == m_states[m_now]) return;
        m_states.resize(++m_now);
        m_states.push_back(now);
    }
    /// What is expected to be kept now.
    void expect(const std::string& name, const std::string& value) {
        kept();
        EXPECT_EQ(m_states[m_now][name], value) << name;
    }

    void answer() {
        m_desk.Work("focusAnswers");
        m_desk.Press(Qt::Key_Home);
        const std::size_t item = m_dice.Below(2);
        if (item == 1) m_desk.Press(Qt::Key_Down);
        const bool isYes = m_dice.OneIn(2);
        m_desk.Type(isYes ? "y" : "N");
        expect("item " + std::to_string(item), isYes ? "1" : "0");
    }
    void number() {
        m_desk.Work("focusAnswers");
        m_desk.Work("nextPane");
        const int value = static_cast<int>(m_dice.Below(15)) - 7;
        const std::string before = m_states[m_now]["item 2"];
        m_desk.Press(Qt::Key_A, Qt::ControlModifier);
        m_desk.Type(QString::number(value));
        m_desk.Press(Qt::Key_Return);
        const bool isGood = value >= -5 && value <= 5;
        expect("item 2", isGood ? std::to_string(value) : before);
        if (!isGood) m_desk.Press(Qt::Key_Escape);
    }
    void field() {
        static constexpr const char* cDelete = "\x7f";
        struct Keyed {
            int item;
            const char* text;
            const char* kept;  ///< null: refused
        };
        static constexpr Keyed cKeyed[] = {{1, "Ann", "Ann"},
                                           {1, "Zo\xeb", "Zo\xc3\xab"},
                                           {1, "   ", ""},
                                           {2, "40", "40"},
                                           {2, "121", nullptr},
                                           {3, "70.5", "70.5"},
                                           {3, "0.1", nullptr},
                                           {3, "many", nullptr},
                                           {5, "1990-02-28", "1990-02-28"},
                                           {5, "2/29/1990", nullptr},
                                           {6, "3/9/2026", "2026-03-09"},
                                           {7, "14:05", "14:05"},
                                           {7, "25:00", nullptr},
                                           {4, "f", "f"},
                                           {4, cDelete, ""},
                                           {0, "P-2", "P-2"},
                                           {0, "a/b", nullptr}};
        const Keyed& keyed = m_dice.Pick(cKeyed);
        m_desk.Work("focusForm");
        for (int i = 0; i < 8; ++i) m_desk.Press(Qt::Key_Up);
        for (int i = 0; i < keyed.item; ++i) m_desk.Press(Qt::Key_Down);
        const std::string name = keyed.item == 0 ? "id" : "field " + std::to_string(keyed.item - 1);
        const std::string before = m_states[m_now][name];
        const bool isDelete = std::string_view(keyed.text) == cDelete;
        if (isDelete) m_desk.Press(Qt::Key_Delete);
        for (const char letter : std::string_view(isDelete ? "" : keyed.text)) {
            QTest::sendKeyEvent(QTest::Click, m_desk.Focus(), Qt::Key_unknown,
                                QString(QLatin1Char(letter)), Qt::NoModifier);
        }
        m_desk.Press(Qt::Key_Return);
        expect(name, keyed.kept != nullptr ? keyed.kept : before);
    }
    void move() {
        static constexpr std::array cKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab, Qt::Key_F6};
        m_desk.Press(m_dice.Pick(cKeys));
        kept();
    }
    void finish() {
        if (m_dice.OneIn(3)) m_desk.Work("toggleState");
        kept();
    }
    void undo() {
        m_desk.Work("undo");
        if (m_now > 0) --m_now;
    }
    void redo() {
        m_desk.Work("redo");
        if (m_now + 1 < m_states.size()) ++m_now;
    }

    Dice m_dice;
    DeskDriver m_desk;
    std::vector<State> m_states;
    std::size_t m_now = 0;
};

}  // namespace

TEST(DeskEvents, KeepFileWindowAndHistoryTheSame) {
    const int events = tessalink::test::eventCount("TESSALINK_DESK_EVENTS", 150);
    for (const std::uint64_t seed : {1U, 2U}) {
        DeskEvents run(seed);
        for (int event = 0; event < events && !testing::Test::HasFailure(); ++event) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", event " + std::to_string(event));
            run.Step();
        }
        run.Restart();
        for (int event = 0; event < events / 4 && !testing::Test::HasFailure(); ++event) run.Step();
    }
}

}  // namespace tessalink::desk::test
