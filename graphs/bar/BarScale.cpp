#include "graphs/bar/BarScale.h"

#include <algorithm>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/GraphFont.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::middleTop;
using tessalink::Selected;
using tessalink::toDevice;

namespace {

/// One and a half line heights, rounded up.
int automaticHeight(int fontSize) {
    return halved(3 * fontSize + 1);
}

}  // namespace

BarScale::BarScale(int scaleMin, int scaleMax, const char* leftDesc, const char* rightDesc,
                   int leftTextWidth, int rightTextWidth, int majTick, int minTick, int tickStart,
                   int tickEnd, int leftMargin, int rightMargin, int topMargin, int bottomMargin,
                   int fontSize, int barHeight, int minPlotVal, int maxPlotVal)
    : BarSection(leftMargin, rightMargin, topMargin, bottomMargin),
      m_scaleMin(scaleMin),
      m_scaleMax(scaleMax),
      m_leftTextWidth(leftTextWidth),
      m_rightTextWidth(rightTextWidth),
      m_majTick(majTick),
      m_minTick(minTick),
      m_tickStart(std::max(tickStart, minPlotVal)),
      m_tickEnd(std::min(tickEnd, maxPlotVal)),
      m_fontSize(fontSize),
      m_barHeight(barHeight != 0 ? barHeight : automaticHeight(fontSize)),
      m_minPlotVal(std::max(minPlotVal, scaleMin)),
      m_maxPlotVal(std::min(maxPlotVal, scaleMax)) {
    SetLeftDesc(leftDesc);
    SetRightDesc(rightDesc);
}

BarScale::~BarScale() {
    BarScale::Clear();
}

void BarScale::SetLeftDesc(const char* text) {
    m_leftDesc = text;
    m_leftDescLines = KOVGraphUtilities::CountLines(text);
}

void BarScale::SetRightDesc(const char* text) {
    m_rightDesc = text;
    m_rightDescLines = KOVGraphUtilities::CountLines(text);
}

int BarScale::GetDesignHeight() const {
    const int lines = std::max(m_leftDescLines, m_rightDescLines);
    return GetTopMargin() + GetBottomMargin() + std::max(m_barHeight, m_fontSize * lines);
}

int BarScale::PixX(double value, const CRect& box) const {
    if (value < m_minPlotVal) {
        value = m_minPlotVal;
    } else if (value > m_maxPlotVal) {
        value = m_maxPlotVal;
    }
    return BarScale::PixXUnrestricted(value, box);
}

int BarScale::PixXUnrestricted(double value, const CRect& box) const {
    const double unit = static_cast<double>(box.Width()) / (double{1} * m_scaleMax - m_scaleMin);
    return box.left + toDevice((value - m_scaleMin) * unit);
}

int BarScale::AddGraphic(BarGraphic* graphic) {
    if (graphic == nullptr) return -1;
    constexpr std::size_t usual = 16;
    if (m_graphics.empty()) m_graphics.reserve(usual);
    graphic->SetContainer(this);
    m_graphics.emplace_back(graphic);
    return GetGraphicCount() - 1;
}

void BarScale::Clear() {
    for (auto& graphic : m_graphics) graphic.reset();
    m_graphics.clear();
}

void BarScale::RemoveGraphicAt(int index) {
    m_graphics.erase(m_graphics.begin() + static_cast<std::ptrdiff_t>(checked(index)));
}

BarGraphic* BarScale::GetGraphic(int index) const {
    return m_graphics[checked(index)].get();
}

std::size_t BarScale::checked(int index) const {
    if (index < 0 || index >= GetGraphicCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void BarScale::Draw(CDC* dc, double xScale, double yScale, const CRect& rect) {
    if (dc == nullptr) return;
    CFont font;
    const tessalink::RestoredState restored(*dc);
    const int left = toDevice((GetLeftMargin() + m_leftTextWidth) * xScale);
    const int right = toDevice((GetRightMargin() + m_rightTextWidth) * xScale);
    const int height = toDevice(m_barHeight * yScale);
    const int top = middleTop(rect, toDevice(GetTopMargin() * yScale),
                              toDevice(GetBottomMargin() * yScale), height);
    const CRect box(rect.left + left, top, rect.right - right, top + height);
    dc->SetTextColor(m_descColor);
    draw_descriptions(*dc, font, box, yScale, rect);
    draw_bar(dc, xScale, box);
    draw_graphics(dc, xScale, yScale, box);
}

void BarScale::draw_descriptions(CDC& dc, CFont& font, const CRect& box, double yScale,
                                 const CRect& rect) {
    const bool hasLeft = m_leftTextWidth != 0 && m_leftDescLines != 0;
    const bool hasRight = m_rightTextWidth != 0 && m_rightDescLines != 0;
    if (!hasLeft && !hasRight) return;
    const int lineHeight = toDevice(m_fontSize * yScale);
    create_font(lineHeight, font);
    dc.SelectObject(&font);
    const int gap = dc.GetTextExtent("M", 1).cx;
    const int topMargin = toDevice(GetTopMargin() * yScale);
    const int bottomMargin = toDevice(GetBottomMargin() * yScale);
    const auto top = [&](int lines) {
        return middleTop(rect, topMargin, bottomMargin, lines * lineHeight);
    };
    if (hasLeft) {
        dc.SetTextAlign(TA_RIGHT | TA_TOP);
        print_multi_lines(&dc, box.left - gap, top(m_leftDescLines), m_leftDesc);
    }
    if (hasRight) {
        dc.SetTextAlign(TA_LEFT | TA_TOP);
        print_multi_lines(&dc, box.right + gap, top(m_rightDescLines), m_rightDesc);
    }
}

void BarScale::calc_line_sizes(double xScale) {
    const int width = std::max(toDevice(m_lineSize * xScale), 1);
    m_boxLineWidth = m_majTickLineWidth = width;
    m_minTickLineWidth = std::max(halved(width + 1), 1);
}

void BarScale::create_font(int height, CFont& font) {
    tessalink::createBarFont(font, height, m_typeface);
}

void BarScale::draw_bar(CDC* dc, double xScale, const CRect& box) {
    calc_line_sizes(xScale);
    CPen pen(PS_SOLID, m_boxLineWidth, m_boxColor);
    const Selected selected(*dc, &pen);
    dc->Rectangle(&box);
    draw_ticks(*dc, m_minTick, m_minTickLineWidth, m_minTickColor, box);
    draw_ticks(*dc, m_majTick, m_majTickLineWidth, m_majTickColor, box);
}

void BarScale::draw_ticks(CDC& dc, int step, int width, COLORREF color, const CRect& box) {
    if (step <= 0) return;
    CPen pen(PS_SOLID, width, color);
    const Selected selected(dc, &pen);
    for (std::int64_t tick = m_tickStart; tick <= m_tickEnd; tick += step) {
        const int x = PixX(static_cast<double>(tick), box);
        dc.MoveTo(x, box.top);
        dc.LineTo(x, box.bottom);
    }
}

void BarScale::draw_graphics(CDC* dc, double xScale, double yScale, const CRect& box) {
    for (int i = 0; i < GetGraphicCount(); ++i) GetGraphic(i)->Draw(dc, xScale, yScale, box);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts override this signature
void BarScale::print_multi_lines(CDC* dc, int x, int y, CString text) {
    KOVGraphUtilities::PrintMultipleLines(dc, x, y, text);
}
