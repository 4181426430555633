#include "graphs/bar/BarGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "graphs/rtf/MetaFile.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/graphs/bar/RandomBarGraph.h"
#include "tests/support/MarkedContext.h"

namespace {

using namespace tessalink;
using namespace tessalink::test;
using Lines = std::vector<std::string>;
using testing::ElementsAre;

std::unique_ptr<BarScale> makeScale(const char* left = "", const char* right = "",
                                    int leftWidth = 0, int rightWidth = 0, int barHeight = 20) {
    return std::make_unique<BarScale>(20, 80, left, right, leftWidth, rightWidth, 10, 0, 20, 80, 0,
                                      0, 5, 5, 20, barHeight, 20, 80);
}

const CRect cBox(100, 0, 700, 20);  // ten units to a score of makeScale

TEST(BarScale, LimitsWhatItIsGiven) {
    const BarScale wide(30, 70, "A\nB\n", "", 0, 0, 10, 5, 10, 90, 1, 2, 3, 4, 11, 0, 20, 80);
    EXPECT_EQ(wide.GetMinPlotVal(), 30);
    EXPECT_EQ(wide.GetMaxPlotVal(), 70);
    EXPECT_EQ(wide.GetTickStart(), 20);
    EXPECT_EQ(wide.GetTickEnd(), 80);
    EXPECT_EQ(wide.GetBarHeight(), 17);
    EXPECT_EQ(wide.GetDesignHeight(), 3 + 4 + 3 * 11);
    EXPECT_STREQ(wide.GetTypeface(), "Arial");
    EXPECT_EQ(wide.GetLineSize(), 2);
    EXPECT_EQ(
        wide.GetBoxColor() | wide.GetMinTickColor() | wide.GetMajTickColor() | wide.GetDescColor(),
        0U);
    EXPECT_EQ(BarScale(0, 1, "", "", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 10, 0, 0, 1).GetBarHeight(), 15);
    EXPECT_EQ(BarScale2(0, 1, "", "", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 1).GetBoxFillColor(),
              cWhite);
}

TEST(BarScale, PlacesScores) {
    const BarScale scale(20, 80, "", "", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 9, 30, 70);
    struct Case {
        double score;
        int restricted, unrestricted;
    };
    for (const Case& c : {Case{20, 200, 100}, Case{30, 200, 200}, Case{45.04, 350, 350},
                          Case{45.06, 351, 351}, Case{70, 600, 600}, Case{75, 600, 650},
                          Case{85, 600, 750}, Case{10, 200, 1}}) {  // -100 + 0.5 is cut to -99
        EXPECT_EQ(scale.PixX(c.score, cBox), c.restricted) << c.score;
        EXPECT_EQ(scale.PixXUnrestricted(c.score, cBox), c.unrestricted) << c.score;
    }
}

// What a mark draws on the box of a scale at one pixel to a design unit.
std::string markOf(BarGraphic* graphic, double xScale = 1, double yScale = 1) {
    const auto scale = makeScale();
    scale->AddGraphic(graphic);
    RecordingDevice device;
    CDC dc(device);
    graphic->Draw(&dc, xScale, yScale, cBox);
    return device.Lines().empty() ? "" : device.Lines()[0];
}

TEST(BarGraphics, AreDrawnToThePixel) {
    using Point = BarPointGraphic;
    const auto point = [](Point::Symbol symbol, double score = 50, int size = 15, int line = 2) {
        return new Point(score, size, 0x0000FF, symbol, line);
    };
    const std::pair<std::string, const char*> cases[] = {
        {markOf(point(Point::Circle)),
         "ellipse 392,2,408,18 pen solid 2 ff0000 brush solid ff0000"},
        {markOf(point(Point::HollowSquare, 99, 10, 0), 1, 2),
         "rectangle 695,0,705,20 pen solid 1 ff0000 brush none"},
        {markOf(point(Point::Triangle)),
         "polygon 400,1 408,14 392,14 alternate pen solid 2 ff0000 brush solid ff0000"},
        {markOf(point(Point::HollowDiamond, 20, 99, 1), 0.1),
         "polygon 100,-2 101,10 100,22 99,10 alternate pen solid 1 ff0000 brush none"},
        {markOf(point(static_cast<Point::Symbol>(8))), ""},
        {markOf(new Point(NAN)), ""},
        {markOf(new BarRangeGraphic(40, 60, 1, 2, 0)),
         "rectangle 300,4,500,16 pen solid 1 020000 brush solid 010000"},
        {markOf(new BarRangeGraphic(60, 10, 1, 2, 3), 2),
         "rectangle 100,4,500,16 pen solid 6 020000 brush solid 010000"},
        {markOf(new BarRangeGraphic(70, 99, 1, 2, -1)),
         "rectangle 600,4,700,16 pen none brush solid 010000"},
        {markOf(new BarRangeGraphic(40, 40, 1, 2, 1)), ""},
        {markOf(new BarRangeGraphic(81, 99, 1, 2, 1)), ""},
        {markOf(new BarRangeGraphic(40, NAN, 1, 2, 1)), ""},
    };
    for (const auto& [drawn, expected] : cases) EXPECT_EQ(drawn, expected);
    const Point defaults;
    EXPECT_EQ(defaults.GetSize(), 15);
    EXPECT_EQ(defaults.GetColor(), 0x800000U);
    EXPECT_EQ(defaults.GetSymbol(), Point::Diamond);
    EXPECT_EQ(BarRangeGraphic(0, 1, 0, 0, 0).GetHeightFraction(), 0.6);
}

TEST(BarHeading, SharesFonts) {
    BarHeading heading("one", 0, 0, 20, 0, "Arial", 0, 0, 5, 5);
    EXPECT_EQ(heading.AddText("one\ntwo\nthree", 0, 0, 20, 0, "ARIAL"), 1);
    EXPECT_EQ(heading.GetDesignHeight(), 70);
    EXPECT_EQ(heading.AddText("other", 0, 0, 12, 0, "Arial"), 2);
    EXPECT_EQ(heading.AddText("last", 0, 0, 9, 0, "Arial"), 3);
    ASSERT_EQ(heading.GetFontCount(), 3);
    EXPECT_EQ(heading.GetFont(0).refCount, 2);
    EXPECT_STREQ(heading.GetFont(0).typeface, "Arial");
    heading.RemoveTextAt(0);
    EXPECT_EQ(heading.GetFont(0).refCount, 1);
    heading.RemoveTextAt(1);
    ASSERT_EQ(heading.GetFontCount(), 2);
    EXPECT_EQ(heading.GetFont(1).index, 1);
    heading.SetTextAt(0, "new");
    EXPECT_STREQ(heading.GetText(0), "new");
    RecordingDevice device;
    CDC dc(device);
    heading.Draw(&dc, 0.8, 1, CRect(100, 0, 900, 70));
    ASSERT_EQ(device.Primitives().size(), 2U);
    const LOGFONTA& font = device.Primitives()[1].font;  // of the record that moved up
    EXPECT_EQ(font.lfHeight, 9);
    EXPECT_EQ(font.lfOutPrecision, 4);
    EXPECT_EQ(font.lfQuality, 2);
    EXPECT_EQ(font.lfPitchAndFamily, 6);
    EXPECT_THROW(heading.RemoveTextAt(2), CInvalidArgException);
    EXPECT_THROW(heading.SetTextAt(-1, ""), CInvalidArgException);
    EXPECT_THROW(heading.GetText(2), CInvalidArgException);
    EXPECT_EQ(heading.AddText("back", 0, 0, 12, 0, "arial"), 2);  // that of a font that had gone
    EXPECT_EQ(heading.GetFont(2).index, 2);
    EXPECT_STREQ(heading.GetFont(2).typeface, "arial");
    heading.Clear();
    EXPECT_EQ(heading.GetDesignHeight(), 10);
    constexpr int many = 100'000;  // found by their look, not one by one
    for (int i = 0; i < many; ++i) heading.AddText("", 0, 0, i, 0, "Arial");
    EXPECT_EQ(heading.GetFontCount(), many);
}

TEST(BarValueLegend, LabelsTheScale) {
    const auto scale = makeScale("Score", "", 100);
    BarValueLegend legend(scale.get(), "", "", 1, 2, 0, 0, 3, 4, 20, 18, "Arial", "Arial");
    EXPECT_EQ(legend.GetBodyColor(), 1U);
    EXPECT_EQ(legend.GetDescColor(), 2U);
    EXPECT_EQ(legend.GetLeftDescAlignment(), 6);
    EXPECT_EQ(legend.GetRightDescAlignment(), 4);
    EXPECT_EQ(legend.GetDesignHeight(), 25);
    const auto labels = [&](int start, int delta) {
        legend.SetLabelCalcStart(start);
        legend.SetLabelDelta(delta);
        RecordingDevice device;
        CDC dc(device);
        legend.Draw(&dc, 1, 1, CRect(0, 0, 1000, 25));
        std::string texts;
        for (const Primitive& p : device.Primitives()) texts += p.text + ' ';
        return texts;
    };
    EXPECT_EQ(labels(legend.GetLabelCalcStart(), legend.GetLabelDelta()), "20 80 30 40 50 60 70 ");
    EXPECT_EQ(labels(25, 10), "20 80 25 35 45 55 65 75 ");
    EXPECT_EQ(labels(20, 0), "20 80 ");
    EXPECT_EQ(labels(INT_MIN, 1 << 30), "20 80 ");
}

// Writes down when the object goes that it is part of.
struct Logged {
    std::string name;
    Lines* gone;
    ~Logged() { gone->push_back(name); }
};

struct LoggedGraphic : BarPointGraphic {
    LoggedGraphic(std::string name, Lines& gone) : log{std::move(name), &gone} {}
    Logged log;
};

struct LoggedSection : BarSection {
    LoggedSection(std::string name, Lines& gone, int height = 0)
        : BarSection(0, 0, height, 0), log{std::move(name), &gone} {}
    int GetDesignHeight() const override { return GetTopMargin(); }
    void Draw(CDC*, double, double, const CRect&) override {}
    Logged log;
};

TEST(BarGraph, OwnsItsSectionsAndScalesTheirMarks) {
    Lines gone;
    {
        const auto scale = makeScale();
        for (const char* name : {"a", "b", "c", "d"}) {
            EXPECT_EQ(scale->AddGraphic(new LoggedGraphic(name, gone)), *name - 'a');
        }
        EXPECT_EQ(scale->GetGraphic(1)->GetContainer(), scale.get());
        scale->RemoveGraphicAt(1);
        EXPECT_THAT(gone, ElementsAre("b"));
        for (const int index : {-1, 3}) {
            EXPECT_THROW(scale->GetGraphic(index), CInvalidArgException);
            EXPECT_THROW(scale->RemoveGraphicAt(index), CInvalidArgException);
        }
        scale->Clear();
        EXPECT_THAT(gone, ElementsAre("b", "a", "c", "d"));
        EXPECT_EQ(scale->AddGraphic(new LoggedGraphic("e", gone)), 0);
    }
    EXPECT_EQ(gone.back(), "e");
    gone.clear();
    {
        BarGraph graph;
        for (const char* name : {"a", "b", "c", "d"}) {
            EXPECT_EQ(graph.AddSection(new LoggedSection(name, gone, 10)), *name - 'a');
        }
        EXPECT_EQ(graph.AddSection(nullptr), -1);
        EXPECT_EQ(graph.GetDesignHeight(), 40);
        graph.GetSection(1)->SetTopMargin(25);  // leaves the sum off by the difference
        graph.RemoveSectionAt(1);
        EXPECT_EQ(graph.GetDesignHeight(), 15);
        for (const int index : {-1, 3}) {
            EXPECT_THROW(graph.GetSection(index), CInvalidArgException);
            EXPECT_THROW(graph.RemoveSectionAt(index), CInvalidArgException);
        }
        graph.Clear();
        EXPECT_EQ(graph.GetDesignHeight(), 0);
        graph.AddSection(new LoggedSection("e", gone, 10));
    }
    EXPECT_THAT(gone, ElementsAre("b", "a", "c", "d", "e"));
}

/// Where the boxes and marks of a graph lie on a device, in inches.
std::vector<double> inchesOf(BarGraph& graph, const DeviceCaps& caps) {
    RecordingDevice device(caps);
    CDC dc(device);
    graph.Draw(&dc, CRect(caps.dpiX, caps.dpiY, 7 * caps.dpiX, 4 * caps.dpiY));
    std::vector<double> inches;
    for (const Primitive& primitive : device.Primitives()) {
        if (primitive.kind != Primitive::Kind::Rectangle) continue;
        const RECT& rect = primitive.rect;
        for (const LONG x : {rect.left, rect.right}) inches.push_back(double{1} * x / caps.dpiX);
        for (const LONG y : {rect.top, rect.bottom}) inches.push_back(double{1} * y / caps.dpiY);
    }
    return inches;
}

TEST(BarGraph, KeepsItsPhysicalProportionsOnEveryDevice) {
    BarGraph graph(0, BarGraph::cRight | BarGraph::cBottom);
    auto scale = makeScale("left", "", 200, 0, 60);
    scale->AddGraphic(new BarPointGraphic(50, 40, 0, BarPointGraphic::Square));
    scale->AddGraphic(new BarRangeGraphic(30, 70, 0, 0, 0));
    auto* const legend = new BarValueLegend(scale.get(), "", "", 0, 0, 0, 0, 9, 0, 30, 20, "", "");
    graph.AddSection(scale.release());
    graph.AddSection(legend);
    graph.AddSection(makeScale().release());
    // The box is 4.8 inches wide and as high as 60 thousandths of six.
    const auto printed = inchesOf(graph, {2400, 2400});
    ASSERT_EQ(printed.size(), 16U);
    EXPECT_NEAR(printed[0], 2.2, 0.001);
    EXPECT_NEAR(printed[1], 7, 0.001);
    EXPECT_NEAR(printed[3] - printed[2], 0.36, 0.001);
    for (const auto& [x, y] : {std::pair(96, 96), {300, 300}, {600, 600}, {600, 300}, {96, 144}}) {
        const auto inches = inchesOf(graph, {x, y});
        ASSERT_EQ(inches.size(), printed.size());
        for (std::size_t i = 0; i < inches.size(); ++i) {
            EXPECT_NEAR(inches[i], printed[i], 2.0 / (i % 4 < 2 ? x : y)) << x << " " << i;
        }
    }
}

TEST(BarLegend, OutlivesItsScale) {
    BarGraph graph;
    auto* const scale = makeScale("Scale", "", 100).release();
    graph.AddSection(scale);
    graph.AddSection(
        new BarValueLegend(scale, "T", "", 0, 0, 0, 0, 0, 0, 20, 20, "Arial", "Arial"));
    graph.RemoveSectionAt(0);
    RecordingDevice device;
    CDC dc(device);
    graph.SetDrawBoundingRect(0);
    graph.Draw(&dc, CRect(0, 0, 1000, 500));
    EXPECT_TRUE(device.Lines().empty());
}

// The virtual steps, as they come.
Lines g_steps;

void step(std::string name) {
    g_steps.push_back(std::move(name));
}

struct SteppingScale : BarScale {
    using BarScale::BarScale;
    int PixX(double v, const CRect& r) const override {
        step("PixX");
        return BarScale::PixX(v, r);
    }
    void calc_line_sizes(double x) override {
        step("calc_line_sizes");
        BarScale::calc_line_sizes(x);
    }
    void create_font(int height, CFont& font) override {
        step("create_font");
        BarScale::create_font(height, font);
    }
    void draw_bar(CDC* dc, double x, const CRect& box) override {
        step("draw_bar in " + std::to_string(dc->GetCurrentFont()->Get().lfHeight));
        BarScale::draw_bar(dc, x, box);
    }
    void draw_graphics(CDC* dc, double x, double y, const CRect& box) override {
        step("draw_graphics");
        BarScale::draw_graphics(dc, x, y, box);
    }
    void print_multi_lines(CDC*, int, int, CString text) override { step(text.GetString()); }

