#pragma once

#include "graphs/bar/BarScale2.h"

namespace tessalink {

/// A scale of percentile ranks at the places of their z scores, the quantiles of the normal
/// distribution: wide apart at the ends, close together in the middle. Its ends should lie from
/// cLowest to cHighest; ranks beyond these are placed there.
class TESSALINK_API PercentileScale : public BarScale2 {
public:
    static constexpr double cLowest = 0.1;    ///< the lowest rank with a place of its own
    static constexpr double cHighest = 99.9;  ///< the highest rank with a place of its own

    using BarScale2::BarScale2;

    int PixX(double rank, const CRect& box) const override;
    int PixXUnrestricted(double rank, const CRect& box) const override;
};

}  // namespace tessalink
