#pragma once

#include <memory>
#include <vector>

#include "graphs/profile/BasicProfileGraph.h"
#include "platform/base/CStringArray.h"
#include "platform/base/NumberText.h"

/// A score profile that runs downward: each scale is a row with its name and texts in columns, the
/// scores lie along a horizontal axis, labeled above and below, and header rows part the scales
/// into groups.
///
/// Names and columns are as wide as their widest text. They, and rows, share what room there is: a
/// smaller font makes them fit. All texts may switch fonts.
class TESSALINK_API HorProfileGraph : public tessalink::BasicProfileGraph {
public:
    /// Symbol 0, SymbolAndValue 1, LineOnly 2.
    using PointType = tessalink::ProfilePointType;
    /// None 0, Inside 1, Below 2.
    using LegendType = tessalink::ProfileLegend;

    /// The range of scores, the steps of ticks with and without labels, and the size that fonts and
    /// pens are designed for.
    HorProfileGraph(int xMin, int xMax, int majorStep, int minorStep, int designWidth,
                    int designHeight);
    ~HorProfileGraph() override;

    /// Sets the range of scores, and with it the labels' start and end, the steps of ticks with and
    /// without labels (0: none) and the scores that they are counted from; 0 means the minimum.
    void SetXRange(int min, int max, int majorStep, int minorStep, int majorBase, int minorBase) {
        m_scores.Set(min, max, majorStep, minorStep, majorBase, minorBase);
    }
    /// The lowest and the highest score that is labeled.
    void SetXLabelStart(int score) { m_scores.labelStart = score; }
    /// The highest score that is labeled.
    void SetXLabelEnd(int score) { m_scores.labelEnd = score; }
    /// The title of the score axis, over the plot.
    void SetXLegend(const CString& title) { m_xLegend = title; }

    /// Adds a scale below the rows there are, and returns its number from 1. Profiles that the
    /// graph has already have no score there.
    int AddRow(const CString& name);
    /// Adds a group heading below the rows there are. It interrupts the profiles.
    void AddHeaderRow(const CString& text);
    /// Adds a column right of those there are and takes over its texts, one for each scale. With
    /// fewer texts than scales, or null, Draw raises CInvalidArgException.
    void AddScoreCol(const CString& heading, CStringArray* texts);
    /// What stands over all columns.
    void SetScoreColsHeading(const CString& heading) { m_columnsHeading = heading; }

    /// Appends a profile. `values`, one for each scale there is now, is taken over. `lineStyle` is
    /// the pen style of the lines (PS_SOLID to PS_DASHDOTDOT), `decimals` how many the values
    /// beside the points have. Returns 0 when there is no memory.
    int AddProfile(const char* name, double* values, COLORREF color, std::uint32_t id,
                   PointType type = PointType::Symbol, int lineStyle = PS_SOLID, int decimals = 0) {
        return add_profile(name, values, color, id, type, lineStyle, decimals);
    }
    /// A dashed line at the score; one out of range is not drawn.
    void AddVertLine(int score) { m_referenceLines.Add(static_cast<unsigned>(score)); }
    /// Removes all reference lines.
    void RemoveVertLines() { m_referenceLines.RemoveAll(); }
    /// Where the legend stands.
    void ShowLegend(LegendType type) { m_legend = type; }
    /// Percent; 100 at start.
    void SetPointScale(int percent) { m_pointScale = percent; }
    /// Whether profiles of the type SymbolAndValue show values; on at start.
    void ShowPointTexts(int show) { m_pointTextsShown = show; }
    /// Removes everything that was added; the titles stay.
    void Clear();

    CString GetScaleText(int scale) const override;
    /// How many rows there are, header rows included.
    int GetRowCount() const { return static_cast<int>(m_rows.size()); }

protected:
    // The steps of Draw, in their order.

    void draw_contents(CDC* dc, CRect& rect) override;
    /// Computes the columns and the plot from the rectangle, and measures the letter "M".
    virtual void recalc_layout(CDC* dc, CRect& rect);
    /// Draws the bands.
    virtual void draw_bands(CDC* dc);
    /// The names, header rows, columns and headings.
    virtual void draw_rows(CDC* dc);
    /// Draws the score axes above and below the plot.
    virtual void draw_x_axis(CDC* dc);
    /// Draws the reference lines.
    virtual void draw_vert_lines(CDC* dc);
    void draw_point_text(CDC* dc, int x, int y, int size, int scaleIndex,
                         ProfileInfo* profile) override;

    CRect plot_rect() const override { return m_plot; }
    /// Where a score of a scale, counted from 0, lies on the device.
    CPoint score_place(int scaleIndex, double score) const override;
    std::vector<bool> line_ends() const override;

    /// Where a score lies on the device, from the left.
    int dev_x(double score) const;
    /// dev_x, not left of the plot and not right.
    int dev_x_in_plot(double score) const;
    /// The middle of a row, from 0.
    int row_middle(int row) const;

    double m_xScale = 0;     ///< device units of one score
    double m_rowHeight = 0;  ///< in device units
    CRect m_plot;            ///< where the scores lie

private:
    struct Row {
        CString text;
        bool isHeader = false;
    };
    struct Column {
        CString heading;
        std::unique_ptr<CStringArray> texts;
        int width = 0;
        int textWidth = 0;  ///< of the widest text, without the heading
    };

    const CString& column_text(const Column& column, int scaleIndex) const;
    bool has_title_line() const;
    bool has_headers() const { return GetRowCount() > m_scaleCount; }
    int indent() const { return has_headers() ? m_charWidth : 0; }
    int tick_length() const { return tessalink::wrapAdd(m_charHeight, 3) >> 2; }
    void fit_texts(CDC* dc, int maxWidth);
    void measure_texts(CDC* dc);
    void draw_columns(CDC* dc);
    void draw_title(CDC* dc);
    void draw_ticks(CDC* dc);
    void draw_labels(CDC* dc, int top);

    std::vector<Row> m_rows;
    std::vector<int> m_rowOfScale;
    std::vector<Column> m_columns;
    CString m_columnsHeading;
    CString m_xLegend;

    int m_textHeight = 0;
    int m_textLeft = 0;
    int m_titleTop = 0;
    int m_nameWidth = 0;
    int m_columnsWidth = 0;     ///< of all, each with the gap left of it
    int m_columnsHeadRoom = 0;  ///< what the heading over all is wider
    int m_textWidth = 0;        ///< of everything left of the plot
};
