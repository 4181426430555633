#pragma once

#include <array>
#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "graphs/profile/BandInfo.h"
#include "platform/base/CStringArray.h"
#include "platform/graphics/DrawingDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {

/// What a profile graph is given, as plain data.
struct ProfileData {
    struct Profile {
        std::string name;
        std::vector<double> values;
        COLORREF color = 0;
    };

    int yMin = 0, yMax = 0, majorStep = 0, minorStep = 0, majorBase = 0, minorBase = 0;
    int labelStart = 0, labelEnd = 0;
    int leftAxis = 0, rightAxis = 0;
    int designWidth = 1, designHeight = 1;
    std::array<std::vector<std::string>, 4> rows;  ///< empty: none
    std::string yLegend;
    std::vector<int> breaks, lines;
    std::vector<BandInfo> bands;
    std::vector<double> skyLine;  ///< empty: none
    std::vector<Profile> profiles;
    int legend = 0, legendX = 5, legendY = 5;

    int Scales() const { return rows[0].empty() ? 0 : static_cast<int>(rows[0].size()) - 1; }
};

/// Tame graphs are as people make them; wild ones hold any numbers and texts.
class ProfileDice {
public:
    ProfileDice(std::uint64_t seed, bool wild) : m_dice(seed), m_wild(wild) {}

    int Number(int least, int most) {
        return least + static_cast<int>(m_dice.Below(static_cast<std::size_t>(most - least) + 1));
    }
    bool OneIn(std::size_t count) { return m_dice.OneIn(count); }
    int Any(int least, int most) {
        constexpr std::array ends = {INT_MIN, -1, 0, 1, INT_MAX};
        return m_wild && OneIn(9) ? m_dice.Pick(ends) : Number(least, most);
    }
    double Value(int least, int most) {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr std::array ends = {-infinity, -1e308,   0.0,
                                     1e10,      infinity, std::numeric_limits<double>::quiet_NaN()};
        if (OneIn(8)) return cMissing;
        return m_wild && OneIn(8) ? m_dice.Pick(ends) : Number(100 * least, 100 * most) / 100.0;
    }
    std::string Text() {
        return m_wild ? m_dice.Text(m_dice.Below(9),
                                    "\\bin \ns\xE9\x01"
                                    "9x")
                      : m_dice.Text(1 + m_dice.Below(9), "abcMW") + (OneIn(9) ? "\\bx" : "");
    }
    COLORREF Color() { return static_cast<COLORREF>(m_dice.Below(0x1000000)); }

    ProfileData Graph(int maxScales, int maxProfiles) {
        ProfileData d;
        d.yMin = Any(-20, 40);
        d.yMax = Any(60, 120);
        if (OneIn(6)) std::swap(d.yMin, d.yMax);
        d.majorStep = Any(0, 30);
        d.minorStep = Any(0, 10);
        d.majorBase = OneIn(2) ? Any(-30, 60) : 0;
        d.minorBase = OneIn(2) ? Any(-30, 60) : 0;
        d.labelStart = Any(-20, 50);
        d.labelEnd = Any(51, 130);
        d.leftAxis = Number(0, 1);
        d.rightAxis = Number(0, 1);
        d.designWidth = Any(100, 400);
        d.designHeight = Any(80, 300);
        if (OneIn(2)) d.yLegend = Text();
        const int scales = Number(0, maxScales);
        for (auto& row : d.rows) {
            if (&row != d.rows.data() && OneIn(3)) continue;
            for (int i = 0; i <= scales; ++i) row.push_back(Text());
        }
        for (int i = Number(0, 4); i > 0; --i) {
            d.breaks.push_back(Any(1, maxScales));
            d.lines.push_back(Any(-30, 130));
            d.bands.push_back({Any(0, 50), Any(40, 100), Color()});
        }
        if (OneIn(2)) {
            for (int i = 0; i < scales; ++i) d.skyLine.push_back(Value(-50, 150));
        }
        for (int i = Number(0, maxProfiles); i > 0; --i) {
            d.profiles.push_back({Text(), {}, Color()});
            for (int k = 0; k < scales; ++k) d.profiles.back().values.push_back(Value(-50, 150));
        }
        d.legend = Number(0, 1);
        d.legendX = Any(0, 90);
        d.legendY = Any(0, 90);
        return d;
    }

private:
    Dice m_dice;
    bool m_wild;
};

/// What a graph takes over: null for nothing.
inline double* owned(const std::vector<double>& values) {
    auto* copy = new double[values.size()];
    std::copy(values.begin(), values.end(), copy);
    return copy;
}
inline CStringArray* ownedTexts(const std::vector<std::string>& texts) {
    if (texts.empty()) return nullptr;
    auto* row = new CStringArray;
    for (const std::string& text : texts) row->Add(text.c_str());
    return row;
}

/// Fills a graph of any class with what all of them have.
template <class Graph>
void fill(Graph& graph, const ProfileData& d) {
    graph.SetYRange(d.yMin, d.yMax, d.majorStep, d.minorStep, d.majorBase, d.minorBase);
    graph.SetYLabelStart(d.labelStart);
    graph.SetYLabelEnd(d.labelEnd);
    graph.SetYLegend(d.yLegend.c_str());
    graph.SetLegendPosition(d.legendX, d.legendY);
    for (const int scale : d.breaks) graph.AddBreak(scale);
    for (const int score : d.lines) graph.AddHorzLine(score);
    if (!d.skyLine.empty()) graph.AddSkyLine(owned(d.skyLine), 0x808080);
}

/// Everything that can change about a rectangle to draw in.
inline constexpr std::array cWildRects = {
    RECT{0, 0, 528, 480},         RECT{0, 0, 0, 0},
    RECT{9, 9, 10, 10},           RECT{5, 5, 0, 0},
    RECT{0, 0, 5000, INT_MAX},    RECT{-9000, 7, -8000, 9000},
    RECT{INT_MIN, 0, INT_MAX, 9}, RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}};

}  // namespace tessalink::test
