#pragma once

#include <array>
#include <span>
#include <vector>

#include "graphs/profile/CircleChart.h"
#include "graphs/profile/Polar.h"

/// Scores as points in a circle, with rings, axes, texts for the four sides and quadrants, a title
/// and a legend, drawn into any rectangle of a screen, a printer or a metafile. Its sizes are
/// physical: inches, and points for fonts.
///
/// A point outside the circle is shown on its rim, in its direction. Names beside points stand
/// where they cover neither symbols nor other texts as long as there is such a place nearby; both
/// names and legend have the font size of the legend.
class TESSALINK_API CircumplexGraph : public tessalink::CircleChart {
public:
    /// How a point is marked. The last four are the outlines of the four before them.
    enum SymbolType : int {
        AnySymbol = 0,  ///< the graph chooses the one that it has chosen least
        Cross = 1,
        Disc,
        Square,
        Triangle,
        Diamond,
        Ring,
        HollowSquare,
        HollowTriangle,
        HollowDiamond,
    };
    /// How many different symbols are given to points that ask for any.
    static constexpr int cSymbols = 9;

    /// Where the name of a point stands.
    enum PointLegend : int { NoName = 0, NameBeside = 1, NameInLegend = 2, NameInBoth = 3 };

    /// Where the legend stands: nowhere, in a column right of the sheet that is as wide as the
    /// third option says, or under the plot, where it takes its height from the plot's.
    enum LegendPlacement : int { NoLegend = 0, LegendRight = 1, LegendBelow = 2 };

    /// A point.
    struct point_info {
        double x = 0;                   ///< in units of the data
        double y = 0;                   ///< in units of the data
        int id = 0;                     ///< the caller's number, by which points are found
        CString label;                  ///< its name; may be empty
        COLORREF color = cBlack;        ///< of symbol and name
        SymbolType symbol = AnySymbol;  ///< a chosen one, once the point is added
        PointLegend legend = NoName;    ///< where its name stands
    };
    /// A line through points.
    struct connection_info {
        std::vector<int> ids;     ///< the points, in the order of the line
        COLORREF color = cBlack;  ///< of the line
        int penStyle = PS_SOLID;  ///< PS_SOLID to PS_DASHDOTDOT
        bool closed = true;       ///< whether the line leads back to the first point
    };
    /// A part of the circle with its name; angles in degrees, counterclockwise from the right.
    struct sector_info {
        double from = 0;  ///< the angle at which the part begins
        double to = 0;    ///< the angle at which it ends
        CString text;     ///< outside the rim
    };
    /// A ring or a part of one.
    struct arc_info {
        double from = 0;          ///< the angle at which the arc begins
        double to = 0;            ///< the angle at which it ends
        double innerRadius = 0;   ///< in units of the data
        double outerRadius = 0;   ///< in units of the data
        COLORREF color = cBlack;  ///< of the area or the outline
        bool filled = false;      ///< whether the area is filled
    };

    /// No more sectors are kept.
    static constexpr int cMaxSectors = 72;
    /// A legend under the plot takes no more than this part of the height, and has no more entries;
    /// those without room are left out, and the last one says so by an ellipsis.
    static constexpr std::size_t cMaxLegendEntries = 500;
    /// The part of the height that a legend under the plot takes at most.
    static constexpr double cMaxLegendPart = 1.0 / 3;

    /// The range of the data, the steps in units of the data and the font sizes in points. Numbers
    /// and lines of the grid come at each label step (0: none), the dots of these lines at each
    /// grid dot step; there is no grid when this is 0 or the label step.
    CircumplexGraph(int xMin, int xMax, int yMin, int yMax, int labelStep, int gridDotStep,
                    int titleSize, int subtitleSize, int axisTextSize, int quadrantTextSize1,
                    int quadrantTextSize2, int quadrantTextSize3, int labelSize,
                    int legendTextSize);
    ~CircumplexGraph() override;

