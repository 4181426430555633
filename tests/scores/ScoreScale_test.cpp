#include "scores/ScoreScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "scores/Rounding.h"
#include "tests/scores/ScoreRecord.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {
namespace {

constexpr const ScoreScale* cScales[] = {&cZScale,      &cTScale,       &cIQScale,
                                         &cScaledScale, &cStanineScale, &cStenScale};

TEST(Rounding, HalvesGoUp) {
    struct {
        double value;
        int decimals;
        const char* text;
    } const cTable[] = {
        {2.5, 0, "3"},
        {-2.5, 0, "-2"},
        {0.5, 0, "1"},
        {-0.5, 0, "0"},
        {0.49999999999999994, 0, "0"},
        {-0.5000000000000001, 0, "-1"},
        {-0.0, 0, "0"},
        {-0.004, 2, "0.00"},
        {0.125, 2, "0.13"},
        {-0.125, 2, "-0.12"},
        {1.005, 2, "1.01"},
        {-1.005, 2, "-1.00"},
        {1.265, 2, "1.27"},
        {2.675, 2, "2.68"},
        {1.1499999999999995, 1, "1.1"},
        {1.14, 2, "1.14"},
        {123456.0000005, 6, "123456.000001"},
        {99.99, 1, "100.0"},
        {4503599627370497, 0, "4503599627370497"},
        {cInfinity, 1, "inf"},
        {-cInfinity, 0, "-inf"},
    };
    for (const auto& [value, decimals, text] : cTable) {
        EXPECT_EQ(formatHalfUp(value, decimals), text);
    }
    EXPECT_TRUE(std::isnan(roundHalfUp(cNaN, 1)));
}

TEST(ScoreScale, GivesTheRecordedDigitsInAWholeSweep) {
    for (const ScoreScale* scale : cScales) {
        expectRecordedSweep(scale->abbreviation,
                            mapped(zSweep(), [=](double z) { return scale->FromZ(z); }));
    }
}

TEST(ScoreScale, RoundsEveryHalfUp) {
    for (const ScoreScale* scale : cScales) {
        const double unit = std::pow(10, scale->decimals);
        for (double lower = scale->lowest * unit; lower < scale->highest * unit; ++lower) {
            const double half = (lower + 0.5) / unit;
            const double z = scale->ToZ(half);
            EXPECT_EQ(scale->FromZ(z), (lower + 1) / unit) << scale->name << ", z " << z;
            EXPECT_EQ(scale->FromZ(z - 1e-14), lower / unit) << scale->name << ", below z " << z;
        }
    }
}

TEST(ScoreScale, LimitsAndWhatIsNoNumber) {
    for (const ScoreScale* scale : cScales) {
        for (const double z : {4.5, 1e300, cInfinity}) {
            EXPECT_EQ(scale->FromZ(z), scale->highest) << scale->name;
            EXPECT_EQ(scale->FromZ(-z), scale->lowest) << scale->name;
        }
        EXPECT_TRUE(std::isnan(scale->FromZ(cNaN))) << scale->name;
        EXPECT_TRUE(std::isnan(scale->Limit(cNaN))) << scale->name;
        EXPECT_EQ(scale->Limit(scale->highest + 1), scale->highest);
        EXPECT_EQ(scale->Limit(scale->mean), scale->mean);
    }
}

TEST(ScoreScale, PublishedEquivalents) {
    // Columns of any table of standard scores.
    struct {
        double z, t, iq, scaled, sten;
    } constexpr cTable[] = {{-2, 30, 70, 4, 2},  {-1, 40, 85, 7, 4},   {0, 50, 100, 10, 6},
                            {1, 60, 115, 13, 8}, {2, 70, 130, 16, 10}, {3, 80, 145, 19, 10}};
    for (const auto& [z, t, iq, scaled, sten] : cTable) {
        const KOVStandardScores::ZScore score(z);
        EXPECT_EQ(TScore(score).GetValue(), t);
        EXPECT_EQ(IQScore(score).GetValue(), iq);
        EXPECT_EQ(ScaledScore(score).GetValue(), scaled);
        EXPECT_EQ(Sten(score).GetValue(), sten);
        EXPECT_EQ(TScore(t).GetAsZScore(), z);
        EXPECT_EQ(IQScore(iq).GetAsZScore(), z);
    }
}

TEST(ScoreScale, StaninesAgreeWithTheTypeOfTheirOwn) {
    for (const double z : zSweep()) {
        const KOVStandardScores::Stanine stanine{KOVStandardScores::ZScore(z)};
        ASSERT_EQ(cStanineScale.FromZ(z), stanine.GetValue()) << z;
    }
}

TEST(ScoreScale, ScoresBeyondTheLimitsKeepTheirDeviate) {
    EXPECT_EQ(cIQScale.ToZ(190), 6);
    EXPECT_EQ(cIQScale.FromZExactly(6), 190);
    EXPECT_EQ(cIQScale.FromZExactly(0.01), 100.15);
}

TEST(ScoreScale, ValuesAndTexts) {
    TScore score;
    EXPECT_EQ(score.GetValue(), 0);
    score.SetValue(61.5);
    EXPECT_EQ(score.Format(), "62");
    score = KOVStandardScores::ZScore(-0.5);
    EXPECT_EQ(score.GetValue(), 45);
    EXPECT_EQ(score.Format(), "45");
    EXPECT_EQ(cZScale.Format(-0.125), "-0.12");
}

TEST(ScoreScale, IsFoundByItsAbbreviation) {
    for (const ScoreScale* scale : cScales) {
        ASSERT_NE(findScoreScale(scale->abbreviation), nullptr);
        EXPECT_STREQ(findScoreScale(scale->abbreviation)->abbreviation, scale->abbreviation);
    }
    EXPECT_STREQ(findScoreScale("iq")->abbreviation, cIQScale.abbreviation);
    for (const char* unknown : {"", "I", "IQQ", "T score"}) {
        EXPECT_EQ(findScoreScale(unknown), nullptr) << unknown;
    }
}

}  // namespace
}  // namespace tessalink::test
