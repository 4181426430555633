// Random edits with undo and redo, against a plain list of states.
#include "apps/desk/session/CaseSession.h"

#include <gtest/gtest.h>

#include <map>

#include "questionnaire/ValueText.h"
#include "tests/desk/StoreParts.h"
#include "tests/support/Dice.h"

namespace {

using namespace tessalink;
using namespace tessalink::desk;
using desk::test::otherQuestionnaire;
using desk::test::smallQuestionnaire;
using desk::test::testOptions;
using tessalink::test::Dice;

/// What a case holds, as plain texts.
struct PlainCase {
    std::map<std::string, std::string> values;  ///< by kind and id
    std::string label;
    CaseState state = CaseState::Open;

    bool operator==(const PlainCase&) const = default;
};

std::string keyOf(EntryKind kind, const std::string& id) {
    return std::to_string(static_cast<int>(kind)) + id;
}

/// The case as the file has it.
PlainCase storedCase(CaseStore& store, CaseId id) {
    PlainCase plain;
    for (const Entry& entry : store.Entries(id)) {
        plain.values[keyOf(entry.name.kind, entry.name.id)] = entry.value;
    }
    plain.label = store.Summary(id).label;
    plain.state = store.Summary(id).state;
    return plain;
}

/// The case as the session shows it.
PlainCase shownCase(const CaseSession& session) {
    PlainCase plain;
    const QuestionnaireModel& model = session.GetQuestionnaire().Model();
    const auto put = [&](EntryKind kind, const CString& id, const std::string& text) {
        if (!text.empty()) plain.values[keyOf(kind, id.GetString())] = text;
    };
    for (std::size_t i = 0; i < model.items.size(); ++i) {
        const ResponseSet& set = model.responseSets[model.items[i].responses];
        put(EntryKind::Answer, model.items[i].id,
            answerText(set, session.GetRespondent().answers[i]));
        put(EntryKind::SecondAnswer, model.items[i].id,
            answerText(set, session.GetSecondAnswers()[i]));
    }
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        put(EntryKind::Field, model.fields[i].id,
            fieldText(model.fields[i], session.GetRespondent().fields[i]));
    }
    plain.label = session.GetRespondent().id;
    plain.state = session.GetSummary().state;
    return plain;
}

Answer randomAnswer(Dice& dice, const ResponseSet& set) {
    if (dice.OneIn(4)) return std::nullopt;
    const int count =
        set.HasChoices() ? static_cast<int>(set.choices.size()) : set.highest - set.lowest + 1;
    return (set.HasChoices() ? 1 : set.lowest) +
           static_cast<int>(dice.Below(static_cast<std::size_t>(count)));
}

FieldValue randomValue(Dice& dice, const Field& field) {
    if (dice.OneIn(4)) return {};
    switch (field.type) {
        case Field::Type::Integer:
            return static_cast<std::int32_t>(dice.Below(121));
        case Field::Type::Decimal:
            return 0.5 + static_cast<double>(dice.Below(2000)) / 7;
        case Field::Type::Choice:
            return static_cast<std::int32_t>(1 + dice.Below(field.choices.size()));
        case Field::Type::Date:
            return Date(1900 + static_cast<int>(dice.Below(120)), 2,
                        1 + static_cast<int>(dice.Below(28)));
        case Field::Type::Time:
            return Time(static_cast<int>(dice.Below(24)), 5, static_cast<int>(dice.Below(2)) * 30);
        case Field::Type::Text:
            break;
    }
    return dice.Text(1 + dice.Below(20), "ab ='\"%;-");
}

