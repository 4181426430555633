#include "scores/StandardScores.h"

#include <cfloat>
#include <cmath>
#include <span>

#include "platform/base/NumberText.h"
#include "scores/detail/Logarithm.h"

static_assert(FLT_EVAL_METHOD == 0, "doubles must be computed as doubles");

namespace KOVStandardScores {

namespace {

// Stanines.
constexpr double cStanineMean = 5;
constexpr double cStanineDeviation = 2;
constexpr int cLowestStanine = 1;
constexpr int cHighestStanine = 9;

/// The polynomial with the coefficient of the highest power first.
constexpr double polynomial(std::span<const double> coefficients, double x) {
    double sum = coefficients.front();
    for (const double coefficient : coefficients.subspan(1)) sum = sum * x + coefficient;
    return sum;
}

// Abramowitz and Stegun 26.2.19.
constexpr double cTail[] = {5.383e-6,     4.88906e-5,  3.80036e-5, 0.0032776263,
                            0.0211410061, 0.049867347, 1};

// Beasley and Springer, AS 111.
constexpr double cLowestCentral = 0.08;
constexpr double cHighestCentral = 0.92;
constexpr double cCentralAbove[] = {-25.4410605, 41.3911977, -18.6150006, 2.5066282};
constexpr double cCentralBelow[] = {3.1308291, -21.062241, 23.0833674, -8.4735109, 1};
constexpr double cTailAbove[] = {2.3212128, 4.8501413, -2.2979648, -2.7871893};
constexpr double cTailBelow[] = {1.6370678, 3.5438892, 1};

// From which rank on the text of a whole number would say 0 or 100.
constexpr double cLowestWhole = 0.5;
constexpr double cHighestWhole = 99.5;
constexpr int cLowestRank = 1;
constexpr int cHighestRank = 99;

int wholeHalfUp(double value) {
    return tessalink::toInt(value + 0.5);
}

int stanineOf(double z) {
    const double s = cStanineDeviation * z + cStanineMean;
    if (s < cLowestStanine) return cLowestStanine;
    if (s > cHighestStanine) return cHighestStanine;
    return wholeHalfUp(s);
}

double percentOf(double z) {
    double power = polynomial(cTail, std::fabs(z));
    for (int squaring = 0; squaring < 4; ++squaring) power *= power;
    const double tail = 0.5 / power;
    return z >= 0 ? 100 * (1 - tail) : 100 * tail;
}

double centralDeviate(double p) {
    const double q = p - 0.5;
    const double r = q * q;
    return q * polynomial(cCentralAbove, r) / polynomial(cCentralBelow, r);
}

double tailDeviate(double p) {
    const double u = p <= 0.5 ? p : 1 - p;
    const double w = std::sqrt(-tessalink::detail::logarithm(u));
    const double v = polynomial(cTailAbove, w) / polynomial(cTailBelow, w);
    return p >= 0.5 ? v : -v;
}

CString wholeNumber(int value) {
    char text[tessalink::cMaxIntText];
    return CString(text, static_cast<int>(tessalink::writeInt(text, value) - text));
}

}  // namespace

Stanine::Stanine(const ZScore& z) : m_stanine(stanineOf(z.GetValue())) {}

Stanine& Stanine::operator=(const ZScore& z) {
    m_stanine = stanineOf(z.GetValue());
    return *this;
}

PercentileRank::PercentileRank(const ZScore& z) : m_percent(percentOf(z.GetValue())) {}

PercentileRank& PercentileRank::operator=(const ZScore& z) {
    m_percent = percentOf(z.GetValue());
    return *this;
}

double PercentileRank::GetAsZScore() const {
    const double p = m_percent / 100;
    const bool central = p >= cLowestCentral && p <= cHighestCentral;
    return central ? centralDeviate(p) : tailDeviate(p);
}

CString PercentileRank::Format1() const {
    const bool whole = m_percent > cLowestWhole && m_percent < cHighestWhole;
    return whole ? wholeNumber(wholeHalfUp(m_percent)) : tessalink::formatDouble(m_percent, 0, 1);
}

CString PercentileRank::FormatLG() const {
    const int rank = wholeHalfUp(m_percent);
    if (rank < cLowestRank) return "< 1";
    if (rank > cHighestRank) return "> 99";
    return wholeNumber(rank);
}

}  // namespace KOVStandardScores
