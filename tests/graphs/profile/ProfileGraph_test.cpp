#include "graphs/profile/ProfileGraph.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "graphs/common/FormattedText.h"
#include "graphs/profile/HorProfileGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "graphs/profile/ProfileGraphText.h"
#include "graphs/rtf/MetaFile.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"
#include "platform/graphics/DCScope.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "tests/graphs/profile/RandomProfile.h"
#include "tests/support/MarkedContext.h"
#include "tests/support/ShownPrimitives.h"
#include "tests/support/Xml.h"

namespace {

using namespace tessalink;
using namespace tessalink::test;
using Lines = std::vector<std::string>;
using testing::ElementsAre;

/// The same picture by the rules alone, without the texts of the score axis.
class ProfileModel {
public:
    ProfileModel(CDC& dc, const ProfileData& data, bool cells)
        : m_dc(dc), d(data), m_cells(cells) {}

    void Draw(CRect rect) {
        m_dc.Rectangle(&rect);
        m_scale =
            std::min(1.0 * rect.Width() / d.designWidth, 1.0 * rect.Height() / d.designHeight);
        const int height = static_cast<int>(m_scale * 7.0 + 0.999);
        Make(m_normal, height, 400, 0);
        Make(m_italic, height, 400, 1);
        Make(m_bold, height, 700, 0);
        m_dc.SelectObject(&m_normal);
        m_cw = m_dc.GetTextExtent("M", 1).cx;
        m_ch = m_dc.GetTextExtent("M", 1).cy;
        const int rows = 1 + !Row(1).empty() + !Row(2).empty() + !Row(3).empty();
        const int q = (m_ch + 3) / 4;
        m_left = rect.left + 1 + 5 * m_cw * d.leftAxis;
        m_right = rect.right - 1 - 5 * m_cw * d.rightAxis;
        m_bottom =
            rect.bottom - 1 - ((m_ch + q) * rows + q + (m_cw + 1) / 2) - (rows == 1 ? m_ch : 0);
        m_top = rect.top + 1 + height + (d.yLegend.empty() ? 0 : m_ch);
        for (const BandInfo& band : d.bands) {
            CBrush brush(band.color);
            const CRect area(m_left, Y(band.to), Right(), Y(band.from));
            m_dc.FillRect(&area, &brush);
        }
        Axes();
        for (const int scale : d.breaks) {
            Line(Pen(0.5), X(scale + 0.5), Y(d.yMin), X(scale + 0.5), Y(d.yMax));
        }
        for (const int score : d.lines) {
            Line({PS_DASH, {1, 0}, 0}, m_left, Y(score), Right(), Y(score));
        }
        SkyLine();
        for (std::size_t i = 0; i < d.profiles.size(); ++i) Profile(d.profiles[i], i % 8);
        if (d.legend != 0) Legend();
    }

private:
    const std::vector<std::string>& Row(std::size_t i) const {
        static const std::vector<std::string> none;
        return m_cells && i > 0 ? none : d.rows[i];
    }
    static void Make(CFont& font, int height, int weight, BYTE italic) {
        font.CreateFont(-height, 0, 0, 0, weight, italic, 0, 0, 0, 4, 0, 2, 6, "Times New Roman");
    }
    int X(double x) const {
        const int n = d.Scales();
        if (!m_cells) return static_cast<int>(x * ((m_right - m_left) / (n + 1.0)) + m_left);
        const double cell = (m_right - m_left) / (1.0 * n);
        if (x == 0) return m_left;
        return static_cast<int>(x == n + 1 ? (x - 1.0) * cell + m_left
                                           : x * cell - cell * 0.5 + m_left);
    }
    int Right() const { return X(d.Scales() + 1); }
    int Y(double y) const {  // what is beyond 32 bits is as far as these go
        return toInt(m_bottom - (y - d.yMin) * (1.0 * (m_bottom - m_top) / (d.yMax - d.yMin)));
    }
    LOGPEN Pen(double width, COLORREF color = 0) const {
        return {PS_SOLID, {static_cast<int>(m_scale * width + 0.999), 0}, color};
    }
    void Line(const LOGPEN& pen, int x1, int y1, int x2, int y2) {
        CPen line(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor);
        const Selected selected(m_dc, &line);
        m_dc.MoveTo(x1, y1);
        m_dc.LineTo(x2, y2);
    }
    void Print(UINT align, int x, int y, const std::string& text) {
        m_dc.SetTextAlign(align | TA_TOP);
        PrintFormatted(&m_dc, x, y, text.c_str(), &m_normal, &m_italic, &m_bold);
    }