/// One random change; what it must lead to goes into `plain`.
void changeRandomly(Dice& dice, CaseSession& session, PlainCase& plain) {
    const QuestionnaireModel& model = session.GetQuestionnaire().Model();
    const auto put = [&](EntryKind kind, const CString& id, const std::string& text) {
        if (text.empty()) {
            plain.values.erase(keyOf(kind, id.GetString()));
        } else {
            plain.values[keyOf(kind, id.GetString())] = text;
        }
    };
    const std::size_t act = dice.Below(10);
    if (act < 6) {
        const std::size_t item = dice.Below(model.items.size());
        const ResponseSet& set = model.responseSets[model.items[item].responses];
        const Answer answer = randomAnswer(dice, set);
        put(act < 4 ? EntryKind::Answer : EntryKind::SecondAnswer, model.items[item].id,
            answerText(set, answer));
        act < 4 ? session.SetAnswer(item, answer) : session.SetSecondAnswer(item, answer);
    } else if (act < 8) {
        const std::size_t field = dice.Below(model.fields.size());
        const FieldValue value = randomValue(dice, model.fields[field]);
        put(EntryKind::Field, model.fields[field].id, fieldText(model.fields[field], value));
        session.SetField(field, value);
    } else if (act == 8) {
        plain.label = "P" + std::to_string(dice.Below(5));
        session.SetLabel(plain.label);
    } else {
        plain.state = dice.OneIn(2) ? CaseState::Open : CaseState::Complete;
        session.SetState(plain.state);
    }
}

/// The state that the trail leads to from an empty case.
PlainCase toldCase(CaseStore& store, CaseId id) {
    PlainCase plain;
    for (const TrailEntry& entry : store.Trail(id)) {
        const auto put = [&](EntryKind kind) {
            auto& values = plain.values;
            const std::string key = keyOf(kind, entry.name);
            EXPECT_EQ(values.count(key) > 0 ? std::optional(values[key]) : std::nullopt,
                      entry.from);
            if (entry.to) {
                values[key] = *entry.to;
            } else {
                values.erase(key);
            }
        };
        switch (entry.act) {
            case TrailAct::Answer:
                put(EntryKind::Answer);
                break;
            case TrailAct::SecondAnswer:
                put(EntryKind::SecondAnswer);
                break;
            case TrailAct::Field:
                put(EntryKind::Field);
                break;
            case TrailAct::Added:
            case TrailAct::Label:
                plain.label = *entry.to;
                break;
            default:
                plain.state = *entry.to == "open" ? CaseState::Open : CaseState::Complete;
        }
    }
    return plain;
}

TEST(CaseSession, FollowsRandomEditsUndosAndRedos) {
    const TemporaryFolder folder;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        Dice dice(seed);
        const std::string path = folder.Path(std::to_string(seed) + ".cases");
        CaseStore store = CaseStore::Create(path, testOptions());
        const CaseId id = store.AddCase(smallQuestionnaire(), "P0");
        std::optional<CaseSession> session(std::in_place, store, id);
        std::vector<PlainCase> states = {storedCase(store, id)};
        std::size_t now = 0;
        for (int step = 0; step < 150; ++step) {
            if (dice.OneIn(40)) {
                session.emplace(store, id);
                states = {states[now]};
                now = 0;
            } else if (dice.OneIn(3)) {
                ASSERT_EQ(session->CanUndo(), now > 0);
                if (now > 0) --now;
                session->Undo();
            } else if (dice.OneIn(3)) {
                ASSERT_EQ(session->CanRedo(), now + 1 < states.size());
                if (now + 1 < states.size()) ++now;
                session->Redo();
            } else {
                PlainCase next = states[now];
                changeRandomly(dice, *session, next);
                if (next != states[now]) {
                    states.resize(++now);
                    states.push_back(next);
                }
            }
            ASSERT_EQ(shownCase(*session), states[now]) << "seed " << seed << " step " << step;
            ASSERT_EQ(storedCase(store, id), states[now]) << "seed " << seed << " step " << step;
            const auto& answers = session->GetRespondent().answers;
            ASSERT_EQ(static_cast<std::size_t>(store.Summary(id).answered),
                      answers.size() - static_cast<std::size_t>(std::count(
                                           answers.begin(), answers.end(), std::nullopt)));
            Scores scores;
            Scorer(smallQuestionnaire()).ScoreWhatCan(session->GetRespondent(), scores);
            ASSERT_EQ(session->GetScores().scales[0].raw, scores.scales[0].raw);
        }
        ASSERT_EQ(toldCase(store, id), states[now]) << "seed " << seed;
    }
}

