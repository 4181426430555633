#include "graphs/profile/CircumplexGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "graphs/profile/CircumplexGraphText.h"
#include "graphs/profile/StyleGraph.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/MarkedContext.h"
#include "tests/support/OddNumbers.h"
#include "tests/support/Xml.h"

namespace {

using namespace tessalink;
using namespace tessalink::test;
using Lines = std::vector<std::string>;
using Graph = CircumplexGraph;
using testing::ElementsAre;

/// What is drawn on the fixed screen, or on another.
std::vector<Primitive> drawn(CircleChart& graph, const CRect& rect = {0, 0, 528, 480},
                             const DeviceCaps& caps = fixedScreen()) {
    RecordingDevice device(caps);
    CDC dc(device);
    graph.Draw(&dc, rect);
    return device.Primitives();
}

Lines drawnLines(CircleChart& graph, const CRect& rect = {0, 0, 528, 480}) {
    Lines lines;
    for (const Primitive& primitive : drawn(graph, rect)) lines.push_back(toText(primitive));
    return lines;
}

/// 200 units per inch across and 100 down.
DeviceCaps wideUnits() {
    DeviceCaps caps;
    caps.width = 4000;
    caps.height = 2000;
    caps.widthMm = 508;
    caps.heightMm = 508;
    return caps;
}

// Shows what is protected, and writes the steps down.
class Stepping : public Graph {
public:
    using Graph::dev_x;
    using Graph::dev_y;
    using Graph::find_point;
    using Graph::get_symbol_sizes;
    using Graph::Graph;
    using Graph::plot;