    void Axes() {
        for (const int side : {-1, 1}) {
            if ((side < 0 ? d.leftAxis : d.rightAxis) == 0) continue;
            const int x = side < 0 ? m_left : Right();
            const auto tick = [&](int score, int length) {
                Line(Pen(1), side < 0 ? x - length : x, Y(score), side < 0 ? x : x + length,
                     Y(score));
            };
            Line(Pen(1), x, Y(d.yMin), x, Y(d.yMax));
            const auto first = [&](int base, int step) {
                int score = base != 0 ? base : d.yMin;
                while (score <= d.labelStart) score += step;
                return score;
            };
            if (d.majorStep != 0) {
                tick(d.labelStart, (m_cw + 1) / 2);
                tick(d.labelEnd, (m_cw + 1) / 2);
                for (int s = first(d.majorBase, d.majorStep); s < d.labelEnd; s += d.majorStep) {
                    tick(s, (m_cw + 1) / 2);
                }
            }
            if (d.minorStep == 0 || m_scale <= 1) continue;
            for (int s = first(d.minorBase, d.minorStep); s <= d.labelEnd; s += d.minorStep) {
                tick(s, (m_ch + 3) / 4);
            }
        }
        for (const int score : {d.yMax, d.yMin}) Line(Pen(1), m_left, Y(score), Right(), Y(score));
        if (d.Scales() == 0) return;
        const int t = (m_cw + 1) / 2;
        const int q = (m_ch + 3) / 4;
        const int bottom = Y(d.yMin);
        Print(TA_RIGHT, X(0), bottom + t + q, Row(0)[0]);
        for (int k = 1; k <= d.Scales(); ++k) {
            const int end = bottom + t + (Row(1).empty() && k % 2 == 0 ? m_ch : 0);
            Line(Pen(1), X(k), bottom, X(k), end);
            Print(TA_CENTER, X(k), end + q, Row(0)[static_cast<std::size_t>(k)]);
        }
        int y = bottom + m_ch + 2 * q + t;
        for (std::size_t row = 1; row < 4 && !Row(row).empty(); ++row, y += m_ch + q) {
            Print(TA_RIGHT, X(0), y, Row(row)[0]);
            for (int k = 1; k <= d.Scales(); ++k) {
                Print(TA_CENTER, X(k), y, Row(row)[static_cast<std::size_t>(k)]);
            }
        }
    }
    /// Whether the lines end at a scale, of scales that are asked for in turn.
    bool Ends(int scale, std::size_t& next) const {
        if (next >= d.breaks.size() || d.breaks[next] != scale) return false;
        ++next;
        return true;
    }
    void SkyLine() {
        std::size_t next = 0;
        int before = INT_MIN;
        for (int k = 1; k <= static_cast<int>(d.skyLine.size()); ++k) {
            const auto [top, bottom] = std::minmax({Y(d.labelEnd), Y(d.labelStart)});
            const int y = std::clamp(Y(d.skyLine[static_cast<std::size_t>(k) - 1]), top, bottom);
            const LOGPEN pen = Pen(0.5, 0x808080);
            if (before != INT_MIN) Line(pen, X(k - 0.5), before, X(k - 0.5), y);
            Line(pen, X(k - 0.5), y, X(k + 0.5), y);
            before = Ends(k, next) ? INT_MIN : y;
        }
    }
    void Symbol(int x, int y, int r, std::size_t symbol) {
        const int u = 12 * r / 10;
        const int w = static_cast<int>(std::floor(u * 0.8660254 + 0.5));
        const POINT triangle[] = {{x, y - u}, {x + w, y + u / 2}, {x - w, y + u / 2}};
        const POINT diamond[] = {{x, y - u}, {x + u, y}, {x, y + u}, {x - u, y}};
        const Selected hollow(
            m_dc, symbol < 4 ? nullptr : static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
        if (symbol % 4 == 0) m_dc.Ellipse(x - r, y - r, x + r, y + r);
        if (symbol % 4 == 1) m_dc.Rectangle(x - r, y - r, x + r, y + r);
        if (symbol % 4 == 2) m_dc.Polygon(triangle, 3);
        if (symbol % 4 == 3) m_dc.Polygon(diamond, 4);
    }
    void Profile(const ProfileData::Profile& profile, std::size_t symbol) {
        const LOGPEN pen = Pen(0.5, profile.color);
        CPen line(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor);
        CBrush brush(profile.color);
        const Selected selectedPen(m_dc, &line);
        const Selected selectedBrush(m_dc, &brush);
        std::size_t next = 0;
        bool connected = false;
        CPoint before;
        for (int k = 1; k <= d.Scales(); ++k) {
            const double value = profile.values[static_cast<std::size_t>(k) - 1];
            const bool isScore = value != cMissing;
            if (isScore) {
                const auto [top, bottom] = std::minmax({Y(d.yMax), Y(d.yMin)});
                const CPoint at(X(k), std::clamp(Y(value), top, bottom));
                Symbol(at.x, at.y, (m_cw * 3 / 8 + 1) / 2 * 2, symbol);
                if (connected) Line(pen, before.x, before.y, at.x, at.y);
                before = at;
            }
            connected = !Ends(k, next) && isScore;
        }
    }
    void Legend() {
        const int r = (m_cw / 2 + 1) / 2 * 2;
        const int x = m_left + (Right() - m_left) * d.legendX / 100 + r;
        int y = Y(d.yMax) + (Y(d.yMin) - Y(d.yMax)) * d.legendY / 100 + m_ch / 2;
        for (std::size_t i = 0; i < d.profiles.size(); ++i, y += m_ch) {
            const LOGPEN pen = Pen(0.5, d.profiles[i].color);
            CPen line(pen.lopnStyle, pen.lopnWidth.x, pen.lopnColor);
            CBrush brush(d.profiles[i].color);
            const Selected selectedPen(m_dc, &line);
            const Selected selectedBrush(m_dc, &brush);
            Line(pen, x, y, x + 3 * m_cw, y);
            Symbol(x + 3 * m_cw / 2, y, r, i % 8);
            m_dc.SetTextAlign(TA_LEFT | TA_TOP);
            m_dc.TextOut(x + 4 * m_cw, y - m_ch / 2, d.profiles[i].name.c_str());
        }
    }

    CDC& m_dc;
    const ProfileData& d;
    bool m_cells;
    CFont m_normal, m_italic, m_bold;
    double m_scale = 0;
    int m_cw = 0, m_ch = 0, m_left = 0, m_right = 0, m_top = 0, m_bottom = 0;
};

template <class Graph = ProfileGraph>
std::unique_ptr<Graph> build1(const ProfileData& d) {
    auto graph =
        std::make_unique<Graph>(1, 2, 3, 4, d.leftAxis, d.rightAxis, d.designWidth, d.designHeight);
    graph->SetXLegend(ownedTexts(d.rows[0]), ownedTexts(d.rows[1]), ownedTexts(d.rows[2]),
                      ownedTexts(d.rows[3]));
    fill(*graph, d);
    for (const BandInfo& band : d.bands) graph->AddBand(band.from, band.to, band.color);
    std::uint32_t id = 0;
    for (const auto& p : d.profiles)
        graph->AddProfile(p.name.c_str(), owned(p.values), p.color, id++);
    graph->ShowLegend(d.legend);
    return graph;
}

/// With regions in place of bands.
template <class Graph = ProfileGraph3>
std::unique_ptr<Graph> build3(const ProfileData& d, int pointType = 0, int lineStyle = 0) {
    auto graph =
        std::make_unique<Graph>(1, 2, 3, 4, d.leftAxis, d.rightAxis, d.designWidth, d.designHeight);
    graph->SetXLegend(ownedTexts(d.rows[0]));
    fill(*graph, d);
    for (const BandInfo& b : d.bands) {
        graph->AddBand(static_cast<double>(b.from), static_cast<double>(b.to), b.color, nullptr);
    }
    std::uint32_t id = 0;
    for (const auto& p : d.profiles) {
        graph->AddProfile(p.name.c_str(), owned(p.values), p.color, id++,
                          static_cast<ProfileGraph3::PointType>(pointType), lineStyle, 1);
    }
    graph->ShowLegend(static_cast<ProfileGraph3::LegendType>(d.legend));
    return graph;
}

/// The rows are the scales, but that every fourth is a header.
template <class Graph = HorProfileGraph>
std::unique_ptr<Graph> buildHor(const ProfileData& d, int pointType = 1) {
    auto graph = std::make_unique<Graph>(d.yMin, d.yMax, d.majorStep, d.minorStep, d.designWidth,
                                         d.designHeight);
    graph->SetXLegend(d.yLegend.c_str());
    graph->SetScoreColsHeading("Scores and more");
    for (int k = 1; k <= d.Scales(); ++k) {
        const auto i = static_cast<std::size_t>(k);
        if (k % 4 == 1) graph->AddHeaderRow(("Head" + d.rows[0][i]).c_str());
        graph->AddRow(d.rows[0][i].c_str());
    }
    for (const auto& row : {d.rows[1], d.rows[2]}) {
        if (!row.empty()) graph->AddScoreCol(row[0].c_str(), ownedTexts(row));
    }
    for (const BandInfo& band : d.bands) graph->AddBand(band.from, band.to, band.color);
    for (const int score : d.lines) graph->AddVertLine(score);
    std::uint32_t id = 0;
    for (const auto& p : d.profiles) {
        graph->AddProfile(p.name.c_str(), owned(p.values), p.color, id++,
                          static_cast<HorProfileGraph::PointType>(pointType), PS_DASH);
    }
    graph->ShowLegend(static_cast<HorProfileGraph::LegendType>(d.legend));
    return graph;
}

std::vector<Primitive> drawn(BasicProfileGraph& graph, const CRect& rect,
                             const DeviceCaps& caps = fixedScreen()) {
    RecordingDevice device(caps);
    CDC dc(device);
    graph.Draw(&dc, rect);
    return device.Primitives();
}

/// Without the labels and the title of the score axis, which alone have digits and signs.
Lines withoutAxisTexts(const std::vector<Primitive>& primitives, const std::string& title) {
    Lines lines;
    for (const Primitive& p : primitives) {
        const bool isAxisText =
            p.kind == Primitive::Kind::Text &&
            (p.text.find_first_not_of(" -0123456789\xA3\xB3") == std::string::npos ||
             title.find(p.text) != std::string::npos);
        if (!isAxisText) lines.push_back(toText(p));
    }
    return lines;
}

TEST(ProfileGraph, DrawsToThePixelWhatTheRulesSay) {
    const DeviceCaps devices[] = {fixedScreen(), {300, 300}, {600, 600}, {360, 180}};
    std::size_t primitives = 0;
    for (std::uint64_t seed = 0; seed < 900; ++seed) {
        ProfileDice dice(seed, false);
        ProfileData data = dice.Graph(seed % 100 == 0 ? 300 : 12, 12);
        if (!data.yLegend.empty()) data.yLegend = "Title";
        const bool cells = seed % 2 != 0;
        if (cells && data.Scales() == 0) continue;
        if (cells) {  // regions end at the plot
            std::erase_if(data.bands, [&](const BandInfo& b) {
                return std::min(b.from, b.to) < std::min(data.yMin, data.yMax) ||
                       std::max(b.from, b.to) > std::max(data.yMin, data.yMax);
            });
        }
        const CRect rect(CPoint(dice.Number(-50, 500), dice.Number(-50, 500)),
                         CSize(dice.Number(60, 3000), dice.Number(60, 2000)));
        const DeviceCaps& caps = devices[seed % 4];
        RecordingDevice expected(caps);
        CDC dc(expected);
        ProfileModel(dc, data, cells).Draw(rect);
        std::unique_ptr<BasicProfileGraph> graph;
        if (cells) graph = build3(data);
        if (!cells) graph = build1(data);
        const Lines lines = withoutAxisTexts(drawn(*graph, rect, caps), "Title");
        const Lines wanted = withoutAxisTexts(expected.Primitives(), "Title");
        for (std::size_t i = 0; i < std::max(lines.size(), wanted.size()); ++i) {
            ASSERT_EQ(i < lines.size() ? lines[i] : "", i < wanted.size() ? wanted[i] : "")
                << "graph " << seed;
        }
        primitives += lines.size();
    }
    EXPECT_GT(primitives, 60000U);
}

// What is drawn at the score axis, and where it may be.
TEST(ProfileGraph, LabelsTheScoreAxis) {
    ProfileGraph graph(20, 80, 20, 0, 1, 1, 200, 100);
    graph.SetYLegend("T");
    graph.SetYLabelEnd(70);
    Lines left;
    Lines right;
    for (const Primitive& p : drawn(graph, {0, 0, 400, 200})) {
        if (p.kind != Primitive::Kind::Text) continue;
        const int end = p.points[0].x + p.positions.back();
        (end < 200 ? left : right).push_back(p.text);
        EXPECT_TRUE(end < 200 ? end < 65 : p.points[0].x > 334) << p.text;
        EXPECT_STREQ(p.font.lfFaceName, p.text[0] < 0 ? "Symbol" : "Times New Roman");
    }
    EXPECT_THAT(left, ElementsAre(" 20", "\xA3", " 70", "\xB3", "40", "60", "T"));
    EXPECT_EQ(left, right);
}

/// Writes the steps down; each has to leave the context as it was.
template <class Graph>
class SteppingProfile : public Graph {
public:
    using Graph::Graph;

