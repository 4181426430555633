#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "graphs/profile/BandInfo.h"
#include "graphs/profile/ProfileInfo.h"
#include "platform/base/CStringArray.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

/// Where the names of the profiles stand.
enum class ProfileLegend {
    None = 0,
    Inside = 1,  ///< in the plot, at the place that SetLegendPosition names
    Below = 2,   ///< under the scales, in rows that take room from the plot
};

/// What the profile graphs have in common: a score axis, a row of scales, bands, breaks, reference
/// lines, a sky line, profiles and a legend, scaled from a design size to any rectangle. It is used
/// through ProfileGraph, ProfileGraph2 and ProfileGraph3.
///
/// Scales are numbered from 1, x is 0 at the left end and the number of scales + 1 at the right
/// end. A score that equals the missing value, is not a number, or has no place in the profile's
/// array is no score. All arrays that are handed over come from an array new and are deleted by the
/// graph; a profile without known number of scores (added before there were scales) has as many as
/// the first scales that are set afterwards.
class TESSALINK_API ProfileChart {
public:
    using ProfileInfo = tessalink::ProfileInfo;

    static constexpr double cDefaultMissingValue = -999999999.0;
    /// No more ticks, and no more labels, are drawn between the ends of an axis.
    static constexpr int cMaxTicks = 10'000;
    static constexpr int cMaxLegendRows = 4;

    virtual ~ProfileChart();
    ProfileChart(const ProfileChart&) = delete;
    ProfileChart& operator=(const ProfileChart&) = delete;

    /// Draws the whole graph. The context's colours, alignment, pen, brush and font are as before
    /// afterwards, also after an exception. A rectangle too small for any text gets its frame only.
    virtual void Draw(CDC* dc, CRect rect);

protected:
    /// Whether scales stand at whole numbers with half a cell to spare at both ends, or in the
    /// middle of cells that share the plot's width.
    enum class ScaleAxis { Points, Cells };

    explicit ProfileChart(ScaleAxis axis) : m_axis(axis) {}

    // The steps of Draw. Variants override them.

    /// Sets the rectangle of the legend.
    virtual void calc_legend_rect(CDC* dc);
    virtual void draw_bands(CDC* dc);
    virtual void draw_breaks(CDC* dc);
    virtual void draw_data_series(CDC* dc);
    virtual void draw_horz_lines(CDC* dc);
    virtual void draw_sky_line(CDC* dc);
    virtual void draw_x_axis(CDC* dc);
    virtual void draw_y_axis(CDC* dc, int x, int isLeft);
    virtual void draw_line_legends(CDC* dc);
    /// What stands at one point; `scaleIndex` counts from 0.
    virtual void plot_data(CDC* dc, int x, int y, int size, int scaleIndex, ProfileInfo* profile);
    /// Computes the plot from the rectangle, and measures the letter "M".
    virtual void recalc_layout(CDC* dc, CRect& rect);

    // The entries of the legend: one for each profile, to which a variant adds.
    virtual int legend_entry_count() const;
    virtual CString legend_entry_name(int index) const;
    /// The sample of an entry: 3 characters wide from (left, y), y is its middle.
    virtual void draw_legend_sample(CDC* dc, int index, int left, int y);

public:
    /// Sets the range of scores, and with it the labels' start and end, the steps of ticks with and
    /// without labels (0: none) and the scores that they are counted from; 0 means the minimum.
    void SetYRange(int min, int max, int majorStep, int minorStep, int majorBase, int minorBase);
    /// The lowest and the highest score that is labelled.
    void SetYLabelStart(int score) { m_labelStart = score; }
    void SetYLabelEnd(int score) { m_labelEnd = score; }
    /// The title of the score axis, with switches of fonts.
    void SetYLegend(const CString& title) { m_yLegend = title; }
    /// The size that all fonts and pens are designed for.
    void SetDesignSize(int width, int height) {
        m_designWidth = width;
        m_designHeight = height;
    }
    void SetMissingValue(double value) { m_missingValue = value; }
    double GetMissingValue() const { return m_missingValue; }

    /// Changes the name, the scores or both (those that are not null) of the first profile with the
    /// identifier. Returns 0 when there is none; scores given are deleted then.
    int UpdateProfile(std::uint32_t id, const char* name, double* values);
    /// Deletes the first profile with the identifier, if there is one.
    void RemoveProfile(std::uint32_t id);
    void RemoveProfiles();

    /// Takes over one limit for each scale, and shows the sky line.
    void AddSkyLine(double* values, COLORREF color);
    void RemoveSkyLine() { m_skyLine.reset(); }
    void ShowSkyLine(int show) { m_skyLineShown = show; }

    void AddBand(int from, int to, COLORREF color) { m_bands.Add({from, to, color}); }
    void RemoveBands() { m_bands.RemoveAll(); }
    void ShowBands(int show) { m_bandsShown = show; }
    const BandInfoArray& GetBands() const { return m_bands; }
    /// Stores the bands, or replaces them by those loaded.
    void SerializeBands(CArchive& archive) { m_bands.Serialize(archive); }

