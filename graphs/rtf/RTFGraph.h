#pragma once

#include <string>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

/// Writes a simple graph into an RTF document as drawing objects: a box, lines between data points,
/// symbols and labels of the vertical axis. Every call appends to the file at once; whoever owns
/// the file opens and ends the document. File faults pass through.
///
/// The plotting area is given in inches from an anchor, data in whole units of both axes, which
/// must not be empty; larger y lie higher. What lies outside the axes is drawn at their ends.
class TESSALINK_API RTFGraph : public CObject {
public:
    static constexpr int cDefaultLineSize = 20;    ///< twips
    static constexpr int cDefaultLegendSize = 16;  ///< half-points

    /// What SetLineType takes.
    enum LineType { ltSolid, ltDot, ltHollow };
    /// What the plotting area is measured from, horizontally and vertically.
    enum Alignment { alPage, alMarginAndParagraph, alMarginAndPage };
    /// The sides of YLegend.
    static constexpr int cLeft = 1;
    static constexpr int cRight = 2;  ///< right of the plotting area

    /// The file must stay open as long as the graph lives. Only the three alignments are defined;
    /// any other is alPage.
    RTFGraph(CFile& file, double left, double top, double right, double bottom, int xMin, int xMax,
             int yMin, int yMax, int alignment);
    ~RTFGraph() override = default;

    /// The width of lines from now on, in twips.
    void SetLineSize(int twips) { m_lineSize = twips; }
    /// The size of texts from now on, in half-points.
    void SetLegendSize(int halfPoints) { m_legendSize = halfPoints; }
    /// The type of lines from now on; a number of no type changes nothing.
    void SetLineType(int type);

    /// The four sides of the plotting area, solid and 20 twips wide; lines stay so afterwards.
    void DrawBox();
    /// A line across the plotting area.
    void HorizontalLine(double y);
    /// A line from the top of the plotting area to its bottom.
    void VerticalLine(int x);
    /// A line between two points of the data.
    void Line(int x1, int y1, int x2, int y2);
    /// A line between two points of the data.
    void Line(double x1, double y1, double x2, double y2);
    /// A line that ends before the symbols at its two points, which must have different x.
    void GapLine(double x1, double y1, double x2, double y2);
    /// Centers a text on a point. It is RTF as it stands; see RTFEncode.
    void Plot(double x, double y, const char* text);
    /// A bullet.
    void Plot(double x, double y);
    void Plot(double x, double y, char ch);
    /// A label at the height of y, within the axis or not, beside the plotting area on the sides
    /// that are asked for: a text, y in decimal, or that after a greater-or-equal or less-or-equal
    /// sign.
    void YLegend(int y, const char* text, int sides);
    void YLegend(int y, int sides);
    /// Y in decimal after a greater-or-equal sign, see YLegend.
    void YLegendGE(int y, int sides);
    /// Y in decimal after a less-or-equal sign, see YLegend.
    void YLegendLE(int y, int sides);

private:
    double xpos(double x) const;
    double ypos(double y) const;
    double unrestricted_ypos(double y) const;
    void draw_line(double x1, double y1, double x2, double y2);
    void text_box(double x, double y, double width, double height, const char* text,
                  const char* paragraphFormat);
    void set_alignment(int alignment);
    void write_sign_legend(int symbol, int y, int sides);

    CFile& m_file;
    double m_left;
    double m_top;
    double m_right;
    double m_bottom;
    double m_xUnit;
    double m_yUnit;
    int m_xMin;
    int m_xMax;
    int m_yMin;
    int m_yMax;
    int m_lineSize = cDefaultLineSize;
    int m_legendSize = cDefaultLegendSize;
    const char* m_lineType;
    const char* m_xAnchor;
    const char* m_yAnchor;
    std::string m_text;  ///< of the object that is being written; keeps its room
};