    Lines StepsOf(CDC* dc, const CRect& rect = {0, 0, 300, 200}) {
        m_steps.clear();
        this->Draw(dc, rect);
        return m_steps;
    }

protected:
    DrawingStep Note(CDC* dc, std::string step) { return {m_steps, dc, std::move(step)}; }
    void recalc_layout(CDC* dc, CRect& rect) override {
        const DrawingStep step = Note(dc, "recalc_layout");
        Graph::recalc_layout(dc, rect);
    }
    void draw_bands(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_bands");
        Graph::draw_bands(dc);
    }
    void draw_x_axis(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_x_axis");
        Graph::draw_x_axis(dc);
    }
    void draw_data_series(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_data_series");
        Graph::draw_data_series(dc);
    }
    void plot_data(CDC* dc, int x, int y, int size, int i, ProfileInfo* p) override {
        const DrawingStep step = Note(dc, "plot_data " + std::to_string(i));
        Graph::plot_data(dc, x, y, size, i, p);
    }
    void draw_point_text(CDC* dc, int x, int y, int size, int i, ProfileInfo* p) override {
        const DrawingStep step = Note(dc, "text");
        Graph::draw_point_text(dc, x, y, size, i, p);
    }
    void draw_line_legends(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_line_legends");
        Graph::draw_line_legends(dc);
    }
    void calc_legend_rect(CDC* dc) override {
        const DrawingStep step = Note(dc, "calc_legend_rect");
        Graph::calc_legend_rect(dc);
    }
    void draw_legend_sample(CDC* dc, int index, int left, int y) override {
        const DrawingStep step = Note(dc, "sample");
        Graph::draw_legend_sample(dc, index, left, y);
    }

