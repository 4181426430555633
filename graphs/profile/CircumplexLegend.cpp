// Legends of circumplex graphs.
#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>

#include "graphs/common/DeviceUnits.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/detail/ChartLabel.h"

using namespace tessalink;

namespace {

/// Beside symbols, between columns and between rows, in inches.
constexpr double cLegendGap = 0.08;
constexpr double cColumnGap = 0.2;
constexpr double cRowGap = 2 / cPointsPerInch;
/// The largest symbol, by the size of its text: none reaches that of the next row.
constexpr double cSymbolPart = 0.75;
constexpr char cEllipsis[] = "\x85";

bool isInLegend(const CircumplexGraph::point_info& point) {
    return (point.legend & CircumplexGraph::NameInLegend) != 0 && !point.label.IsEmpty();
}

}  // namespace

/// The entries, in columns of equal width that are filled row by row.
struct CircumplexGraph::Legend {
    struct Entry {
        const point_info* point;
        LabelLines text;
    };
    std::vector<Entry> entries;
    int symbolWidth = 0;  ///< of a symbol and what is left free beside it
    int cellWidth = 0;
    int columns = 1;
    int lineHeight = 0;
    int rowGap = 0;
    int height = 0;

    int RowHeight(std::size_t first) const {
        std::size_t lines = 1;
        const auto end = std::min(entries.size(), first + static_cast<std::size_t>(columns));
        for (std::size_t i = first; i < end; ++i) {
            lines = std::max(lines, entries[i].text.lines.size());
        }
        return static_cast<int>(lines) * lineHeight + rowGap;
    }
    /// Arranges the entries and leaves out those for which there is no height.
    void Arrange(int width, int gap, int maxHeight) {
        int widest = 0;
        for (const Entry& entry : entries) widest = std::max(widest, entry.text.width);
        cellWidth = symbolWidth + widest + gap;
        columns = std::clamp((width + gap) / std::max(1, cellWidth), 1,
                             std::max(1, static_cast<int>(entries.size())));
        std::size_t first = 0;
        for (; first < entries.size(); first += static_cast<std::size_t>(columns)) {
            const int row = RowHeight(first);
            if (height + row > maxHeight) break;
            height += row;
        }
        if (first >= entries.size()) return;
        entries.resize(first);
        if (!entries.empty()) entries.back() = {nullptr, {{cEllipsis}, 0}};
    }
};

CircumplexGraph::Legend CircumplexGraph::legend_of(CDC& dc) const {
    Legend legend;
    if (m_legendPlacement != LegendRight && m_legendPlacement != LegendBelow) return legend;
    const bool isBelow = m_legendPlacement == LegendBelow;
    LabelFonts fonts(dc, font_height(m_legendTextSize), GetTypeface());
    const int width = isBelow ? sheet_width() : log_in_to_dev_h(m_legendWidth);
    const int gap = log_in_to_dev_h(cLegendGap);
    legend.lineHeight = fonts.Height();
    legend.rowGap = log_in_to_dev_v(cRowGap);
    legend.symbolWidth = log_in_to_dev_h(design().maxSymbolSize) + 2 * gap;
    const int room = std::max(1, width - legend.symbolWidth);
    const int maxHeight =
        isBelow ? toInt(rect().Height() * cMaxLegendPart) : rect().bottom - plot().top;
    std::set<std::tuple<std::string_view, COLORREF, int>> seen;
    for (const point_info& point : m_points) {
        if (!isInLegend(point)) continue;
        if (!seen.emplace(point.label.View(), point.color, point.symbol).second) continue;
        legend.entries.push_back({&point, wrapLabel(fonts, point.label, room)});
        if (legend.entries.size() > cMaxLegendEntries) break;
    }
    legend.Arrange(width, isBelow ? log_in_to_dev_h(cColumnGap) : 0, maxHeight);
    return legend;
}

void CircumplexGraph::reserve_legend(CDC* dc, double& plotHeight) {
    if (m_legendPlacement != LegendBelow) return;
    m_legendHeight = legend_of(*dc).height / vert_pixels_per_inch();
    adjust_plot_height_for_legend(plotHeight);
}

void CircumplexGraph::adjust_plot_height_for_legend(double& plotHeight) {
    plotHeight -= m_legendHeight;
}

/// What lies right of the sheet, or below the plot and its padding; empty without a legend.
CRect CircumplexGraph::legend_place() const {
    CRect place = rect();
    if (m_legendPlacement == LegendRight) {
        place.left += sheet_width();
        place.top = plot().top;
    } else if (m_legendPlacement == LegendBelow && m_legendHeight > 0) {
        place.top = plot().bottom + log_in_to_dev_v(design().bottomPadding);
    } else {
        place.SetRectEmpty();
    }
    return place;
}

void CircumplexGraph::draw_legend(CDC* dc) {
    const Legend legend = legend_of(*dc);
    if (legend.entries.empty()) return;
    const bool isBelow = m_legendPlacement == LegendBelow;
    const SymbolSizes sizes = symbol_sizes(cSymbolPart * m_legendTextSize / cPointsPerInch);
    LabelFonts fonts(*dc, legend.lineHeight, GetTypeface());
    const int free = sheet_width() - legend.columns * legend.cellWidth;
    const CRect place = legend_place();
    const int left = place.left + (isBelow ? std::max(0, free / 2) : 0);
    int y = place.top;
    for (std::size_t i = 0; i < legend.entries.size(); ++i) {
        const int column = static_cast<int>(i) % legend.columns;
        if (column == 0 && i > 0)
            y += legend.RowHeight(i - static_cast<std::size_t>(legend.columns));
        const int x = left + column * legend.cellWidth;
        const Legend::Entry& entry = legend.entries[i];
        if (entry.point != nullptr) {
            draw_point_symbol(dc, {x + legend.symbolWidth / 2, y + legend.lineHeight / 2}, sizes,
                              *entry.point);
        }
        fonts.Print(x + legend.symbolWidth, y, entry.text);
    }
}
