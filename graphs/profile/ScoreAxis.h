#pragma once

#include <cstdint>

namespace tessalink {

/// The range of scores of a profile graph, and which of them have ticks and labels.
struct ScoreAxis {
    /// No more ticks, and no more labels, are drawn between the ends.
    static constexpr int cMaxTicks = 10'000;

    int min = 0;         ///< the lowest score
    int max = 0;         ///< the highest score
    int majorStep = 0;   ///< between ticks with labels; 0: none
    int minorStep = 0;   ///< between ticks without; 0: none
    int majorBase = 0;   ///< a score that the steps are counted from
    int minorBase = 0;   ///< a score that the steps without labels are counted from
    int labelStart = 0;  ///< the lowest score that is labeled
    int labelEnd = 0;    ///< the highest score that is labeled

    /// A base of 0 means the minimum. The labels go from end to end.
    void Set(int newMin, int newMax, int major, int minor, int newMajorBase, int newMinorBase) {
        min = labelStart = newMin;
        max = labelEnd = newMax;
        majorStep = major;
        minorStep = minor;
        majorBase = newMajorBase != 0 ? newMajorBase : newMin;
        minorBase = newMinorBase != 0 ? newMinorBase : newMin;
    }

    /// Calls `visit(score)` for the labeled scores between the ends.
    template <class Visit>
    void ForEachMajor(Visit visit) const {
        for_each(majorBase, majorStep, labelEnd, visit);
    }
    /// Calls `visit(score)` for the scores above the lower end that have ticks without labels.
    template <class Visit>
    void ForEachMinor(Visit visit) const {
        for_each(minorBase, minorStep, std::int64_t{labelEnd} + 1, visit);
    }

private:
    /// The scores base, base + step ... above the first label and below `end`. A step that does not
    /// lead upward has none.
    template <class Visit>
    void for_each(int base, int step, std::int64_t end, Visit visit) const {
        if (step <= 0) return;
        std::int64_t score = base;
        if (score <= labelStart) score += ((labelStart - score) / step + 1) * step;
        for (int n = 0; score < end && n < cMaxTicks; ++n, score += step) {
            visit(static_cast<int>(score));
        }
    }
};

}  // namespace tessalink
