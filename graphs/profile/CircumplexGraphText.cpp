#include "graphs/profile/CircumplexGraphText.h"

#include <algorithm>
#include <cmath>

#include "graphs/common/PlainLabel.h"
#include "graphs/profile/CircumplexGraph.h"

namespace tessalink {

namespace {

CString named(const CString& name, const CString& text) {
    return name.IsEmpty() ? text : name + ": " + text;
}

CString sentenceOf(const CircumplexPointText& point) {
    if (std::isnan(point.x) || std::isnan(point.y)) return named(point.name, "no score.");
    return named(point.name, "x " + plainNumber(point.x) + ", y " + plainNumber(point.y) +
                                 ", angle " + plainNumber(point.angle) + ", length " +
                                 plainNumber(point.length) + ".");
}

}  // namespace

CircumplexText circumplexText(const CircumplexGraph& graph) {
    CircumplexText text{plainLabel(graph.GetTitle()),
                        graph.GetXMin(),
                        graph.GetXMax(),
                        graph.GetYMin(),
                        graph.GetYMax(),
                        {}};
    const Planar middle = graph.GetCenter();
    text.points.reserve(static_cast<std::size_t>(graph.GetPointCount()));
    for (int i = 0; i < graph.GetPointCount(); ++i) {
        const auto& point = graph.GetPoint(i);
        const Polar place = toPolar({point.x - middle.x, point.y - middle.y});
        text.points.push_back(
            {plainLabel(point.label), point.x, point.y, place.angle, place.length});
    }
    return text;
}

CString sentencesOf(const CircumplexText& text) {
    CString sentences;
    sentences.Format("x from %d to %d, y from %d to %d.", text.xMin, text.xMax, text.yMin,
                     text.yMax);
    sentences = named(text.title, sentences);
    const auto count = static_cast<int>(text.points.size());
    for (int i = 0; i < std::min(count, cMaxPointsInText); ++i) {
        sentences += ' ';
        sentences += sentenceOf(text.points[static_cast<std::size_t>(i)]);
    }
    if (count > cMaxPointsInText) {
        sentences.AppendFormat(" %d more points.", count - cMaxPointsInText);
    }
    return sentences;
}

}  // namespace tessalink