    Lines m_steps;
};

template <class Graph>
class UprightStepping : public SteppingProfile<Graph> {
public:
    using SteppingProfile<Graph>::SteppingProfile;

protected:
    void draw_breaks(CDC* dc) override {
        const DrawingStep step = this->Note(dc, "draw_breaks");
        Graph::draw_breaks(dc);
    }
    void draw_horz_lines(CDC* dc) override {
        const DrawingStep step = this->Note(dc, "draw_horz_lines");
        Graph::draw_horz_lines(dc);
    }
    void draw_sky_line(CDC* dc) override {
        const DrawingStep step = this->Note(dc, "draw_sky_line");
        Graph::draw_sky_line(dc);
    }
    void draw_y_axis(CDC* dc, int x, int isLeft) override {
        const DrawingStep step = this->Note(dc, isLeft ? "left" : "right");
        Graph::draw_y_axis(dc, x, isLeft);
    }
};

class HorStepping : public SteppingProfile<HorProfileGraph> {
public:
    using SteppingProfile::SteppingProfile;

protected:
    void draw_rows(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_rows");
        HorProfileGraph::draw_rows(dc);
    }
    void draw_vert_lines(CDC* dc) override {
        const DrawingStep step = Note(dc, "draw_vert_lines");
        HorProfileGraph::draw_vert_lines(dc);
    }
};

TEST(ProfileGraphs, DrawByTheirVirtualSteps) {
    constexpr auto cWithText = ProfilePointType::SymbolAndValue;
    RecordingDevice device;
    CDC dc(device);
    UprightStepping<ProfileGraph> first(0, 9, 1, 0, 1, 1, 300, 200);
    first.SetXLegend(ownedTexts({"", "a", "b"}), nullptr, nullptr, nullptr);
    first.AddProfile("P", owned({5.0, 5.0}), 0, 1);
    EXPECT_THAT(
        first.StepsOf(&dc),
        ElementsAre("recalc_layout", "draw_bands", "left", "right", "draw_x_axis", "draw_breaks",
                    "draw_horz_lines", "draw_sky_line", "draw_data_series", "plot_data 0",
                    "plot_data 1", "draw_line_legends", "calc_legend_rect", "sample"));
    EXPECT_TRUE(first.StepsOf(nullptr).empty());
    UprightStepping<ProfileGraph3> third(0, 9, 1, 0, 0, 1, 300, 200);
    third.SetXLegendPoints(1);
    third.AddProfile("P", owned({5.0}), 0, 1, cWithText, 0, 0);
    third.ShowLegend(ProfileGraph3::LegendType::None);
    EXPECT_THAT(third.StepsOf(&dc),
                ElementsAre("recalc_layout", "draw_bands", "right", "draw_x_axis", "draw_breaks",
                            "draw_horz_lines", "draw_sky_line", "draw_data_series", "plot_data 0",
                            "text", "draw_line_legends"));
    HorStepping across(0, 9, 1, 0, 300, 200);
    across.AddRow("a");
    across.AddProfile("P", owned({5.0}), 0, 1, cWithText);
    EXPECT_THAT(across.StepsOf(&dc),
                ElementsAre("recalc_layout", "draw_bands", "draw_rows", "draw_x_axis",
                            "draw_vert_lines", "draw_data_series", "plot_data 0", "text",
                            "draw_line_legends", "calc_legend_rect", "sample"));
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        const ProfileData data = ProfileDice(seed, false).Graph(9, 4);
        const CRect rect(0, 0, 900, 700);
        MarkedContext marked(device);
        build1<UprightStepping<ProfileGraph>>(data)->StepsOf(&marked.dc, rect);
        build3<UprightStepping<ProfileGraph3>>(data, 1, PS_DOT)->StepsOf(&marked.dc, rect);
        buildHor<HorStepping>(data)->StepsOf(&marked.dc, rect);
    }
}

TEST(ProfileGraph, KeepsProfiles) {
    ProfileGraph graph(0, 9, 1, 0, 0, 0, 100, 100);
    graph.SetXLegend(ownedTexts({"", "a", "b"}), nullptr, nullptr, nullptr);
    for (std::uint32_t i = 0; i < 9; ++i) graph.AddProfile("P", owned({1.0, 2.0}), 0, i % 8);
    const auto symbols = [&] {
        std::vector<int> all;
        for (int i = 0; i < graph.GetProfileCount(); ++i) {
            all.push_back(graph.GetProfile(i).GetSymbol());
        }
        return all;
    };
    EXPECT_THAT(symbols(), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 0));
    graph.RemoveProfile(3);
    graph.RemoveProfile(77);
    graph.AddProfile("Q", owned({1.0, 2.0}), 0, 9);
    EXPECT_THAT(symbols(), ElementsAre(0, 1, 2, 4, 5, 6, 7, 0, 3));
    EXPECT_TRUE(graph.UpdateProfile(0, "New", nullptr));
    EXPECT_TRUE(graph.UpdateProfile(1, nullptr, owned({8.0, 7.0})));
    const std::unique_ptr<double[]> kept(owned({1.0}));
    EXPECT_FALSE(graph.UpdateProfile(77, "None", kept.get()));
    EXPECT_STREQ(graph.GetProfile(0).GetName(), "New");
    EXPECT_EQ(graph.GetProfile(0).GetValue(1), 2);
    EXPECT_STREQ(graph.GetProfile(1).GetName(), "P");
    EXPECT_EQ(graph.GetProfile(1).GetValue(0), 8);
    graph.RemoveProfiles();
    graph.AddProfile("R", owned({1.0, 2.0}), 0, 9);
    EXPECT_THAT(symbols(), ElementsAre(0));
    for (const int bad : {-1, 1}) EXPECT_THROW(graph.GetProfile(bad), CInvalidArgException);
    for (const int bad : {0, 3}) EXPECT_THROW(graph.GetScaleText(bad), CInvalidArgException);
    graph.Clear();
    EXPECT_EQ(graph.GetProfileCount() + graph.GetScaleCount(), 0);
}

