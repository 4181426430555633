#include "graphs/file/detail/ScaleRows.h"

#include <algorithm>

#include "graphs/profile/ProfileChart.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

/// A size of letters: negative, without the space above.
constexpr int cEm = 1000;
constexpr int cAxisLetters = 5;  // how wide a score axis is
constexpr int cSpace = cEm / 4;  // between texts
constexpr std::size_t cMaxRows = ProfileChart::cMaxLegendRows;

std::vector<CString> linesOf(const CString& text) {
    std::vector<CString> lines;
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        lines.emplace_back(line);
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
    return lines;
}

}  // namespace

ScaleRows::ScaleRows(std::vector<Row> rows, const CString& face)
    : m_given(std::move(rows)), m_look{face, -cEm, cBlack} {
    Break(0);
}

/// Breaks texts at line feeds, and those that are wider than a room that isn't 0.
void ScaleRows::Break(int room) {
    m_rows.clear();
    m_isBroken.assign(m_given.front().size() - 1, false);
    for (std::size_t given = 0; given < m_given.size(); ++given) {
        const Row& texts = m_given[given];
        const std::size_t first = m_rows.size();
        m_rows.emplace_back(texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const bool isHeading = i == 0;
            const auto lines = linesOf(
                room > 0 && !isHeading ? m_ruler.Wrapped(texts[i], m_look, room) : texts[i]);
            for (std::size_t line = 0; line < lines.size(); ++line) {
                if (first + line >= m_rows.size()) m_rows.emplace_back(texts.size());
                m_rows[first + line][i] = lines[line];
            }
            if (given == 0 && !isHeading && lines.size() > 1) m_isBroken[i - 1] = true;
        }
    }
}

bool ScaleRows::Fit(double width, bool hasLeftAxis, bool hasRightAxis) {
    const int axis = cAxisLetters * m_ruler.Gap(m_look);
    const double left = hasLeftAxis ? axis : 0;
    const double right = hasRightAxis ? axis : 0;
    const double cell = (width - left - right) / static_cast<double>(m_isBroken.size());
    Break(0);
    if (HasRoom(cell, left, right)) return true;
    Break(std::max(1, toInt(cell) - cSpace));
    return HasRoom(cell, left, right);
}

void ScaleRows::GiveUp() {
    Break(0);
    if (m_rows.size() <= cMaxRows) return;
    for (Row& row : m_given) {
        for (CString& text : row) text.Replace("\n", " ");
    }
    Break(0);
}

bool ScaleRows::HasRoom(double cell, double left, double right) {
    if (m_rows.size() > cMaxRows) return false;
    // Of a single row, every second text stands lower.
    const std::size_t step = m_rows.size() == 1 ? 2 : 1;
    for (const Row& row : m_rows) {
        std::vector<double> halves;
        for (std::size_t i = 1; i < row.size(); ++i) {
            halves.push_back(m_ruler.Width(row[i], m_look) / 2.0);
        }
        const auto count = static_cast<double>(halves.size());
        for (std::size_t i = 0; i < halves.size(); ++i) {
            const double place = cell * (static_cast<double>(i) + 0.5);
            // A heading ends where the first cell begins.
            const double before = i > 0 || row.front().IsEmpty() ? left : -cSpace;
            if (halves[i] > place + before || halves[i] > cell * count - place + right)
                return false;
            if (i + step < halves.size() &&
                halves[i] + halves[i + step] + cSpace > cell * static_cast<double>(step)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace tessalink::detail