    Lines steps;
    std::vector<CPoint> symbols;

protected:
    DrawingStep Note(CDC* dc, const char* step) { return {steps, dc, step}; }
    void recalc_layout(CDC* dc, const CRect& rect) override {
        const DrawingStep step = Note(dc, "recalc_layout");
        Graph::recalc_layout(dc, rect);
    }
    void adjust_plot_height_for_legend(double& height) override {
        steps.emplace_back("adjust_plot_height_for_legend");
        height -= 1;
    }
    void draw_title(CDC* dc, const CRect& rect) override {
        const DrawingStep step = Note(dc, "draw_title");
        Graph::draw_title(dc, rect);
    }
    void draw_circumplex(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_circumplex");
        Graph::draw_circumplex(dc);
    }
    void draw_circles(CDC* dc, const CPoint& middle) override {
        const DrawingStep step = Note(dc, "draw_circles");
        Graph::draw_circles(dc, middle);
    }
    void draw_grid(CDC* dc, int x0, int x1, int y0, int y1) override {
        CString name;
        name.Format("draw_grid %d %d %d %d", x0, x1, y0, y1);
        const DrawingStep step = Note(dc, name);
        Graph::draw_grid(dc, x0, x1, y0, y1);
    }
    void update_bk_color(CDC* dc, int x, int y, int& color) override {
        steps.emplace_back("update_bk_color");
        Graph::update_bk_color(dc, x, y, color);
    }
    void draw_sectors(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_sectors");
        Graph::draw_sectors(dc);
    }
    void draw_axis_text(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_axis_text");
        Graph::draw_axis_text(dc);
    }
    void draw_style_texts(CDC* dc, const CRect& rect) override {
        const DrawingStep step = Note(dc, "draw_style_texts");
        Graph::draw_style_texts(dc, rect);
    }
    void draw_points(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_points");
        Graph::draw_points(dc);
    }
    void draw_symbol(CDC* dc, int x, int y, int pen, int rx, int ry, SymbolType symbol,
                     std::uint32_t color) override {
        const DrawingStep step = Note(dc, "draw_symbol");
        symbols.emplace_back(x, y);
        Graph::draw_symbol(dc, x, y, pen, rx, ry, symbol, color);
    }
    void draw_legend(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_legend");
        Graph::draw_legend(dc);
    }
};

Stepping makeStepping(int bound = 10) {
    return {-bound, bound, -bound, bound, 0, 0, 14, 10, 10, 10, 10, 10, 8, 9};
}

TEST(CircumplexGraph, FitsTheDesignIntoTheRectangle) {
    struct Case {
        const char* title1;
        const char* title2;
        int placement;
        DeviceCaps caps;
        CRect rect, plot;
    };
    const Case cases[] = {
        {"", "", 0, fixedScreen(), {0, 0, 528, 480}, {96, 48, 432, 384}},
        {"", "", 0, fixedScreen(), {10, 20, 274, 980}, {58, 44, 226, 212}},  // half, by the width
        {"a", "b", 0, fixedScreen(), {0, 0, 528, 480}, {96, 82, 432, 418}},
        {"", "b", 0, fixedScreen(), {0, 0, 999, 240}, {48, 30, 216, 198}},  // half, by the height
        {"", "", 0, wideUnits(), {0, 0, 1100, 450}, {200, 50, 900, 400}},
        {"", "", 2, fixedScreen(), {0, 0, 528, 480}, {120, 48, 408, 336}},  // an inch for a legend
        {"", "", 1, fixedScreen(), {0, 0, 624, 480}, {96, 48, 432, 384}},   // a column of an inch
    };
    for (const Case& c : cases) {
        Stepping graph = makeStepping();
        graph.SetTitle(c.title1, c.title2, "").SetLegendPlacement(c.placement);
        drawn(graph, c.rect, c.caps);
        EXPECT_EQ(graph.plot(), c.plot) << &c - cases;
        EXPECT_EQ(graph.dev_x(-10), c.plot.left);
        EXPECT_EQ(graph.dev_y(-10.0), c.plot.bottom);
        EXPECT_EQ(graph.dev_x(5.0), c.plot.left + c.plot.Width() * 3 / 4);
    }
}

constexpr COLORREF cSymbolColor = 0x800000;

/// A graph with all that there is, and many names.
template <class Circle = Graph>
std::unique_ptr<Circle> makeFull(int placement, int points) {
    auto graph = std::make_unique<Circle>(-10, 10, -10, 10, 5, 1, 14, 10, 10, 10, 9, 9, 8, 8);
    graph->SetTitle("A title\nthat has two lines", "of \\bthree", "lines")
        .SetLegendPlacement(placement);
    graph->SetNWText("North", "and", "west").SetSEText("South", "east", "");
    graph->SetNAxisText("Dominance").SetEAxisText("Affiliation of some width");
    for (int i = 0; i < 8; ++i) graph->AddSector(45 * i - 22.5, 45 * i + 22.5, "Octant-Name");
    graph->AddCircle(10, 0xF0E0D0);
    graph->AddArc(30, 80, 5, 8, 0xC0FFC0, true);
    std::vector<int> ids;
    for (int i = 0; i < points; ++i) {
        graph->AddPoint(Polar{i * 137.5, 11 * std::sqrt(i / (points + 0.0))}, i,
                        i % 2 != 0 ? "Odd \\ione" : "Even", cSymbolColor, Graph::AnySymbol,
                        Graph::NameInBoth);
        ids.push_back(i);
    }
    graph->AddConnection(ids, 0x0000FF, PS_DASH);
    return graph;
}

TEST(CircumplexGraph, DrawsByItsVirtualSteps) {
    Stepping graph(-10, 10, 0, 30, 10, 5, 14, 10, 10, 10, 10, 10, 8, 9);
    graph.SetLegendPlacement(Graph::LegendBelow);
    graph.AddPoint(0, 0, 1, 0, Graph::Disc);
    RecordingDevice device;
    CDC dc(device);
    graph.Draw(&dc, CRect(0, 0, 528, 480));
    EXPECT_THAT(
        graph.steps,
        ElementsAre("recalc_layout", "adjust_plot_height_for_legend", "draw_title",
                    "draw_circumplex", "draw_circles", "draw_sectors", "draw_grid -10 10 0 30",
                    "update_bk_color", "update_bk_color", "update_bk_color", "update_bk_color",
                    "update_bk_color", "update_bk_color", "update_bk_color", "draw_axis_text",
                    "draw_style_texts", "draw_points", "draw_symbol", "draw_legend"));
    graph.steps.clear();
    graph.Draw(nullptr, CRect(0, 0, 528, 480));
    EXPECT_TRUE(graph.steps.empty());
    MarkedContext marked(device);
    makeFull<Stepping>(2, 30)->Draw(&marked.dc, CRect(0, 0, 624, 480));
}

// The picture to the pixel: circles in their order, dotted chords, the outline, and numbers on the
// colour of the ring below.
TEST(CircumplexGraph, DrawsCirclesGridAndNumbers) {
    Graph graph(0, 4, 0, 4, 2, 1, 14, 10, 10, 10, 10, 10, 8, 9);
    graph.AddCircle(1.5, 0x0000FF);
    graph.AddCircle(0.5);
    const Lines lines = drawnLines(graph);
    Lines expected = {"ellipse 138,90,390,342 pen solid 1 000000 brush solid ff0000",
                      "ellipse 222,174,306,258 pen solid 1 000000 brush solid ffffff"};
    for (const CPoint& dot : {CPoint(264, 384), CPoint(264, 300), CPoint(264, 216),
                              CPoint(264, 132), CPoint(264, 48), CPoint(96, 216), CPoint(180, 216),
                              CPoint(264, 216), CPoint(348, 216), CPoint(432, 216)}) {
        CString line;
        const int x = dot.x;
        const int y = dot.y;
        line.Format("fill %d,%d,%d,%d brush solid 000000", x, y, x + 1, y + 1);
        expected.emplace_back(line.GetString());
    }
    expected.emplace_back("ellipse 96,48,432,384 pen solid 1 000000 brush none");
    ASSERT_EQ(lines.size(), expected.size() + 6);
    EXPECT_EQ(Lines(lines.begin(), lines.end() - 6), expected);

    graph.AddCircle(2, 0xFF0000);
    graph.AddCircle(0.4, 0x0000FF);
    Lines numbers;
    for (const Primitive& p : drawn(graph)) {
        if (p.kind != Primitive::Kind::Text) continue;
        const CPoint middle = CRect(p.textBackground.value_or(RECT())).CenterPoint();
        CString number;
        number.Format("%s at %d,%d on %06X", p.text.c_str(), static_cast<int>(middle.x),
                      static_cast<int>(middle.y), static_cast<UINT>(p.textBackgroundColor));
        numbers.emplace_back(number.GetString());
        EXPECT_EQ(p.font.lfHeight, 10);
    }
    EXPECT_THAT(numbers, ElementsAre("0 at 96,216 on FF0000", "2 at 264,216 on 0000FF",
                                     "4 at 432,216 on FF0000", "0 at 264,384 on FF0000",
                                     "2 at 264,216 on 0000FF", "4 at 264,48 on FF0000"));
}

TEST(CircumplexGraph, NumbersAtEqualDistancesStandOnTheSameGround) {
    for (int width = 400; width < 540; ++width) {
        Graph graph(-10, 10, -10, 10, 5, 0, 14, 10, 10, 10, 10, 10, 8, 9);
        graph.AddCircle(10, 0x0000FF);
        graph.AddCircle(5, 0x00FF00);
        graph.AddArc(0, 360, 5, 10, 0xFF0000, width % 2);
        std::vector<COLORREF> grounds;
        for (const Primitive& p : drawn(graph, {0, 0, width, 500})) {
            if (p.kind == Primitive::Kind::Text) grounds.push_back(p.textBackgroundColor);
        }
        ASSERT_EQ(grounds.size(), 10U);
        for (const std::size_t axis : {0U, 5U}) {
            EXPECT_EQ(grounds[axis], grounds[axis + 4]) << width;
            EXPECT_EQ(grounds[axis + 1], grounds[axis + 3]) << width;
            EXPECT_NE(grounds[axis], cWhite) << width;
        }
    }
}

// As many as are allowed, from end to end.
TEST(CircumplexGraph, ThinsOutWhatWouldBeTooMuch) {
    for (const int range : {1000, 1001, 2999, 40'000}) {
        Graph graph(0, range, 0, range, 2, 1, 14, 10, 10, 10, 10, 10, 8, 9);
        int left = INT_MAX, right = 0;
        std::vector<int> numbers;
        for (const Primitive& p : drawn(graph, {0, 0, 4000, 4000})) {
            if (p.kind == Primitive::Kind::Text) numbers.push_back(std::stoi(p.text));
            if (p.kind != Primitive::Kind::FillRectangle) continue;
            left = std::min<int>(left, p.rect.left);
            right = std::max<int>(right, p.rect.right);
        }
        const int middle = 2000;
        EXPECT_NEAR(middle - left, right - middle, 80) << range;
        ASSERT_FALSE(numbers.empty());
        EXPECT_LE(numbers.size(), 2U * Graph::cMaxLabels);
        EXPECT_GE(numbers.size(), 1U * Graph::cMaxLabels);
        const int step = numbers[1] - numbers[0];
        for (std::size_t i = 1; i < numbers.size() / 2; ++i) {
            EXPECT_EQ(numbers[i] - numbers[i - 1], step);
        }
        EXPECT_GT(numbers.back(), range - step);
    }
}

TEST(CircumplexGraph, DrawsSymbolsToThePixel) {
    const auto symbolOf = [](int symbol) {
        struct Open : Graph {
            using Graph::draw_symbol;
            using Graph::Graph;
        } graph(0, 1, 0, 1, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1);
        RecordingDevice device;
        CDC dc(device);
        graph.draw_symbol(&dc, 100, 200, 3, 10, 20, static_cast<Graph::SymbolType>(symbol), 0xFF);
        std::string all;
        for (const std::string& line : device.Lines()) all += line + ";";
        return all;
    };
    const std::string pen = " pen solid 3 ff0000";
    const std::string shapes[] = {
        "line 90,180 110,220" + pen + ";line 110,180 90,220" + pen + ";",
        "ellipse 90,180,110,220" + pen + " brush ",
        "rectangle 90,180,110,220" + pen + " brush ",
        "polygon 100,176 110,212 90,212 alternate" + pen + " brush ",
        "polygon 100,176 112,200 100,224 88,200 alternate" + pen + " brush ",
    };
    EXPECT_EQ(symbolOf(1), shapes[0]);
    for (int symbol = 2; symbol <= 5; ++symbol) {
        EXPECT_EQ(symbolOf(symbol), shapes[symbol - 1] + "solid ff0000;");
        EXPECT_EQ(symbolOf(symbol + 4), shapes[symbol - 1] + "none;");
    }
    for (const int none : {INT_MIN, -1, 0, 10, INT_MAX}) EXPECT_EQ(symbolOf(none), "");
}

TEST(CircumplexGraph, KeepsPoints) {
    Stepping graph = makeStepping();
    for (int i = 0; i < 11; ++i) graph.AddPoint(i, -i, i % 10, 5, Graph::AnySymbol);
    graph.AddPoint(0, 0, 77, 5, Graph::Cross);
    const int chosen[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 1};
    for (int i = 0; i < 12; ++i) EXPECT_EQ(graph.GetPoint(i).symbol, chosen[i]);
    EXPECT_TRUE(graph.UpdatePoint(0, 50, 60));
    EXPECT_EQ(graph.GetPoint(0).x, 50);
    EXPECT_EQ(graph.GetPoint(10).x, 10);
    EXPECT_TRUE(graph.RemovePoint(0));
    int index = -1;
    EXPECT_TRUE(graph.find_point(0, index));
    EXPECT_EQ(index, 9);
    EXPECT_FALSE(graph.RemovePoint(78));
    EXPECT_FALSE(graph.UpdatePoint(78, 1, 1));
    EXPECT_EQ(graph.GetPointCount(), 11);
    graph.AddCircle(3, 0x123456);
    EXPECT_EQ(graph.GetCircle(0).color, 0x123456U);
    for (const int bad : {-1, 11}) {
        EXPECT_THROW(graph.GetPoint(bad), CInvalidArgException);
        EXPECT_THROW(graph.GetCircle(bad), CInvalidArgException);
    }
}

// Wherever a point lies, its mark is inside or on the rim, on the ray from the middle.
TEST(CircumplexGraph, ShowsPointsFarOffOnTheRim) {
    for (const DeviceCaps& caps : {fixedScreen(), wideUnits()}) {
        for (const double length : {0.0, 3.0, 9.0, 11.0, 14.0, 1e3, 1e7, 1e12, 1e308}) {
            Stepping graph = makeStepping();
            for (int angle = 0; angle < 360; angle += 15) {
                const double a = angle * std::acos(-1.0) / 180;
                graph.AddPoint(length * std::cos(a), length * std::sin(a), angle, 0, Graph::Disc);
            }
            drawn(graph, CRect(0, 0, caps.width / 2, caps.height / 2), caps);
            ASSERT_EQ(graph.symbols.size(), 24U);
            const double rx = graph.plot().Width() / 2.0;
            const double ry = graph.plot().Height() / 2.0;
            const double part = std::min(length / 10, 1.0);
            for (int i = 0; i < 24; ++i) {
                const double a = i * std::acos(-1.0) / 12;
                const CPoint at = graph.symbols[static_cast<std::size_t>(i)];
                EXPECT_NEAR(at.x, graph.plot().left + rx + part * rx * std::cos(a), 2) << length;
                EXPECT_NEAR(at.y, graph.plot().top + ry - part * ry * std::sin(a), 2) << length;
            }
        }
    }
    Stepping graph = makeStepping();
    graph.AddPoint(cInfinity, 1e300, 1, 0, Graph::Disc);
    graph.AddPoint(-1, -cInfinity, 1, 0, Graph::Disc);
    graph.AddPoint(cNaN, 0, 1, 0, Graph::Disc);
    drawn(graph);
    int sizes[4] = {};
    graph.get_symbol_sizes(0.08, sizes[0], sizes[1], sizes[2], sizes[3]);
    EXPECT_THAT(sizes, ElementsAre(4, 4, 3, 9));
    EXPECT_THAT(graph.symbols, ElementsAre(CPoint(432, 216), CPoint(264, 384)));
}

TEST(CircumplexGraph, LetsTextsOverlapNothing) {
    for (const int placement : {0, 1, 2}) {
        for (const CRect& rect : {CRect(0, 0, 624, 480), CRect(30, 40, 1900, 1400)}) {
            const auto graph = makeFull(placement, 30);
            const std::vector<Primitive> primitives = drawn(*graph, rect);
            std::vector<CRect> texts;
            std::vector<CRect> symbols;
            for (const Primitive& p : primitives) {
                if (p.pen.lopnColor != cSymbolColor || p.kind == Primitive::Kind::Text) continue;
                CRect box(p.rect);
                for (const POINT& at : p.points) {
                    const CRect dot(at, CSize(1, 1));
                    const CRect before = box;
                    box.UnionRect(&before, &dot);
                }
                symbols.push_back(box);
            }
            for (const Primitive& p : primitives) {
                if (p.kind != Primitive::Kind::Text) continue;
                const bool isNumber = p.text.find_first_not_of("-0123456789") == std::string::npos;
                // Points are on the base line; a unit of each side is left to rounding.
                const int top = p.points[0].y - p.font.lfHeight * 4 / 5;
                const CRect box(p.points[0].x, top, p.points[0].x + p.positions.back(),
                                top + p.font.lfHeight - 1);
                CRect both;
                both.UnionRect(&rect, &box);
                EXPECT_EQ(both, rect) << p.text;
                for (const auto* others : {&symbols, &texts}) {
                    for (const CRect& other : *others) {
                        EXPECT_FALSE(!isNumber && both.IntersectRect(&box, &other)) << p.text;
                    }
                }
                texts.push_back(box);
            }
            EXPECT_GT(texts.size(), 60U);
        }
    }
}

TEST(CircumplexGraph, DrawsSectorsAndArcs) {
    Graph graph(-10, 10, -10, 10, 0, 0, 14, 10, 10, 10, 10, 10, 8, 9);
    EXPECT_TRUE(graph.AddSector(0, 90, ""));
    EXPECT_TRUE(graph.AddSector(90, 360, ""));
    EXPECT_TRUE(graph.AddArc(180, 180, 5, 99, 0xFF));
    EXPECT_FALSE(graph.AddArc(0, cNaN, 5, 5, 0));
    EXPECT_FALSE(graph.AddSector(cInfinity, 0, "x"));
    EXPECT_THAT(
        drawnLines(graph),
        ElementsAre("line 264,216 432,216 pen solid 1 000000",
                    "line 264,216 264,48 pen solid 1 000000",
                    "polygon 96,216 96,216 180,216 180,216 alternate pen solid 2 ff0000 brush none",
                    testing::_));
    graph.AddArc(350, 10, 10, 10, 0);  // across the right
    const std::vector<POINT> arc = drawn(graph)[3].points;
    ASSERT_EQ(arc.size(), 21U);
    EXPECT_EQ(arc[10], (POINT{432, 216}));
    for (const POINT& p : arc) EXPECT_NEAR(std::hypot(p.x - 264, p.y - 216), 168, 1);
    while (graph.GetSectorCount() < Graph::cMaxSectors) graph.AddSector(1, 2, "");
    EXPECT_FALSE(graph.AddSector(1, 2, ""));
}

// Names inside stand inside, and those of points beyond the rim outside.
TEST(CircumplexGraph, KeepsNamesOffTheRim) {
    for (int angle = 0; angle < 360; angle += 5) {
        for (const double length : {8.5, 9.2, 12.0}) {
            Stepping graph(-10, 10, -10, 10, 0, 0, 14, 10, 11, 12, 9, 9, 8, 9);
            graph.AddPoint(Polar{static_cast<double>(angle), length}, 1, "a name", 0, Graph::Disc,
                           Graph::NameBeside);
            const auto primitives = drawn(graph);
            const Primitive& name = primitives.back();
            ASSERT_EQ(name.text, "a name");
            const POINT origin = name.points[0];
            const CRect glyphs(origin.x, origin.y - 7, origin.x + name.positions.back(), origin.y);
            for (int i = 0; i < 720; ++i) {
                const double turn = i / 2.0 / cDegreesPerRadian;
                const int radius = graph.plot().Width() / 2;
                const POINT rim = {static_cast<LONG>(std::lround(264 + radius * std::cos(turn))),
                                   static_cast<LONG>(std::lround(graph.plot().CenterPoint().y -
                                                                 radius * std::sin(turn)))};
                ASSERT_FALSE(glyphs.PtInRect(rim)) << angle << ' ' << length;
            }
        }
    }
}

// The style graph is the same picture with texts of the host's.
TEST(StyleGraph, DrawsTheSamePicture) {
    HostServices services;
    services.stringTable = [](UINT id, CString& text) {
        text.Format("Text %u", id);
        return id < 100;
    };
    const HostServicesScope scope(services);
    for (const UINT title : {0U, 1U}) {
        StyleGraph style(8, 9, title, 2 * title, 0, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16,
                         17, 18, 0, -10, 10, 0, 20, 5, 1, 14, 10, 11, 12, 9, 9, 8);
        EXPECT_EQ(style.GetTag1() * 10 + style.GetTag2(), 89);
        Graph graph(-10, 10, 0, 20, 5, 1, 14, 10, 11, 12, 9, 9, 8, 9);
        if (title != 0) graph.SetTitle("Text 1", "Text 2", "");
        graph.SetNAxisText("Text 4").SetSAxisText("Text 5");
        graph.SetEAxisText("Text 6").SetWAxisText("Text 7");
        graph.SetNWText("Text 8", "Text 9", "Text 10").SetNEText("Text 11", "Text 12", "Text 13");
        graph.SetSWText("Text 14", "Text 15", "Text 16").SetSEText("Text 17", "Text 18", "");
        graph.SetAdvancedOptions(5.5, 5, 0.5, 0.5, 1, 0.5, 0.5, 3.5, 0.75, 0);
        style.AddCircle(8, 0xAABBCC);
        graph.AddCircle(8, 0xAABBCC);
        style.AddCircle(4);
        graph.AddCircle(4);
        const CRect rect(5, 6, 700, 900);
        EXPECT_EQ(drawnLines(style, rect), drawnLines(graph, rect));
        const std::vector<Primitive> primitives = drawn(style, rect);
        EXPECT_GT(primitives.size(), 50U);
        EXPECT_EQ(primitives.back().text, "Text 18");
        EXPECT_STREQ(primitives.back().font.lfFaceName, "Times New Roman");
    }
}

// Whatever primitive fails, the state is back and the graph is drawn as ever afterwards.
TEST(CircumplexGraph, LeavesTheContextAsItWas) {
    const auto graph = makeFull(2, 12);
    const CRect rect(0, 0, 500, 500);
    expectStateRestored([&](CDC& dc) { graph->Draw(&dc, rect); });
}

/// Any number, anywhere.
std::unique_ptr<Graph> makeWild(Dice& dice) {
    const auto any = [&] {
        constexpr std::array ends = {INT_MIN, -1, 0, 1, INT_MAX};
        return dice.OneIn(9) ? dice.Pick(ends) : static_cast<int>(dice.Below(60)) - 20;
    };
    const auto value = [&] {
        constexpr std::array ends = {-1e308, 0.0, 1e9, 1e308, cInfinity, -cInfinity, cNaN};
        return dice.OneIn(9) ? dice.Pick(ends) : static_cast<double>(dice.Below(400)) / 20 - 10;
    };
    const auto text = [&] { return dice.Text(dice.Below(20), "\\nibs\n x\x01\x80\xE9\xFF"); };
    auto graph = std::make_unique<Graph>(any(), any(), any(), any(), any(), any(), any(), any(),
                                         any(), any(), any(), any(), any(), any());
    if (dice.OneIn(4)) {
        graph->SetAdvancedOptions(value(), value(), value(), value(), value(), value(), value(),
                                  value(), value(), value());
    }
    graph->SetTitle(text().c_str(), "", text().c_str()).SetNAxisText(text().c_str());
    graph->SetSWText(text().c_str(), text().c_str(), text().c_str());
    graph->SetLegendPlacement(static_cast<int>(dice.Below(4)));
    for (std::size_t i = dice.Below(6); i > 0; --i) {
        graph->AddCircle(value(), 0x99);
        graph->AddSector(value(), value(), text().c_str());
        graph->AddArc(value(), value(), value(), value(), 0x1234, dice.OneIn(2));
    }
    for (std::size_t i = dice.Below(40); i > 0; --i) {
        graph->AddPoint(value(), value(), any(), text().c_str(), 1,
                        static_cast<Graph::SymbolType>(dice.Below(12)),
                        static_cast<Graph::PointLegend>(dice.Below(5)));
    }
    graph->AddConnection(std::array{1, 2, 3, 1, 99}, 5, any(), dice.OneIn(2));
    return graph;
}

TEST(CircumplexGraph, DrawsWhateverItHolds) {
    Dice dice(41);
    int pictures = 0;
    for (int round = 0; round < 2000; ++round) {
        const auto graph = makeWild(dice);
        constexpr std::array rects = {RECT{0, 0, 528, 480},
                                      RECT{0, 0, 0, 0},
                                      RECT{9, 9, 10, 10},
                                      RECT{5, 5, 0, 0},
                                      RECT{0, 0, INT_MAX, INT_MAX},
                                      RECT{-9000, 7, -8000, 90000},
                                      RECT{INT_MIN, 0, INT_MAX, 100}};
        const CRect rect = dice.OneIn(2) ? rects[0] : dice.Pick(rects);
        RecordingDevice device(dice.OneIn(3) ? DeviceCaps() : fixedScreen());
        SvgDevice svg(PictureSheet{});
        MetaFile metaFile(5.5, 5, nullptr);
        for (DrawingDevice* each : {static_cast<DrawingDevice*>(&device),
                                    static_cast<DrawingDevice*>(&svg), metaFile.Device()}) {
            MarkedContext marked(*each);
            graph->Draw(&marked.dc, rect);
            ASSERT_TRUE(marked.IsUnchanged()) << round;
        }
        EXPECT_EQ(XmlCheck::Fault(svg.Finish()), "");
        EXPECT_LT(device.Primitives().size(), 2U * 100 * 500 + 2000);
        EXPECT_FALSE(sentencesOf(circumplexText(*graph)).IsEmpty());
        pictures += device.Primitives().size() > 20 ? 1 : 0;
    }
    EXPECT_GT(pictures, 300);
}

TEST(CircumplexGraphText, NamesPointsWithAngles) {
    Graph graph(0, 20, -10, 10, 0, 0, 14, 10, 10, 10, 10, 10, 8, 9);
    graph.SetTitle("\\bInterpersonal", "", "circle");
    graph.AddPoint(7, 4, 1, "\\iSelf", 0, Graph::Disc, Graph::NoName);
    graph.AddPoint(10, 0, 2, 0, Graph::Disc);
    graph.AddPoint(cNaN, 0, 3, "Other", 0, Graph::Disc, Graph::NoName);
    graph.AddPoint(Polar{315, 2}, 4, "LM", 0, Graph::Disc, Graph::NoName);
    EXPECT_STREQ(sentencesOf(circumplexText(graph)),
                 "Interpersonal circle: x from 0 to 20, y from -10 to 10. Self: x 7, y 4, angle "
                 "126.87, length 5. x 10, y 0, angle 0, length 0. Other: no score. LM: x 11.41, y "
                 "-1.41, angle 315, length 2.");
    while (graph.GetPointCount() < cMaxPointsInText + 3) graph.AddPoint(0, 0, 9, 0, Graph::Disc);
    EXPECT_GT(sentencesOf(circumplexText(graph)).Find("length 10. 3 more points."), 0);
}

}  // namespace