TEST(ProfileGraph3, FillsRegionsThatFollowTheScales) {
    ProfileGraph3 graph(0, 100, 0, 0, 0, 0, 400, 400);
    graph.SetXLegendPoints(4);
    double lows[] = {10, -50, 20, 30};
    double highs[] = {90, 80, 900, 60};
    graph.AddBand(lows, highs, 0xFF, "Norm");
    lows[0] = highs[0] = 50;  // copied
    const auto primitives = drawn(graph, {0, 0, 402, 402});
    EXPECT_EQ(primitives.back().text, "Norm");
    // Cells of 100 from 1 to 401, 100 scores from 373 to 9; the limits go on to the edges.
    EXPECT_EQ(toText(primitives.at(1)),
              "polygon 1,45 51,45 151,81 251,9 351,154 401,154 401,263 351,263 251,300 151,373 "
              "51,336 1,336 alternate pen none brush solid ff0000");
    graph.RemoveBands();
    EXPECT_EQ(drawn(graph, {0, 0, 402, 402}).size(), primitives.size() - 3);
    for (const char* label : {"Low", "", "High"}) graph.AddBand(1.0, 2.0, 0xFF, label);
    const auto again = drawn(graph, {0, 0, 402, 402});
    EXPECT_EQ(again.size(), primitives.size() + 4);  // two regions, a sample and its name more
    EXPECT_EQ(again.back().text, "High");
    EXPECT_EQ(again.at(again.size() - 3).text, "Low");
}

