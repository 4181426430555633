#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarHeading.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarRangeLegend.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"
#include "tests/support/Dice.h"

// Bar graphs as plain data, for a model of the layout and for random graphs.
namespace tessalink::test {

struct PointData {
    double value;
    int size, symbol, line;
    COLORREF color;
};
struct RangeData {
    double from, to, fraction;
    int line;
    COLORREF fill, border;
};
struct TextData {
    std::string text;
    double position;
    unsigned flags;
    int size;
    COLORREF color;
};
// A text of a simple legend (at `from`) or a range legend.
struct LegendText {
    double from, to;
    std::string text;
};

struct SectionData {
    enum Kind { Scale, FilledScale, Heading, Values, Texts, Ranges } kind;
    int left, right, top, bottom;  // margins
    std::string leftDesc, rightDesc;
    int fontSize;
    COLORREF descColor;
    // Scales.
    int min, max, leftWidth, rightWidth, major, minor, tickStart, tickEnd, barHeight, plotMin,
        plotMax, lineSize;
    COLORREF fill, box, minorColor, majorColor;
    std::vector<RangeData> ranges;  // drawn first
    std::vector<PointData> points;
    // Headings.
    std::vector<TextData> texts;
    // Legends, of the scale with this index.
    std::size_t scale;
    int bodySize, first, last, start, delta, useLine, up;
    unsigned leftAlign, rightAlign;
    std::vector<LegendText> labels;
};

struct GraphData {
    int frame;
    unsigned alignment;
    std::vector<SectionData> sections;
};

inline std::unique_ptr<BarSection> buildScale(const SectionData& s) {
    const auto make = [&](auto* kind) {
        return std::make_unique<std::remove_pointer_t<decltype(kind)>>(
            s.min, s.max, s.leftDesc.c_str(), s.rightDesc.c_str(), s.leftWidth, s.rightWidth,
            s.major, s.minor, s.tickStart, s.tickEnd, s.left, s.right, s.top, s.bottom, s.fontSize,
            s.barHeight, s.plotMin, s.plotMax);
    };
    std::unique_ptr<BarScale> scale;
    if (s.kind == SectionData::FilledScale) {
        auto filled = make(static_cast<BarScale2*>(nullptr));
        filled->SetBoxFillColor(s.fill);
        scale = std::move(filled);
    } else {
        scale = make(static_cast<BarScale*>(nullptr));
    }
    scale->SetLineSize(s.lineSize);
    scale->SetBoxColor(s.box);
    scale->SetMinTickColor(s.minorColor);
    scale->SetMajTickColor(s.majorColor);
    scale->SetDescColor(s.descColor);
    for (const RangeData& r : s.ranges) {
        auto range = std::make_unique<BarRangeGraphic>(r.from, r.to, r.fill, r.border, r.line);
        range->SetHeightFraction(r.fraction);
        scale->AddGraphic(range.release());
    }
    for (const PointData& p : s.points) {
        const auto symbol = static_cast<BarPointGraphic::Symbol>(p.symbol);
        scale->AddGraphic(new BarPointGraphic(p.value, p.size, p.color, symbol, p.line));
    }
    return scale;
}

template <class Legend>
std::unique_ptr<Legend> buildLegend(const SectionData& s, BarScale* scale) {
    auto legend = std::make_unique<Legend>(scale, s.leftDesc.c_str(), s.rightDesc.c_str(), s.fill,
                                           s.descColor, s.left, s.right, s.top, s.bottom,
                                           s.fontSize, s.bodySize, "Arial", "Times New Roman");
    legend->SetLeftDescAlignment(static_cast<std::uint16_t>(s.leftAlign));
    legend->SetRightDescAlignment(static_cast<std::uint16_t>(s.rightAlign));
    return legend;
}

inline std::unique_ptr<BarSection> build(const SectionData& s, BarScale* scale) {
    switch (s.kind) {
        case SectionData::Heading: {
            auto heading = std::make_unique<BarHeading>(s.left, s.right, s.top, s.bottom);
            for (const TextData& t : s.texts) {
                heading->AddText(t.text.c_str(), t.position, static_cast<std::uint16_t>(t.flags),
                                 t.size, t.color, "Arial");
            }
            return heading;
        }
        case SectionData::Values: {
            auto legend = buildLegend<BarValueLegend>(s, scale);
            legend->SetFirstLabelPos(s.first);
            legend->SetLastLabelPos(s.last);
            legend->SetLabelCalcStart(s.start);
            legend->SetLabelDelta(s.delta);
            return legend;
        }
        case SectionData::Texts: {
            auto legend = buildLegend<BarSimpleLegend>(s, scale);
            legend->SetUseLine(s.useLine);
            legend->SetLineSize(s.lineSize);
            for (const LegendText& t : s.labels) legend->AddText(t.from, t.text.c_str());
            return legend;
        }
        case SectionData::Ranges: {
            auto legend = buildLegend<BarRangeLegend>(s, scale);
            legend->SetDirectionUp(s.up);
            legend->SetLineSize(s.lineSize);
            for (const LegendText& t : s.labels) legend->AddRange(t.from, t.to, t.text.c_str());
            return legend;
        }
        default:
            return buildScale(s);
    }
}

inline std::unique_ptr<BarGraph> build(const GraphData& data) {
    auto graph = std::make_unique<BarGraph>(data.frame, static_cast<std::uint16_t>(data.alignment));
    for (const SectionData& s : data.sections) {
        const bool legend = s.kind >= SectionData::Values;
        auto* scale =
            legend ? static_cast<BarScale*>(graph->GetSection(static_cast<int>(s.scale))) : nullptr;
        graph->AddSection(build(s, scale).release());
    }
    return graph;
}

// Random graphs; `wild` ones have any number anywhere, except steps that would take years.
class GraphDice {
public:
    GraphDice(std::uint64_t seed, bool wild) : m_dice(seed), m_wild(wild) {}

