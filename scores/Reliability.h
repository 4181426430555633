#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "scores/ScoreScale.h"

namespace tessalink {

/// A confidence interval: two scores between which the true score is thought to lie, ready for a
/// range mark of a graph.
struct TESSALINK_API ConfidenceInterval {
    double low = 0;   ///< the lower end
    double high = 0;  ///< the upper end

    /// "92-108": both ends rounded half up to `decimals`, with `between` between them.
    CString Format(int decimals = 0, const char* between = "-") const;
    /// In the scale's decimals; " to " parts the ends where scores may be negative.
    CString Format(const ScoreScale& scale) const;
};

/// What a reliability says about the scores of a scale. All errors are in units of the scale.
/// Source of the formulas: Lord and Novick, Statistical Theories of Mental Test Scores (1968),
/// chapters 2 and 3.
class TESSALINK_API Reliability {
public:
    /// `coefficient` is the reliability in the norm group, from 0 to 1; any other value raises
    /// CInvalidArgException. The scale must live as long as this object.
    Reliability(const ScoreScale& scale, double coefficient);

    /// Standard error of measurement, s sqrt(1 - r): how far the scores of one person scatter
    /// around the true score.
    double GetErrorOfMeasurement() const;
    /// Standard error of estimate of the true score, s sqrt(r (1 - r)).
    double GetErrorOfEstimate() const;
    /// The true score that the score lets expect: mean + r (score - mean).
    double GetEstimatedTrueScore(double score) const;

    /// The confidence interval around the score itself, by the standard error of measurement, held
    /// within the scale's limits. `level` is the confidence, for instance 0.95; one that is not
    /// between 0 and 1 raises CInvalidArgException.
    ConfidenceInterval GetIntervalOfMeasurement(double score, double level) const;
    /// The confidence interval around the estimated true score, by the standard error of estimate,
    /// likewise.
    ConfidenceInterval GetIntervalOfEstimate(double score, double level) const;

private:
    ConfidenceInterval interval(double center, double error, double level) const;

    const ScoreScale& m_scale;
    double m_coefficient;
};

}  // namespace tessalink
