#include "scores/StandardScores.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <type_traits>

#include "tests/scores/ScoreRecord.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {
namespace {

using KOVStandardScores::PercentileRank;
using KOVStandardScores::Stanine;
using KOVStandardScores::ZScore;

double rankOf(double z) {
    return PercentileRank(ZScore(z)).GetValue();
}

double deviateOf(double rank) {
    return PercentileRank(rank).GetAsZScore();
}

int stanineOf(double z) {
    return Stanine(ZScore(z)).GetValue();
}

double justBelow(double value) {
    return std::nextafter(value, -cInfinity);
}

double justAbove(double value) {
    return std::nextafter(value, cInfinity);
}

// --- To the last bit ---

TEST(StandardScores, GiveTheRecordedDigits) {
    expectRecordedValues("rank", rankOf);
    expectRecordedValues("stanine", stanineOf);
    expectRecordedValues("deviate", deviateOf);
}

TEST(StandardScores, GiveTheRecordedDigitsInWholeSweeps) {
    expectRecordedSweep("rank", mapped(zSweep(), rankOf));
    expectRecordedSweep("stanine", mapped(zSweep(), stanineOf));
    expectRecordedSweep("deviate", mapped(rankSweep(), deviateOf));
    expectRecordedSweep("deviate_of_rank", mapped(mapped(zSweep(), rankOf), deviateOf));
    expectRecordedSweep("rank_of_deviate", mapped(mapped(rankSweep(), deviateOf), rankOf));
}

// --- Against the exact normal distribution; docs/scores.md states these errors ---

/// How much of the distribution lies below z, exact to 1e-18 of itself.
long double exactBelow(long double z) {
    return std::erfc(-z / std::numbers::sqrt2_v<long double>) / 2;
}

/// The deviate with so much of the distribution below it, by Newton's method.
long double exactDeviate(long double below, long double start) {
    const long double density =
        std::numbers::inv_sqrtpi_v<long double> / std::numbers::sqrt2_v<long double>;
    long double z = start;
    for (int i = 0; i < 6; ++i) {
        z -= (exactBelow(z) - below) / (density * std::exp(-z * z / 2));
    }
    return z;
}

struct Worst {
    double error = 0;
    double at = 0;

