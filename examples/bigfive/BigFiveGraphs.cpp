#include "examples/bigfive/BigFiveGraphs.h"

#include <algorithm>
#include <array>
#include <memory>

#include "examples/bigfive/InterpersonalCircle.h"
#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarGraphText.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/ProfileGraph3.h"
#include "graphs/profile/ProfileGraphText.h"
#include "graphs/rtf/MetaFile.h"
#include "graphs/rtf/PictureText.h"
#include "graphs/rtf/RTFGraph.h"

namespace bigfive {
namespace {

// The colors of the templates.
constexpr COLORREF cMark = RGB(27, 73, 94);
constexpr COLORREF cSmallPrint = RGB(89, 89, 89);
constexpr COLORREF cBoxFill = RGB(233, 241, 243);
constexpr COLORREF cAverage = RGB(205, 224, 230);
constexpr COLORREF cRange = RGB(98, 154, 174);
constexpr COLORREF cTicks = RGB(191, 203, 208);

constexpr double cTextWidth = 9298.0 / 1440;  // inches between the margins of the page
constexpr int cTickStep = 10;
constexpr int cFontSize = 21;  // design units, of which the picture is 1,000 wide
constexpr int cBarHeight = 26;
constexpr int cLabelSize = 17;
constexpr int cNameWidth = 300;

// A scale with its marks; its name stands beside it when there is room for it.
BarScale* scaleWithMarks(const Score& score, const char* name, int nameWidth) {
    constexpr int side = 12;  // half a label of the legend
    constexpr int gap = 5;
    auto* const scale =
        new BarScale2(cMinT, cMaxT, name, "", nameWidth, 0, cTickStep, 0, cMinT, cMaxT, side, side,
                      gap, gap, cFontSize, cBarHeight, cMinT, cMaxT);
    scale->SetTypeface("Arial");
    scale->SetBoxFillColor(cBoxFill);
    scale->SetBoxColor(cTicks);
    scale->SetMajTickColor(cTicks);
    auto* const average =
        new BarRangeGraphic(cAverageFrom - 0.5, cAverageTo + 0.5, cAverage, cAverage, -1);
    average->SetHeightFraction(0.9);
    scale->AddGraphic(average);
    scale->AddGraphic(new BarRangeGraphic(score.low, score.high, cRange, cRange, 0));
    scale->AddGraphic(new BarPointGraphic(score.tScore, 20, cMark));
    return scale;
}

// The numbers of the T scores for scales of this look.
BarLegend* scoreLegend(BarScale* scale) {
    auto* const legend =
        new BarValueLegend(scale, "", "", cSmallPrint, cSmallPrint, scale->GetLeftMargin(),
                           scale->GetRightMargin(), 2, 0, cLabelSize, cLabelSize, "Arial", "Arial");
    return legend;
}

// Draws a graph of this size in inches into a picture, and the picture, with what it shows in
// words, into the report.
template <class Graph>
void writePictureOf(CFile& output, Graph& graph, double width, double height, const CString& text) {
    constexpr double unitsPerInch = 96;
    MetaFile picture(width, height, nullptr);
    graph.Draw(&picture, CRect(0, 0, static_cast<int>(width * unitsPerInch),
                               static_cast<int>(height * unitsPerInch)));
    picture.Close();
    tessalink::savePictureAsRTF(picture, output, width, height, text.View());
}

CString scalesInWords(const BarGraph& graph) {
    auto texts = tessalink::scaleTexts(graph);
    for (auto& text : texts) {
        // As scaleWithMarks adds them.
        text.ranges.front().name = "average range";
        text.ranges.back().name = "90% range";
    }
    return tessalink::sentencesOf(texts);
}

// Draws the graph as wide as the text.
void writePicture(CFile& output, BarGraph& graph) {
    writePictureOf(output, graph, cTextWidth,
                   cTextWidth * graph.GetDesignHeight() / BarGraph::cDesignWidth,
                   scalesInWords(graph));
}

int countAnswers(const Answers& answers, int answer) {
    return static_cast<int>(std::count(answers.begin(), answers.end(), answer));
}

struct LineLook {
    COLORREF color;
    CircumplexGraph::SymbolType symbol;
    int penStyle;
};

// A line around the circle with a point for each octant; only the first has the name.
void addCircleProfile(CircumplexGraph& graph, const std::array<int, cOctants>& tScores,
                      const char* name, const LineLook& look) {
    std::array<int, cOctants> ids{};
    for (int i = 0; i < cOctants; ++i) {
        const auto octant = static_cast<std::size_t>(i);
        ids[octant] = graph.GetPointCount();
        const tessalink::Polar place = {static_cast<double>(i * cOctantWidth),
                                        static_cast<double>(tScores[octant] - cMinT)};
        graph.AddPoint(place, ids[octant], i == 0 ? name : "", look.color, look.symbol,
                       i == 0 ? CircumplexGraph::NameInLegend : CircumplexGraph::NoName);
    }
    graph.AddConnection(ids, look.color, look.penStyle);
}

// "Ann: warm 57, outgoing 60 ..."; lengths in the picture are T scores less the lowest.
CString octantsInWords(const Answers& answers, const std::string& name) {
    const CirclePlace place = circlePlace(answers);
    CString text(name);
    for (std::size_t i = 0; i < cOctants; ++i) {
        text.AppendFormat("%s %s %d", i == 0 ? ":" : ",", cOctantNames[i], place.tScores[i]);
    }
    text.AppendFormat(", on a circle from %d to %d. Average: %d in all sectors.", cMinT, cMaxT,
                      cMeanT);
    return text;
}

}  // namespace

void writeProfileLine(CFile& output, const Answers& answers) {
    constexpr double height = 3.8;       // inches
    constexpr double unitsPerInch = 56;  // of the design: texts of nine points
    constexpr COLORREF average = RGB(232, 232, 232);
    ProfileGraph3 graph(cMinT, cMaxT, cTickStep, cTickStep / 2, 1, 1,
                        static_cast<int>(cTextWidth * unitsPerInch),
                        static_cast<int>(height * unitsPerInch));
    auto names = std::make_unique<CStringArray>();
    names->Add("");
    auto scores = std::make_unique<double[]>(cScales);
    std::array<double, cScales> lows{};
    std::array<double, cScales> highs{};
    for (std::size_t i = 0; i < cScales; ++i) {
        const Score score = scoreScale(answers, static_cast<int>(i));
        names->Add(cScaleTable[i].name);
        scores[i] = score.tScore;
        lows[i] = score.low;
        highs[i] = score.high;
    }
    graph.SetXLegend(names.release());
    graph.SetYLegend("T score");
    graph.AddBand(static_cast<double>(cAverageFrom), static_cast<double>(cAverageTo), average,
                  "average range");
    graph.AddBand(lows.data(), highs.data(), cAverage, "90% range");
    graph.AddProfile("T score", scores.release(), cMark, 1,
                     ProfileGraph3::PointType::SymbolAndValue, PS_SOLID, 0);
    graph.ShowLegend(ProfileGraph3::LegendType::Below);
    writePictureOf(output, graph, cTextWidth, height,
                   tessalink::sentencesOf(tessalink::profileText(graph)));
}

void writeCircle(CFile& output, const Answers& answers, const std::string& name) {
    constexpr double width = 5.6;  // inches
    constexpr double height = 4.5;
    constexpr int textSize = 11;
    constexpr int rim = cMaxT - cMinT;
    // The middle is the lowest T score, the rim the highest.
    CircumplexGraph graph(-rim, rim, -rim, rim, 0, 0, textSize, textSize, textSize, textSize,
                          textSize, textSize, textSize, textSize);
    graph.AddCircle(rim, cBoxFill);
    graph.AddCircle(cAverageTo + 0.5 - cMinT, cAverage);
    graph.AddCircle(cAverageFrom - 0.5 - cMinT, cBoxFill);
    const double half = cOctantWidth / 2.0;
    for (int i = 0; i < cOctants; ++i) {
        const double middle = i * cOctantWidth;
        graph.AddSector(middle - half, middle + half, cOctantNames[static_cast<std::size_t>(i)]);
    }
    std::array<int, cOctants> average{};
    average.fill(cMeanT);
    CString label(name);
    label.Replace("\\", "\\\\");
    addCircleProfile(graph, average, "Average", {cSmallPrint, CircumplexGraph::Ring, PS_DASH});
    addCircleProfile(graph, circlePlace(answers).tScores, label,
                     {cMark, CircumplexGraph::Disc, PS_SOLID});
    graph.SetLegendPlacement(CircumplexGraph::LegendBelow);
    writePictureOf(output, graph, width, height, octantsInWords(answers, name));
}

void writeProfilePicture(CFile& output, const Answers& answers) {
    BarGraph graph(0);
    BarScale* last = nullptr;
    for (int i = 0; i < cScales; ++i) {
        last = scaleWithMarks(scoreScale(answers, i), cScaleTable[static_cast<std::size_t>(i)].name,
                              cNameWidth);
        graph.AddSection(last);
    }
    graph.AddSection(scoreLegend(last));
    writePicture(output, graph);
}

void writeScalePicture(CFile& output, const Answers& answers, int scale) {
    BarGraph graph(0);
    BarScale* const bar = scaleWithMarks(scoreScale(answers, scale), "", 0);
    graph.AddSection(bar);
    graph.AddSection(scoreLegend(bar));
    writePicture(output, graph);
}

void writeAnswerCounts(CFile& output, const Answers& answers) {
    constexpr double left = 0.5;
    constexpr double width = 3.5;
    constexpr int step = 10;  // statements between two lines
    int largest = step;
    for (int answer = cMinAnswer; answer <= cMaxAnswer; ++answer) {
        largest = std::max(largest, (countAnswers(answers, answer) + step - 1) / step * step);
    }
    // The numbers of the answers stand in a strip below 0.
    const int strip = largest / 5;
    RTFGraph graph(output, left, 0.05, left + width, cCountsHeight - 0.1, cMinAnswer - 1,
                   cMaxAnswer + 1, -strip, largest, RTFGraph::alMarginAndParagraph);
    graph.DrawBox();
    for (int count = 0; count <= largest; count += step) {
        graph.YLegend(count, RTFGraph::cLeft);
        graph.SetLineType(count == 0 ? RTFGraph::ltSolid : RTFGraph::ltDot);
        graph.HorizontalLine(count);
    }
    graph.SetLineType(RTFGraph::ltSolid);
    for (int answer = cMinAnswer; answer <= cMaxAnswer; ++answer) {
        const int count = countAnswers(answers, answer);
        if (answer > cMinAnswer)
            graph.GapLine(answer - 1, countAnswers(answers, answer - 1), answer, count);
        graph.Plot(answer, count);
        graph.Plot(answer, -strip / 2.0, static_cast<char>('0' + answer));
    }
}

}  // namespace bigfive
