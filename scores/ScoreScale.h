#pragma once

#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "scores/StandardScores.h"

namespace tessalink {

/// A linear standard-score scale as data: what a z score of 0 and one standard deviation become,
/// where the scale ends, and how many decimals its scores have.
struct TESSALINK_API ScoreScale {
    const char* name;          ///< in the words of a report: "T score"
    const char* abbreviation;  ///< as column headings have it: "T"
    double mean;               ///< what a z score of 0 becomes
    double standardDeviation;  ///< greater than 0
    double lowest;             ///< the lowest score that is given
    double highest;            ///< the highest score that is given
    int decimals;              ///< digits behind the point of a score

    /// mean + standardDeviation z, rounded half up to the scale's decimals and held within its
    /// limits; NaN when z is not a number.
    double FromZ(double z) const;
    /// mean + standardDeviation z: neither rounded nor limited.
    double FromZExactly(double z) const;
    /// (score - mean) / standardDeviation; scores beyond the limits too.
    double ToZ(double score) const;
    /// The nearest score within the limits.
    double Limit(double score) const;
    /// The score with the scale's decimals.
    CString Format(double score) const;
};

/// The common scales. Their limits are those of most published norm tables: four standard
/// deviations, three for scaled scores. A test with others has a record of its own. They are
/// exported so that each has one address in a program.
TESSALINK_API inline constexpr ScoreScale cZScale = {"z score", "z", 0, 1, -4, 4, 2};
/// T scores: mean 50, standard deviation 10.
TESSALINK_API inline constexpr ScoreScale cTScale = {"T score", "T", 50, 10, 10, 90, 0};
/// IQs: mean 100, standard deviation 15.
TESSALINK_API inline constexpr ScoreScale cIQScale = {"IQ", "IQ", 100, 15, 40, 160, 0};
/// Scaled scores of subtests: mean 10, standard deviation 3.
TESSALINK_API inline constexpr ScoreScale cScaledScale = {"scaled score", "SS", 10, 3, 1, 19, 0};
/// Stanines: mean 5, standard deviation 2.
TESSALINK_API inline constexpr ScoreScale cStanineScale = {"stanine", "SN", 5, 2, 1, 9, 0};
/// Stens: mean 5.5, standard deviation 2.
TESSALINK_API inline constexpr ScoreScale cStenScale = {"sten", "ST", 5.5, 2, 1, 10, 0};

/// The common scale with this abbreviation, in letters of either case; null when there is none.
TESSALINK_API const ScoreScale* findScoreScale(std::string_view abbreviation);

/// A score on one of the scales, as a value in the manner of a stanine.
template <const ScoreScale& SCALE>
class StandardScore {
public:
    static constexpr const ScoreScale& cScale = SCALE;  ///< the scale that the scores are on

    constexpr StandardScore() = default;
    /// Any number is taken as it is.
    constexpr StandardScore(double score) : m_score(score) {}
    /// Rounded and limited as the scale says.
    StandardScore(const KOVStandardScores::ZScore& z) : m_score(SCALE.FromZ(z.GetValue())) {}

    /// The score.
    constexpr double GetValue() const { return m_score; }
    /// Any number is taken as it is.
    constexpr void SetValue(double score) { m_score = score; }
    /// The z score of it, neither rounded nor limited.
    double GetAsZScore() const { return SCALE.ToZ(m_score); }
    /// The score with the scale's decimals.
    CString Format() const { return SCALE.Format(m_score); }

private:
    double m_score = 0;
};

/// A T score.
using TScore = StandardScore<cTScale>;
/// An IQ, and every other standard score with mean 100 and standard deviation 15.
using IQScore = StandardScore<cIQScale>;
/// A scaled score.
using ScaledScore = StandardScore<cScaledScale>;
/// A sten.
using Sten = StandardScore<cStenScale>;

}  // namespace tessalink