    GraphData Graph(std::size_t most) {
        GraphData graph{Number(0, 1), static_cast<unsigned>(m_dice.Below(16)), {}};
        for (std::size_t count = m_dice.Below(most + 1); count > 0; --count) {
            graph.sections.push_back(Section(graph.sections));
        }
        return graph;
    }
    int Number(int least, int most) {
        return least + static_cast<int>(m_dice.Below(static_cast<std::size_t>(most - least) + 1));
    }
    int Any(int least, int most) {
        constexpr std::array ends = {INT_MIN, INT_MIN + 1, -100000, -1, 0, 1, 40000, INT_MAX};
        return m_wild && m_dice.OneIn(6) ? m_dice.Pick(ends) : Number(least, most);
    }
    double Value(int least, int most) {
        constexpr std::array ends = {
            -1e300, -1e9,     0.0,       1e9,
            1e300,  HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::quiet_NaN()};
        if (m_wild && m_dice.OneIn(6)) return m_dice.Pick(ends);
        return Number(least * 8, most * 8) / 8.0;
    }

private:
    COLORREF Color() { return static_cast<COLORREF>(m_dice.Word() & 0xFFFFFF); }
    int Step(int most) { return m_wild ? Any(-5, 0) & ~0xFFFF : Number(-1, most); }
    std::string Text() {
        constexpr std::array texts = {"",       "Text", "two\nlines",        "\n", "ends with\n",
                                      "a\n\nb", "9",    "Extraversion, self"};
        if (m_wild && m_dice.OneIn(2)) {
            return m_dice.Text(m_dice.Below(20), "\\nibs\n x\x01\x80\xE9\xFF");
        }
        return m_dice.Pick(texts);
    }
    SectionData Section(const std::vector<SectionData>& before) {
        std::vector<std::size_t> scales;
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (before[i].kind <= SectionData::FilledScale) scales.push_back(i);
        }
        SectionData s{};
        s.kind = static_cast<SectionData::Kind>(Number(0, scales.empty() ? 2 : 5));
        for (int* margin : {&s.left, &s.right, &s.top, &s.bottom}) *margin = Any(-3, 30);
        s.leftDesc = Text();
        s.rightDesc = Text();
        s.fontSize = Any(8, 30);
        for (COLORREF* c : {&s.descColor, &s.fill, &s.box, &s.minorColor, &s.majorColor}) {
            *c = Color();
        }
        s.lineSize = Any(0, 6);
        if (s.kind <= SectionData::FilledScale) fill_scale(s);
        if (s.kind == SectionData::Heading) {
            for (int i = Number(0, 4); i > 0; --i) {
                s.texts.push_back({Text(), Value(0, 1000), static_cast<unsigned>(Number(0, 15)),
                                   Any(8, 24), Color()});
            }
        }
        if (s.kind >= SectionData::Values) fill_legend(s, before, m_dice.Pick(scales));
        return s;
    }
    void fill_scale(SectionData& s) {
        s.min = Any(0, 50);
        s.max = Any(51, 150);
        if (m_dice.OneIn(4)) std::swap(s.min, s.max);
        s.leftWidth = Any(0, 200) * Number(0, 1);
        s.rightWidth = Any(0, 200) * Number(0, 1);
        s.major = Step(30);
        s.minor = Step(12);
        s.tickStart = Any(-20, 60);
        s.tickEnd = Any(60, 170);
        s.barHeight = Any(0, 40);
        s.plotMin = Any(-10, 60);
        s.plotMax = Any(60, 160);
        for (int i = Number(0, 3); i > 0; --i) {
            s.ranges.push_back(
                {Value(-20, 170), Value(-20, 170), Value(0, 2), Any(-1, 3), Color(), Color()});
        }
        for (int i = Number(0, 5); i > 0; --i) {
            s.points.push_back({Value(-20, 170), Any(0, 40), Any(0, 9), Any(0, 4), Color()});
        }
    }
    void fill_legend(SectionData& s, const std::vector<SectionData>& before, std::size_t scale) {
        s.scale = scale;
        s.leftWidth = before[scale].leftWidth;
        s.rightWidth = before[scale].rightWidth;
        s.bodySize = Any(8, 24);
        s.first = Any(-10, 60);
        s.last = Any(60, 160);
        s.start = Any(-30, 80);
        s.delta = m_wild ? Step(1) : Number(1, 30);
        s.useLine = Number(0, 1);
        s.up = Number(0, 1);
        s.leftAlign = static_cast<unsigned>(Number(0, 15));
        s.rightAlign = static_cast<unsigned>(Number(0, 15));
        for (int i = Number(0, 4); i > 0; --i) {
            s.labels.push_back({Value(-20, 170), Value(-20, 170), Text()});
        }
    }

    Dice m_dice;
    bool m_wild;
};

}  // namespace tessalink::test
