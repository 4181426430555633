#include "graphs/rtf/RTFGraph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <sstream>

#include "platform/files/CFileException.h"
#include "platform/files/CMemFile.h"
#include "tests/support/Dice.h"

namespace {

using tessalink::test::Dice;

std::string textOf(CMemFile& file) {
    std::string text(static_cast<std::size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    return text;
}

struct Anchors {
    std::string x = "page";
    std::string y = "page";
};

// The numbers of an object are those that are looked at; the words around them are fixed.
struct LineObject {
    int y1, x2, y2, x, y, width, height;
    std::string type = "solid";
    int size = 20;

    std::string Text(const Anchors& at = {}) const {
        std::ostringstream out;
        out << R"({\do\dobx)" << at.x << R"(\doby)" << at.y << R"(\dpline\dpptx0\dppty)" << y1
            << R"(\dpptx)" << x2 << R"(\dppty)" << y2 << R"(\dpx)" << x << R"(\dpy)" << y
            << R"(\dpxsize)" << width << R"(\dpysize)" << height << R"(\dpline)" << type
            << R"(\dplinecor0\dplinecog0\dplinecob0\dplinew)" << size
            << R"(\dpfillbgcr255\dpfillbgcg255\dpfillbgcb255\dpfillpat0})"
            << "\r\n";
        return out.str();
    }
};

struct BoxObject {
    std::string format, text;
    int x, y, width, height;
    int size = 16;

    std::string Text(const Anchors& at = {}) const {
        std::ostringstream out;
        out << R"({\do\dobx)" << at.x << R"(\doby)" << at.y
            << R"(\dptxbx\dptxbxmar0 {\dptxbxtext \plain\sa0\sb0 \fs)" << size << ' ' << format
            << " {" << text << R"(\par }})"
            << "\r\n"
            << R"(\dpx)" << x << R"(\dpy)" << y << R"(\dpxsize)" << width << R"(\dpysize)" << height
            << R"(\dplinehollow\dplinecor0\dplinecog0\dplinecob0\dplinew0)"
            << R"(\dpfillbgcr255\dpfillbgcg255\dpfillbgcb255\dpfillpat0})"
            << "\r\n";
        return out.str();
    }
};

constexpr const char* cGreaterOrEqual60 =
    R"({{\field{\*\fldinst SYMBOL 179 \\f "Symbol" \\s 8}{\fldrslt\f3\fs16}}} 60)";
constexpr const char* cLessOrEqual0 =
    R"({{\field{\*\fldinst SYMBOL 163 \\f "Symbol" \\s 12}{\fldrslt\f3\fs25}}} 0)";

// Two by two inches, one inch from the left and two from the top; by hand.
TEST(RTFGraph, WritesObjectsToTheByte) {
    const std::string box = LineObject{0, 2837, 0, 1440, 2880, 2837, 0}.Text() +
                            LineObject{0, 2837, 0, 1440, 5760, 2837, 0}.Text() +
                            LineObject{0, 0, 2880, 1440, 2880, 0, 2880}.Text() +
                            LineObject{0, 0, 2880, 4320, 2880, 0, 2880}.Text();
    const std::string up = LineObject{1440, 1397, 0, 1440, 2880, 1397, 1440}.Text();
    const std::string both = BoxObject{"\\qr", "25", 0, 4240, 1368, 174}.Text() +
                             BoxObject{"\\ql", "25", 4392, 4240, 648, 174}.Text();
    const std::string doubled = BoxObject{"\\qc", "x", 2660, 2660, 440, 440, 44}.Text();
    const std::pair<std::function<void(RTFGraph&)>, std::string> cases[] = {
        {[](auto& g) { g.HorizontalLine(50); },
         R"({\do\dobxpage\dobypage\dpline\dpptx0\dppty0\dpptx2837\dppty0\dpx1440\dpy2880)"
         R"(\dpxsize2837\dpysize0\dplinesolid\dplinecor0\dplinecog0\dplinecob0\dplinew20)"
         R"(\dpfillbgcr255\dpfillbgcg255\dpfillbgcb255\dpfillpat0})"
         "\r\n"},
        {[](auto& g) { g.HorizontalLine(-9.5); },
         LineObject{0, 2837, 0, 1440, 5760, 2837, 0}.Text()},
        {[](auto& g) { g.VerticalLine(150); }, LineObject{0, 0, 2880, 4320, 2880, 0, 2880}.Text()},
        {[](auto& g) { g.Line(0, 25, 50, 50); }, up},
        {[](auto& g) { g.Line(50.0, 50.0, -3.0, 25.0); }, up},
        {[](auto& g) { g.Line(50, 10, 50, 20); }, LineObject{576, 0, 0, 2880, 4608, 0, 576}.Text()},
        {[](auto& g) { g.GapLine(50, 25, 0, 0); },
         LineObject{1406, 1257, 0, 1510, 4337, 1257, 1406}.Text()},
        {[](auto& g) {
             g.SetLineSize(7);
             g.SetLineType(1);
             g.SetLineType(5);
             g.SetLineType(-1);
             g.VerticalLine(0);
             g.SetLineType(2);
             g.VerticalLine(0);
             g.DrawBox();
             g.VerticalLine(0);
         },
         LineObject{0, 0, 2880, 1440, 2880, 0, 2880, "dot", 7}.Text() +
             LineObject{0, 0, 2880, 1440, 2880, 0, 2880, "hollow", 7}.Text() + box +
             LineObject{0, 0, 2880, 1440, 2880, 0, 2880}.Text()},
        {[](auto& g) { g.Plot(50, 25, "{\\b x\\y}"); },
         R"({\do\dobxpage\dobypage\dptxbx\dptxbxmar0 {\dptxbxtext \plain\sa0\sb0 \fs16 \qc )"
         R"({{\b x\y}\par }})"
         "\r\n"
         R"(\dpx2800\dpy4240\dpxsize160\dpysize160\dplinehollow\dplinecor0\dplinecog0\dplinecob0)"
         R"(\dplinew0\dpfillbgcr255\dpfillbgcg255\dpfillbgcb255\dpfillpat0})"
         "\r\n"},
        {[](auto& g) { g.Plot(-1, 99); },
         BoxObject{"\\qc", "\\bullet ", 1360, 2800, 160, 160}.Text()},
        {[](auto& g) {
             g.SetLegendSize(44);
             g.Plot(50, 50, 'x');
         },
         doubled},
        {[](auto& g) { g.YLegend(25, 3); }, both},
        {[](auto& g) { g.YLegend(25, "25", 7); }, both},
        {[](auto& g) { g.YLegend(25, 4); }, ""},
        {[](auto& g) { g.YLegendGE(60, 1); },  // beyond the axis
         BoxObject{"\\qr", cGreaterOrEqual60, 0, 2224, 1368, 174}.Text()},
        {[](auto& g) {
             g.SetLegendSize(25);
             g.YLegendLE(0, 2);
         },
         BoxObject{"\\ql", cLessOrEqual0, 4392, 5635, 648, 264, 25}.Text()},
    };
    for (const auto& [draw, expected] : cases) {
        CMemFile file;
        RTFGraph graph(file, 1, 2, 3, 4, 0, 100, 0, 50, 0);
        draw(graph);
        EXPECT_EQ(textOf(file), expected);
    }
}

// The same once more from its formulas.
class LayoutModel {
public:
    LayoutModel(double left, double top, double right, double bottom, int xMin, int xMax, int yMin,
                int yMax, Anchors anchors)
        : m_left(left),
          m_top(top),
          m_right(right),
          m_bottom(bottom),
          m_xMin(xMin),
          m_xMax(xMax),
          m_yMin(yMin),
          m_yMax(yMax),
          m_xUnit((right - left) / (xMax - xMin)),
          m_yUnit((bottom - top) / (yMax - yMin)),
          m_anchors(std::move(anchors)) {}

    double X(double x) const {
        return (std::fmin(std::fmax(x, m_xMin), m_xMax) - m_xMin) * m_xUnit + m_left;
    }
    double Y(double y) const { return Free(std::fmin(std::fmax(y, m_yMin), m_yMax)); }
    double Free(double y) const { return (m_yMax - y) * m_yUnit + m_top; }
    std::string Across(double y) const { return Inches(m_left, Y(y), m_right, Y(y)); }
    std::string Down(double x) const { return Inches(X(x), m_top, X(x), m_bottom); }
    std::string Line(double x1, double y1, double x2, double y2) const {
        return Inches(X(x1), Y(y1), X(x2), Y(y2));
    }
    std::string Gap(double x1, double y1, double x2, double y2) const {
        if (x1 > x2) return Gap(x2, y2, x1, y1);
        const double m = ((y2 - y1) * m_xUnit / m_yUnit) / (x2 - x1);
        const double d = 0.05 / std::sqrt(m * m + 1);
        return Line(x1 + d / m_xUnit, y1 + m * d / m_yUnit, x2 - d / m_xUnit, y2 - m * d / m_yUnit);
    }
    std::string Plot(double x, double y, const std::string& text) const {
        const double r = size / 288.0;
        return Box("\\qc", text, X(x) - r, Y(y) - r, 2 * r, 2 * r);
    }
    std::string Legend(int y, const std::string& text, int sides) const {
        const double h = size / 144.0;
        const double top = Free(y) - h / 2;
        return (sides & 1 ? Box("\\qr", text, 0, top, m_left - 0.05, h + 0.01) : "") +
               (sides & 2 ? Box("\\ql", text, m_right + 0.05, top, 0.45, h + 0.01) : "");
    }

    int size = 16;

private:
    static int twips(double inches) { return static_cast<int>(std::trunc(inches * 1440 + 0.5)); }
    std::string Inches(double x1, double y1, double x2, double y2) const {
        if (x1 > x2) return Inches(x2, y2, x1, y1);
        const int x = twips(x1);
        const int width = twips(x1 == x2 ? x2 : x2 - 0.03) - x;
        const int height = twips(y2) - twips(y1);
        const int rise = std::max(-height, 0);
        return LineObject{rise, width, height + rise, x, twips(y1) - rise, width, std::abs(height)}
            .Text(m_anchors);
    }
    std::string Box(const char* format, const std::string& text, double x, double y, double width,
                    double height) const {
        return BoxObject{format,
                         text,
                         twips(x),
                         twips(y),
                         twips(x + width) - twips(x),
                         twips(y + height) - twips(y),
                         size}
            .Text(m_anchors);
    }

    double m_left, m_top, m_right, m_bottom;
    int m_xMin, m_xMax, m_yMin, m_yMax;
    double m_xUnit, m_yUnit;
    Anchors m_anchors;
};

TEST(RTFGraph, RandomCallsFollowTheFormulas) {
    Dice dice(7);
    const auto number = [&](int least, int most) {
        return least + static_cast<int>(dice.Below(static_cast<std::size_t>(most - least) + 1));
    };
    const auto inches = [&](int least, int most) {
        return number(least * 100, most * 100) / 100.0;
    };
    const Anchors anchors[] = {{"page", "page"}, {"margin", "para"}, {"margin", "page"}};
    for (int round = 0; round < 300; ++round) {
        const int alignment = number(0, 2);
        const double left = inches(-1, 3), top = inches(-1, 5);
        const double right = left + inches(1, 5), bottom = top + inches(1, 5);
        const int xMin = number(-50, 50), xMax = xMin + number(1, 200);
        const int yMin = number(-50, 50), yMax = yMin + number(1, 200);
        CMemFile file;
        RTFGraph graph(file, left, top, right, bottom, xMin, xMax, yMin, yMax, alignment);
        LayoutModel model(left, top, right, bottom, xMin, xMax, yMin, yMax,
                          anchors[static_cast<std::size_t>(alignment)]);
        std::string expected;
        for (int call = 0; call < 20; ++call) {
            const int x1 = number(-80, 300), y1 = number(-80, 300), sides = number(0, 3);
            const int x2 = number(-80, 300), y2 = number(-80, 300);
            const double f1 = x1 + 0.3, g1 = y1 - 0.6, f2 = x2 + (x1 == x2), g2 = y2 / 3.0;
            switch (number(0, 7)) {
                case 0:
                    graph.SetLegendSize(model.size = number(1, 60));
                    break;
                case 1:
                    graph.HorizontalLine(g1);
                    expected += model.Across(g1);
                    break;
                case 2:
                    graph.VerticalLine(x1);
                    expected += model.Down(x1);
                    break;
                case 3:
                    graph.Line(x1, y1, x2, y2);
                    expected += model.Line(x1, y1, x2, y2);
                    break;
                case 4:
                    graph.GapLine(f1, g1, f2, g2);
                    expected += model.Gap(f1, g1, f2, g2);
                    break;
                case 5:
                    graph.Plot(f1, g1, "\\'B7");
                    expected += model.Plot(f1, g1, "\\'B7");
                    break;
                default:
                    graph.YLegend(y1, sides);
                    expected += model.Legend(y1, std::to_string(y1), sides);
            }
        }
        ASSERT_EQ(textOf(file), expected) << "round " << round;
    }
}

// A file that takes no more bytes.
class FullFile : public CMemFile {
public:
    void Write(const void*, std::size_t) override {
        throw CFileException(CFileException::diskFull);
    }
};

TEST(RTFGraph, FaultsOfTheFilePassThroughAndNumbersOfAnySizeAreWritten) {
    FullFile full;
    RTFGraph lost(full, 0, 0, 1, 1, 0, 1, 0, 1, 0);
    EXPECT_THROW(lost.DrawBox(), CFileException);
    EXPECT_THROW(lost.Plot(0, 0), CFileException);

    CMemFile file;
    const double wild[] = {0, -1e300, 1e300, HUGE_VAL, -HUGE_VAL, NAN};
    const int limits[] = {INT_MIN, 0, INT_MAX};
    Dice dice(3);
    for (int round = 0; round < 500; ++round) {
        RTFGraph graph(file, dice.Pick(wild), dice.Pick(wild), dice.Pick(wild), dice.Pick(wild),
                       dice.Pick(limits), dice.Pick(limits), dice.Pick(limits), dice.Pick(limits),
                       dice.Pick(limits));
        graph.SetLegendSize(dice.Pick(limits));
        graph.DrawBox();
        graph.GapLine(dice.Pick(wild), dice.Pick(wild), dice.Pick(wild), dice.Pick(wild));
        graph.Plot(dice.Pick(wild), dice.Pick(wild), nullptr);
        graph.YLegendGE(dice.Pick(limits), 3);
    }
    const std::string text = textOf(file);
    EXPECT_EQ(text.find("nan"), std::string::npos);
    EXPECT_EQ(text.find("inf"), std::string::npos);
}

}  // namespace