    /// Appends a point, in front of those before it. An x or y that is not a number is not drawn; a
    /// symbol that is none of SymbolType is drawn as nothing.
    void AddPoint(double x, double y, int id, const char* label, std::uint32_t color,
                  SymbolType symbol, PointLegend legend);
    /// The same without a name.
    void AddPoint(double x, double y, int id, std::uint32_t color, SymbolType symbol);
    /// The same at an angle and a length from the middle of the data.
    void AddPoint(const tessalink::Polar& place, int id, const char* label, std::uint32_t color,
                  SymbolType symbol, PointLegend legend);
    /// Moves the first point with the identifier, or removes it; FALSE when there is none.
    BOOL UpdatePoint(int id, double x, double y);
    /// Removes the first point with the identifier; FALSE when there is none.
    BOOL RemovePoint(int id);
    /// How many points there are.
    int GetPointCount() const { return static_cast<int>(m_points.size()); }
    /// An index out of range raises CInvalidArgException.
    const point_info& GetPoint(int index) const;

    /// Draws a line through the first points with these identifiers, in this order and, when
    /// `closed`, back to the first: a profile. It follows points that are moved and passes over
    /// those that there are not. The style of its pen is from PS_SOLID to PS_DASHDOTDOT, others are
    /// solid.
    void AddConnection(std::span<const int> ids, std::uint32_t color, int penStyle = PS_SOLID,
                       bool closed = true);
    /// Adds a part of the circle: lines from the middle at both angles (counterclockwise from
    /// `from` to `to`) and a text outside the rim between them, in the font size of the axis texts.
    /// Eight make octants. False, and nothing is added, beyond cMaxSectors and for angles that are
    /// not finite.
    bool AddSector(double fromAngle, double toAngle, const char* text);
    /// Adds a part of a ring between two angles and two radii in units of the data, no larger than
    /// the circle: filled over the circles, or as an outline over everything but the points. With
    /// equal radii it is an arc (0 to 360: a ring of its own, as for elevation), with equal angles
    /// a line outward. False, and nothing is added, for values that are not finite.
    bool AddArc(double fromAngle, double toAngle, double innerRadius, double outerRadius,
                std::uint32_t color, bool filled = false);
    /// How many sectors there are.
    int GetSectorCount() const { return static_cast<int>(m_sectors.size()); }

    // Texts; all are empty at first.

    /// The three lines of the title, from top to bottom; null for an empty one. As the setters
    /// below it returns the graph, so that calls can be joined.
    CircumplexGraph& SetTitle(const char* line1, const char* line2, const char* line3);
    /// The text above the circle.
    CircumplexGraph& SetNAxisText(const char* text);
    /// The text below the circle.
    CircumplexGraph& SetSAxisText(const char* text);
    /// The text right of the circle.
    CircumplexGraph& SetEAxisText(const char* text);
    /// The text left of the circle.
    CircumplexGraph& SetWAxisText(const char* text);
    /// The text in the corner left and above.
    CircumplexGraph& SetNWText(const char* line1, const char* line2, const char* line3);
    /// The text in the corner right and above.
    CircumplexGraph& SetNEText(const char* line1, const char* line2, const char* line3);
    /// The text in the corner left and below.
    CircumplexGraph& SetSWText(const char* line1, const char* line2, const char* line3);
    /// The text in the corner right and below.
    CircumplexGraph& SetSEText(const char* line1, const char* line2, const char* line3);
    /// The lines of the title that are not empty, with a blank between them.
    CString GetTitle() const;

    // Sizes, in inches.

    /// The sheet that the picture is designed for: 5.5 by 5. Without a title it is half an inch
    /// lower.
    CircumplexGraph& SetDesignSize(double width, double height);
    /// What is left free above the plot, under the title, and below it: 0.5 each.
    CircumplexGraph& SetPadding(double top, double bottom);
    /// How far quadrant texts reach into the square around the circle: 0.5 each.
    CircumplexGraph& SetStyleMargins(double horizontal, double vertical);
    /// All of these, and the width of a legend at the right (1), the largest plot (3.5), what is
    /// left free on each side of the plot at least (0.75) and the largest symbol (0.08).
    CircumplexGraph& SetAdvancedOptions(double designWidth, double designHeight,
                                        double styleMarginH, double styleMarginV,
                                        double legendWidth, double topPadding, double bottomPadding,
                                        double maxPlotSize, double sideMargin,
                                        double maxSymbolSize);
    /// Other values than those of LegendPlacement mean no legend.
    CircumplexGraph& SetLegendPlacement(int placement);
    /// Where the legend stands.
    int GetLegendPlacement() const { return m_legendPlacement; }