    void Take(long double value, long double exact, double argument) {
        const auto itsError = static_cast<double>(std::fabs(value - exact));
        if (itsError > error) *this = {itsError, argument};
    }
};

TEST(StandardScores, RankIsAsNearToTheNormalDistributionAsStated) {
    Worst worst;
    for (const double z : zSweep()) worst.Take(rankOf(z), 100 * exactBelow(z), z);
    EXPECT_NEAR(worst.error, 1.302e-5, 0.001e-5);
    EXPECT_NEAR(std::fabs(worst.at), 2.761, 0.0005);
}

TEST(StandardScores, DeviateIsAsNearToTheNormalDistributionAsStated) {
    Worst central, tails;
    for (int i = 1; i < 10000; ++i) {
        const double rank = i / 100.0;
        const bool isLower = i <= 5000;
        const long double below = static_cast<long double>(isLower ? i : 10000 - i) / 10000;
        const long double z = deviateOf(rank);
        const long double exact = exactDeviate(below, isLower ? z : -z);
        (i >= 800 && i <= 9200 ? central : tails).Take(z, isLower ? exact : -exact, rank);
    }
    EXPECT_NEAR(central.error, 1.929e-7, 0.001e-7);
    EXPECT_NEAR(std::fabs(central.at - 50), 42, 1e-9);
    EXPECT_NEAR(tails.error, 8.748e-7, 0.001e-7);
    EXPECT_NEAR(std::fabs(tails.at - 50), 49.99, 1e-9);
}

TEST(StandardScores, ComeBackFromTheOtherFormAsNearlyAsStated) {
    struct {
        double reach;
        double error;
    } constexpr cTable[] = {{3, 1.97e-5}, {4, 8.77e-4}, {8, 0.2352}};
    for (const auto& [reach, error] : cTable) {
        Worst worst;
        for (const double z : zSweep()) {
            if (std::fabs(z) <= reach) worst.Take(deviateOf(rankOf(z)), z, z);
        }
        EXPECT_LE(worst.error, error) << "up to " << reach;
        EXPECT_GT(worst.error, 0.99 * error) << "up to " << reach << ", at " << worst.at;
    }
    Worst worst;
    for (const double rank : rankSweep()) worst.Take(rankOf(deviateOf(rank)), rank, rank);
    EXPECT_NEAR(worst.error, 1.384e-5, 0.001e-5);
}

TEST(StandardScores, HigherScoresNeverBecomeLower) {
    const auto isOrdered = [](const std::vector<double>& values) {
        return std::is_sorted(values.begin(), values.end());
    };
    EXPECT_TRUE(isOrdered(mapped(zSweep(), rankOf)));
    EXPECT_TRUE(isOrdered(mapped(zSweep(), stanineOf)));
    EXPECT_TRUE(isOrdered(mapped(rankSweep(), deviateOf)));
    for (const double seam : {8.0, 92.0}) {
        EXPECT_LE(deviateOf(justBelow(seam)), deviateOf(seam));
        EXPECT_LE(deviateOf(seam), deviateOf(justAbove(seam)));
    }
}

// --- Rounding ---

TEST(Stanine, RoundsEveryHalfUp) {
    constexpr double cHair = 0x1p-50;  // seen in all of 2 z + 5
    for (int lower = 1; lower < 9; ++lower) {
        const double z = (lower + 0.5 - 5) / 2;
        EXPECT_EQ(stanineOf(z), lower + 1);
        EXPECT_EQ(stanineOf(z - cHair), lower) << "just below " << z;
        EXPECT_EQ(stanineOf(z + cHair), lower + 1) << "just above " << z;
    }
}

TEST(Stanine, StaysWithinItsLimits) {
    for (const double z : {-2.0, -2.1, -5.0, -1e300, -cInfinity}) EXPECT_EQ(stanineOf(z), 1) << z;
    for (const double z : {2.0, 2.1, 5.0, 1e300, cInfinity}) EXPECT_EQ(stanineOf(z), 9) << z;
    EXPECT_EQ(stanineOf(cNaN), 0);
}

TEST(PercentileRank, TextsRoundEveryHalfUp) {
    for (int lower = 1; lower < 99; ++lower) {
        const double half = lower + 0.5;
        const CString below(std::to_string(lower).c_str());
        const CString above(std::to_string(lower + 1).c_str());
        for (const auto& text : {&PercentileRank::Format1, &PercentileRank::FormatLG}) {
            EXPECT_EQ((PercentileRank(justBelow(half)).*text)(), below);
            EXPECT_EQ((PercentileRank(half).*text)(), above);
            EXPECT_EQ((PercentileRank(justAbove(half)).*text)(), above);
        }
    }
}

TEST(PercentileRank, TextsAtTheEnds) {
    struct {
        double rank;
        const char* forTables;
        const char* forTexts;
    } const cTable[] = {
        {-cInfinity, "-inf", "< 1"},
        {-3, "-3.0", "< 1"},
        {0, "0.0", "< 1"},
        {0.04, "0.0", "< 1"},
        {0.3, "0.3", "< 1"},
        {0.4, "0.4", "< 1"},
        {0.4999999999999999, "0.5", "< 1"},
        {0.5, "0.5", "1"},
        {justAbove(0.5), "1", "1"},
        {1, "1", "1"},
        {37.4, "37", "37"},
        {99, "99", "99"},
        {99.4, "99", "99"},
        {justBelow(99.5), "99", "99"},
        {99.5, "99.5", "> 99"},
        {justAbove(99.5), "99.5", "> 99"},
        {99.6, "99.6", "> 99"},
        {99.7, "99.7", "> 99"},
        {99.96, "100.0", "> 99"},
        {100, "100.0", "> 99"},
        {1e10, "10000000000.0", "> 99"},
        {cInfinity, "inf", "> 99"},
    };
    for (const auto& [rank, forTables, forTexts] : cTable) {
        EXPECT_EQ(PercentileRank(rank).Format1(), forTables) << rank;
        EXPECT_EQ(PercentileRank(rank).FormatLG(), forTexts) << rank;
    }
}

// --- Ends of the number range ---

TEST(PercentileRank, OfExtremeScores) {
    EXPECT_EQ(rankOf(-cInfinity), 0);
    EXPECT_EQ(rankOf(cInfinity), 100);
    EXPECT_TRUE(std::isnan(rankOf(cNaN)));
    EXPECT_LT(rankOf(8.6), 100);
    EXPECT_EQ(rankOf(8.65), 100);
    EXPECT_GT(rankOf(-37), 0);
}

TEST(PercentileRank, WithoutADeviate) {
    for (const double rank : {0.0, -0.0, 100.0, -1.0, 101.0, -cInfinity, cInfinity, cNaN}) {
        EXPECT_TRUE(std::isnan(deviateOf(rank))) << rank;
    }
    EXPECT_TRUE(std::isfinite(deviateOf(justBelow(100))));
    EXPECT_TRUE(std::isfinite(deviateOf(std::numeric_limits<double>::min())));
}

// --- Values ---

TEST(StandardScores, ArePlainValues) {
    for (const bool plain :
         {std::is_trivially_copyable_v<ZScore>, sizeof(ZScore) == 8,
          std::is_trivially_copyable_v<Stanine>, sizeof(Stanine) == 4,
          std::is_trivially_copyable_v<PercentileRank>, sizeof(PercentileRank) == 8}) {
        EXPECT_TRUE(plain);
    }
    EXPECT_EQ(ZScore().GetValue(), 0);
    EXPECT_EQ(ZScore(-2).GetValue(), -2);
    EXPECT_EQ(ZScore(-2.5).GetValue(), -2.5);
    EXPECT_EQ(Stanine().GetValue(), 0);
    EXPECT_EQ(Stanine(-17).GetValue(), -17);
    EXPECT_EQ(PercentileRank().GetValue(), 0);
    EXPECT_EQ(PercentileRank(250.0).GetValue(), 250);
}

TEST(StandardScores, AreAssigned) {
    ZScore z;
    z.SetValue(0.25);
    Stanine stanine(3);
    stanine = z;
    EXPECT_EQ(stanine.GetValue(), 6);
    stanine = Stanine(12);
    EXPECT_EQ(stanine.GetValue(), 12);
    stanine.SetValue(-1);
    EXPECT_EQ(stanine.GetValue(), -1);
    PercentileRank rank(3.0);
    rank = ZScore(0);
    EXPECT_EQ(rank.GetValue(), 50);
    rank = PercentileRank(84.13);
    EXPECT_NEAR(rank.GetAsZScore(), 1, 2e-4);
    rank.SetValue(2.28);
    EXPECT_NEAR(rank.GetAsZScore(), -2, 1e-3);
}

}  // namespace
}  // namespace tessalink::test
