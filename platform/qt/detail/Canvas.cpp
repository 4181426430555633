#include "platform/qt/detail/Canvas.h"

#include <QGlyphRun>
#include <QPagedPaintDevice>
#include <QPaintEngine>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/qt/detail/FineCanvas.h"
#include "platform/qt/detail/PixelCanvas.h"
#include "platform/qt/detail/QtFonts.h"
#include "platform/qt/detail/QtShapes.h"
#include "platform/qt/detail/VectorCanvas.h"

namespace tessalink::detail {

namespace {

// Lines under and through text, in units of an em of 2048: from the base line downwards to their
// upper edge, and how thick they are.
struct TextLine {
    int place;
    int thickness;
};
constexpr TextLine cUnderline = {217, 150};
constexpr TextLine cStrikeout = {-530, 102};

bool isVector(QPainter& painter) {
    if (dynamic_cast<QPagedPaintDevice*>(painter.device()) != nullptr) return true;
    const QPaintEngine* const engine = painter.paintEngine();
    constexpr QPaintEngine::Type types[] = {QPaintEngine::Pdf, QPaintEngine::SVG,
                                            QPaintEngine::Picture};
    return engine != nullptr &&
           std::find(std::begin(types), std::end(types), engine->type()) != std::end(types);
}

}  // namespace

QColor toQColor(COLORREF color) {
    return {GetRValue(color), GetGValue(color), GetBValue(color)};
}

RECT withoutPen(const RECT& rect) {
    return {rect.left, rect.top, wrapSub(rect.right, 1), wrapSub(rect.bottom, 1)};
}

RECT penPath(const LOGPEN& pen, const RECT& rect) {
    const int width = pen.lopnStyle == PS_INSIDEFRAME ? std::max(pen.lopnWidth.x, 1) : 1;
    const int left = wrapAdd(rect.left, width / 2);
    const int top = wrapAdd(rect.top, width / 2);
    const int farInset = (width - 1) / 2 + 1;
    return {left, top, std::max(left, wrapSub(rect.right, farInset)),
            std::max(top, wrapSub(rect.bottom, farInset))};
}

QRectF penFrame(const LOGPEN& pen, const RECT& rect) {
    const auto& [left, top, right, bottom] = penPath(pen, rect);
    const double center = penCentre(pen);
    return {QPointF(left + center, top + center), QPointF(right + center, bottom + center)};
}

double penCentre(const LOGPEN& pen) {
    return pen.lopnWidth.x > 1 && pen.lopnWidth.x % 2 == 0 ? 0 : 0.5;
}

std::unique_ptr<Canvas> Canvas::For(QPainter& painter, double aspect) {
    if (isVector(painter)) return std::make_unique<VectorCanvas>(painter, aspect);
    // A widget may be painted on something else, a picture of it for instance.
    const bool isWidget = painter.device()->devType() == QInternal::Widget;
    const QPaintEngine* const engine = painter.paintEngine();
    const QPaintDevice* const screen = engine != nullptr ? engine->paintDevice() : nullptr;
    if (isWidget && screen != nullptr && screen->devicePixelRatioF() > 1) {
        return std::make_unique<FineCanvas>(painter, aspect);
    }
    return std::make_unique<PixelCanvas>(painter, aspect);
}

// Saved twice: what lies between is drawn with the present clip.
Canvas::Canvas(QPainter& painter, double aspect) : m_painter(painter), m_aspect(aspect) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.setOpacity(1);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setBrushOrigin(0, 0);
    painter.save();
}

Canvas::~Canvas() {
    m_painter.restore();
    m_painter.restore();
}

bool Canvas::Clip(const Region* region, const RECT* rect) {
    std::optional<Region> wanted;
    if (region != nullptr) wanted = *region;
    if (rect != nullptr) wanted = wanted ? wanted->And(Region(*rect)) : Region(*rect);
    if (wanted != m_clip) {
        m_painter.restore();
        m_painter.save();
        if (wanted && !wanted->IsEmpty()) {
            m_painter.setClipRegion(toQRegion(*wanted), Qt::IntersectClip);
        }
        m_clip = std::move(wanted);
    }
    return !m_clip || !m_clip->IsEmpty();
}

void Canvas::DrawText(const TextRun& run) {
    if (!Clip(run.clip, run.isClipped ? &run.clipRect : nullptr)) return;
    if (run.hasBackground) Fill(run.background, run.backgroundColor);
    draw_glyphs(run);
    if (run.font->lfUnderline != 0 || run.font->lfStrikeOut != 0) underline(run);
}

void Canvas::Fill(const RECT& rect, COLORREF color) {
    Paint paint;
    paint.brush = {BS_SOLID, color, 0};
    FillRectangles(paint, {&rect, 1});
}

void Canvas::draw_glyphs(const TextRun& run) {
    const double em = run.sizedFont->Em();
    const QtGlyphs& look = qtGlyphs(*run.font, em);
    // The em is in vertical units. Where that makes no difference, the painter need not save
    // itself.
    std::optional<SavedPainter> saved;
    QPointF origin(run.origin.x, run.origin.y);
    if (m_aspect != 1) {
        saved.emplace(m_painter);
        m_painter.translate(origin);
        m_painter.scale(m_aspect, 1);
        origin = QPointF();
    }
    m_painter.setPen(toQColor(run.color));
    for (std::size_t font = 0; font < look.fonts.size(); ++font) {
        QList<quint32> indexes;
        QList<QPointF> places;
        for (std::size_t i = 0; i < run.text.size(); ++i) {
            const std::size_t code = static_cast<unsigned char>(run.text[i]);
            if (isControlCode(code) || look.glyphs[code].font != font) continue;
            indexes.append(look.glyphs[code].index);
            places.append(QPointF(run.positions[i] / m_aspect, 0));
        }
        if (indexes.isEmpty()) continue;
        QGlyphRun glyphs;
        glyphs.setRawFont(look.fonts[font]);
        glyphs.setGlyphIndexes(indexes);
        glyphs.setPositions(places);
        m_painter.drawGlyphRun(origin, glyphs);
    }
}

void Canvas::underline(const TextRun& run) {
    const double unit = run.sizedFont->Em() / FaceMetrics::cEm;
    const auto draw = [&](const TextLine& line) {
        const int top = wrapAdd(run.origin.y, toInt(std::round(line.place * unit)));
        const int thickness = std::max(1, toInt(std::round(line.thickness * unit)));
        const RECT rect = {run.origin.x, top, wrapAdd(run.origin.x, run.positions.back()),
                           wrapAdd(top, thickness)};
        Fill(rect, run.color);
    };
    if (run.font->lfUnderline != 0) draw(cUnderline);
    if (run.font->lfStrikeOut != 0) draw(cStrikeout);
}

}  // namespace tessalink::detail