    /// A vertical line after the scale, where profiles are interrupted. Breaks are added from left
    /// to right: one that does not lie right of the one before is drawn, but interrupts nothing.
    void AddBreak(int scale) { m_breaks.Add(static_cast<unsigned>(scale)); }
    /// A dashed line at the score.
    void AddHorzLine(int score) { m_horzLines.Add(static_cast<unsigned>(score)); }
    void RemoveHorzLines() { m_horzLines.RemoveAll(); }

    /// Where the legend's left top corner lies, in percent of the plot from its left top corner.
    void SetLegendPosition(int xPercent, int yPercent) {
        m_legendX = xPercent;
        m_legendY = yPercent;
    }

    // What the graph holds.
    int GetYMin() const { return m_yMin; }
    int GetYMax() const { return m_yMax; }
    int GetScaleCount() const { return m_scaleCount; }
    /// The text under a scale (from 1): of the first row, or its number.
    CString GetScaleText(int scale) const;
    int GetProfileCount() const { return static_cast<int>(m_profiles.size()); }
    /// An index out of range raises CInvalidArgException.
    const ProfileInfo& GetProfile(int index) const { return *m_profiles[checked_profile(index)]; }
    bool IsScore(const ProfileInfo& profile, int scaleIndex) const;

protected:
    using LegendRows = std::array<CStringArray*, cMaxLegendRows>;

    /// Sets the range and the steps, each base at the minimum, and the axes and the design size.
    void construct(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                   int designWidth, int designHeight);
    void clear_chart();
    /// Takes over the rows; the number of scales is that of the first row's elements less 1.
    void set_legend_rows(const LegendRows& rows);
    /// Scales that have numbers instead of texts.
    void set_numbered_scales(int count);
    /// Appends a profile with the next symbol; null when there is no memory for it. The scores are
    /// deleted then.
    ProfileInfo* add_profile(const char* name, double* values, COLORREF color, std::uint32_t id);

    int dev_x(double x) const;
    int dev_y(double score) const;
    /// dev_y, not above the plot and not below.
    int dev_y_in_plot(double score) const;
    int get_symbol() const;
    void draw_symbol(CDC* dc, int x, int y, int size, int symbol);
    /// The axes and the scales' legend.
    void draw_legends(CDC* dc);
    void draw_x_legend(CDC* dc, CStringArray* row, int y, CFont* normal, CFont* italic,
                       CFont* bold);
    bool find_profile_location(std::uint32_t id, int& index) const;
    /// The width of thin lines: breaks, sky line and profiles.
    int line_width() const;
    /// The half size of a symbol in the legend.
    int legend_symbol_size() const { return (m_charWidth / 2 + 1) & ~1; }
    /// The half size of a symbol in the plot.
    virtual int symbol_size() const;
    bool legend_is_drawn() const;
    /// Draws the entries one below the other in the legend's rectangle.
    void draw_legend_column(CDC* dc);

    double m_missingValue = cDefaultMissingValue;
    int m_designWidth = 0;
    int m_designHeight = 0;
    std::array<int, 8> m_symbolUse{};
    int m_scaleCount = 0;
    int m_xMin = 0;
    int m_xMax = 1;
    int m_yMin = 0;
    int m_yMax = 0;
    int m_fontHeight = 0;
    int m_charWidth = 0;
    int m_charHeight = 0;
    int m_majorStep = 0;
    int m_minorStep = 0;
    int m_majorBase = 0;
    int m_minorBase = 0;
    int m_labelStart = 0;
    int m_labelEnd = 0;
    int m_leftAxis = 0;
    int m_rightAxis = 0;
    std::array<std::unique_ptr<CStringArray>, cMaxLegendRows> m_legendRows;
    CString m_yLegend;
    CArray<unsigned, unsigned> m_breaks;
    CArray<unsigned, unsigned> m_horzLines;
    std::vector<std::unique_ptr<ProfileInfo>> m_profiles;
    std::unique_ptr<ProfileInfo> m_skyLine;
    int m_skyLineShown = 0;
    ProfileLegend m_legend = ProfileLegend::Inside;
    int m_legendX = 5;
    int m_legendY = 5;
    CRect m_legendRect;
    BandInfoArray m_bands;
    int m_bandsShown = 1;
    double m_scaleFactor = 0;
    double m_xScale = 0;
    double m_yScale = 0;
    int m_plotLeft = 0;
    int m_plotRight = 0;
    int m_plotBottom = 0;

private:
    std::size_t checked_profile(int index) const;
    bool has_row(int index) const {
        return m_legendRows[static_cast<std::size_t>(index)] != nullptr;
    }
    int row_count() const;
    void draw_profile(CDC* dc, ProfileInfo& profile, int size);
    void draw_y_legend(CDC* dc, int x, bool isLeft);
    void draw_score_ticks(CDC* dc, int x, bool isLeft);
    void draw_score_labels(CDC* dc, int x, bool isLeft);
    void draw_end_label(CDC* dc, int x, bool isLeft, int score, char sign, CFont& symbols);
    void draw_scale_label(CDC* dc, int x, int y, const CString& text);
    void draw_scale_rows(CDC* dc);
    void draw_first_row(CDC* dc, CFont* normal, CFont* italic, CFont* bold);
    int label_top(int score) const { return dev_y(score) - m_charHeight / 2; }

    ScaleAxis m_axis;
    bool m_numbered = false;
};

}  // namespace tessalink
