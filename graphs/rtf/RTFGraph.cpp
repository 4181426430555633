#include "graphs/rtf/RTFGraph.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "graphs/common/DeviceUnits.h"
#include "platform/base/NumberText.h"
#include "platform/files/CFile.h"

using tessalink::toDevice;

namespace {

constexpr std::array<const char*, 3> cLineTypes = {"\\dplinesolid", "\\dplinedot",
                                                   "\\dplinehollow"};

struct Anchors {
    const char* x;
    const char* y;
};
/// By Alignment.
constexpr std::array<Anchors, 3> cAnchors = {
    {{"page", "page"}, {"margin", "para"}, {"margin", "page"}}};

// Each % stands for the next value.
constexpr std::string_view cLineFormat =
    "{\\do\\dobx%\\doby%\\dpline\\dpptx0\\dppty%\\dpptx%\\dppty%\\dpx%\\dpy%"
    "\\dpxsize%\\dpysize%%\\dplinecor0\\dplinecog0\\dplinecob0\\dplinew%"
    "\\dpfillbgcr255\\dpfillbgcg255\\dpfillbgcb255\\dpfillpat0}\r\n";
constexpr std::string_view cBoxFormat =
    "{\\do\\dobx%\\doby%\\dptxbx\\dptxbxmar0 {\\dptxbxtext \\plain\\sa0\\sb0 \\fs% % {%"
    "\\par }}\r\n\\dpx%\\dpy%\\dpxsize%\\dpysize%\\dplinehollow"
    "\\dplinecor0\\dplinecog0\\dplinecob0\\dplinew0"
    "\\dpfillbgcr255\\dpfillbgcg255\\dpfillbgcb255\\dpfillpat0}\r\n";
constexpr std::string_view cSignFormat =
    "{{\\field{\\*\\fldinst SYMBOL % \\\\f \"Symbol\" \\\\s %}{\\fldrslt\\f3\\fs%}}} %";

// Codes of the Symbol face.
constexpr int cGreaterOrEqualByte = 179;
constexpr int cLessOrEqualByte = 163;

constexpr double cTwipsPerInch = 1440;
constexpr double cHalfPointsPerInch = 144;
/// What lines that are not vertical lack at their right end, in inches.
constexpr double cShortening = 0.03;
/// The room between lines and the symbols at their ends, and between labels and the plotting area.
constexpr double cGap = 0.05;
constexpr double cLegendWidth = 0.45;
constexpr double cLegendExtraHeight = 0.01;

int toTwips(double inches) {
    return toDevice(inches * cTwipsPerInch);
}

/// A value of a format: a text or a number.
struct Value {
    Value(const char* value) : text(value != nullptr ? value : "") {}
    Value(int value) : number(value), isNumber(true) {}

    std::string_view text;
    int number = 0;
    bool isNumber = false;
};

/// Appends the format with the values in the places of its % signs.
void fillIn(std::string& text, std::string_view format, std::initializer_list<Value> values) {
    for (const Value& value : values) {
        const auto place = format.find('%');
        text += format.substr(0, place);
        format.remove_prefix(place + 1);
        char digits[tessalink::cMaxIntText];
        text +=
            value.isNumber
                ? std::string_view(digits, static_cast<std::size_t>(
                                               tessalink::writeInt(digits, value.number) - digits))
                : value.text;
    }
    text += format;
}

double limited(double value, int lowest, int highest) {
    return value < lowest ? lowest : value > highest ? highest : value;
}

double unitOf(double from, double to, int lowest, int highest) {
    return (to - from) / (static_cast<double>(highest) - lowest);
}

}  // namespace

RTFGraph::RTFGraph(CFile& file, double left, double top, double right, double bottom, int xMin,
                   int xMax, int yMin, int yMax, int alignment)
    : m_file(file),
      m_left(left),
      m_top(top),
      m_right(right),
      m_bottom(bottom),
      m_xUnit(unitOf(left, right, xMin, xMax)),
      m_yUnit(unitOf(top, bottom, yMin, yMax)),
      m_xMin(xMin),
      m_xMax(xMax),
      m_yMin(yMin),
      m_yMax(yMax),
      m_lineType(cLineTypes[ltSolid]) {
    set_alignment(alignment);
}

void RTFGraph::set_alignment(int alignment) {
    const bool known = alignment >= 0 && alignment < static_cast<int>(cAnchors.size());
    const Anchors& anchors = cAnchors[static_cast<std::size_t>(known ? alignment : int{alPage})];
    m_xAnchor = anchors.x;
    m_yAnchor = anchors.y;
}

void RTFGraph::SetLineType(int type) {
    if (type < 0 || type >= static_cast<int>(cLineTypes.size())) return;
    m_lineType = cLineTypes[static_cast<std::size_t>(type)];
}

