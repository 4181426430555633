#pragma once

#include <array>
#include <span>
#include <vector>

#include "graphs/profile/Polar.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

class FittedLabel;

/// What the circumplex and the style graph have in common: a square range of data drawn as a circle
/// (an ellipse in units of a device whose resolutions differ) with rings, a dotted grid, numbers
/// along both axes, texts on the four sides and in the four corners, and a title. It is used
/// through CircumplexGraph and StyleGraph.
///
/// The picture is designed in inches, its fonts in points, for a sheet of design width and design
/// height, and scaled to any rectangle, at whose left top it lies. Texts are labels with switches
/// of fonts (PrintFormatted). A text that is too wide for its place is broken at blanks, and when a
/// word is too wide gets a smaller font; a text that would cover another is moved outward.
class TESSALINK_API CircleChart {
public:
    /// A circle around the middle of the data.
    struct circle_info {
        double radius = 0;        ///< in units of the data
        COLORREF color = cWhite;  ///< of the area
        BOOL filled = 0;          ///< nonzero when it is filled
    };

    /// The most numbers along an axis, lines of the grid in each direction, and dots along each.
    /// Where the steps make more, every second of them is drawn, or every third and so on, from end
    /// to end: a circle is never left half without.
    static constexpr int cMaxLabels = 200;
    static constexpr int cMaxGridLines = 100;  ///< see cMaxLabels
    static constexpr int cMaxGridDots = 500;   ///< see cMaxLabels

    virtual ~CircleChart();
    CircleChart(const CircleChart&) = delete;
    CircleChart& operator=(const CircleChart&) = delete;

    /// The face of all texts but the first line of those in the corners, which is Arial;
    /// "Times New Roman" unless another is set.
    void SetTypeface(const CString& face) { m_typeface = face; }
    /// The face of the texts.
    const CString& GetTypeface() const { return m_typeface; }
    /// Whether the dotted grid is drawn.
    void ShowGrid(int show) { m_gridShown = show; }
    /// Adds a circle, white or in a color. Circles are drawn in this order: the largest comes
    /// first.
    void AddCircle(double radius) { m_circles.push_back({radius, cWhite, 0}); }
    void AddCircle(double radius, std::uint32_t color) { m_circles.push_back({radius, color, 1}); }
    /// How many circles were added.
    int GetCircleCount() const { return static_cast<int>(m_circles.size()); }
    /// An index out of range raises CInvalidArgException.
    const circle_info& GetCircle(int index) const;

    /// Draws the picture as large as the rectangle allows. The context's colors, background mode,
    /// alignment, pen, brush and font are as before afterwards, also after an exception. In a
    /// rectangle without room, and for sizes that make no sense, nothing is drawn. Numbers along an
    /// axis and the grid need a step above 0; an axis whose ends are equal has all at its start.
    virtual void Draw(CDC* dc, const CRect& rect);

protected:
    /// The data, the steps and the font sizes in points, in the order of the constructors.
    struct Settings {
        int xMin;          ///< the lowest x of the data
        int xMax;          ///< the highest x of the data
        int yMin;          ///< the lowest y of the data
        int yMax;          ///< the highest y of the data
        int labelStep;     ///< between numbers and between lines of the grid; 0: no numbers
        int gridDotStep;   ///< between dots of the grid; 0 or the label step: no grid
        int titleSize;     ///< of the title's first line, in points
        int subtitleSize;  ///< of its other lines, in points
        int axisTextSize;  ///< of the texts of the four sides, in points
        std::array<int, 3> quadrantTextSizes;  ///< in points, one for each line
        int labelSize;                         ///< of numbers, in points
    };
    /// Sizes in inches.
    struct Design {
        double width = 5.5;          ///< of the sheet
        double height = 5.0;         ///< of the sheet
        double topPadding = 0.5;     ///< left free above the plot
        double bottomPadding = 0.5;  ///< left free below the plot
        double maxPlotSize = 3.5;    ///< the largest plot
        double sideMargin = 0.75;    ///< left free on each side of the plot
        double maxSymbolSize = 0;    ///< the largest symbol; 0 where there are none
        /// How far the texts in the corners reach into the square around the circle, as far as the
        /// circle lets them.
        double styleMarginH = 0.5;
        double styleMarginV = 0.5;  ///< the same, downward or upward
        /// A column for a legend right of the sheet.
        double legendColumn = 0;
    };
    /// The texts; those of a corner are three, one below the other.
    enum Text {
        TitleText = 0,
        NorthText = 3,
        SouthText,
        EastText,
        WestText,
        NorthWestText,
        NorthEastText = NorthWestText + 3,
        SouthWestText = NorthEastText + 3,
        SouthEastText = SouthWestText + 3,
        cTextCount = SouthEastText + 3,
    };

    /// For derived graphs.
    explicit CircleChart(const Settings& settings) : m_settings(settings) {}

    /// The text with this number, as it is to be drawn.
    virtual CString load_text(int text) const = 0;
    /// Whether there is a text with this number.
    virtual bool has_text(int text) const = 0;

    // The steps of Draw, in their order. Variants override them.

