#include "examples/bigfive/BigFiveGraphs.h"

#include <algorithm>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarValueLegend.h"
#include "graphs/rtf/MetaFile.h"
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

// Draws the graph into a picture as wide as the text, and the picture into the report.
void writePicture(CFile& output, BarGraph& graph) {
    constexpr double unitsPerInch = 96;
    const double height = cTextWidth * graph.GetDesignHeight() / BarGraph::cDesignWidth;
    MetaFile picture(cTextWidth, height, nullptr);
    graph.Draw(&picture, CRect(0, 0, static_cast<int>(cTextWidth * unitsPerInch),
                               static_cast<int>(height * unitsPerInch)));
    picture.Close();
    picture.SaveAsRTF(output, cTextWidth, height);
}

int countAnswers(const Answers& answers, int answer) {
    return static_cast<int>(std::count(answers.begin(), answers.end(), answer));
}

}  // namespace

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
