#pragma once

#include <array>
#include <memory>
#include <vector>

#include "graphs/profile/BasicProfileGraph.h"
#include "platform/base/CStringArray.h"
#include "platform/base/NumberText.h"

namespace tessalink {

/// What the upright profile graphs have in common: a score axis, a row of scales, breaks and a sky
/// line. It is used through ProfileGraph, ProfileGraph2 and ProfileGraph3.
///
/// x is 0 at the left end and the number of scales + 1 at the right end. A profile without known
/// number of scores (added before there were scales) has as many as the first scales that are set
/// afterwards.
class TESSALINK_API ProfileChart : public BasicProfileGraph {
public:
    static constexpr int cMaxLegendRows = 4;  ///< rows of texts under the plot at most

    ~ProfileChart() override;

protected:
    /// Whether scales stand at whole numbers with half a cell to spare at both ends, or in the
    /// middle of cells that share the plot's width; without scales nothing is drawn in these.
    enum class ScaleAxis { Points, Cells };

    /// For derived graphs.
    explicit ProfileChart(ScaleAxis axis) : m_axis(axis) {}

    // The steps of Draw. Variants override them.

    void draw_contents(CDC* dc, CRect& rect) override;
    /// Draws the bands, behind everything else.
    virtual void draw_bands(CDC* dc);
    /// Draws the lines that interrupt the profiles.
    virtual void draw_breaks(CDC* dc);
    /// Draws the reference lines.
    virtual void draw_horz_lines(CDC* dc);
    /// Draws the sky line, when it is shown.
    virtual void draw_sky_line(CDC* dc);
    /// Draws the texts under the plot.
    virtual void draw_x_axis(CDC* dc);
    /// Draws the score axis at x, with `isLeft` nonzero on the left side of the plot.
    virtual void draw_y_axis(CDC* dc, int x, int isLeft);
    /// Computes the plot from the rectangle, and measures the letter "M".
    virtual void recalc_layout(CDC* dc, CRect& rect);

    int legend_entry_count() const override;
    /// The name of an entry, counted from 0; that of the sky line comes after those of the
    /// profiles.
    CString legend_entry_name(int index) const override;
    void draw_legend_sample(CDC* dc, int index, int left, int y) override;
    /// Whether there is a legend to be drawn.
    bool legend_is_drawn() const override;
    CRect plot_rect() const override;
    /// Where a score of a scale, counted from 0, lies on the device.
    CPoint score_place(int scaleIndex, double score) const override;
    std::vector<bool> line_ends() const override;

public:
    /// Sets the range of scores, and with it the labels' start and end, the steps of ticks with and
    /// without labels (0: none) and the scores that they are counted from; 0 means the minimum.
    void SetYRange(int min, int max, int majorStep, int minorStep, int majorBase, int minorBase) {
        m_scores.Set(min, max, majorStep, minorStep, majorBase, minorBase);
    }
    /// The lowest and the highest score that is labeled.
    void SetYLabelStart(int score) { m_scores.labelStart = score; }
    /// The highest score that is labeled.
    void SetYLabelEnd(int score) { m_scores.labelEnd = score; }
    /// The title of the score axis, with switches of fonts.
    void SetYLegend(const CString& title) { m_yLegend = title; }

    /// Takes over one limit for each scale, and shows the sky line: a step line of limits. With a
    /// name it has an entry in the legend, after those of the profiles.
    void AddSkyLine(double* values, COLORREF color, const char* name = nullptr);
    /// Removes the sky line.
    void RemoveSkyLine() { m_skyLine.reset(); }
    /// Whether the sky line is drawn.
    void ShowSkyLine(int show) { m_skyLineShown = show; }

