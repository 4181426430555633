#include "graphs/bar/BarPointGraphic.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphs/bar/BarScale.h"
#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

namespace {

constexpr int cShapes = 4;
/// Half the width of an equilateral triangle whose height is 1.5.
constexpr double cHalfBase = 0.8660254;

/// Triangles and diamonds are 1.2 times the size of circles, so that they look as heavy.
int enlarged(int radius) {
    return radius * 12 / 10;
}

CBrush* nullBrush() {
    return static_cast<CBrush*>(CGdiObject::FromStock(NULL_BRUSH));
}

CRect around(int x, int y, int rx, int ry) {
    CRect rect(x, y, x, y);
    rect.InflateRect(rx, ry);
    return rect;
}

void drawCircle(CDC& dc, int x, int y, int rx, int ry) {
    dc.Ellipse(around(x, y, rx, ry));
}

void drawSquare(CDC& dc, int x, int y, int rx, int ry) {
    dc.Rectangle(around(x, y, rx, ry));
}

void drawTriangle(CDC& dc, int x, int y, int rx, int ry) {
    const int height = enlarged(ry);
    const int half = toDevice(enlarged(rx) * cHalfBase);
    const int base = y + height / 2;
    const std::array<POINT, 3> corners = {{{x, y - height}, {x + half, base}, {x - half, base}}};
    dc.Polygon(corners.data(), static_cast<int>(corners.size()));
}

void drawDiamond(CDC& dc, int x, int y, int rx, int ry) {
    const int height = enlarged(ry);
    const int width = enlarged(rx);
    const std::array<POINT, 4> corners = {
        {{x, y - height}, {x + width, y}, {x, y + height}, {x - width, y}}};
    dc.Polygon(corners.data(), static_cast<int>(corners.size()));
}

constexpr std::array<void (*)(CDC&, int, int, int, int), cShapes> cDrawShape = {
    drawCircle, drawSquare, drawTriangle, drawDiamond};

}  // namespace

void BarPointGraphic::Draw(CDC* dc, double xScale, double yScale, const CRect& box) {
    const BarScale* const scale = GetContainer();
    if (dc == nullptr || scale == nullptr || std::isnan(m_value)) return;
    // The sizes round up: one is added here, and a half when they become device units.
    const int size = std::min(m_size, scale->GetBarHeight());
    const int rx = halved(toDevice(size * xScale + 1));
    const int ry = halved(toDevice(size * yScale + 1));
    const double value =
        std::min<double>(std::max<double>(m_value, scale->GetMinPlotVal()), scale->GetMaxPlotVal());
    draw_symbol(dc, scale->PixX(value, box), box.top + halved(box.Height()), xScale, rx, ry);
}

void BarPointGraphic::draw_symbol(CDC* dc, int x, int y, double xScale, int rx, int ry) {
    const bool hollow = m_symbol >= cShapes;
    const int shape = hollow ? m_symbol - cShapes : m_symbol;
    if (shape < 0 || shape >= cShapes) return;
    CBrush solid(m_color);
    const int width = toDevice(m_lineSize * xScale);
    CPen pen(PS_SOLID, m_lineSize == 0 || width == 0 ? 1 : width, m_color);
    const Selected brush(*dc, hollow ? nullBrush() : &solid);
    const Selected outline(*dc, &pen);
    cDrawShape[static_cast<std::size_t>(shape)](*dc, x, y, rx, ry);
}
