#include "graphs/file/PercentileScale.h"

#include <algorithm>

#include "graphs/common/DeviceUnits.h"
#include "scores/StandardScores.h"

namespace tessalink {

namespace {

double deviateOf(double rank) {
    constexpr double low = PercentileScale::cLowest;
    constexpr double high = PercentileScale::cHighest;
    return KOVStandardScores::PercentileRank(std::clamp(rank, low, high)).GetAsZScore();
}

}  // namespace

int PercentileScale::PixX(double rank, const CRect& box) const {
    const double held = std::min<double>(std::max<double>(rank, GetMinPlotVal()), GetMaxPlotVal());
    return PixXUnrestricted(held, box);
}

int PercentileScale::PixXUnrestricted(double rank, const CRect& box) const {
    const double from = deviateOf(GetScaleMin());
    const double part = (deviateOf(rank) - from) / (deviateOf(GetScaleMax()) - from);
    return wrapAdd(box.left, toDevice(part * box.Width()));
}

}  // namespace tessalink
