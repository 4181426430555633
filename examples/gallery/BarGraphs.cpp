#include "examples/gallery/BarGraphs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <memory>

#include "examples/gallery/Ink.h"
#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarHeading.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarRangeLegend.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/common/ColorMgr.h"
#include "graphs/file/PercentileScale.h"
#include "graphs/rtf/RTFGraph.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"
#include "scores/Reliability.h"

namespace gallery {

namespace {

using tessalink::cIQScale;
using tessalink::cTScale;
using tessalink::Reliability;
using Symbol = BarPointGraphic::Symbol;

constexpr const char* cFace = "Arial";
constexpr int cTitleSize = 34;
constexpr int cTextSize = 27;
constexpr int cSmallSize = 24;
constexpr int cMargin = 24;
constexpr int cSymbolSize = 22;

constexpr double cLevel = 0.95;

// The numbers of a scale, in scores, and of its columns, in design units.
struct Form {
    int min;
    int max;
    int major;
    int minor = 0;
    int left = 0;
    int right = 0;
    int height = 34;
    int fontSize = cTextSize;
    int margin = 5;  // above and below
};

template <class Scale = BarScale2>
std::unique_ptr<Scale> makeScale(const Form& form, const char* left = "", const char* right = "") {
    auto scale =
        std::make_unique<Scale>(form.min, form.max, left, right, form.left, form.right, form.major,
                                form.minor, form.min, form.max, cMargin, cMargin, form.margin,
                                form.margin, form.fontSize, form.height, form.min, form.max);
    scale->SetBoxColor(cLine);
    scale->SetMajTickColor(cLine);
    scale->SetMinTickColor(cGrid);
    scale->SetDescColor(cInk);
    return scale;
}

template <class Section>
Section* add(BarGraph& graph, std::unique_ptr<Section> section) {
    graph.AddSection(section.get());
    return section.release();
}

template <class Scale = BarScale2>
Scale* addScale(BarGraph& graph, const Form& form, const char* left = "", const char* right = "") {
    return add(graph, makeScale<Scale>(form, left, right));
}

template <class Legend>
std::unique_ptr<Legend> makeLegend(BarScale* scale, const char* left = "") {
    return std::make_unique<Legend>(scale, left, "", cMuted, cMuted, cMargin, cMargin, 3, 3,
                                    cSmallSize, cSmallSize, cFace, cFace);
}

// The values under a scale. Those at its ends reach into the columns of the descriptions, which
// therefore keep off.
BarValueLegend* addValues(BarGraph& graph, BarScale* scale, const char* left = "",
                          const char* right = "") {
    constexpr const char* room = "   ";
    auto legend = makeLegend<BarValueLegend>(scale);
    if (*left != '\0') legend->SetLeftDesc(CString(left) + room);
    if (*right != '\0') legend->SetRightDesc(room + CString(right));
    return add(graph, std::move(legend));
}

// The name of the picture at the left and, if there is more to say, a remark at the right.
void addTitle(BarGraph& graph, const char* title, const char* remark = "") {
    auto* const heading = new BarHeading(0, 0, 14, 12);
    heading->AddText(title, cMargin, BarHeading::cBottom, cTitleSize, cInk, cFace);
    heading->AddText(remark, BarGraph::cDesignWidth - cMargin,
                     BarHeading::cRight | BarHeading::cBottom, cTextSize, cMuted, cFace);
    graph.AddSection(heading);
}

void addSpace(BarGraph& graph, int height) {
    graph.AddSection(new BarHeading(0, 0, height, 0));
}

void addPoint(BarScale* scale, double value, COLORREF color = cBlue,
              Symbol symbol = Symbol::Diamond, int size = cSymbolSize) {
    scale->AddGraphic(new BarPointGraphic(value, size, color, symbol, 3));
}

void addRange(BarScale* scale, double from, double to, double height = 0.5,
              COLORREF color = cPale) {
    auto* const range = new BarRangeGraphic(from, to, color, color, -1);
    range->SetHeightFraction(height);
    scale->AddGraphic(range);
}

// One strip with its norms.

void tScores(BarGraph& graph) {
    const Reliability reliability(cTScale, 0.88);
    const tessalink::ConfidenceInterval interval = reliability.GetIntervalOfMeasurement(63, cLevel);
    addTitle(graph, "State anxiety", "T = 63, 95 % confidence interval " + interval.Format());
    BarScale* const scale = addScale(graph, {20, 80, 10, 5, 0, 0, 46});
    addRange(scale, interval.low, interval.high);
    addPoint(scale, 63);
    addValues(graph, scale);
    auto zones = makeLegend<BarRangeLegend>(scale);
    zones->AddRange(20.6, 39.4, "below average");
    zones->AddRange(40.6, 59.4, "average");
    zones->AddRange(60.6, 79.4, "above average");
    add(graph, std::move(zones));
    addSpace(graph, 8);
}

void stanines(BarGraph& graph) {
    addTitle(graph, "Reading comprehension", "stanine 6");
    BarScale* const scale = addScale(graph, {0, 10, 1, 0, 170, 0, 50});
    addPoint(scale, 6, cBlue, Symbol::Square, 32);
    auto* const values = addValues(graph, scale, "Stanine");
    values->SetFirstLabelPos(1);
    values->SetLastLabelPos(9);
    auto shares = makeLegend<BarSimpleLegend>(scale, "Norm group");
    constexpr std::array percents = {"4 %",  "7 %",  "12 %", "17 %", "20 %",
                                     "17 %", "12 %", "7 %",  "4 %"};
    for (std::size_t i = 0; i < percents.size(); ++i) {
        shares->AddText(static_cast<double>(i) + 1, percents[i]);
    }
    add(graph, std::move(shares));
    addSpace(graph, 8);
}

void percentiles(BarGraph& graph) {
    addTitle(graph, "Aptitude", "percentile ranks, spaced as the normal curve has them");
    struct Test {
        const char* name;
        double rank;
    };
    BarScale* scale = nullptr;
    for (const Test& test : {Test{"Verbal", 84}, Test{"Numerical", 37}, Test{"Spatial", 95.5}}) {
        const CString rank = KOVStandardScores::PercentileRank(test.rank).Format1();
        scale =
            addScale<tessalink::PercentileScale>(graph, {1, 99, 0, 0, 180, 70}, test.name, rank);
        addRange(scale, 1, test.rank, 0.35, cPale);
        addPoint(scale, test.rank);
    }
    auto ranks = makeLegend<BarSimpleLegend>(scale);
    ranks->SetUseLine(1);
    ranks->SetLineColor(cLine);
    for (const char* rank :
         {"1", "5", "10", "20", "30", "40", "50", "60", "70", "80", "90", "95", "99"}) {
        ranks->AddText(std::atoi(rank), rank);
    }
    add(graph, std::move(ranks));
    addSpace(graph, 8);
}

// Profiles.

struct Score {
    const char* name;
    double score;
    double reliability;
};

void addProfile(BarGraph& graph, std::span<const Score> scores, const Form& form) {
    std::vector<std::unique_ptr<BarScale2>> scales;
    for (const Score& one : scores) {
        const Reliability reliability(cTScale, one.reliability);
        const auto range = reliability.GetIntervalOfMeasurement(one.score, cLevel);
        const CString text = cTScale.Format(one.score) + "  (" + range.Format(0, " to ") + ")";
        scales.push_back(makeScale(form, one.name, text));
        addRange(scales.back().get(), range.low, range.high);
        addPoint(scales.back().get(), one.score);
    }
    addValues(graph, scales.front().get(), "Scale", "T (95 % CI)");
    for (auto& scale : scales) add(graph, std::move(scale));
}

constexpr std::array<Score, 5> cPersonality = {{{"Emotional stability", 41, 0.87},
                                                {"Extraversion", 57, 0.90},
                                                {"Openness", 63, 0.81},
                                                {"Agreeableness", 48, 0.78},
                                                {"Conscientiousness", 55, 0.86}}};

void profile(BarGraph& graph) {
    addTitle(graph, "Personality profile");
    addProfile(graph, cPersonality, {20, 80, 10, 0, 250, 200});
    addSpace(graph, 14);
}

// The same profile as drawing objects: a plotting area for the numbers, and one for each scale.
class ObjectsRow : public RTFGraph {
public:
    static constexpr double cHeight = 0.24;
    static constexpr int cMin = 20;
    static constexpr int cMax = 80;
    static constexpr int cStep = 10;
    static constexpr int cMiddle = 1;  // of 0 to 2, from the bottom to the top

