#pragma once

#include <vector>

#include "graphs/profile/windows/ProfileGraphCtlBase.h"

/// A window with a profile graph that has a title, texts above the scales, scale texts of one or
/// two lines, a grid, and a legend of profiles and regions in columns below. It has no hints: the
/// points to which the arrows lead are marked and spoken.
class TESSALINK_API ProfileGraphCtl4 : public tessalink::ProfileGraphWindow<ProfileGraph3> {
    DECLARE_DYNAMIC(ProfileGraphCtl4)

public:
    /// What the bottom legend lists.
    static constexpr int cNoLegend = 0;
    static constexpr int cProfiles = 1;          ///< the profiles
    static constexpr int cBands = 2;             ///< the regions that have a label
    static constexpr int cProfilesAndBands = 3;  ///< both

    /// The eight values of the graph's constructor.
    ProfileGraphCtl4(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                     int designWidth, int designHeight);

    /// The title, in bold above everything; it may have several lines.
    void SetTitle(const CString& title);
    /// The title.
    const CString& GetTitle() const { return m_title; }
    /// A text above the plot: its middle stands at a scale, counted from 1 (2.5 lies between the
    /// second and the third). Texts that would overlap go to rows of their own.
    void AddTopLegend(double scale, const char* text, unsigned int color);
    /// Removes the text that was added as the index-th, from 0; CInvalidArgException without it.
    void RemoveTopLegend(int index);
    /// What the bottom legend lists, and in how many columns of equal width; 0 columns: as many as
    /// fit, each as wide as its entries.
    void SetBottomLegendStyle(int contents, int columns);
    /// Whether scale texts may take two lines, at a line feed or a blank, instead of being
    /// staggered.
    void SetTwoLineLegend(int twoLines);
    /// Nonzero when scale texts may take two lines.
    int GetTwoLineLegend() const { return m_twoLines ? 1 : 0; }
    /// Whether any of them took two lines when the graph was drawn last.
    int GetUsedTwoLinesForLegend() const { return m_usedTwoLines ? 1 : 0; }
    /// The height of the second line when it was used, in pixels; otherwise 0.
    int GetLastLineHeight() const { return m_usedTwoLines ? m_charHeight : 0; }
    /// Whether thin lines go through the plot at all labeled scores.
    void SetBackgroundTicks(int show);
    /// Nonzero when thin lines go through the plot.
    int GetBackgroundTicks() const { return m_backgroundTicks ? 1 : 0; }
    /// Room that is left free below everything, in design units.
    void SetAddBottomSpace(int space);
    /// Whether the labels at the ends of the score axis have their signs; both at start.
    void SetUseGEonYAxis(int use);
    /// The same for the lower end alone.
    void SetUseLEonYAxis(int use);
    /// The same for both ends.
    void SetUseGEandLEonYAxis(int use);
    /// Makes the scale texts numbers: the first `count` of those that there are.
    void UpdateXLegends(int count, const int* numbers);
    void UpdateXLegends(int count, const double* numbers);

    tessalink::AccessibleElement Accessible() const override;

protected:
    /// The first step of drawing; those of the layout go from the outside to the inside.
    virtual void on_init_draw(CDC* dc);
    /// Comes before the layout; nothing here.
    virtual void on_before_draw(CDC* dc, CRect& rect);
    void recalc_layout(CDC* dc, CRect& rect) override;
    /// The height of the title in pixels.
    virtual int calc_title_height(CDC* dc) const;
    /// Finds rows for the texts above the plot, and returns their height in pixels.
    virtual int calc_top_legend_height(CDC* dc);
    /// The width of the heading of the score axis in pixels.
    virtual int calc_y_legend_width(CDC* dc) const;
    /// The height of that in pixels.
    virtual int calc_y_legend_height(CDC* dc) const;
    /// Sets the columns of the bottom legend and returns its height.
    virtual int calc_bottom_legend_geometry(CDC* dc, int width);
    /// Sets columns of equal width.
    virtual void calc_columns(CDC* dc, int width);
    /// Sets as many columns as fit, each as wide as its entries.
    virtual void calc_flow_columns(CDC* dc, int width);
    /// Draws the title.
    virtual void draw_title(CDC* dc);
    /// Draws the texts above the plot.
    virtual void draw_top_legend(CDC* dc);
    /// Draws the bottom legend.
    virtual void draw_bottom_legend(CDC* dc);
    /// Draws entries in their columns.
    virtual void draw_normal_legend(CDC* dc);
    /// Draws the entries of regions.
    virtual void draw_band_legend(CDC* dc);
    /// Draws the entries of profiles.
    virtual void draw_profile_legend(CDC* dc);
    /// Draws thin lines through the plot.
    virtual void draw_background_ticks(CDC* dc);
    /// Draws the ticks of a score axis.
    virtual void draw_y_axis_ticks(CDC* dc, int x, bool isLeft);
    /// Draws the numbers of a score axis.
    virtual void draw_y_axis_labels(CDC* dc, int x, bool isLeft);
    /// Comes after everything else; nothing here.
    virtual void on_end_draw(CDC* dc, CRect& rect);

    void draw_contents(CDC* dc, CRect& rect) override;
    void draw_x_axis(CDC* dc) override;
    void draw_y_axis(CDC* dc, int x, int isLeft) override;
    bool has_end_sign(bool isLower) const override { return isLower ? m_lowerSign : m_upperSign; }
    /// How many lines a text has; 0 for an empty one.
    static int count_lines(const char* text);

private:
    struct ScaleFonts;
    struct TopText {
        double scale = 0;
        CString text;
        COLORREF color = 0;
        int row = 0;
    };

    void changed();
    int first_entry() const;
    int end_entry() const;
    int entry_width(CDC* dc, int index) const;
    void draw_entries(CDC* dc, int first, int end);
    void draw_scale_text(CDC* dc, ScaleFonts& fonts, int scale, int top);
    CString second_line(CDC* dc, ScaleFonts& fonts, CString& text) const;
    using ProfileGraphWindow::SetHintFormat;
    using ProfileGraphWindow::UseToolTips;
    template <class Number>
    void rewrite(int count, const Number* numbers, CString (*textOf)(Number));

    CString m_title;
    std::vector<TopText> m_topTexts;
    int m_bottomContents = cProfiles;
    int m_bottomColumns = 0;
    bool m_twoLines = false;
    bool m_usedTwoLines = false;
    bool m_backgroundTicks = false;
    int m_bottomSpace = 0;
    bool m_lowerSign = true;
    bool m_upperSign = true;
    CRect m_titleRect;
    int m_topLegendTop = 0;
    CRect m_bottomRect;
    std::vector<int> m_columnWidths;
};
