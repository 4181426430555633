#include "examples/gallery/CircleGraphs.h"

#include <array>
#include <cstddef>
#include <vector>

#include "examples/gallery/Ink.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/StyleGraph.h"

namespace gallery {

namespace {

using tessalink::Polar;

constexpr int cWidth = 528;  // 5.5 by 5 inches
constexpr int cHeight = 480;
constexpr int cOctants = 8;
constexpr double cOctant = 360.0 / cOctants;
constexpr double cTop = 90;

// The octants from the top on, to the left.
struct Octants {
    std::array<const char*, cOctants> names;

    void AddTo(CircumplexGraph& graph) const {
        double middle = cTop;
        for (const char* name : names) {
            graph.AddSector(middle - cOctant / 2, middle + cOctant / 2, name);
            middle += cOctant;
        }
    }
};
constexpr Octants cLetters = {{"PA", "BC", "DE", "FG", "HI", "JK", "LM", "NO"}};
constexpr Octants cWords = {
    {"Assured", "Cool", "Detached", "Reserved", "Yielding", "Trusting", "Warm", "Outgoing"}};

// Font sizes in points: title and subtitle, sides, three lines of quadrants, numbers, legend.
CircumplexGraph graphOf(int range, int labelStep, int dots) {
    return {-range, range, -range, range, labelStep, dots, 15, 10, 10, 11, 9, 9, 8, 9};
}

void draw(CircumplexGraph& graph, CDC& dc, int width = cWidth, int height = cHeight) {
    graph.Draw(&dc, CRect(0, 0, width, height));
}

// A person's scores on the octants, joined by a line.
void addProfile(CircumplexGraph& graph, const std::array<double, cOctants>& scores,
                const char* name, COLORREF color, CircumplexGraph::SymbolType symbol, int style) {
    std::vector<int> ids;
    double angle = cTop;
    for (const double score : scores) {
        ids.push_back(graph.GetPointCount());
        graph.AddPoint(Polar{angle, score}, ids.back(), name, color, symbol,
                       CircumplexGraph::NameInLegend);
        angle += cOctant;
    }
    graph.AddConnection(ids, color, style);
}

// Words by their angles and lengths.
void octants(CDC& dc) {
    struct Word {
        const char* name;
        double angle;
        double length;
    };
    CircumplexGraph graph = graphOf(10, 0, 0);
    graph.SetTitle("Words for feelings", "angle and strength", "");
    cWords.AddTo(graph);
    graph.AddCircle(10, RGB(250, 250, 252));
    graph.AddCircle(5, RGB(235, 240, 247));
    int id = 0;
    for (const Word& word :
         {Word{"proud", 78, 8.4}, Word{"stern", 128, 6.9}, Word{"aloof", 171, 7.6},
          Word{"shy", 221, 7.2}, Word{"meek", 262, 8.8}, Word{"naive", 311, 5.9},
          Word{"kind", 8, 8.4}, Word{"loving", 352, 6.4}, Word{"merry", 55, 7.9},
          Word{"lively", 36, 8.6}}) {
        graph.AddPoint(Polar{word.angle, word.length}, id++, word.name, cBlue,
                       CircumplexGraph::Disc, CircumplexGraph::NameBeside);
    }
    draw(graph, dc);
}

// The direction with its uncertainty as an arc, and the elevation as a ring.
void elevation(CDC& dc) {
    constexpr double angle = 147;
    constexpr double amplitude = 6.2;
    constexpr double uncertainty = 16;
    constexpr double mean = 3.4;
    CircumplexGraph graph = graphOf(10, 10, 0);
    graph.SetTitle("Structural summary", "", "");
    cLetters.AddTo(graph);
    graph.AddArc(angle - uncertainty, angle + uncertainty, 0, 10, RGB(226, 234, 245), true);
    graph.AddArc(0, 360, mean, mean, cRed);
    graph.AddArc(angle - uncertainty, angle + uncertainty, amplitude, amplitude, cBlue);
    graph.AddArc(angle, angle, 0, amplitude, cBlue);
    graph.AddPoint(Polar{angle, amplitude}, 1, "amplitude 6.2 at 147\xB0", cBlue,
                   CircumplexGraph::Diamond, CircumplexGraph::NameInLegend);
    graph.AddPoint(Polar{angle - 180, mean}, 2, "elevation 3.4", cRed, CircumplexGraph::Ring,
                   CircumplexGraph::NameInLegend);
    graph.SetLegendPlacement(CircumplexGraph::LegendBelow);
    draw(graph, dc);
}

template <int SCALE>
void interpersonal(CDC& dc) {
    CircumplexGraph graph = graphOf(20, 10, 2);
    graph.SetTitle("Interpersonal circle", "before and after the training", "");
    cLetters.AddTo(graph);
    addProfile(graph, {6, 13, 16.5, 17, 12, 8, 5, 4}, "before", cBlue, CircumplexGraph::Disc,
               PS_SOLID);
    addProfile(graph, {12.5, 9, 7, 6, 7, 11, 14, 16}, "after", cRed, CircumplexGraph::HollowDiamond,
               PS_DASH);
    graph.SetLegendPlacement(CircumplexGraph::LegendBelow);
    draw(graph, dc, SCALE * cWidth, SCALE * cHeight);
}

void beyondRim(CDC& dc) {
    CircumplexGraph graph = graphOf(10, 5, 1);
    graph.SetNAxisText("Dominance").SetSAxisText("Submission");
    graph.SetEAxisText("Affection").SetWAxisText("Hostility");
    graph.AddCircle(10, RGB(246, 246, 249));
    graph.AddCircle(6, RGB(222, 231, 243));
    graph.AddCircle(1.5, cWhite);
    graph.AddPoint(3.2, 6.8, 1, "self", cBlue, CircumplexGraph::Disc, CircumplexGraph::NameBeside);
    graph.AddPoint(-14, 9, 2, "boss", cRed, CircumplexGraph::Square, CircumplexGraph::NameBeside);
    graph.AddPoint(8, -16, 3, "mother", cRed, CircumplexGraph::Triangle,
                   CircumplexGraph::NameBeside);
    graph.AddPoint(1.4, -3.2, 4, "partner", cBlue, CircumplexGraph::Diamond,
                   CircumplexGraph::NameBeside);
    draw(graph, dc);
}

// All symbols, in the order in which the graph chooses them, with the legend at the right.
void circleSymbols(CDC& dc) {
    constexpr std::array names = {"cross",          "disc",   "square",         "triangle",
                                  "diamond",        "circle", "hollow\nsquare", "hollow\ntriangle",
                                  "hollow\ndiamond"};
    CircumplexGraph graph = graphOf(10, 0, 0);
    graph.SetNAxisText("N").SetSAxisText("S").SetEAxisText("E").SetWAxisText("W");
    double angle = cTop;
    int id = 0;
    for (const char* name : names) {
        graph.AddPoint(Polar{angle, 6.5}, id++, name, cBlue, CircumplexGraph::AnySymbol,
                       CircumplexGraph::NameInLegend);
        angle -= 360.0 / static_cast<double>(names.size());
    }
    graph.SetAdvancedOptions(4.5, 5, 0.5, 0.5, 1, 0.5, 0.5, 3.5, 0.5, 0.12);
    graph.SetLegendPlacement(CircumplexGraph::LegendRight);
    draw(graph, dc);
}

// Texts by their numbers: title, sides, and three lines for each quadrant.
constexpr std::array cStyleTexts = {"Styles of conflict",
                                    "",
                                    "",
                                    "Concern for oneself",
                                    "",
                                    "Concern for others",
                                    "",
                                    "Competing",
                                    "wins, or loses",
                                    "a friend",
                                    "Collaborating",
                                    "seeks a way",
                                    "that serves both",
                                    "Avoiding",
                                    "leaves it",
                                    "for later",
                                    "Accommodating",
                                    "gives in",
                                    "for peace"};
constexpr UINT cFirstText = 2000;

UINT number(std::size_t text) {
    return *cStyleTexts[text] == '\0' ? 0 : cFirstText + static_cast<UINT>(text);
}

void style(CDC& dc) {
    StyleGraph graph(0, 0, number(0), number(1), number(2), number(3), number(4), number(5),
                     number(6), number(7), number(8), number(9), number(10), number(11), number(12),
                     number(13), number(14), number(15), number(16), number(17), number(18), 0, 100,
                     0, 100, 25, 5, 15, 10, 10, 11, 9, 9, 8);
    graph.AddCircle(50, RGB(244, 247, 251));
    graph.AddCircle(20, cWhite);
    graph.Draw(&dc, CRect(0, 0, cWidth, cHeight));
}

void circleTiny(CDC& dc) {
    CircumplexGraph graph = graphOf(10, 0, 0);
    graph.SetAdvancedOptions(1.2, 1.7, 0, 0, 0, 0.1, 0.1, 1, 0.1, 0.1);
    graph.AddPoint(Polar{130, 7}, 1, "", cBlue, CircumplexGraph::Disc, CircumplexGraph::NoName);
    graph.AddPoint(Polar{20, 4}, 2, "", cRed, CircumplexGraph::HollowDiamond,
                   CircumplexGraph::NoName);
    graph.AddArc(0, 360, 5, 5, cLine);
    draw(graph, dc, 116, 116);
}

std::vector<Card> makeCircleCards() {
    constexpr int poster = 4;
    return {
        {"circle-octants", "Octants and angles", "Ten words by their angles, in eight octants",
         cWidth, cHeight, octants},
        {"circle-elevation", "Elevation and direction",
         "A direction with its uncertainty as an arc, and the elevation as a ring", cWidth, cHeight,
         elevation},
        {"circle-interpersonal", "Interpersonal circle", "Two profiles over eight octants", cWidth,
         cHeight, interpersonal<1>},
        {"circle-rings", "Rings and points beyond",
         "Four persons, two of them beyond the rim and drawn on it", cWidth, cHeight, beyondRim},
        {"circle-symbols", "Symbols", "The nine symbols with a legend at the right", cWidth,
         cHeight, circleSymbols},
        {"circle-style", "Style grid", "Four styles of conflict in a circle with a grid", cWidth,
         cHeight, style},
        {"circle-tiny", "Tiny", "Two points for the cell of a table", 116, 116, circleTiny},
        {"circle-poster", "Poster", "The interpersonal circle, four times as large",
         poster * cWidth, poster * cHeight, interpersonal<poster>},
    };
}

}  // namespace

std::span<const Card> circleGraphs() {
    static const std::vector<Card> cards = makeCircleCards();
    return cards;
}

bool styleText(UINT number, CString& text) {
    if (number < cFirstText || number - cFirstText >= cStyleTexts.size()) return false;
    text = cStyleTexts[number - cFirstText];
    return true;
}

}  // namespace gallery