    ObjectsRow(CFile& output, double top, const char* left, const char* right)
        : RTFGraph(output, 1.8, top, 5.2, top + cHeight, cMin, cMax, 0, 2 * cMiddle,
                   alMarginAndParagraph) {
        SetLegendSize(20);
        YLegend(cMiddle, left, cLeft);
        YLegend(cMiddle, right, cRight);
    }
};

void writeProfileObjects(CFile& output) {
    constexpr double head = 0.2;  // inches
    constexpr double distance = 0.33;
    constexpr double middle = ObjectsRow::cMiddle;
    ObjectsRow numbers(output, head, "Scale\\~\\~\\~", "\\~\\~T");
    for (int score = ObjectsRow::cMin; score <= ObjectsRow::cMax; score += ObjectsRow::cStep) {
        numbers.Plot(score, middle, tessalink::formatInt(score, 0, -1));
    }
    double top = head + ObjectsRow::cHeight;
    for (const Score& one : cPersonality) {
        const auto range =
            Reliability(cTScale, one.reliability).GetIntervalOfMeasurement(one.score, cLevel);
        ObjectsRow row(output, top, one.name, cTScale.Format(one.score));
        row.SetLineType(RTFGraph::ltDot);
        for (int score = ObjectsRow::cMin + ObjectsRow::cStep; score < ObjectsRow::cMax;
             score += ObjectsRow::cStep) {
            row.VerticalLine(score);
        }
        row.DrawBox();
        row.SetLineSize(2 * RTFGraph::cDefaultLineSize);
        row.Line(range.low, middle, range.high, middle);
        row.SetLegendSize(28);
        row.Plot(one.score, middle);
        top += distance;
    }
}

// Symbols and what they stand for, without a box.
class Key : public BarScale {
public:
    Key()
        : BarScale(0, 100, "", "", 0, 0, 0, 0, 0, 0, cMargin, cMargin, 2, 8, cTextSize, 30, 0,
                   100) {}

