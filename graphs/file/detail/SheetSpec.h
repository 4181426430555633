#pragma once

#include <optional>
#include <vector>

#include "graphs/file/DescribedGraph.h"
#include "graphs/file/detail/ValueReader.h"
#include "platform/graphics/DCScope.h"

// What the descriptions of all graphs that stand on a sheet of their own have in common.
namespace tessalink::detail {

inline constexpr Bounds cSheetInches = {0.1, 200};
inline constexpr Bounds cScores = {-1e9, 1e9};
inline constexpr Bounds cSteps = {0, 1e9};
inline constexpr Bounds cPoints = {2, 200};  // of fonts
inline constexpr Word cPenStyles[] = {{"solid", PS_SOLID},
                                      {"dash", PS_DASH},
                                      {"dot", PS_DOT},
                                      {"dash-dot", PS_DASHDOT},
                                      {"dash-dot-dot", PS_DASHDOTDOT}};

struct SheetSpec {
    std::optional<CString> type;
    std::optional<double> width;
    std::optional<double> height;
    std::optional<CString> title;
    std::optional<CString> description;
    const JsonValue* palette = nullptr;
};

template <class T>
std::vector<Field<T>> withSheetFields(std::vector<Field<T>> fields) {
    const std::vector<Field<T>> sheet = {
        {.key = "type", .member = &T::type, .form = TextForm::Literal},
        {.key = "width", .member = &T::width, .bounds = cSheetInches},
        {.key = "height", .member = &T::height, .bounds = cSheetInches},
        {.key = "title", .member = &T::title, .form = TextForm::Plain},
        {.key = "description", .member = &T::description, .form = TextForm::Plain},
        {.key = "palette", .member = &T::palette}};
    fields.insert(fields.end(), sheet.begin(), sheet.end());
    return fields;
}

/// The sheet, with the text that the graph's data make when there is none in the description.
GraphSheet sheetOf(const SheetSpec& spec, double width, double height, const CString& name,
                   const CString& sentences);

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

/// The texts of a list of so many at most.
std::vector<CString> readTexts(const ValueReader& in, const JsonValue& list, std::size_t limit);

/// The step of 1, 2 or 5 times a power of ten that makes up to ten parts of the range.
int niceStep(int min, int max);

}  // namespace tessalink::detail
