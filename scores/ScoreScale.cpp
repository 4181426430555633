#include "scores/ScoreScale.h"

#include <algorithm>
#include <array>

#include "scores/Rounding.h"

namespace tessalink {

namespace {

constexpr std::array<const ScoreScale*, 6> cScales = {&cZScale,      &cTScale,       &cIQScale,
                                                      &cScaledScale, &cStanineScale, &cStenScale};

}  // namespace

double ScoreScale::FromZ(double z) const {
    return Limit(roundHalfUp(FromZExactly(z), decimals));
}

// Not in the header: a host's compiler might fuse the operations and change a digit.
double ScoreScale::FromZExactly(double z) const {
    return mean + standardDeviation * z;
}

double ScoreScale::ToZ(double score) const {
    return (score - mean) / standardDeviation;
}

double ScoreScale::Limit(double score) const {
    return score < lowest ? lowest : score > highest ? highest : score;
}

CString ScoreScale::Format(double score) const {
    return formatHalfUp(score, decimals);
}

const ScoreScale* findScoreScale(std::string_view abbreviation) {
    const CString wanted(abbreviation);
    const auto scale = std::find_if(cScales.begin(), cScales.end(), [&](const ScoreScale* s) {
        return wanted.CompareNoCase(s->abbreviation) == 0;
    });
    return scale != cScales.end() ? *scale : nullptr;
}

}  // namespace tessalink
