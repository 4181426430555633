#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "scores/Reliability.h"

namespace tessalink {

/// A standard score from the norms.
struct StandardResult {
    std::optional<double> score;                   ///< nothing without raw score or norm
    std::optional<ConfidenceInterval> confidence;  ///< where it is asked for and the norms allow it
};

/// The scores of one scale.
struct ScaleResult {
    std::optional<double> raw;             ///< nothing when too many answers are missing
    int missing = 0;                       ///< how many of its answers
    std::vector<StandardResult> standard;  ///< for each score of NormSource; empty without norms
};

/// Where a person lies in the plane of two scales.
struct VectorResult {
    std::optional<double> length;  ///< nothing when one of the scales has no score
    std::optional<double>
        angle;                  ///< in degrees, 0 to below 360, counterclockwise; none at length 0
    std::optional<int> sector;  ///< from 1; nothing without sectors or angle
};

/// All scores of a person; lists are as long as those of the questionnaire.
struct Scores {
    std::vector<ScaleResult> scales;    ///< one for each scale
    std::vector<VectorResult> vectors;  ///< one for each vector
    /// For each index its values: one, of Shares one for each choice. Nothing where none can be
    /// told: shares of no answers, no complete pair.
    std::vector<std::vector<std::optional<double>>> indexes;
};

/// Why a person can't be scored.
class TESSALINK_API ScoringError : public CException {
    DECLARE_DYNAMIC(ScoringError)

public:
    /// `name` is that of the scale or field in question.
    ScoringError(const CString& name, const CString& message) : CException(message), m_name(name) {}

    /// The scale or field in question.
    const CString& GetName() const { return m_name; }

private:
    CString m_name;
};

/// Scores the answers of persons. A scorer is constant; any number of threads may use it. It keeps
/// its questionnaire.
class TESSALINK_API Scorer {
public:
    /// Keeps the questionnaire; copies of it share what they hold.
    explicit Scorer(Questionnaire questionnaire);
    ~Scorer();
    Scorer(const Scorer&) = delete;
    Scorer& operator=(const Scorer&) = delete;

    /// The questionnaire.
    const Questionnaire& GetQuestionnaire() const;

    /// Makes `scores` those of the person; its lists keep their memory from call to call. A
    /// ScoringError says why norms give none: an age or a raw score outside them, a key that is
    /// missing.
    void Score(const Respondent& respondent, Scores& scores) const;
    /// The same for a person who is still being keyed: scales that the norms have nothing for have
    /// raw scores only, and the faults say why, each once.
    std::vector<ScoringError> ScoreWhatCan(const Respondent& respondent, Scores& scores) const;

private:
    struct Plan;
    std::unique_ptr<const Plan> m_plan;
};

}  // namespace tessalink
