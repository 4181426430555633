#include "examples/gallery/ProfileGraphs.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "examples/gallery/Ink.h"
#include "graphs/common/ColorMgr.h"
#include "graphs/profile/HorProfileGraph.h"
#include "graphs/profile/ProfileGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "platform/graphics/DCScope.h"

namespace gallery {

namespace {

using tessalink::ProfileLegend;
using tessalink::ProfilePointType;

// Fonts are 7 design units high: these are 12 on a card of usual width.
constexpr int cDesignWidth = 350;
constexpr int cCardWidth = 600;
constexpr int cDesignHeight = 200;
constexpr int cCardHeight = 343;

constexpr double cNone = tessalink::BasicProfileGraph::cDefaultMissingValue;

using Texts = std::initializer_list<const char*>;
using Scores = std::vector<double>;

// What the graph takes over.
CStringArray* row(Texts texts) {
    auto owned = std::make_unique<CStringArray>();
    for (const char* text : texts) owned->Add(text);
    return owned.release();
}

double* owned(const Scores& scores) {
    auto values = std::make_unique<double[]>(scores.size());
    std::copy(scores.begin(), scores.end(), values.get());
    return values.release();
}

// T scores, whose scale has both axes.
template <class Graph>
Graph tGraph(int min = 20, int max = 90, int rightAxis = 1) {
    return Graph(min, max, 10, 5, 1, rightAxis, cDesignWidth, cDesignHeight);
}

template <class Graph>
void draw(Graph& graph, CDC& dc, int width = cCardWidth, int height = cCardHeight) {
    CPen pen(PS_SOLID, 1, cGrid);
    const tessalink::Selected selected(dc, &pen);
    graph.Draw(&dc, CRect(0, 0, width, height));
}

// One person on the scales of a clinical inventory, with the validity scales set apart.

void addClinicalScales(ProfileGraph& graph) {
    graph.SetXLegend(
        row({"Scale", "L", "F", "K", "Hs", "D", "Hy", "Pd", "Pa", "Pt", "Sc", "Ma", "Si"}),
        row({"Raw", "5", "9", "13", "14", "29", "24", "19", "12", "22", "17", "15", "38"}),
        row({"\\bT", "\\b52", "\\b58", "\\b49", "\\b61", "\\b76", "\\b59", "\\b51", "\\b57",
             "\\b68", "\\b60", "\\b43", "\\b66"}),
        nullptr);
    graph.SetYLegend("T score");
    graph.AddBreak(3);
}

template <int WIDTH, int HEIGHT>
void clinical(CDC& dc) {
    auto graph = tGraph<ProfileGraph>(30, 90);
    addClinicalScales(graph);
    graph.AddBand(40, 60, RGB(232, 238, 245));
    graph.AddBand(65, 90, RGB(242, 204, 194));
    graph.AddHorzLine(50);
    graph.AddHorzLine(65);
    graph.ScaleHorzLines(true);
    graph.AddProfile("Client", owned({52, 58, 49, 61, 76, 59, 51, 57, 68, 60, 43, 66}), cBlue, 1);
    graph.ShowLegend(0);
    draw(graph, dc, WIDTH, HEIGHT);
}

void twoRaters(CDC& dc) {
    auto graph = tGraph<ProfileGraph3>(20, 80);
    graph.SetXLegend(row({"", "Attention", "Activity", "Impulses", "Mood", "Peers", "Learning"}));
    graph.SetYLegend("T score");
    graph.AddBand(20, 40, RGB(243, 243, 246), nullptr);
    graph.AddBand(60, 80, RGB(243, 243, 246), nullptr);
    graph.AddProfile("Mother", owned({66, 71, 63, 52, 55, 61}), cBlue, 1, ProfilePointType::Symbol,
                     PS_SOLID, 0);
    graph.AddProfile("Teacher", owned({58, 73, 68, 47, 63, 54}), cRed, 2, ProfilePointType::Symbol,
                     PS_DASH, 0);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// Two subtests were not given, and one person did not come back.
void missingScores(CDC& dc) {
    auto graph = tGraph<ProfileGraph2>(20, 80);
    graph.SetXLegend(
        row({"", "Series", "Words", "Cubes", "Rules", "Recall", "Codes", "Maps", "Sums"}));
    graph.SetYLegend("T score");
    graph.AddHorzLine(50);
    graph.AddProfile("March", owned({44, 51, cNone, 39, 47, cNone, 55, 41}), cBlue, 1,
                     ProfilePointType::Symbol, PS_SOLID, 0);
    graph.AddProfile("October", owned({52, 58, cNone, cNone, cNone, 61, cNone, 49}), cRed, 2,
                     ProfilePointType::Symbol, PS_DASH, 0);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// The axis is labelled from 35 to 65; scores beyond 30 and 70 are drawn at the edges.
void beyondLabels(CDC& dc) {
    ProfileGraph2 graph(30, 70, 5, 0, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetYLabelStart(35);
    graph.SetYLabelEnd(65);
    graph.SetXLegend(row({"", "Doubt", "Pace", "Order", "Trust", "Drive", "Calm"}));
    graph.AddHorzLine(35);
    graph.AddHorzLine(65);
    graph.AddProfile("", owned({28, 41, 66, 74, 52, 33}), cBlue, 1,
                     ProfilePointType::SymbolAndValue, PS_SOLID, 0);
    graph.ShowLegend(ProfileLegend::None);
    draw(graph, dc);
}

void breaks(CDC& dc) {
    auto graph = tGraph<ProfileGraph3>(20, 80);
    graph.SetXLegend(row({"", "N1", "N2", "N3", "E1", "E2", "E3", "O1", "O2", "O3", "A1", "A2",
                          "A3", "C1", "C2", "C3"}));
    graph.AddBand(40, 60, RGB(232, 238, 245), "average range");
    graph.AddBreak(3, ProfileGraph3::cLineBreak);
    graph.AddBreak(6, ProfileGraph3::cDashedBreak);
    graph.AddBreak(9, ProfileGraph3::cDoubleBreak);
    graph.AddBreak(12, ProfileGraph3::cInvisibleBreak);
    graph.AddProfile("Facets", owned({61, 57, 64, 38, 44, 41, 55, 49, 58, 63, 47, 52, 45, 51, 39}),
                     cBlue, 1, ProfilePointType::Symbol, PS_SOLID, 0);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// Ten times the deviate of each percentile rank. The ranks themselves can't label this axis.
void percentiles(CDC& dc) {
    struct Line {
        int deviate;
        int rank;
    };
    ProfileGraph3 graph(-30, 30, 10, 5, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegend(row({"", "Verbal, PR 84", "Numerical, PR 37", "Spatial, PR 96", "Memory, PR 9",
                          "Speed, PR 50"}));
    graph.SetYLegend("10 \\iz\\n");
    graph.AddBand(-10, 10, RGB(198, 214, 236), "percentile ranks 16 to 84");
    graph.AddBand(-20, -10, RGB(228, 236, 247), "2 to 16, 84 to 98");
    graph.AddBand(10, 20, RGB(228, 236, 247), nullptr);
    graph.AddHorzLine(0);
    graph.AddProfile("Aptitudes", owned({9.945, -3.319, 17.507, -13.408, 0}), cBlue, 1,
                     ProfilePointType::Symbol, PS_SOLID, 0);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// The norm range of each scale is its own.
void regions(CDC& dc) {
    auto graph = ProfileGraph3(0, 40, 10, 5, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegend(row({"", "Sleep", "Appetite", "Energy", "Worry", "Pain", "Focus", "Mood"}));
    graph.SetYLegend("Raw score");
    const Scores highs = {24, 19, 28, 22, 15, 27, 25};
    const Scores middles = {17, 13, 21, 16, 9, 20, 18};
    const Scores lows = {9, 6, 12, 8, 3, 13, 10};
    graph.AddBand(lows.data(), middles.data(), RGB(221, 236, 221), "half of the norm group");
    graph.AddBand(middles.data(), highs.data(), RGB(242, 240, 208), "a quarter");
    graph.AddProfile("Client", owned({27, 11, 18, 30, 16, 21, 29}), cInk, 1,
                     ProfilePointType::Symbol, PS_SOLID, 0);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

void values(CDC& dc) {
    ProfileGraph2 graph(0, 7, 1, 0, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegend(row({"", "Clarity", "Support", "Freedom", "Pay", "Growth", "Pride", "Peers"}));
    graph.SetYLegend("Mean");
    graph.AddProfile("This unit", owned({5.3, 3.4, 4.65, 2.3, 3.85, 5.7, 6.15}), cBlue, 1,
                     ProfilePointType::SymbolAndValue, PS_SOLID, 1);
    graph.AddProfile("All units", owned({4.1, 4.45, 3.7, 3.55, 4.9, 4.6, 5.05}), cMuted, 2,
                     ProfilePointType::LineOnly, PS_DOT, 1);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

void skyLine(CDC& dc) {
    ProfileGraph graph(0, 30, 5, 1, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegend(row({"Subscale", "Social fears", "Panic", "Compulsions", "Sleep", "Losses",
                          "Anger", "Restlessness", "Guilt"}),
                     nullptr, nullptr, nullptr);
    graph.SetYLegend("Sum");
    graph.AddSkyLine(owned({18, 12, 12, 20, 15, 22, 16, 10}), cRed, "Limit");
    graph.AddBreak(4);
    graph.AddProfile("Admission", owned({21, 15, 9, 24, 17, 13, 19, 7}), cBlue, 1);
    graph.AddProfile("Discharge", owned({12, 6, 5, 11, 10, 9, 12, 3}), cMuted, 2);
    graph.SetLegendPosition(66, 2);
    draw(graph, dc);
}

// All symbols, in the order in which the graph takes them.
void profileSymbols(CDC& dc) {
    ProfileGraph2 graph(0, 90, 10, 0, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegend(row({"", "100 percent", "", "", "", "", "", ""}));
    graph.ShowLegend(ProfileLegend::Below);
    constexpr std::array names = {"disc",   "square",        "triangle",        "diamond",
                                  "circle", "hollow square", "hollow triangle", "hollow diamond"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const double score = 80 - 10 * static_cast<double>(i);
        graph.AddProfile(names[i], owned(Scores(7, score)), cBlue, static_cast<std::uint32_t>(i),
                         ProfilePointType::Symbol, PS_SOLID, 0);
    }
    graph.SetXLegendPoints(7);
    graph.SetPointScale(150);
    draw(graph, dc);
}

void lineStyles(CDC& dc) {
    ProfileGraph2 graph(0, 60, 10, 0, 1, 1, cDesignWidth, cDesignHeight);
    graph.SetXLegendPoints(6);
    constexpr std::array names = {"solid", "dash", "dot", "dash-dot", "dash-dot-dot"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const double low = 42 - 9 * static_cast<double>(i);
        graph.AddProfile(names[i], owned({low, low + 8, low + 3, low + 12, low + 6, low + 10}),
                         cInk, static_cast<std::uint32_t>(i), ProfilePointType::LineOnly,
                         static_cast<int>(i), 0);
    }
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// Markers and dashes tell the profiles apart where colours do not.
template <bool isGray>
void palette(CDC& dc) {
    ColorMgr colors(ColorMgr::ColorSafePalette());
    struct Line {
        const char* name;
        Scores scores;
        int style;
    };
    const std::array<Line, 5> lines = {{{"Grade 4", {31, 36, 33, 40, 35, 42}, PS_SOLID},
                                        {"Grade 5", {39, 41, 42, 44, 45, 47}, PS_DASH},
                                        {"Grade 6", {46, 52, 49, 51, 54, 53}, PS_DOT},
                                        {"Grade 7", {55, 58, 61, 57, 62, 60}, PS_DASHDOT},
                                        {"Grade 8", {64, 67, 66, 70, 69, 73}, PS_DASHDOTDOT}}};
    auto graph = tGraph<ProfileGraph2>(20, 80);
    graph.SetXLegend(row({"", "Reading", "Spelling", "Sums", "Nature", "Music", "Sport"}));
    std::uint32_t id = 0;
    for (const Line& line : lines) {
        const COLORREF color = colors.GetColor(colors.ReserveColor());
        graph.AddProfile(line.name, owned(line.scores), isGray ? inGray(color) : color, id++,
                         ProfilePointType::Symbol, line.style, 0);
    }
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

// A profile that runs downward.

void addTraits(HorProfileGraph& graph) {
    graph.AddHeaderRow("Emotional stability");
    for (const char* name : {"Calm", "Confident", "Even-tempered"}) graph.AddRow(name);
    graph.AddHeaderRow("Openness");
    for (const char* name : {"Curious", "Artistic", "Adventurous"}) graph.AddRow(name);
    graph.AddScoreCol("Raw", row({"18", "25", "12", "31", "27", "16"}));
    graph.AddScoreCol("T", row({"45", "58", "37", "66", "61", "43"}));
    graph.SetScoreColsHeading("Scores");
}

void horizontal(CDC& dc) {
    HorProfileGraph graph(20, 80, 10, 5, cDesignWidth, cDesignHeight);
    addTraits(graph);
    graph.SetXLegend("T score");
    graph.AddBand(40, 60, RGB(232, 238, 245));
    graph.AddVertLine(50);
    graph.AddProfile("Self", owned({45, 58, 37, 66, 61, 43}), cBlue, 1);
    graph.AddProfile("Partner", owned({52, 49, 41, 70, 55, 36}), cRed, 2, ProfilePointType::Symbol,
                     PS_DASH);
    graph.ShowLegend(ProfileLegend::Below);
    draw(graph, dc);
}

void horizontalValues(CDC& dc) {
    HorProfileGraph graph(1, 9, 1, 1, cDesignWidth, cDesignHeight);
    for (const char* name : {"Planning and control", "Decisions under pressure", "\\iTeamwork",
                             "Negotiation", "Leadership"}) {
        graph.AddRow(name);
    }
    graph.SetXLegend("Stanine");
    graph.AddBand(4, 6, RGB(232, 238, 245));
    graph.AddProfile("Assessment centre", owned({6.5, 3.75, 7.25, cNone, 5}), cBlue, 1,
                     ProfilePointType::SymbolAndValue, PS_SOLID, 2);
    graph.ShowLegend(ProfileLegend::None);
    draw(graph, dc, cCardWidth, 240);
}

// For the cell of a table.
void profileTiny(CDC& dc) {
    ProfileGraph2 graph(20, 80, 30, 0, 1, 0, 90, 60);
    graph.SetXLegend(row({"", "N", "E", "O", "A", "C"}));
    graph.AddHorzLine(50);
    graph.AddProfile("", owned({62, 41, 55, 48, 70}), cBlue, 1, ProfilePointType::Symbol, PS_SOLID,
                     0);
    graph.ShowLegend(ProfileLegend::None);
    draw(graph, dc, 140, 94);
}

std::vector<Card> makeProfileCards() {
    const auto card = [](const char* name, const char* title, const char* description,
                         void (*draw)(CDC&), int width = cCardWidth, int height = cCardHeight) {
        return Card{name, title, description, width, height, draw};
    };
    constexpr int poster = 4;
    return {
        card("profile-clinical", "Clinical profile",
             "Twelve T scores, three of validity scales, with bands and cut-off lines",
             clinical<cCardWidth, cCardHeight>),
        card("profile-raters", "Two raters", "Mother and teacher on six scales", twoRaters),
        card("profile-missing", "Missing scores",
             "Two times of testing on eight scales, several without a score", missingScores),
        card("profile-beyond", "Beyond the labels",
             "Six scores, of which some lie beyond the labelled range and some beyond the plot",
             beyondLabels),
        card("profile-breaks", "Groups of scales",
             "Fifteen facets in five groups, parted by breaks of all kinds", breaks),
        card("profile-deviates", "Spaced as percentile ranks",
             "Ten times the deviates of five percentile ranks", percentiles),
        card("profile-regions", "Ranges of each scale",
             "Seven raw scores over the ranges of the norm group, which differ from scale to scale",
             regions),
        card("profile-values", "Values beside the points",
             "Seven means with their values, and a dotted line of comparison", values),
        card("profile-limits", "Limits as a step line",
             "Two profiles of eight scales with a limit for each", skyLine),
        card("profile-symbols", "Symbols", "The eight symbols, at one and a half their size",
             profileSymbols),
        card("profile-lines", "Line styles", "Five profiles without symbols", lineStyles),
        card("profile-palette", "Five groups", "Means of five grades in the colour-safe palette",
             palette<false>),
        card("profile-grey-print", "Five groups in grey print",
             "The same as a printer without colour shows it", palette<true>),
        card("profile-horizontal", "Horizontal profile",
             "Two persons on six scales in two groups, with raw and T scores", horizontal),
        card("profile-horizontal-values", "Horizontal profile with values",
             "Five stanines, one of them missing, with values beside the points", horizontalValues,
             cCardWidth, 240),
        card("profile-tiny", "Tiny", "Five scores for the cell of a table", profileTiny, 140, 94),
        card("profile-poster", "Poster", "The clinical profile, four times as large",
             clinical<poster * cCardWidth, poster * cCardHeight>, poster * cCardWidth,
             poster * cCardHeight),
    };
}

}  // namespace

std::span<const Card> profileGraphs() {
    static const std::vector<Card> cards = makeProfileCards();
    return cards;
}

}  // namespace gallery