    /// The lowest x of the data.
    int GetXMin() const { return settings().xMin; }
    /// The highest x of the data.
    int GetXMax() const { return settings().xMax; }
    /// The lowest y of the data.
    int GetYMin() const { return settings().yMin; }
    /// The highest y of the data.
    int GetYMax() const { return settings().yMax; }
    /// The middle of the data.
    tessalink::Planar GetCenter() const;

protected:
    /// Takes the legend's height off that of the plot, in inches.
    virtual void adjust_plot_height_for_legend(double& plotHeight);
    /// Connections, symbols and names.
    virtual void draw_points(CDC* dc);
    /// Draws a symbol around (x, y) with half axes of rx and ry.
    virtual void draw_symbol(CDC* dc, int x, int y, int penWidth, int rx, int ry, SymbolType symbol,
                             std::uint32_t color);
    /// Draws the legend.
    virtual void draw_legend(CDC* dc);
    /// The symbol that was chosen least, the lowest of several; it counts as chosen once more.
    virtual SymbolType get_symbol();
    /// The half axes of a symbol of this size in inches, the width of its pen, and how far from its
    /// middle a name begins.
    virtual void get_symbol_sizes(double size, int& width, int& height, int& inner,
                                  int& labelOffset);
    /// Finds the first point with the identifier; FALSE when there is none.
    BOOL find_point(int id, int& index) const;

    CString load_text(int text) const override;
    bool has_text(int text) const override;
    /// The texts of the four sides, and the names of sectors.
    void draw_axis_text(CDC* dc) override;
    void draw_sectors(CDC* dc) override;
    void draw_data(CDC* dc, const CRect& rect) override;
    void reserve_legend(CDC* dc, double& plotHeight) override;
    /// Filled arcs count as circles on top.
    void update_bk_color(CDC* dc, int x, int y, int& color) override;

private:
    struct Legend;
    struct SymbolSizes {
        CSize half;          ///< the half axes
        int pen = 0;         ///< the width of the pen
        int nameOffset = 0;  ///< from the middle to the name
    };
    struct Placed {
        POINT place{};
        bool isShown = false;
    };

    CircumplexGraph& set_lines(int text, const char* line1, const char* line2, const char* line3);
    CircumplexGraph& set_text(int text, const char* line);
    void update_legend_column();
    Placed place_of(const point_info& point) const;
    SymbolSizes symbol_sizes(double size);
    void draw_point_symbol(CDC* dc, POINT place, const SymbolSizes& sizes, const point_info& point);
    void draw_connections(CDC& dc, std::span<const Placed> places);
    void draw_names(CDC& dc, std::span<const Placed> places);
    void draw_arc(CDC& dc, const arc_info& arc) const;
    void draw_spokes(CDC& dc) const;
    bool arc_covers(const arc_info& arc, int x, int y) const;
    std::vector<POINT> arc_points(const arc_info& arc, double radius) const;
    Legend legend_of(CDC& dc) const;
    CRect legend_place() const;

    std::array<CString, cTextCount> m_texts;
    int m_legendTextSize;
    int m_legendPlacement = NoLegend;
    double m_legendWidth = 1;
    double m_legendHeight = 0;  ///< in inches, by the last drawing
    std::vector<point_info> m_points;
    std::array<int, cSymbols> m_symbolUse{};
    std::vector<connection_info> m_connections;
    std::vector<sector_info> m_sectors;
    std::vector<arc_info> m_arcs;
};