    /// A vertical line after the scale, where profiles are interrupted. Breaks are added from left
    /// to right: one that does not lie right of the one before is drawn, but interrupts nothing.
    void AddBreak(int scale) { m_breaks.Add(static_cast<unsigned>(scale)); }
    /// A dashed line at the score.
    void AddHorzLine(int score) { m_referenceLines.Add(static_cast<unsigned>(score)); }
    /// Removes all reference lines.
    void RemoveHorzLines() { m_referenceLines.RemoveAll(); }
    /// Whether these lines are as wide as other thin lines, so that they show on devices of any
    /// resolution; off at start: they are one unit wide.
    void ScaleHorzLines(bool scale) { m_horzLinesScaled = scale; }

    /// The lowest score of the axis.
    int GetYMin() const { return m_scores.min; }
    /// The highest score of the axis.
    int GetYMax() const { return m_scores.max; }
    /// The text under a scale: of the first row, or its number.
    CString GetScaleText(int scale) const override;

protected:
    /// Rows of texts under the plot, from top to bottom; null where there is none.
    using LegendRows = std::array<CStringArray*, cMaxLegendRows>;

    /// Sets the range and the steps, each base at the minimum, and the axes and the design size.
    void construct(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                   int designWidth, int designHeight);
    /// Removes everything that was added.
    void clear_chart();
    /// Takes over the rows; the number of scales is that of the first row's elements less 1.
    void set_legend_rows(const LegendRows& rows);
    /// Scales that have numbers instead of texts.
    void set_numbered_scales(int count);

    /// Where an x lies on the device: the number of a scale, from 1.
    int dev_x(double x) const;
    /// Where a score lies on the device, from the top.
    int dev_y(double score) const;
    /// dev_y, not above the plot and not below.
    int dev_y_in_plot(double score) const;
    /// The axes and the scales' legend.
    void draw_legends(CDC* dc);
    /// The parts of a score axis beside its line.
    void draw_y_legend(CDC* dc, int x, bool isLeft);
    /// The ticks of a score axis.
    void draw_score_ticks(CDC* dc, int x, bool isLeft);
    /// The numbers of a score axis.
    void draw_score_labels(CDC* dc, int x, bool isLeft);
    /// One row of texts under the plot.
    void draw_x_legend(CDC* dc, CStringArray* row, int y, CFont* normal, CFont* italic,
                       CFont* bold);
    /// Whether nothing is drawn between the axes.
    bool is_empty_plot() const { return m_axis == ScaleAxis::Cells && m_scaleCount == 0; }

    int m_xMin = 0;       ///< the x of the left end
    int m_xMax = 1;       ///< the x of the right end
    int m_leftAxis = 0;   ///< whether there is a score axis on the left
    int m_rightAxis = 0;  ///< whether there is a score axis on the right
    /// The texts under the plot.
    std::array<std::unique_ptr<CStringArray>, cMaxLegendRows> m_legendRows;
    CString m_yLegend;                       ///< the title of the score axis
    CArray<unsigned, unsigned> m_breaks;     ///< the scales that breaks come after
    std::unique_ptr<ProfileInfo> m_skyLine;  ///< null when there is none
    int m_skyLineShown = 0;                  ///< whether it is drawn
    bool m_skyLineNamed = false;             ///< whether it has an entry in the legend
    bool m_horzLinesScaled = false;          ///< see ScaleHorzLines
    double m_xScale = 0;                     ///< device units of one scale
    double m_yScale = 0;                     ///< device units of one score
    int m_plotLeft = 0;                      ///< in device units
    int m_plotRight = 0;                     ///< in device units
    int m_plotBottom = 0;                    ///< in device units

private:
    bool has_row(int index) const {
        return m_legendRows[static_cast<std::size_t>(index)] != nullptr;
    }
    int row_count() const;
    bool is_sky_line(int legendEntry) const {
        return m_skyLineNamed && m_skyLine && m_skyLineShown != 0 &&
               legendEntry == GetProfileCount();
    }
    void draw_scale_rows(CDC* dc);
    void draw_first_row(CDC* dc, CFont* normal, CFont* italic, CFont* bold);
    int label_top(int score) const { return wrapSub(dev_y(score), m_charHeight / 2); }

    ScaleAxis m_axis;
    bool m_numbered = false;
};

}  // namespace tessalink
