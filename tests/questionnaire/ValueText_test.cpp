#include "questionnaire/ValueText.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "questionnaire/Questionnaire.h"
#include "questionnaire/Scorer.h"
#include "tests/questionnaire/EveryKey.h"
#include "tests/support/RandomQuestionnaire.h"

namespace {

using namespace tessalink;

const QuestionnaireModel& model() {
    static const Questionnaire questionnaire = Questionnaire::Read(test::everyKey(), "q");
    return questionnaire.Model();
}

const Field& fieldOf(std::string_view id) {
    return *std::find_if(model().fields.begin(), model().fields.end(),
                         [&](const Field& field) { return field.id.View() == id; });
}

TEST(ValueText, ReadsBackWhatItWrites) {
    const std::vector<std::pair<const char*, std::vector<FieldValue>>> values = {
        {"Name", {std::string("=1; \"\xC3\xA4\"\n"), std::string("-")}},
        {"Years", {0, 120, 7}},
        {"Weight", {0.5, 1.0 / 3 + 1, 299.99999999999994, 1e2}},
        {"Sex", {1}},
        {"Born", {Date(2000, 2, 29), Date(1999, 12, 31)}},
        {"Began", {Time(0, 0, 0), Time(23, 59, 59), Time(7, 5, 0)}}};
    for (const auto& [id, known] : values) {
        for (const FieldValue& value : known) {
            FieldValue read;
            EXPECT_EQ(readField(fieldOf(id), fieldText(fieldOf(id), value), read), "") << id;
            EXPECT_TRUE(read == value) << id << ": " << fieldText(fieldOf(id), value);
        }
        FieldValue read = known.front();
        EXPECT_EQ(fieldText(fieldOf(id), {}), "");
        EXPECT_EQ(readField(fieldOf(id), "", read), "");
        EXPECT_TRUE(std::holds_alternative<std::monostate>(read));
    }
    for (const ResponseSet& set : model().responseSets) {
        for (int value = set.HasChoices() ? 1 : -5; value <= (set.HasChoices() ? 2 : 5); ++value) {
            Answer read;
            EXPECT_EQ(readAnswer(set, answerText(set, value), read), "");
            EXPECT_EQ(read, value);
        }
    }
    EXPECT_EQ(fieldText(fieldOf("Began"), Time(7, 5, 0)), "07:05");
    EXPECT_EQ(fieldText(fieldOf("Born"), Date(2000, 2, 29)), "2000-02-29");
    EXPECT_EQ(fieldText(fieldOf("Sex"), 1), "f");
    EXPECT_EQ(answerText(model().responseSets[0], 2), "1");
}

TEST(ValueText, SaysWhatIsWrongAndLeavesTheValue) {
    const std::vector<std::pair<const char*, std::vector<const char*>>> wrong = {
        {"Name", {"1234567890123456789012345678901", "\xFF"}},
        {"Years", {"121", "-1", "1.5", "x", " 1"}},
        {"Weight", {"0.4", "1,5", "nan", "inf"}},
        {"Sex", {"m", "F", "1"}},
        {"Born", {"2000-02-30", "29.02.2000", "2000-2-9"}},
        {"Began", {"24:00", "7", "07:05 PM"}}};
    for (const auto& [id, texts] : wrong) {
        for (const char* const text : texts) {
            FieldValue value = std::int32_t{42};
            EXPECT_NE(readField(fieldOf(id), text, value), "") << id << ": " << text;
            EXPECT_TRUE(value == FieldValue(std::int32_t{42}));
        }
    }
    Answer answer = 1;
    EXPECT_NE(readAnswer(model().responseSets[0], "2", answer), "");
    EXPECT_NE(readAnswer(model().responseSets[1], "6", answer), "");
    EXPECT_NE(readAnswer(model().responseSets[1], "1.0", answer), "");
    EXPECT_EQ(answer, 1);
}

TEST(ScoreWhatCan, IsTheScoreWithoutFaultsAndElseTheRawScores) {
    int faulty = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        test::Dice dice(seed);
        test::RandomQuestionnaire random(dice);
        const Scorer scorer(Questionnaire::Read(random.Files(), "q"));
        const Respondent person = random.Answers();
        Scores whole;
        std::string fault;
        try {
            scorer.Score(person, whole);
        } catch (const ScoringError& error) {
            fault = error.what();
        }
        Scores partly;
        const auto faults = scorer.ScoreWhatCan(person, partly);
        ASSERT_EQ(faults.empty(), fault.empty()) << seed;
        EXPECT_EQ(faults.empty() ? "" : faults.front().what(), fault);
        faulty += faults.empty() ? 0 : 1;
        for (std::size_t i = 0; i < partly.scales.size(); ++i) {
            const ScaleResult& scale = partly.scales[i];
            EXPECT_EQ(scale.standard.size(), random.Scales()[i].hasNorms ? 1U : 0U);
            EXPECT_EQ(scale.raw, whole.scales[i].raw);
            if (!fault.empty()) continue;
            for (std::size_t j = 0; j < scale.standard.size(); ++j) {
                EXPECT_EQ(scale.standard[j].score, whole.scales[i].standard[j].score);
            }
        }
        EXPECT_EQ(partly.vectors.size(), 1U);
    }
    EXPECT_GT(faulty, 30);
}

}  // namespace