// Above a peak, below a valley, and beside nothing that could be helped.
TEST(ProfileGraph2, WritesValuesOffTheLines) {
    struct Case {
        double before, value, after;
        const char* text;
        bool isAbove;
        int side = 0;  // left -1, right 1
    };
    const Case cases[] = {
        {20, 60, 20, "60", true},
        {90, 60, 90, "60", false},
        {cMissing, 60, 90, "60", false},
        {cMissing, 60, 20, "60", true},
        {20, 60, cMissing, "60", true},
        {90, 60, cMissing, "60", false},
        {cMissing, 60, cMissing, "60", true},
        {500, 60, 61, "60", false},
        {0, 100, 0, "100", false, 1},  // no room above: set aside, behind the steeper line
        {0, 100, 30, "100", false, -1},
        {70, 99, 20, "99", false, 1},
        {96, 100, 96, "100", false},      // flat lines pass above
        {20, 333, 400, "333", false, 1},  // no room above
        {300, 333, 20, "333", false, -1},
        {60, 4, 61, "4", false, 1},  // nor below
        {60, 4, 0, "4", true, 1},
        {cMissing, 4, 60, "4", true, -1},
        {20, 60, 90, "60", true, -1},
        {90, 60, 20, "60", true, 1},
    };
    for (const Case& c : cases) {
        ProfileGraph2 graph(0, 100, 0, 0, 0, 0, 200, 200);
        graph.SetXLegendPoints(3);
        graph.ShowLegend(ProfileGraph2::LegendType::None);
        graph.AddProfile("", owned({c.before, c.value, c.after}), 0xFF, 1,
                         ProfileGraph2::PointType::SymbolAndValue, 0, 0);
        for (const int shown : {1, 0}) {
            graph.ShowPointTexts(shown);
            int texts = 0;
            for (const Primitive& p : drawn(graph, {0, 0, 400, 400})) {
                if (p.kind != Primitive::Kind::Text || p.text != c.text) continue;
                ++texts;
                const int y = 15 + static_cast<int>((100 - std::min(c.value, 100.0)) * 3.38);
                EXPECT_EQ(p.points[0].y < y, c.isAbove) << &c - cases;
                constexpr int middle = 200;
                const int left = p.points[0].x;
                const int right = left + p.positions.back();
                EXPECT_EQ((left >= middle) - (right <= middle + 1), c.side) << &c - cases;
            }
            EXPECT_EQ(texts, shown) << &c - cases;
        }
    }
}

TEST(HorProfileGraph, LetsTextsOverlapNothing) {
    std::size_t texts = 0;
    for (std::uint64_t seed = 0; seed < 300; ++seed) {
        ProfileDice dice(seed, false);
        ProfileData data = dice.Graph(30, 4);
        data.legend = 2 * dice.Number(0, 1);
        for (std::string& name : data.rows[0]) name.append(seed % 3 == 0 ? 60 : 0, 'n');
        data.designWidth = 280;
        data.designHeight = 200;
        const CRect rect(0, 0, dice.Number(300, 2000), dice.Number(300, 2000));
        const auto graph = buildHor(data, 0);
        std::vector<CRect> boxes;
        for (const Primitive& p : drawn(*graph, rect)) {
            if (p.kind != Primitive::Kind::Text) continue;
            const int height = std::abs(p.font.lfHeight);
            // Half of what descends below the base line is left to rounding.
            boxes.emplace_back(p.points[0].x, p.points[0].y - height * 7 / 10,
                               p.points[0].x + p.positions.back(), p.points[0].y + height / 10);
        }
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            CRect both;
            both.IntersectRect(&rect, &boxes[i]);
            EXPECT_EQ(both, boxes[i]) << seed;
            for (std::size_t k = 0; k < i; ++k) {
                ASSERT_FALSE(both.IntersectRect(&boxes[k], &boxes[i])) << seed << ' ' << i;
            }
        }
        texts += boxes.size();
    }
    EXPECT_GT(texts, 10000U);
}

