#pragma once

#include <cstdint>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// Normed test scores and how they become one another. All are plain values; no operation allocates
/// but for texts, none raises an error, and any thread may call.
///
/// A plain number is given to the constructor or to SetValue. `rank = 12.5` does not compile, since
/// 12.5 could be a rank or a z score: write `rank.SetValue(12.5)`, `rank = PercentileRank(12.5)` or
/// `rank = ZScore(-1.15)`. The same holds for a Stanine.
///
/// The polynomials and the order of their operations are part of what is promised: every build on
/// every machine gives the same doubles. How far they are from the exact normal distribution stands
/// in docs/scores.md.
namespace KOVStandardScores {

/// A standard normal deviate: mean 0, standard deviation 1.
class TESSALINK_API ZScore {
public:
    constexpr ZScore() = default;
    /// Any number is taken as it is.
    constexpr ZScore(int z) : m_z(z) {}
    /// Any number is taken as it is.
    constexpr ZScore(double z) : m_z(z) {}

    /// The deviate.
    constexpr double GetValue() const { return m_z; }
    /// Any number is taken as it is.
    constexpr void SetValue(double z) { m_z = z; }

private:
    double m_z = 0;
};

/// The standard nine: mean 5, standard deviation 2, in whole numbers from 1 to 9.
class TESSALINK_API Stanine {
public:
    constexpr Stanine() = default;
    /// Any number is taken as it is.
    constexpr Stanine(int stanine) : m_stanine(stanine) {}
    /// 2 z + 5 rounded half up and held within 1 to 9; 0 when z is not a number.
    Stanine(const ZScore& z);
    Stanine& operator=(const ZScore& z);  ///< as the constructor from a z score

    /// The stanine.
    constexpr int GetValue() const { return m_stanine; }
    /// Any number is taken as it is.
    constexpr void SetValue(int stanine) { m_stanine = stanine; }

private:
    std::int32_t m_stanine = 0;
};

/// How many percent of the norm group score lower: 0 to 100.
class TESSALINK_API PercentileRank {
public:
    constexpr PercentileRank() = default;
    /// Any number is taken as it is.
    constexpr PercentileRank(double percent) : m_percent(percent) {}
    /// The normal distribution function, in percent. Source: Abramowitz and Stegun, Handbook of
    /// Mathematical Functions, 26.2.19; the error is below 1.4e-5 percentage points. From about
    /// z = 8.65 on the rank is 100.
    PercentileRank(const ZScore& z);
    PercentileRank& operator=(const ZScore& z);  ///< as the constructor from a z score

    /// The rank.
    constexpr double GetValue() const { return m_percent; }
    /// Any number is taken as it is.
    constexpr void SetValue(double percent) { m_percent = percent; }

    /// The standard normal deviate of the rank. Source: Beasley and Springer, Algorithm AS 111,
    /// Applied Statistics 26 (1977), with coefficients of eight significant digits; the error is
    /// below 1e-6 for ranks from 0.01 to 99.99. A rank of 0 or 100, or outside them, has no
    /// deviate: the result is not a number.
    double GetAsZScore() const;

    /// For tables: a whole number, rounded half up, between 0.5 and 99.5, and one decimal outside,
    /// where a whole number would say 0 or 100: "37", "99.7", "0.3", "99.5".
    CString Format1() const;
    /// For texts: a whole number, rounded half up, "< 1" or "> 99".
    CString FormatLG() const;

private:
    double m_percent = 0;
};

}  // namespace KOVStandardScores