    void AddEntry(double place, Symbol symbol, COLORREF color, const char* text) {
        addPoint(this, place, color, symbol);
        m_texts.push_back({place + 2, text});
    }

protected:
    void draw_bar(CDC*, double, const CRect&) override {}
    void draw_graphics(CDC* dc, double xScale, double yScale, const CRect& box) override {
        BarScale::draw_graphics(dc, xScale, yScale, box);
        CFont font;
        create_font(static_cast<int>(std::lround(GetFontSize() * yScale)), font);
        const tessalink::RestoredState restored(*dc);
        dc->SelectObject(&font);
        dc->SetTextAlign(TA_LEFT | TA_TOP);
        const int top = box.top + (box.Height() - dc->GetTextExtent("M", 1).cy) / 2;
        for (const Text& text : m_texts) {
            print_multi_lines(dc, PixX(text.place, box), top, text.text);
        }
    }

private:
    struct Text {
        double place;
        CString text;
    };
    std::vector<Text> m_texts;
};

void beforeAndAfter(BarGraph& graph) {
    struct Change {
        const char* name;
        double before;
        double after;
    };
    addTitle(graph, "Symptom load", "before and after treatment");
    auto* const key = add(graph, std::make_unique<Key>());
    key->AddEntry(2, Symbol::HollowCircle, cRed, "before");
    key->AddEntry(18, Symbol::Circle, cBlue, "after twelve weeks");
    BarScale* scale = nullptr;
    for (const Change& one : {Change{"Sleep", 71, 55}, Change{"Worry", 66, 58},
                              Change{"Mood", 74, 52}, Change{"Physical complaints", 49, 51}}) {
        CString text;
        text.Format("%.0f to %.0f", one.before, one.after);
        scale = addScale(graph, {30, 80, 10, 5, 250, 130}, one.name, text);
        addRange(scale, one.before, one.after, 0.15, cLine);
        addPoint(scale, one.before, cRed, Symbol::HollowCircle);
        addPoint(scale, one.after, cBlue, Symbol::Circle);
    }
    addValues(graph, scale, "", "T score");
    addSpace(graph, 8);
}

void longLabels(BarGraph& graph) {
    struct Item {
        const char* left;
        const char* right;
        double value;
    };
    addTitle(graph, "Working style");
    const Form form{1, 7, 1, 0, 330, 330, 34, cSmallSize, 12};
    for (const Item& item :
         {Item{"Takes decisions \\balone\\n,\nquickly and by feeling",
               "Takes decisions \\bin a group\\n,\nafter weighing all\nthat is known", 3},
          Item{"Leaves plans \\iopen\\n",
               "Plans \\iahead\\n and keeps\nto deadlines even when\nothers do not", 6},
          Item{"Time for a task:\n\\s\xA3\\n 1 hour", "Time for a task:\n\\s\xB3\\n 1 day", 4}}) {
        addPoint(addScale(graph, form, item.left, item.right), item.value, cBlue, Symbol::Circle);
    }
    addSpace(graph, 10);
}

void opposites(BarGraph& graph) {
    struct Pair {
        const char* left;
        const char* right;
        double self;
        double other;
    };
    addTitle(graph, "Self and partner");
    auto* const key = add(graph, std::make_unique<Key>());
    key->AddEntry(27, Symbol::Circle, cBlue, "self");
    key->AddEntry(42, Symbol::HollowDiamond, cRed, "partner");
    for (const Pair& pair :
         {Pair{"calm", "excitable", -2, -1}, Pair{"reserved", "outgoing", 1, 3},
          Pair{"practical", "imaginative", 2, -1}, Pair{"trusting", "sceptical", 0, 1}}) {
        BarScale* const scale = addScale(graph, {-3, 3, 1, 0, 230, 230}, pair.left, pair.right);
        addRange(scale, -0.03, 0.03, 1, cLine);
        addPoint(scale, pair.self, cBlue, Symbol::Circle);
        addPoint(scale, pair.other, cRed, Symbol::HollowDiamond);
    }
    addSpace(graph, 14);
}

// Scores that grow to the left.
class MirroredScale : public BarScale2 {
public:
    using BarScale2::BarScale2;