// The scores, clamped, in the middle of their rows.
TEST(HorProfileGraph, PlacesScoresAndInterruptsThemAtHeaders) {
    HorProfileGraph graph(0, 100, 50, 0, 200, 150);
    graph.SetXLabelStart(10);
    graph.AddRow("a");
    graph.AddRow("b");
    graph.AddHeaderRow("Group");
    for (const char* name : {"c", "d", "e", "f"}) graph.AddRow(name);
    graph.AddProfile("P", owned({-20.0, 50, 100, 40, cMissing, 500}), 0xFF, 1);
    for (const int score : {-1, 0, 50, 101}) graph.AddVertLine(score);
    graph.AddBand(-50, 50, 0x00FF00);
    graph.ShowLegend(HorProfileGraph::LegendType::None);
    const auto primitives = drawn(graph, {0, 0, 200, 200});
    CRect plot;
    std::vector<CPoint> points;
    std::set<int> dashes;  // where they are
    int lines = 0;
    for (const Primitive& p : primitives) {
        if (p.kind == Primitive::Kind::Polyline) plot = CRect(p.points[0], p.points[2]);
        if (p.kind == Primitive::Kind::Ellipse) points.push_back(CRect(p.rect).CenterPoint());
        if (p.kind == Primitive::Kind::Line && p.pen.lopnColor == 0xFF) ++lines;
        if (p.kind == Primitive::Kind::Line && p.pen.lopnColor == 0 &&
            p.points[0].x == p.points[1].x && p.points[0].y >= plot.top &&
            p.points[1].y <= plot.bottom) {
            dashes.insert(p.points[0].x);
        }
    }
    const double row = plot.Height() / 7.0;
    const auto at = [&](double score, double rows) {
        return CPoint(static_cast<int>(plot.left + score * (plot.Width() / 100.0)),
                      static_cast<int>(plot.top + (rows + 0.5) * row));
    };
    EXPECT_THAT(points, ElementsAre(at(0, 0), at(50, 1), at(100, 3), at(40, 4), at(100, 6)));
    EXPECT_EQ(lines, 2);  // a to b and c to d
    EXPECT_THAT(dashes, ElementsAre(plot.left, at(50, 0).x));
    EXPECT_EQ(toText(primitives[1]),
              toText(fillOf(primitives[1], {plot.left, plot.top, at(50, 0).x, plot.bottom},
                            {BS_SOLID, 0x00FF00, 0})));
    EXPECT_GT(row, 10);
}

// Where the lines to the rows above and below are not.
TEST(HorProfileGraph, WritesValuesOffTheLines) {
    struct Case {
        double above, value, below;
        int side, level;  // left -1, right 1; above -1, level 0, below 1
    };
    const Case cases[] = {
        {20, 60, 20, 1, 0},  {90, 60, 90, -1, 0},      {cMissing, 60, 90, -1, 0},
        {20, 60, 90, 1, -1}, {90, 60, 20, 1, 1},       {20, 60, cMissing, 1, 0},
        {0, 100, 0, -1, 0},  {90, 100, 300, -1, 0},    {50, 100, 100, -1, 0},
        {90, 0, 90, 1, 0},   {cMissing, -9, 90, 1, 0}, {60, 60, 60, 1, 0},
    };
    for (const Case& c : cases) {
        for (const bool reversed : {false, true}) {
            HorProfileGraph graph(reversed ? 100 : 0, reversed ? 0 : 100, 0, 0, 200, 200);
            for (int row = 0; row < 3; ++row) graph.AddRow("");
            const auto turned = [&](double score) {
                return reversed && score != cMissing ? 100 - score : score;
            };
            graph.AddProfile("", owned({turned(c.above), turned(c.value), turned(c.below)}), 0xFF,
                             1, HorProfileGraph::PointType::SymbolAndValue);
            graph.ShowLegend(HorProfileGraph::LegendType::None);
            const auto primitives = drawn(graph, {0, 0, 400, 400});
            int before = c.above == cMissing ? 0 : 1;
            const auto symbol = std::find_if(primitives.begin(), primitives.end(), [&](auto& p) {
                return p.kind == Primitive::Kind::Ellipse && before-- == 0;
            });
            ASSERT_LT(symbol, primitives.end() - 1);
            const CPoint at = CRect(symbol->rect).CenterPoint();
            const Primitive& text = symbol[1];  // follows its symbol
            ASSERT_EQ(text.kind, Primitive::Kind::Text);
            EXPECT_EQ(text.points[0].x > at.x, c.side > 0) << &c - cases;
            const int level = text.points[0].y - at.y;  // of the base line
            EXPECT_EQ(level < 0 ? -1 : level > 8 ? 1 : 0, c.level) << &c - cases << ' ' << level;
        }
    }
}

/// One graph of each class, with the same.
std::vector<std::unique_ptr<BasicProfileGraph>> buildAll(const ProfileData& data) {
    std::vector<std::unique_ptr<BasicProfileGraph>> graphs;
    graphs.push_back(build1(data));
    graphs.push_back(build3(data, 1, PS_DOT));
    graphs.push_back(buildHor(data));
    return graphs;
}

TEST(ProfileGraphs, AreTheSamePictureAsMetafile) {
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        for (const auto& graph : buildAll(ProfileDice(seed, false).Graph(9, 4))) {
            const CRect rect(10, 10, 900, 700);
            MetaFile file(10, 8, nullptr);
            graph->Draw(&file, rect);
            file.Close();
            RecordingDevice played(fixedScreen());
            CDC dc(played);
            CRect whole(0, 0, 960, 768);
            file.Play(dc, whole);
            ASSERT_EQ(shown(played.Primitives()), shown(drawn(*graph, rect))) << seed;
        }
    }
}

