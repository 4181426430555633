#include "questionnaire/Scorer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "core/CsvReader.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/ScoreTable.h"
#include "tests/support/RandomQuestionnaire.h"

namespace tessalink::test {
namespace {

using Scale = RandomQuestionnaire::Scale;

/// What an answer counts before it is weighted.
double counted(const RandomQuestionnaire& test, const RandomQuestionnaire::Part& part, int answer) {
    const auto& set = test.SetOf(part.item);
    return part.isReversed ? set.Least() + set.Most() - set.Value(answer) : set.Value(answer);
}

/// The score of a scale, each replaced answer written out.
std::optional<double> plainScore(const RandomQuestionnaire& test, const Scale& scale,
                                 const Respondent& person, std::size_t& missing) {
    double products = 0;
    double weights = 0;
    missing = 0;
    for (const auto& part : scale.parts) {
        const Answer& answer = person.answers[part.item];
        if (!answer) {
            ++missing;
            continue;
        }
        products += part.weight * counted(test, part, *answer);
        weights += std::abs(part.weight);
    }
    if (missing > scale.allowed || missing == scale.parts.size()) return std::nullopt;
    const double mean = products / weights;
    for (const auto& part : scale.parts) {
        if (person.answers[part.item] || scale.replacement == "none") continue;
        const auto& set = test.SetOf(part.item);
        products += scale.replacement == "mean" ? std::abs(part.weight) * mean
                                                : part.weight * (set.Least() + set.Most()) / 2;
        weights += std::abs(part.weight);
    }
    return scale.isMean ? products / weights : products;
}

bool isNear(const std::optional<double>& a, const std::optional<double>& b) {
    if (!a || !b) return !a && !b;
    return std::abs(*a - *b) <= 1e-9 * std::max(1.0, std::abs(*b));
}

/// What the norms give, from the rule that filled them; throws where they have nothing.
std::optional<double> plainNorm(const Scale& scale, std::size_t index, double raw,
                                const Respondent& person) {
    const int whole = static_cast<int>(std::floor(raw * scale.factor + 0.5));
    int sex = 0;
    if (scale.normsBySex) {
        const auto* const choice = std::get_if<std::int32_t>(&person.fields[0]);
        if (choice == nullptr) throw std::string("Sex");
        sex = *choice - 1;
    }
    if (whole < scale.lowestNorm || whole > scale.highestNorm) {
        throw "S" + std::to_string(index);
    }
    return RandomQuestionnaire::NormFor(index, sex, whole);
}

/// All that a second scorer computes agrees; returns the name that makes the norms fail.
std::string checkAgainstPlain(const RandomQuestionnaire& test, const Respondent& person,
                              const Scores& scores) {
    for (std::size_t i = 0; i < test.Scales().size(); ++i) {
        const Scale& scale = test.Scales()[i];
        std::size_t missing = 0;
        const auto raw = plainScore(test, scale, person, missing);
        try {
            const auto norm =
                raw && scale.hasNorms ? plainNorm(scale, i, *raw, person) : std::nullopt;
            if (scores.scales.empty()) continue;  // they failed; by which scale, is to be found
            const ScaleResult& result = scores.scales[i];
            EXPECT_TRUE(isNear(result.raw, raw)) << *raw << " " << *result.raw;
            EXPECT_EQ(result.missing, static_cast<int>(missing));
            EXPECT_EQ(result.standard.size(), scale.hasNorms ? 1U : 0U);
            if (scale.hasNorms) {
                EXPECT_TRUE(isNear(result.standard[0].score, norm));
                EXPECT_EQ(result.standard[0].confidence.has_value(), norm.has_value());
            }
        } catch (const std::string& name) {
            return name;
        }
    }
    return {};
}

void checkVector(const Scores& scores) {
    const auto& x = scores.scales[0].raw;
    const auto& y = scores.scales[1].raw;
    const VectorResult& vector = scores.vectors[0];
    ASSERT_EQ(vector.length.has_value(), x && y);
    if (!vector.length) return;
    EXPECT_NEAR(*vector.length * *vector.length, *x * *x + *y * *y, 1e-6 * (1 + *x * *x + *y * *y));
    ASSERT_EQ(vector.angle.has_value(), *vector.length > 0);
    if (!vector.angle) return;
    const double radians = *vector.angle * std::numbers::pi / 180;
    EXPECT_NEAR(*vector.length * std::cos(radians), *x, 1e-6 * (1 + *vector.length));
    EXPECT_NEAR(*vector.length * std::sin(radians), *y, 1e-6 * (1 + *vector.length));
    // The middle of sector 1 lies at 0 degrees, that of 2 at 120.
    double off = std::abs(*vector.angle - 120.0 * (*vector.sector - 1));
    off = std::min(off, 360 - off);
    EXPECT_LE(off, 60 + 1e-9);
}

/// The columns of scores hold what the variables of the same names do.
void checkTable(const Questionnaire& questionnaire, const Respondent& person,
                const Scores& scores) {
    VarTable variables;
    fillVariables(questionnaire, person, scores, variables);
    std::string text;
    for (const CString& column : scoreColumns(questionnaire.Model())) {
        text += ",";
        text += column.View();
    }
    text += "\n";
    appendScores(questionnaire.Model(), scores, text);
    text += "\n";
    CMemFile file(text);
    CsvReader reader(file);
    std::vector<CsvCell> row;
    ASSERT_TRUE(reader.ReadRow(row));
    ASSERT_EQ(row.size(), reader.GetHeader().size());
    for (std::size_t i = 1; i < row.size(); ++i) {
        const VariantVar* const variable = variables.Find(reader.GetHeader()[i].text.View());
        ASSERT_NE(variable, nullptr) << reader.GetHeader()[i].text.View();
        ASSERT_TRUE(variable->IsNumber());
        if (row[i].text.IsEmpty()) {
            EXPECT_TRUE(std::isnan(variable->GetAsDouble()));
        } else {
            EXPECT_EQ(std::stod(std::string(row[i].text.View())), variable->GetAsDouble());
        }
    }
    EXPECT_EQ(static_cast<std::size_t>(variables.GetCount()),
              variableNames(questionnaire.Model()).size());
}

TEST(Scorer, AgreesWithAPlainSecondScorer) {
    Dice dice(16);
    int scored = 0;
    int failed = 0;
    for (int round = 0; round < 150; ++round) {
        RandomQuestionnaire test(dice);
        const Questionnaire questionnaire = Questionnaire::Read(test.Files(), "random");
        const Scorer scorer(questionnaire);
        Scores scores;
        for (int person = 0; person < 20; ++person) {
            const Respondent respondent = test.Answers();
            std::string failedBy;
            try {
                scorer.Score(respondent, scores);
            } catch (const ScoringError& error) {
                failedBy = error.GetName().View();
                scores.scales.clear();
            }
            ASSERT_EQ(checkAgainstPlain(test, respondent, scores), failedBy);
            if (!failedBy.empty()) {
                ++failed;
                continue;
            }
            ++scored;
            checkVector(scores);
            checkTable(questionnaire, respondent, scores);
            if (testing::Test::HasFailure()) FAIL() << "round " << round << " person " << person;
        }
    }
    EXPECT_GT(scored, 400);
    EXPECT_GT(failed, 400);
}

}  // namespace
}  // namespace tessalink::test
