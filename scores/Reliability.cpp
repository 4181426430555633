#include "scores/Reliability.h"

#include <cmath>

#include "platform/base/CInvalidArgException.h"
#include "scores/Rounding.h"
#include "scores/StandardScores.h"

namespace tessalink {

namespace {

/// How many standard errors lie on either side of the middle of an interval of this confidence.
double errorsOnEachSide(double level) {
    if (!(level > 0 && level < 1)) AfxThrowInvalidArgException();
    // By the lower tail: near 1 the rank of the upper one would round to 100.
    return -KOVStandardScores::PercentileRank(50 * (1 - level)).GetAsZScore();
}

}  // namespace

CString ConfidenceInterval::Format(int decimals, const char* between) const {
    return formatHalfUp(low, decimals) + between + formatHalfUp(high, decimals);
}

CString ConfidenceInterval::Format(const ScoreScale& scale) const {
    return Format(scale.decimals, scale.lowest < 0 ? " to " : "-");
}

Reliability::Reliability(const ScoreScale& scale, double coefficient)
    : m_scale(scale), m_coefficient(coefficient) {
    if (!(coefficient >= 0 && coefficient <= 1)) AfxThrowInvalidArgException();
}

double Reliability::GetErrorOfMeasurement() const {
    return m_scale.standardDeviation * std::sqrt(1 - m_coefficient);
}

double Reliability::GetErrorOfEstimate() const {
    return m_scale.standardDeviation * std::sqrt(m_coefficient * (1 - m_coefficient));
}

double Reliability::GetEstimatedTrueScore(double score) const {
    return m_scale.mean + m_coefficient * (score - m_scale.mean);
}

ConfidenceInterval Reliability::GetIntervalOfMeasurement(double score, double level) const {
    return interval(score, GetErrorOfMeasurement(), level);
}

ConfidenceInterval Reliability::GetIntervalOfEstimate(double score, double level) const {
    return interval(GetEstimatedTrueScore(score), GetErrorOfEstimate(), level);
}

ConfidenceInterval Reliability::interval(double center, double error, double level) const {
    const double half = errorsOnEachSide(level) * error;
    return {m_scale.Limit(center - half), m_scale.Limit(center + half)};
}

}  // namespace tessalink
