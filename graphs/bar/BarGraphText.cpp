#include "graphs/bar/BarGraphText.h"

#include <algorithm>

#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarRangeGraphic.h"
#include "graphs/bar/BarScale.h"
#include "graphs/common/PlainLabel.h"

namespace tessalink {

namespace {

void addMark(ScaleText& text, const BarGraphic* mark) {
    if (const auto* point = dynamic_cast<const BarPointGraphic*>(mark)) {
        text.points.push_back({{}, point->GetValue()});
    } else if (const auto* range = dynamic_cast<const BarRangeGraphic*>(mark)) {
        text.ranges.push_back({{}, range->GetFromValue(), range->GetToValue()});
    }
}

ScaleText textOf(const BarScale& scale) {
    ScaleText text;
    text.name = plainLabel(scale.GetLeftDesc());
    if (text.name.IsEmpty()) text.name = plainLabel(scale.GetRightDesc());
    text.min = scale.GetScaleMin();
    text.max = scale.GetScaleMax();
    for (int i = 0; i < scale.GetGraphicCount(); ++i) addMark(text, scale.GetGraphic(i));
    return text;
}

CString pointText(const ScaleText::Point& point) {
    return point.name + (point.name.IsEmpty() ? "" : " ") + plainNumber(point.value);
}

CString rangeText(const ScaleText::Range& range) {
    return (range.name.IsEmpty() ? CString("range") : range.name) + " " + plainNumber(range.from) +
           " to " + plainNumber(range.to);
}

/// The marks, each with a comma after it.
template <class Mark>
CString list(const std::vector<Mark>& marks, CString (*text)(const Mark&)) {
    CString result;
    const int count = static_cast<int>(marks.size());
    for (int i = 0; i < std::min(count, cMaxMarksInSentence); ++i) {
        result += text(marks[static_cast<std::size_t>(i)]) + ", ";
    }
    if (count > cMaxMarksInSentence) {
        result.AppendFormat("%d more, ", count - cMaxMarksInSentence);
    }
    return result;
}

CString sentenceOf(const ScaleText& scale) {
    CString sentence = scale.name;
    if (!sentence.IsEmpty()) sentence += ": ";
    const bool isEmpty = scale.points.empty() && scale.ranges.empty();
    sentence += isEmpty ? CString("no score, ")
                        : list(scale.points, pointText) + list(scale.ranges, rangeText);
    sentence.AppendFormat("on a scale from %d to %d.", scale.min, scale.max);
    return sentence;
}

}  // namespace

std::vector<ScaleText> scaleTexts(const BarGraph& graph) {
    std::vector<ScaleText> texts;
    for (int i = 0; i < graph.GetSectionCount(); ++i) {
        if (const auto* scale = dynamic_cast<const BarScale*>(graph.GetSection(i))) {
            texts.push_back(textOf(*scale));
        }
    }
    return texts;
}

CString sentencesOf(std::span<const ScaleText> scales) {
    CString text;
    for (const ScaleText& scale : scales) {
        if (!text.IsEmpty()) text += ' ';
        text += sentenceOf(scale);
    }
    return text;
}

}  // namespace tessalink