    int PixX(double score, const CRect& box) const override {
        return mirrored(BarScale2::PixX(score, box), box);
    }
    int PixXUnrestricted(double score, const CRect& box) const override {
        return mirrored(BarScale2::PixXUnrestricted(score, box), box);
    }

private:
    static int mirrored(int x, const CRect& box) { return box.right - (x - box.left); }
};

void rightToLeft(BarGraph& graph) {
    struct Condition {
        const char* name;
        double milliseconds;
        double error;
    };
    addTitle(graph, "Reaction time", "faster to the right");
    BarScale* scale = nullptr;
    for (const Condition& one : {Condition{"Tone", 390, 25}, Condition{"Light", 455, 30},
                                 Condition{"Choice of four", 640, 55}}) {
        CString text;
        text.Format("%.0f ms", one.milliseconds);
        scale = addScale<MirroredScale>(graph, {300, 800, 100, 50, 200, 120}, one.name, text);
        addRange(scale, one.milliseconds - one.error, one.milliseconds + one.error);
        addPoint(scale, one.milliseconds, cBlue, Symbol::Triangle);
    }
    addValues(graph, scale);
    auto zones = makeLegend<BarRangeLegend>(scale);
    zones->AddRange(795, 555, "slow");
    zones->AddRange(545, 405, "average");
    zones->AddRange(395, 305, "fast");
    add(graph, std::move(zones));
    addSpace(graph, 8);
}

void deviationQuotient(BarGraph& graph) {
    addTitle(graph, "Intelligence", "IQ above 145: drawn at the end");
    const Form form{55, 145, 15, 5, 170, 90, 34};
    BarScale* const verbal = addScale(graph, form, "Verbal", "108");
    addRange(verbal, 101, 115);
    addPoint(verbal, 108);
    BarScale* const figures = addScale(graph, form, "Figures", "152");
    addPoint(figures, 152, cBlue, Symbol::HollowDiamond);
    addValues(graph, figures, "IQ");
    auto ranks = makeLegend<BarSimpleLegend>(figures, "Percentile rank");
    for (const int iq : {70, 85, 100, 115, 130}) {
        ranks->AddText(
            iq, KOVStandardScores::PercentileRank(KOVStandardScores::ZScore(cIQScale.ToZ(iq)))
                    .Format1());
    }
    add(graph, std::move(ranks));
    addSpace(graph, 8);
}

// Legends on either side.

void legends(BarGraph& graph) {
    addTitle(graph, "Test of attention");
    auto owned = makeScale({0, 100, 10, 5, 170, 90, 40}, "Correct", "72 %");
    BarScale* const scale = owned.get();
    auto zones = makeLegend<BarRangeLegend>(scale, "Compared with\nadults");
    zones->SetDirectionUp(0);
    zones->SetLeftDescAlignment(BarLegend::cRight);
    zones->AddRange(0.6, 29.4, "needs\na closer look");
    zones->AddRange(30.6, 84.4, "as most people");
    zones->AddRange(85.6, 99.4, "quick");
    add(graph, std::move(zones));
    add(graph, std::move(owned));
    addPoint(scale, 72);
    auto marks = makeLegend<BarSimpleLegend>(scale, "Norm groups");
    marks->SetUseLine(1);
    marks->SetLineStyle(PS_DOT);
    marks->SetLineSize(1);
    marks->SetLineColor(cInk);
    marks->AddText(34, "aged 80\nand over");
    marks->AddText(52, "aged 65");
    marks->AddText(67, "aged 40");
    marks->AddText(85, "aged 20\n(students)");
    add(graph, std::move(marks));
    auto* const values = addValues(graph, scale, "Percent");
    values->SetLabelDelta(20);
    addSpace(graph, 8);
}

void barSymbols(BarGraph& graph) {
    addTitle(graph, "Symbols");
    BarScale* scale = nullptr;
    for (const int size : {16, 28, 40}) {
        CString text;
        text.Format("size %d", size);
        scale = addScale(graph, {0, 9, 0, 0, 130, 0, 60}, text);
        for (int i = 0; i < 8; ++i) {
            addPoint(scale, i + 1, cBlue, static_cast<Symbol>(i), size);
        }
    }
    auto names = makeLegend<BarSimpleLegend>(scale);
    constexpr std::array texts = {"circle",           "square",         "triangle",
                                  "diamond",          "hollow\ncircle", "hollow\nsquare",
                                  "hollow\ntriangle", "hollow\ndiamond"};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        names->AddText(static_cast<double>(i) + 1, texts[i]);
    }
    add(graph, std::move(names));
    addSpace(graph, 8);
}

template <bool isGray>
void groups(BarGraph& graph) {
    ColorMgr colors(ColorMgr::ColorSafePalette());
    constexpr std::array names = {"Grade 5", "Grade 6", "Grade 7", "Grade 8"};
    constexpr std::array symbols = {Symbol::Circle, Symbol::Square, Symbol::Triangle,
                                    Symbol::Diamond};
    constexpr std::array<std::array<double, 4>, 3> means = {
        {{44, 47, 52, 56}, {41, 49, 53, 60}, {46, 50, 51, 54}}};
    constexpr std::array tests = {"Reading", "Spelling", "Arithmetic"};
    addTitle(graph, "Means of four grades", isGray ? "grey print" : "in colour");
    auto* const key = add(graph, std::make_unique<Key>());
    std::array<COLORREF, names.size()> inks{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const COLORREF color = colors.GetColor(colors.ReserveColor());
        inks[i] = isGray ? inGray(color) : color;
        key->AddEntry(2 + 20 * static_cast<double>(i), symbols[i], inks[i], names[i]);
    }
    BarScale* scale = nullptr;
    for (std::size_t test = 0; test < tests.size(); ++test) {
        scale = addScale(graph, {35, 65, 5, 0, 170, 0, 40}, tests[test]);
        for (std::size_t i = 0; i < names.size(); ++i) {
            addPoint(scale, means[test][i], inks[i], symbols[i], 26);
        }
    }
    addValues(graph, scale, "T score");
    addSpace(graph, 8);
}

// A strip for the cell of a table.
void barTiny(BarGraph& graph) {
    BarScale* const scale = addScale(graph, {20, 80, 30, 0, 0, 170, 80, 100, 10}, "", "57");
    addRange(scale, 51, 63);
    addPoint(scale, 57, cBlue, Symbol::Diamond, 60);
}

// A graph on a sheet of this width, which is as high as the graph and its frame.
template <auto BUILD, int WIDTH>
void drawSheet(CDC& dc, int height) {
    BarGraph graph;
    BUILD(graph);
    CPen pen(PS_SOLID, 1, cGrid);
    const tessalink::Selected selected(dc, &pen);
    graph.Draw(&dc, CRect(0, 0, WIDTH, height));
}

template <auto BUILD, int WIDTH>
int sheetHeight() {
    constexpr int frame = 2;
    BarGraph graph;
    BUILD(graph);
    return static_cast<int>(std::ceil(graph.GetDesignHeight() * (WIDTH - frame) /
                                      static_cast<double>(BarGraph::cDesignWidth))) +
           frame;
}

template <auto BUILD, int WIDTH = 600>
Card card(const char* name, const char* title, const char* description,
          void (*writeObjects)(CFile&) = nullptr) {
    const auto draw = [](CDC& dc) { drawSheet<BUILD, WIDTH>(dc, sheetHeight<BUILD, WIDTH>()); };
    return {name, title, description, WIDTH, sheetHeight<BUILD, WIDTH>(), draw, writeObjects};
}

// The same small graph in frames of other shapes.

void alignmentSample(BarGraph& graph, const char* name) {
    BarScale* const scale = addScale(graph, {0, 10, 5, 1, 0, 0, 90, 100, 30});
    addPoint(scale, 7, cBlue, Symbol::Diamond, 70);
    graph.AddSection(new BarHeading(name, 500, BarHeading::cCenter, 105, cInk, cFace, 0, 0, 0, 30));
}

void drawPlace(CDC& dc, const CRect& place, const char* name, int flags, int isFramed) {
    CBrush edge(cPale);
    dc.FrameRect(&place, &edge);
    CRect inside = place;
    inside.DeflateRect(1, 1);
    BarGraph graph(isFramed, static_cast<std::uint16_t>(flags));
    alignmentSample(graph, name);
    graph.Draw(&dc, inside);
}

void drawBarAlignments(CDC& dc) {
    struct Place {
        const char* name;
        int flags;
        int isFramed;
    };
    constexpr int columns = 3;
    constexpr int gap = 10;
    constexpr int width = 186;
    constexpr int low = 44;
    constexpr int high = 76;
    constexpr std::array<Place, columns> wide = {
        {{"0: left", 0, 0}, {"1: centre", 1, 0}, {"2, 3: right", 3, 1}}};
    constexpr std::array<Place, columns> tall = {
        {{"0: top", 0, 0}, {"4: middle", 4, 1}, {"8, 12: bottom", 12, 0}}};
    CPen pen(PS_SOLID, 1, cLine);
    const tessalink::Selected selected(dc, &pen);
    int left = gap;
    for (std::size_t i = 0; i < columns; ++i, left += width + gap) {
        drawPlace(dc, CRect(CPoint(left, gap), CSize(width, low)), wide[i].name, wide[i].flags,
                  wide[i].isFramed);
        drawPlace(dc, CRect(CPoint(left, 2 * gap + low), CSize(width, high)), tall[i].name,
                  tall[i].flags, tall[i].isFramed);
    }
}

std::vector<Card> makeBarCards() {
    return {
        card<tScores>("bar-t-scores", "T score",
                      "T score 63 on a scale from 20 to 80, above average"),
        card<stanines>("bar-stanines", "Stanine", "Stanine 6, with the shares of the norm group"),
        card<percentiles>("bar-percentiles", "Percentile ladder",
                          "Three percentile ranks on scales with the spacing of the normal curve"),
        card<profile>("bar-profile", "Profile with confidence intervals",
                      "Five T scores, each with its 95 percent confidence interval",
                      writeProfileObjects),
        card<beforeAndAfter>("bar-before-after", "Before and after",
                             "Four T scores before treatment and after it"),
        card<deviationQuotient>("bar-iq", "IQ and percentile ranks",
                                "IQ 108, and 152, which is drawn at the end of the scale"),
        card<opposites>("bar-opposites", "Pairs of opposites",
                        "Four pairs of words, rated by two persons"),
        card<longLabels>("bar-long-labels", "Long labels",
                         "Descriptions of several lines with bold, italic and symbol runs"),
        card<rightToLeft>("bar-right-to-left", "From right to left",
                          "Three reaction times on scales that grow to the left"),
        card<legends>("bar-legends", "Legends of both directions",
                      "Ranges above the scale, texts with lines and values below it"),
        card<barSymbols>("bar-symbols", "Symbols", "Filled and hollow symbols in three sizes"),
        card<groups<false>>("bar-groups", "Groups",
                            "Means of four grades in the colour-safe palette"),
        card<groups<true>>("bar-grey-print", "Groups in grey print",
                           "The same as a printer without colour shows it"),
        card<barTiny, 120>("bar-tiny", "Tiny", "A strip for the cell of a table: 57"),
        card<profile, 2400>("bar-poster", "Poster", "The profile, four times as large"),
        {"bar-places", "Frames and alignments",
         "The same graph in six rectangles, by the flags that it is labelled with", 600, 150,
         drawBarAlignments},
    };
}

}  // namespace

std::span<const Card> barGraphs() {
    static const std::vector<Card> cards = makeBarCards();
    return cards;
}

}  // namespace gallery