void RTFGraph::DrawBox() {
    SetLineSize(cDefaultLineSize);
    SetLineType(ltSolid);
    draw_line(m_left, m_top, m_right, m_top);
    draw_line(m_left, m_bottom, m_right, m_bottom);
    draw_line(m_left, m_top, m_left, m_bottom);
    draw_line(m_right, m_top, m_right, m_bottom);
}

void RTFGraph::HorizontalLine(double y) {
    draw_line(m_left, ypos(y), m_right, ypos(y));
}

void RTFGraph::VerticalLine(int x) {
    draw_line(xpos(x), m_top, xpos(x), m_bottom);
}

void RTFGraph::Line(int x1, int y1, int x2, int y2) {
    Line(static_cast<double>(x1), static_cast<double>(y1), static_cast<double>(x2),
         static_cast<double>(y2));
}

void RTFGraph::Line(double x1, double y1, double x2, double y2) {
    draw_line(xpos(x1), ypos(y1), xpos(x2), ypos(y2));
}

void RTFGraph::GapLine(double x1, double y1, double x2, double y2) {
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    // Documents keep their gaps: by this ratio of the units, although the slope on paper is that
    // of its inverse.
    const double slope = ((y2 - y1) * m_xUnit / m_yUnit) / (x2 - x1);
    const double distance = cGap / std::sqrt(slope * slope + 1);
    Line(x1 + distance / m_xUnit, y1 + slope * distance / m_yUnit, x2 - distance / m_xUnit,
         y2 - slope * distance / m_yUnit);
}

void RTFGraph::Plot(double x, double y, const char* text) {
    const double radius = m_legendSize / (2 * cHalfPointsPerInch);
    text_box(xpos(x) - radius, ypos(y) - radius, 2 * radius, 2 * radius, text, "\\qc");
}

void RTFGraph::Plot(double x, double y) {
    Plot(x, y, "\\bullet ");
}

void RTFGraph::Plot(double x, double y, char ch) {
    const char text[] = {ch, '\0'};
    Plot(x, y, text);
}

void RTFGraph::YLegend(int y, const char* text, int sides) {
    const double height = m_legendSize / cHalfPointsPerInch;
    const double top = unrestricted_ypos(y) - height / 2;
    if ((sides & cLeft) != 0) {
        text_box(0, top, m_left - cGap, height + cLegendExtraHeight, text, "\\qr");
    }
    if ((sides & cRight) != 0) {
        text_box(m_right + cGap, top, cLegendWidth, height + cLegendExtraHeight, text, "\\ql");
    }
}

void RTFGraph::YLegend(int y, int sides) {
    YLegend(y, tessalink::formatInt(y, 0, -1), sides);
}

void RTFGraph::YLegendGE(int y, int sides) {
    write_sign_legend(cGreaterOrEqualByte, y, sides);
}

void RTFGraph::YLegendLE(int y, int sides) {
    write_sign_legend(cLessOrEqualByte, y, sides);
}

void RTFGraph::write_sign_legend(int symbol, int y, int sides) {
    std::string text;
    fillIn(text, cSignFormat, {symbol, tessalink::halved(m_legendSize), m_legendSize, y});
    YLegend(y, text.c_str(), sides);
}

double RTFGraph::xpos(double x) const {
    return (limited(x, m_xMin, m_xMax) - m_xMin) * m_xUnit + m_left;
}

double RTFGraph::ypos(double y) const {
    return unrestricted_ypos(limited(y, m_yMin, m_yMax));
}

double RTFGraph::unrestricted_ypos(double y) const {
    return (m_yMax - y) * m_yUnit + m_top;
}

void RTFGraph::draw_line(double x1, double y1, double x2, double y2) {
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    if (x1 != x2) x2 -= cShortening;
    const int left = toTwips(x1);
    const int first = toTwips(y1);
    const int width = toTwips(x2) - left;
    const int height = toTwips(y2) - first;
    const int above = height < 0 ? -height : 0;
    m_text.clear();
    fillIn(m_text, cLineFormat,
           {m_xAnchor, m_yAnchor, above, width, height + above, left, first - above, width,
            height < 0 ? above : height, m_lineType, m_lineSize});
    m_file.Write(m_text.data(), m_text.size());
}

void RTFGraph::text_box(double x, double y, double width, double height, const char* text,
                        const char* paragraphFormat) {
    const int left = toTwips(x);
    const int top = toTwips(y);
    m_text.clear();
    fillIn(m_text, cBoxFormat,
           {m_xAnchor, m_yAnchor, m_legendSize, paragraphFormat, text, left, top,
            toTwips(x + width) - left, toTwips(y + height) - top});
    m_file.Write(m_text.data(), m_text.size());
}
