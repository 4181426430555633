#include "scores/Reliability.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/base/CInvalidArgException.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {
namespace {

TEST(Reliability, ErrorsByHand) {
    struct {
        const ScoreScale* scale;
        double coefficient, ofMeasurement, ofEstimate;
    } constexpr cTable[] = {{&cIQScale, 0.90, 4.7434165, 4.5},
                            {&cIQScale, 0.97, 2.5980762, 2.5588083},
                            {&cTScale, 0.84, 4, 3.6660606},
                            {&cScaledScale, 0.75, 1.5, 1.2990381},
                            {&cIQScale, 0, 15, 0},
                            {&cIQScale, 1, 0, 0}};
    for (const auto& [scale, coefficient, ofMeasurement, ofEstimate] : cTable) {
        const Reliability reliability(*scale, coefficient);
        EXPECT_NEAR(reliability.GetErrorOfMeasurement(), ofMeasurement, 1e-7);
        EXPECT_NEAR(reliability.GetErrorOfEstimate(), ofEstimate, 1e-7);
    }
}

TEST(Reliability, RangesByHand) {
    struct {
        double score, level;
        const char* ofMeasurement;
        const char* ofEstimate;
    } constexpr cTable[] = {
        // By an error of measurement of 4.743, and of estimate of 4.5 around 100 + 0.9 (x - 100).
        {100, 0.68, "95.28-104.72", "95.52-104.48"},
        {100, 0.90, "92.20-107.80", "92.60-107.40"},
        {100, 0.95, "90.70-109.30", "91.18-108.82"},
        {100, 0.99, "87.78-112.22", "88.41-111.59"},
        {130, 0.95, "120.70-139.30", "118.18-135.82"},
        {155, 0.95, "145.70-160.00", "140.68-158.32"},
        {42, 0.95, "40.00-51.30", "40.00-56.62"},
    };
    const Reliability reliability(cIQScale, 0.9);
    for (const auto& [score, level, ofMeasurement, ofEstimate] : cTable) {
        EXPECT_EQ(reliability.GetIntervalOfMeasurement(score, level).Format(2), ofMeasurement);
        EXPECT_EQ(reliability.GetIntervalOfEstimate(score, level).Format(2), ofEstimate);
    }
}

TEST(Reliability, EstimatedTrueScore) {
    EXPECT_DOUBLE_EQ(Reliability(cIQScale, 0.9).GetEstimatedTrueScore(130), 127);
    EXPECT_DOUBLE_EQ(Reliability(cTScale, 0).GetEstimatedTrueScore(72), 50);
    EXPECT_DOUBLE_EQ(Reliability(cTScale, 1).GetEstimatedTrueScore(72), 72);
}

TEST(Reliability, OfAPerfectAndOfAUselessTest) {
    EXPECT_EQ(Reliability(cIQScale, 1).GetIntervalOfMeasurement(112, 0.99).Format(), "112-112");
    EXPECT_EQ(Reliability(cIQScale, 0).GetIntervalOfEstimate(140, 0.99).Format(), "100-100");
    EXPECT_EQ(Reliability(cIQScale, 0).GetIntervalOfMeasurement(100, 0.95).Format(), "71-129");
}

TEST(Reliability, LevelsNextToNothingAndToCertainty) {
    const Reliability reliability(cTScale, 0.9);
    const ConfidenceInterval point = reliability.GetIntervalOfMeasurement(50, 1e-12);
    EXPECT_NEAR(point.low, 50, 1e-5);
    EXPECT_NEAR(point.high, 50, 1e-5);
    // 8.2 errors of 3.16 on either side.
    const ConfidenceInterval certain =
        reliability.GetIntervalOfMeasurement(50, std::nextafter(1, 0));
    EXPECT_NEAR(certain.low, 24, 0.5);
    EXPECT_NEAR(certain.high, 76, 0.5);
}

TEST(Reliability, RefusesWhatIsNone) {
    for (const double coefficient : {-0.01, 1.01, 90.0, cNaN}) {
        EXPECT_THROW(Reliability(cIQScale, coefficient), CInvalidArgException) << coefficient;
    }
    const Reliability reliability(cIQScale, 0.9);
    for (const double level : {0.0, 1.0, -0.5, 95.0, cNaN}) {
        EXPECT_THROW(reliability.GetIntervalOfMeasurement(100, level), CInvalidArgException)
            << level;
        EXPECT_THROW(reliability.GetIntervalOfEstimate(100, level), CInvalidArgException) << level;
    }
}

TEST(ConfidenceInterval, AsText) {
    const ConfidenceInterval range{-1.25, 0.5};
    EXPECT_EQ(range.Format(), "-1-1");
    EXPECT_EQ(range.Format(1, " to "), "-1.2 to 0.5");
    EXPECT_EQ((ConfidenceInterval{90.5, 109.49}.Format()), "91-109");
}

}  // namespace
}  // namespace tessalink::test
