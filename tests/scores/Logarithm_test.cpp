#include "scores/detail/Logarithm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/scores/ScoreRecord.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

using detail::logarithm;

/// The arguments of the recorded sweep: numbers of all sizes, ranks of all sizes, both sides of 1.
std::vector<double> logarithmSweep() {
    std::vector<double> sweep;
    std::uint64_t state = 1;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        const double mantissa = 1 + std::ldexp(static_cast<double>(state >> 12), -52);
        const double square = static_cast<double>(i) * (i + 1);
        sweep.push_back(std::ldexp(mantissa, i % 2098 - 1074));
        sweep.push_back(std::ldexp(mantissa, -1 - i % 60));
        sweep.push_back(1 + std::ldexp(square, -53));
        sweep.push_back(1 - std::ldexp(square, -54));
    }
    return sweep;
}

TEST(Logarithm, GivesTheRecordedDigits) {
    expectRecordedValues("log", logarithm);
    expectRecordedSweep("log", mapped(logarithmSweep(), logarithm));
}

TEST(Logarithm, IsTheDoubleNearestToTheExactOne) {
    if (std::numeric_limits<long double>::digits < 64) GTEST_SKIP() << "no better logarithm here";
    // The system's own long logarithm may be off by one of its last digits.
    constexpr long double cSlack = 1 + 0x1p-9L;
    Dice dice(7);
    for (int i = 0; i < 300'000; ++i) {
        const double scale = static_cast<double>(dice.Word() >> 11);
        const double x = std::ldexp(scale, -53 - static_cast<int>(dice.Below(60)));
        if (x == 0) continue;
        const double own = logarithm(x);
        const long double exact = std::log(static_cast<long double>(x));
        const double gap = std::nextafter(std::fabs(own), INFINITY) - std::fabs(own);
        ASSERT_LE(std::fabs(own - exact), cSlack * gap / 2) << std::hexfloat << x;
    }
}

TEST(Logarithm, OfWhatHasNone) {
    constexpr double cInfinity = std::numeric_limits<double>::infinity();
    for (const double x : {0.0, -0.0, -1.0, cInfinity, -cInfinity, std::nan("")}) {
        EXPECT_TRUE(std::isnan(logarithm(x))) << x;
    }
}

}  // namespace
}  // namespace tessalink::test
