#include "platform/qt/PainterDevice.h"

#include <QPainter>
#include <array>

#include "platform/qt/detail/Canvas.h"
#include "platform/qt/detail/DeviceCapsOf.h"
#include "platform/qt/detail/PixelLines.h"
#include "platform/qt/detail/QtFonts.h"

namespace tessalink {

namespace {

bool hasPen(const Paint& paint) {
    return paint.pen.lopnStyle != PS_NULL;
}

bool hasBrush(const Paint& paint) {
    return paint.brush.lbStyle != BS_NULL;
}

bool isThin(const LOGPEN& pen) {
    return pen.lopnWidth.x <= 1;
}

class ToolkitMetrics final : public TextMetricsSource {
public:
    const FaceMetrics& MetricsOf(const LOGFONTA& font) const override {
        return detail::qtMetrics(font);
    }
};

// A rectangle with a thin outline is filled inside of it; a wide one is drawn over the edges of the
// filling.
RECT fillingOf(const Paint& paint, const RECT& rect) {
    if (!hasPen(paint)) return detail::withoutPen(rect);
    if (!isThin(paint.pen)) return detail::penPath(paint.pen, rect);
    return {wrapAdd(rect.left, 1), wrapAdd(rect.top, 1), wrapSub(rect.right, 1),
            wrapSub(rect.bottom, 1)};
}

// Whether an outline has no inside and no way around: one unit, or a line of solid ones.
bool isBar(const LOGPEN& pen, const RECT& rect) {
    const bool isFlat = wrapSub(rect.right, rect.left) == 1 || wrapSub(rect.bottom, rect.top) == 1;
    const bool isUnit = wrapSub(rect.right, rect.left) == 1 && wrapSub(rect.bottom, rect.top) == 1;
    return isThin(pen) && (isUnit || (isFlat && detail::dashesOf(pen).empty()));
}

std::array<POINT, 4> outlineOf(const Paint& paint, const RECT& rect) {
    const auto& [left, top, right, bottom] = detail::penPath(paint.pen, rect);
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

}  // namespace

const TextMetricsSource& toolkitTextMetrics() {
    static const ToolkitMetrics metrics;
    return metrics;
}

PainterDevice::PainterDevice(QPainter& painter)
    : m_caps(detail::capsOf(*painter.device())),
      m_canvas(detail::Canvas::For(painter, static_cast<double>(m_caps.dpiX) / m_caps.dpiY)) {}

PainterDevice::~PainterDevice() = default;

const TextMetricsSource& PainterDevice::TextMetrics() const {
    return toolkitTextMetrics();
}

void PainterDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    const std::array<POINT, 2> ends = {from, to};
    DrawPolyline(paint, ends);
}

void PainterDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    if (points.empty() || !hasPen(paint) || !m_canvas->Clip(paint.clip)) return;
    m_canvas->StrokeLines(paint, points, false);
}

void PainterDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    if (points.empty() || !m_canvas->Clip(paint.clip)) return;
    if (hasPen(paint) && m_canvas->DrawOutlined(paint, points)) return;
    if (hasBrush(paint)) m_canvas->FillPolygon(paint, points);
    if (hasPen(paint)) m_canvas->StrokeLines(paint, points, true);
}

void PainterDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    if (!m_canvas->Clip(paint.clip)) return;
    const bool isFramed = hasPen(paint) && !isBar(paint.pen, rect);
    if (isFramed && m_canvas->DrawOutlined(paint, outlineOf(paint, rect))) return;
    const RECT filling = fillingOf(paint, rect);
    if (hasBrush(paint) && !CRect(filling).IsRectEmpty()) {
        m_canvas->FillRectangles(paint, {&filling, 1});
    }
    if (isFramed) return m_canvas->StrokeLines(paint, outlineOf(paint, rect), true);
    if (hasPen(paint)) m_canvas->Fill(rect, paint.pen.lopnColor);
}

void PainterDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    if (m_canvas->Clip(paint.clip)) m_canvas->DrawEllipse(paint, rect);
}

void PainterDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    if (m_canvas->Clip(paint.clip)) m_canvas->FillRectangles(paint, {&rect, 1});
}

void PainterDevice::FillRegion(const Paint& paint, const Region& region) {
    if (m_canvas->Clip(paint.clip)) m_canvas->FillRectangles(paint, region.Rects());
}

void PainterDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    if (!m_canvas->Clip(paint.clip)) return;
    m_canvas->Fill({point.x, point.y, wrapAdd(point.x, 1), wrapAdd(point.y, 1)}, color);
}

void PainterDevice::DrawText(const TextRun& run) {
    m_canvas->DrawText(run);
}

}  // namespace tessalink