// Whatever primitive fails, the state is back and the graph is drawn as ever afterwards.
TEST(ProfileGraphs, LeaveTheContextAsItWas) {
    ProfileData data = ProfileDice(3, false).Graph(12, 3);
    ASSERT_GT(data.rows[0].size() * data.profiles.size(), 8U);
    const CRect rect(0, 0, 600, 500);
    for (const auto& graph : buildAll(data)) {
        expectStateRestored([&](CDC& dc) { graph->Draw(&dc, rect); });
    }
    data.rows[1].assign(data.rows[0].size() - 2, "x");  // too short
    RecordingDevice device;
    MarkedContext marked(device);
    EXPECT_THROW(build1(data)->Draw(&marked.dc, rect), CInvalidArgException);
    EXPECT_THROW(buildHor(data)->Draw(&marked.dc, rect), CInvalidArgException);
    EXPECT_TRUE(marked.IsUnchanged());
}

TEST(ProfileGraphs, DrawWhateverTheyHold) {
    int pictures = 0;
    for (std::uint64_t seed = 0; seed < 250; ++seed) {
        ProfileDice dice(seed, true);
        const ProfileData data = dice.Graph(seed % 50 == 0 ? 500 : 20, seed % 50 == 0 ? 50 : 8);
        const RECT& rect = cWildRects[dice.OneIn(2) ? 0 : seed % cWildRects.size()];
        for (const auto& graph : buildAll(data)) {
            RecordingDevice device(dice.OneIn(3) ? DeviceCaps() : fixedScreen());
            SvgDevice svg(PictureSheet{});
            MetaFile metaFile(5.5, 5, nullptr);
            for (DrawingDevice* each : {static_cast<DrawingDevice*>(&device),
                                        static_cast<DrawingDevice*>(&svg), metaFile.Device()}) {
                MarkedContext marked(*each);
                graph->Draw(&marked.dc, rect);
                ASSERT_TRUE(marked.IsUnchanged()) << seed;
            }
            EXPECT_EQ(XmlCheck::Fault(svg.Finish()), "");
            EXPECT_FALSE(sentencesOf(profileText(*graph)).IsEmpty());
            pictures += device.Primitives().size() > 20 ? 1 : 0;
        }
    }
    EXPECT_GT(pictures, 250);
}

TEST(BandInfo, ComesBackFromAnArchive) {
    ProfileGraph graph(0, 9, 1, 0, 0, 0, 9, 9);
    graph.AddBand(1, -2, 0x030405);
    graph.AddBand(INT_MAX, INT_MIN, 0xFFFFFFFF);
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    graph.SerializeBands(storing);
    storing.Close();
    const std::string bytes(file.View());
    EXPECT_EQ(bytes, std::string("\2\0\1\0\0\0\xFE\xFF\xFF\xFF\5\4\3\0", 14) +
                         std::string("\xFF\xFF\xFF\x7F\0\0\0\x80\xFF\xFF\xFF\xFF", 12));
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        CMemFile cut(std::string_view(bytes).substr(0, length));
        CArchive loading(&cut, CArchive::load);
        ProfileGraph other(0, 9, 1, 0, 0, 0, 9, 9);
        if (length < bytes.size()) {
            EXPECT_THROW(other.SerializeBands(loading), CArchiveException) << length;
            continue;
        }
        other.SerializeBands(loading);
        ASSERT_EQ(other.GetBands().GetSize(), 2);
        for (const int i : {0, 1}) EXPECT_EQ(other.GetBands()[i], graph.GetBands()[i]);
    }
}

TEST(ProfileGraphText, SaysWhatIsShown) {
    ProfileGraph3 graph(20, 80, 10, 5, 1, 0, 280, 180);
    EXPECT_STREQ(sentencesOf(profileText(graph)), "No profile, on a scale from 20 to 80.");
    graph.SetXLegend(ownedTexts({"Scale", "\\bWorry", "", "7"}));
    graph.AddProfile("\\iSelf", owned({63, 51.25, cMissing}), 0, 1,
                     ProfileGraph3::PointType::Symbol, 0, 0);
    const double lows[] = {40, 41, 42};
    const double highs[] = {60, 61, 62.5};
    graph.AddBand(lows, highs, 0, "Norm");
    graph.AddBand(70.0, 80.0, 0, nullptr);
    graph.AddHorzLine(65);
    EXPECT_STREQ(sentencesOf(profileText(graph)),
                 "Self: Worry 63, scale 2 51.25, no score for scale 7, on a scale from 20 to 80. "
                 "Norm: Worry 40 to 60, scale 2 41 to 61, scale 7 42 to 62.5. Range 70 to 80. "
                 "Line at 65.");
    graph.ShowBands(0);
    HorProfileGraph across(0, 9, 1, 0, 300, 200);
    across.AddProfile("Early", owned({}), 0, 1);
    across.AddRow("a");
    across.AddHeaderRow("Group");
    across.AddRow("b");
    across.AddBand(3, 5, 0);
    across.AddVertLine(-1);
    across.AddVertLine(2);
    for (int i = 0; i < cMaxProfilesInText + 1; ++i) across.AddProfile("", owned({1.0, 2.0}), 0, 2);
    const CString text = sentencesOf(profileText(across));
    EXPECT_EQ(text.Find("Early: no score for a, no score for b, on a scale from 0 to 9. a 1, b 2,"),
              0);
    EXPECT_GT(text.Find("9. 2 more profiles. Range 3 to 5. Lines at -1, 2."), 0);
    EXPECT_EQ(sentencesOf(profileText(graph)).Find("Range"), -1);
}

}  // namespace
