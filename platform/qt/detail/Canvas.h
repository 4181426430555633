#pragma once

#include <QColor>
#include <QPainter>
#include <memory>
#include <optional>
#include <span>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink::detail {

// How PainterDevice draws, on devices of pixels or on those of lines and curves.
class Canvas {
public:
    // Leaves the painter as it is when the canvas ends. `aspect` is the horizontal resolution
    // divided by the vertical one.
    Canvas(QPainter& painter, double aspect);
    virtual ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // A canvas of the kind that the painter's device needs.
    static std::unique_ptr<Canvas> For(QPainter& painter, double aspect);

    // Shows nothing outside the region, null for no region, and outside the rectangle. Returns
    // whether anything can show.
    bool Clip(const Region* region, const RECT* rect = nullptr);

    virtual void StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) = 0;
    // Along a closed outline, with pen and brush. Returns whether it could be done in one step;
    // otherwise nothing is drawn.
    virtual bool DrawOutlined(const Paint&, std::span<const POINT>) { return false; }
    virtual void FillPolygon(const Paint& paint, std::span<const POINT> points) = 0;
    virtual void FillRectangles(const Paint& paint, std::span<const RECT> rects) = 0;
    // With pen and brush; the brush fills a unit less when there is no pen.
    virtual void DrawEllipse(const Paint& paint, const RECT& rect) = 0;
    void Fill(const RECT& rect, COLORREF color);
    void DrawText(const TextRun& run);

protected:
    QPainter& painter() { return m_painter; }

private:
    void draw_glyphs(const TextRun& run);
    void underline(const TextRun& run);

    QPainter& m_painter;
    double m_aspect;
    std::optional<Region> m_clip;  // what the painter clips now
};

QColor toQColor(COLORREF color);

// The rectangle without the row and column that shapes without a pen leave out.
RECT withoutPen(const RECT& rect);

// The rectangle along whose edges a pen runs, farther inside when the pen stays within the shape.
RECT penPath(const LOGPEN& pen, const RECT& rect);
// The same where the center of the pen runs.
QRectF penFrame(const LOGPEN& pen, const RECT& rect);

// How far a pen's center lies from the left top corner of the unit along which it draws. A pen of
// an even width has no unit in its middle, and takes more of what is left and above.
double penCentre(const LOGPEN& pen);

// A painter's state, restored at the end.
class SavedPainter {
public:
    explicit SavedPainter(QPainter& painter) : m_painter(painter) { painter.save(); }
    ~SavedPainter() { m_painter.restore(); }
    SavedPainter(const SavedPainter&) = delete;
    SavedPainter& operator=(const SavedPainter&) = delete;

private:
    QPainter& m_painter;
};

}  // namespace tessalink::detail
