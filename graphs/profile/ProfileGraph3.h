#pragma once

#include <memory>
#include <vector>

#include "graphs/profile/ProfileGraph2.h"
#include "platform/base/CByteArray.h"

/// A profile graph with regions, whose limits may differ from scale to scale, in place of flat
/// bands, and with breaks of several kinds. The legend lists the regions that have a label, too.
class TESSALINK_API ProfileGraph3 : public ProfileGraph2 {
public:
    /// What a break looks like. All of them interrupt the profiles.
    static constexpr int cLineBreak = 0;
    static constexpr int cDashedBreak = 1;     ///< a dashed line
    static constexpr int cDoubleBreak = 2;     ///< two lines
    static constexpr int cInvisibleBreak = 3;  ///< nothing is drawn

    using ProfileGraph2::ProfileGraph2;
    ~ProfileGraph3() override;

    /// A region with one low and one high limit for all scales; the label may be null.
    void AddBand(double low, double high, COLORREF color, const char* label);
    /// A region with limits for each scale, of which there must be as many as the graph has scales
    /// now; both arrays are copied.
    void AddBand(const double* lows, const double* highs, COLORREF color, const char* label);
    /// Deletes the flat bands and the regions.
    void RemoveBands();
    /// A kind that there is not is a line.
    void AddBreak(int scale, int kind = cLineBreak);
    /// Removes everything that was added.
    void Clear();

    std::vector<tessalink::ProfileRegion> GetRegions() const override;

protected:
    /// A region of the graph.
    using RegionInfo = tessalink::ProfileRegion;

    /// Draws the flat bands, and then the regions.
    void draw_bands(CDC* dc) override;
    /// Draws each break as its kind says.
    void draw_breaks(CDC* dc) override;
    int legend_entry_count() const override;
    /// The name of an entry, counted from 0: profiles, the sky line, then regions with a label.
    CString legend_entry_name(int index) const override;
    void draw_legend_sample(CDC* dc, int index, int left, int y) override;
    /// Draws the regions, in their order.
    void draw_regions(CDC* dc);

    std::vector<std::unique_ptr<RegionInfo>> m_regions;  ///< only AddBand appends
    CByteArray m_breakKinds;                             ///< beside the breaks

private:
    void add_region(RegionInfo region);
    void draw_region(CDC* dc, const RegionInfo& region) const;
    /// The region of a legend entry after those of the profiles.
    const RegionInfo& labeled_region(int index) const;

    std::vector<const RegionInfo*> m_labeled;  ///< the regions that the legend lists
};