    // By the platforms' common layout of pointers to virtual members.
    template <class Member>
    static std::size_t slot(Member member) {
        std::size_t offset = 0;
        std::memcpy(&offset, &member, sizeof(offset));
        return (offset - 1) / sizeof(void*);
    }
    static std::vector<std::size_t> Slots() {
        return {slot(&SteppingScale::GetDesignHeight),
                slot(&SteppingScale::Draw),
                slot(&SteppingScale::PixX),
                slot(&SteppingScale::PixXUnrestricted),
                slot(&SteppingScale::AddGraphic),
                slot(&SteppingScale::Clear),
                slot(&SteppingScale::RemoveGraphicAt),
                slot(&SteppingScale::calc_line_sizes),
                slot(&SteppingScale::create_font),
                slot(&SteppingScale::draw_bar),
                slot(&SteppingScale::draw_graphics),
                slot(&SteppingScale::print_multi_lines)};
    }
};

struct SteppingLegend : BarValueLegend {
    using BarValueLegend::BarValueLegend;
    void create_font(int height, CFont& font) override {
        step("create_font");
        BarValueLegend::create_font(height, font);
    }
    void draw_left_desc(CDC*, double, const CRect&) override { step("draw_left_desc"); }
    void draw_right_desc(CDC* dc, double x, const CRect& column) override {
        step("draw_right_desc");
        BarValueLegend::draw_right_desc(dc, x, column);
    }
    void draw_legend_body(CDC* dc, double x, double y, const CRect& body) override {
        step("draw_legend_body");
        BarValueLegend::draw_legend_body(dc, x, y, body);
    }
    void print_multi_lines(CDC*, int, int, CString text) override { step(text.GetString()); }
    void create_body_font(int height, CFont& font) override {
        step("create_body_font");
        BarValueLegend::create_body_font(height, font);
    }
    CString format_value(int value) override {
        step(std::to_string(value));
        return "\\in = " + BarValueLegend::format_value(value);
    }
};

struct SteppingGraph : BarGraph {
    void on_before_draw(CDC* dc, CRect&) override {
        step("on_before_draw " + std::to_string(dc->GetBkColor()));
    }
    void on_end_draw(CDC*, CRect&) override { step("on_end_draw"); }
    void draw_sections(CDC* dc, const CRect& rect) override {
        step("draw_sections");
        BarGraph::draw_sections(dc, rect);
    }
    void recalc_layout(CDC* dc, CRect& rect) override {
        step("recalc_layout");
        BarGraph::recalc_layout(dc, rect);
    }
};

TEST(BarGraph, DrawsByItsVirtualSteps) {
    SteppingGraph graph;
    auto* const scale =
        new SteppingScale(0, 2, "left", "right", 100, 100, 1, 0, 0, 1, 0, 0, 0, 0, 40, 0, 0, 2);
    graph.AddSection(scale);
    graph.AddSection(
        new SteppingLegend(scale, "l", "right", 0, 0, 0, 0, 0, 0, 20, 40, "Arial", "Arial"));
    RecordingDevice device;
    CDC dc(device);
    dc.SetBkColor(0);
    graph.Draw(&dc, CRect(0, 0, 1002, 102));
    EXPECT_THAT(
        std::exchange(g_steps, {}),
        ElementsAre("recalc_layout", "on_before_draw 16777215", "draw_sections", "create_font",
                    "left", "right", "draw_bar in 40", "calc_line_sizes", "PixX", "PixX",
                    "draw_graphics", "create_font", "draw_left_desc", "draw_right_desc", "right",
                    "draw_legend_body", "create_body_font", "0", "1", "on_end_draw"));
    // End labels are plain texts.
    EXPECT_EQ(device.Primitives().back().text, "\\in = 1");
    EXPECT_THAT(SteppingScale::Slots(), ElementsAre(2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13));
}

// Whatever primitive fails, the state is back and the graph is drawn as ever afterwards.
TEST(BarGraph, LeavesTheContextAsItWas) {
    const auto graph = build(GraphDice(5, false).Graph(40));
    ASSERT_GT(graph->GetSectionCount(), 5);
    RecordingDevice device;
    MarkedContext marked(device);
    const CRect rect(0, 0, 1200, 1200);
    for (int i = 0; i < graph->GetSectionCount(); ++i) {
        graph->GetSection(i)->Draw(&marked.dc, 1.5, 1.5, rect);
        EXPECT_TRUE(marked.IsUnchanged()) << "section " << i;
    }
    expectStateRestored([&](CDC& dc) { graph->Draw(&dc, rect); });
}

}  // namespace
