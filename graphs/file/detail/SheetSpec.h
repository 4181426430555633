#pragma once

#include <memory>

#include "graphs/file/DescribedGraph.h"
#include "graphs/file/detail/GraphObject.h"
#include "platform/graphics/DCScope.h"

// What the descriptions of all graphs have in common.
namespace tessalink::detail {

inline constexpr JsonBounds cScores = {-1e9, 1e9};
inline constexpr JsonBounds cSteps = {0, 1e9};
inline constexpr JsonBounds cPoints = {2, 200};  // of fonts
inline constexpr JsonWord cPenStyles[] = {{"solid", PS_SOLID},
                                          {"dash", PS_DASH},
                                          {"dot", PS_DOT},
                                          {"dash-dot", PS_DASHDOT},
                                          {"dash-dot-dot", PS_DASHDOTDOT}};

/// A graph, which stands on a sheet of its own. Its palette is that of the reader from then on.
struct SheetSpec : GraphObject {
    SheetSpec(GraphReader& in, const JsonValue& value);

    /// The sheet, with what the graph itself makes of its data where the description says nothing.
    GraphSheet Sheet(double usualWidth, double usualHeight, const CString& name,
                     const CString& sentences) const;

    std::optional<double> width;   ///< inches
    std::optional<double> height;  ///< inches
    std::optional<CString> title;
    std::optional<CString> description;
};

/// The face of profiles and circles.
inline constexpr char cUsualFace[] = "Times New Roman";

/// Any graph with a method Draw(CDC*, CRect). Frames have the context's pen: one unit of a fine
/// device would not be seen.
template <class Graph>
class DrawnGraph final : public DescribedGraph {
public:
    DrawnGraph(GraphSheet sheet, std::unique_ptr<Graph> graph)
        : DescribedGraph(std::move(sheet)), m_graph(std::move(graph)) {}

    void Draw(CDC& dc, const CRect& rect) override {
        constexpr int screenDpi = 96;
        const int width = dc.GetDeviceCaps(LOGPIXELSX) / screenDpi;
        if (width <= 1) return m_graph->Draw(&dc, rect);
        CPen pen(PS_SOLID, width, cBlack);
        const Selected selected(dc, &pen);
        m_graph->Draw(&dc, rect);
    }

private:
    std::unique_ptr<Graph> m_graph;
};

/// The step of 1, 2 or 5 times a power of ten that makes up to ten parts of the range.
int niceStep(int min, int max);

}  // namespace tessalink::detail
