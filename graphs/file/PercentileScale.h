#pragma once

#include "graphs/bar/BarScale2.h"

namespace tessalink {

/// A scale of percentile ranks that lie where the normal curve has them: wide apart at the ends,
/// close together in the middle. Its ends should lie between cLowest and cHighest; ranks beyond
/// those lie there.
class TESSALINK_API PercentileScale : public BarScale2 {
public:
    static constexpr double cLowest = 0.1;
    static constexpr double cHighest = 99.9;

    using BarScale2::BarScale2;

    int PixX(double rank, const CRect& box) const override;
    int PixXUnrestricted(double rank, const CRect& box) const override;
};

}  // namespace tessalink