TEST(CaseSession, SaysWhyThereAreNoNormsAndRefusesWhatCantBe) {
    const TemporaryFolder folder;
    CaseStore store = CaseStore::Create(folder.Path("a.cases"), testOptions());
    CaseSession session(store, store.AddCase(smallQuestionnaire(), "P1"));
    session.SetAnswer(0, 2);
    session.SetAnswer(1, 2);
    ASSERT_EQ(session.GetScoreFaults().size(), 1U);
    EXPECT_NE(session.GetScoreFaults()[0].sentence, "");
    EXPECT_EQ(session.GetScores().scales[0].raw, 3.0);
    session.SetField(3, 1);
    session.SetField(4, Date(2000, 1, 1));
    session.SetField(5, Date(2010, 1, 1));
    EXPECT_TRUE(session.GetScoreFaults().empty());
    EXPECT_EQ(session.GetScores().scales[0].standard[0].score, 50.0);
    EXPECT_THROW(session.SetAnswer(0, 3), std::invalid_argument);
    EXPECT_THROW(session.SetAnswer(2, 6), std::invalid_argument);
    EXPECT_THROW(session.SetField(1, 121), std::invalid_argument);
    EXPECT_THROW(session.SetField(3, 0), std::invalid_argument);
    EXPECT_THROW(session.SetLabel("a/b"), std::invalid_argument);
    EXPECT_EQ(session.UndoStep().name, "Tested");
}

TEST(CaseStore, AddsManyCasesOrNone) {
    const TemporaryFolder folder;
    CaseStore store = CaseStore::Create(folder.Path("a.cases"), testOptions());
    const EntryName first{EntryKind::Answer, "Q1"};
    const std::vector<NewCase> cases = {
        {"P1", {{first, "0"}, {first, "1"}, {{EntryKind::Answer, "Q2"}, ""}}, CaseState::Complete},
        {"P2"}};
    const auto ids = store.AddCases(smallQuestionnaire(), cases);
    ASSERT_EQ(ids, (std::vector<CaseId>{1, 2}));
    EXPECT_EQ(store.Entries(1), (std::vector<Entry>{{first, "1"}}));
    EXPECT_EQ(store.Summary(1).answered, 1);
    EXPECT_EQ(store.Summary(1).state, CaseState::Complete);
    EXPECT_EQ(store.Trail().size(), 2U);
    // The number of a deleted case is never given again.
    store.Delete(2);
    EXPECT_EQ(store.AddCase(smallQuestionnaire(), "P3"), 3);
    EXPECT_THROW(store.SetLabel(2, "x"), CaseStoreError);
    EXPECT_THROW(store.SetEntry(2, first, "1"), CaseStoreError);
}

TEST(CaseSession, KeepsWhatAnotherVersionHasNoPlaceFor) {
    const TemporaryFolder folder;
    CaseStore store = CaseStore::Create(folder.Path("a.cases"), testOptions());
    std::vector<NewCase> cases(1);
    cases[0].label = "P1";
    cases[0].entries.resize(2);
    cases[0].entries[0].name.id = "Q1";
    cases[0].entries[0].value = "1";
    cases[0].entries[1].name.id = "Q9";
    cases[0].entries[1].value = "x";
    const CaseId id = store.AddCases(smallQuestionnaire(), cases).front();
    CaseSession session(store, id);
    ASSERT_EQ(session.GetUnusedEntries().size(), 1U);
    EXPECT_EQ(session.GetUnusedEntries()[0].entry.name.id, "Q9");
    session.SetQuestionnaire(otherQuestionnaire());
    EXPECT_EQ(session.GetQuestionnaire().Hash(), otherQuestionnaire().Hash());
    EXPECT_EQ(session.GetRespondent().answers[0], 2);
    EXPECT_EQ(store.Entries(id).size(), 2U);
    EXPECT_EQ(store.Trail(id).back().act, TrailAct::Questionnaire);
    EXPECT_EQ(store.Questionnaires().size(), 2U);
    EXPECT_EQ(store.FilesOf(smallQuestionnaire().Hash()), smallQuestionnaire().Files());
}

}  // namespace