    /// Computes scale and plot from the rectangle.
    virtual void recalc_layout(CDC* dc, const CRect& rect);
    /// The lines of the title, centered.
    virtual void draw_title(CDC* dc, const CRect& rect);
    /// Circles, grid, outline and numbers.
    virtual void draw_circumplex(CDC* dc);
    /// The circles, in their order.
    virtual void draw_circles(CDC* dc, const CPoint& center);
    /// Dotted chords of the circle, at the label steps after x0 and y0, all in units of the data.
    virtual void draw_grid(CDC* dc, int x0, int x1, int y0, int y1);
    /// The texts of the four sides.
    virtual void draw_axis_text(CDC* dc);
    /// The texts in the four corners.
    virtual void draw_style_texts(CDC* dc, const CRect& rect);
    /// Sets `color`, and the context's background, to what lies under a number at (x, y): the
    /// color of the topmost circle there, white where there is none or that is not filled.
    virtual void update_bk_color(CDC* dc, int x, int y, int& color);

    /// Takes room for a legend off the height that is there for the plot, in inches; here none.
    virtual void reserve_legend(CDC* dc, double& plotHeight);
    /// Draws what lies on the circles and under the grid; here nothing.
    virtual void draw_sectors(CDC* dc);
    /// Draws what comes last; here nothing.
    virtual void draw_data(CDC* dc, const CRect& rect);

    // Conversions, by the layout of the last drawing. 0.5 is added and the rest cut off.

    /// Where an x of the data lies on the device.
    int dev_x(double x) const;
    /// Where an x of the data lies on the device.
    int dev_x(int x) const { return dev_x(static_cast<double>(x)); }
    /// Where a y of the data lies on the device.
    int dev_y(double y) const;
    /// Where a y of the data lies on the device.
    int dev_y(int y) const { return dev_y(static_cast<double>(y)); }
    /// Device units of a length to the right, in inches of the design.
    int log_in_to_dev_h(double inches) const;
    /// Device units of a length downward, in inches of the design.
    int log_in_to_dev_v(double inches) const;
    /// The height of a font of so many points.
    int font_height(int points) const;
    /// The width of the picture's lines: at least one unit.
    int line_width() const;

    /// The rectangle of the drawing, and in it the square around the circle.
    const CRect& rect() const { return m_rect; }
    /// The square around the circle.
    const CRect& plot() const { return m_plot; }
    /// The middle of the circle.
    CPoint center() const;
    /// The half axes of the circle.
    CSize radii() const;
    /// The angle and the distance from the middle of the plot at which a place of the device lies,
    /// in units of the data: equal distances on opposite sides are equal, however odd the plot's
    /// width is. Not-a-number or infinite on an axis whose ends are equal.
    Polar data_place(int x, int y) const;
    /// By how much, in units of the data, places are off because they are whole device units.
    double data_rounding() const;
    /// A place at an angle (degrees from the right, counterclockwise) and a distance from the
    /// middle in units of the data, which counts as the circle's radius at most.
    CPoint polar_point(double angle, double length) const;
    /// Inches on the device of one inch of the design.
    double scale_factor() const { return m_scaleFactor; }
    /// Of the device.
    double horz_pixels_per_inch() const { return m_horzPixelsPerInch; }
    /// Of the device.
    double vert_pixels_per_inch() const { return m_vertPixelsPerInch; }
    /// Device units of one unit of the data, to the right.
    double x_scale() const { return m_xScale; }
    /// Device units of one unit of the data, upward.
    double y_scale() const { return m_yScale; }
    /// What the constructor was given.
    const Settings& settings() const { return m_settings; }
    /// Sizes in inches, to be changed.
    Design& design() { return m_design; }
    /// Sizes in inches.
    const Design& design() const { return m_design; }
    /// The width of the sheet in device units.
    int sheet_width() const;
    /// Prints a text outside the circle at an angle in degrees.
    void draw_rim_text(CDC* dc, const CString& text, double angle, int points);
    /// The places of the texts and numbers so far, and others that are taken.
    const std::vector<CRect>& taken() const { return m_taken; }
    /// No text is moved to this place.
    void take(const CRect& place) { m_taken.push_back(place); }
    /// Whether there is room for the circle, and data that can be placed.
    bool is_drawable() const;

private:
    struct Corner;
    struct Step;

    bool has_scale() const;
    bool has_title() const;
    FittedLabel title_line(CDC& dc, int line) const;
    int title_size(int line) const;
    double title_height(CDC& dc) const;
    CSize rim_gap(CDC& dc) const;
    void draw_outline(CDC& dc);
    void draw_labels(CDC* dc);
    void draw_label(CDC* dc, int value, int x, int y, int& color);
    void draw_dots(CDC& dc, bool isVertical, int at, int first, int end);
    void draw_corner(CDC& dc, const Corner& corner);
    bool is_free(const CRect& place) const;
    void move_out(CRect& place, std::span<const Step> steps) const;

    Settings m_settings;
    Design m_design;
    CString m_typeface = "Times New Roman";
    int m_gridShown = 1;
    std::vector<circle_info> m_circles;

    double m_scaleFactor = 0;
    double m_horzPixelsPerInch = 0;
    double m_vertPixelsPerInch = 0;
    int m_pixelsPer100Points = 0;
    CRect m_plot;
    CRect m_rect;
    double m_xScale = 0;
    double m_yScale = 0;
    std::vector<CRect> m_taken;
};

}  // namespace tessalink
