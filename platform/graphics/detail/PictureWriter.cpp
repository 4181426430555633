#include "platform/graphics/detail/PictureWriter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "platform/graphics/GdiObjects.h"

namespace tessalink::detail {

namespace {

// What the text of a picture has room for at first.
constexpr std::size_t cFirstRoom = std::size_t{64} << 10;

// Where lines under and through a text lie above its base line, and their thickness, in parts of
// the em.
constexpr double cUnderlinePlace = -0.106;
constexpr double cStrikeOutPlace = 0.259;
constexpr double cTextLineThickness = 0.06;

struct NamedFace {
    std::string_view name;
    FaceKind kind;
};
constexpr std::array<NamedFace, 5> cNamedFaces = {{{"Arial", FaceKind::Arial},
                                                   {"Helvetica", FaceKind::Arial},
                                                   {"Times New Roman", FaceKind::Times},
                                                   {"Times", FaceKind::Times},
                                                   {"Courier New", FaceKind::Courier}}};

const NamedFace* namedFace(const LOGFONTA& font) {
    const std::string_view name = font.lfFaceName;
    const auto* const found =
        std::find_if(cNamedFaces.begin(), cNamedFaces.end(),
                     [&](const NamedFace& face) { return face.name == name; });
    return found != cNamedFaces.end() ? found : nullptr;
}

bool isVisible(const LOGPEN& pen) {
    return pen.lopnStyle != PS_NULL;
}

int widthOf(const LOGPEN& pen) {
    return std::max<int>(pen.lopnWidth.x, 1);
}

std::int64_t penOffset(const LOGPEN& pen) {
    return isVisible(pen) ? widthOf(pen) % 2 : 0;
}

HalfPoint place(const POINT& point, std::int64_t offset) {
    return {2 * std::int64_t{point.x} + offset, 2 * std::int64_t{point.y} + offset};
}

int sign(LONG from, LONG to) {
    return from < to ? 1 : from > to ? -1 : 0;
}

// What moves the ends of a thin line along an axis so that it covers its first unit and not its
// last.
HalfPoint endShift(const POINT& from, const POINT& to) {
    if (from.x != to.x && from.y != to.y) return {0, 0};
    return {-sign(from.x, to.x), -sign(from.y, to.y)};
}

bool isWithin(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

Look fillOf(const Paint& paint) {
    const LOGBRUSH& brush = paint.brush;
    constexpr std::uintptr_t lastHatch = HS_DIAGCROSS;
    Look look;
    look.isFilled = brush.lbStyle != BS_NULL;
    look.isHatched = brush.lbStyle == BS_HATCHED;
    look.isOpaque = paint.opaque;
    look.hatch = static_cast<int>(std::min<std::uintptr_t>(brush.lbHatch, lastHatch));
    look.color = brush.lbColor;
    look.background = paint.background;
    return look;
}

void addPen(Look& look, const LOGPEN& pen) {
    look.isStroked = isVisible(pen);
    look.width = widthOf(pen);
    const bool isDashed =
        pen.lopnStyle >= PS_DASH && pen.lopnStyle <= PS_DASHDOTDOT && look.width == 1;
    look.dash = isDashed ? pen.lopnStyle : PS_SOLID;
    look.stroke = pen.lopnColor;
}

Look lookOf(const Paint& paint) {
    Look look = fillOf(paint);
    addPen(look, paint.pen);
    return look;
}

}  // namespace

FaceKind faceKindOf(const LOGFONTA& font) {
    if (isSymbolFont(font)) return FaceKind::Symbol;
    const NamedFace* const named = namedFace(font);
    if (named != nullptr) return named->kind;
    return (font.lfPitchAndFamily & cFamilyMask) == FF_ROMAN ? FaceKind::Times : FaceKind::Arial;
}

bool isKnownFace(const LOGFONTA& font) {
    return isSymbolFont(font) || font.lfFaceName[0] == '\0' || namedFace(font) != nullptr;
}

std::string_view dashesOf(UINT style) {
    constexpr std::array<std::string_view, 4> dashes = {"18 6", "3 3", "9 6 3 6", "9 3 3 3 3 3"};
    return dashes[style - PS_DASH];
}

PictureWriter::PictureWriter(const PictureSheet& sheet) : m_text(cFirstRoom) {
    const int width = std::max(sheet.width, 0);
    const int height = std::max(sheet.height, 0);
    const int dpi = std::max(sheet.dpi, 1);
    const auto millimeters = [dpi](int units) { return toInt(units * cMillimetersPerInch / dpi); };
    m_caps = {dpi, dpi, width, height, millimeters(width), millimeters(height), false};
}

std::string PictureWriter::Finish() {
    if (!std::exchange(m_isOpen, false)) return {};
    if (m_clip) CloseClip();
    End();
    return m_text.Size() <= cMaxPicture ? m_text.Take() : std::string();
}

bool PictureWriter::Begin(const Region* clip) {
    if (!m_isOpen || m_text.Size() > cMaxPicture || (clip != nullptr && clip->IsEmpty())) {
        return false;
    }
    if (clip == nullptr ? !m_clip : m_clip == *clip) return true;
    if (m_clip) CloseClip();
    m_clip = clip != nullptr ? std::optional(*clip) : std::nullopt;
    if (m_clip) OpenClip(*m_clip);
    return true;
}

void PictureWriter::Draw(const Paint& paint, const Outline& outline, const Look& look) {
    if (look.dash == PS_SOLID || !look.isStroked || !paint.opaque) return Shape(outline, look);
    Look ground = look;
    ground.dash = PS_SOLID;
    ground.stroke = paint.background;
    Shape(outline, ground);
    Look dashes = look;
    dashes.isFilled = false;
    Shape(outline, dashes);
}

void PictureWriter::Polyline(const Paint& paint, std::span<const POINT> points) {
    if (!isVisible(paint.pen) || points.size() < 2 || !Begin(paint.clip)) return;
    const std::size_t last = points.size() - 1;
    Look look;
    addPen(look, paint.pen);
    Outline outline;
    outline.kind = Outline::Kind::Polyline;
    outline.points = points;
    outline.offset = penOffset(paint.pen);
    outline.roundEnds = look.width > 1;
    if (!outline.roundEnds) {
        outline.first = endShift(points[0], points[1]);
        outline.last = endShift(points[last - 1], points[last]);
    }
    Draw(paint, outline, look);
}

void PictureWriter::Polygon(const Paint& paint, std::span<const POINT> points) {
    const bool shows = isVisible(paint.pen) || paint.brush.lbStyle != BS_NULL;
    if (!shows || points.size() < 2 || !Begin(paint.clip)) return;
    const Look look = lookOf(paint);
    Outline outline;
    outline.kind = Outline::Kind::Polygon;
    outline.points = points;
    outline.offset = penOffset(paint.pen);
    outline.evenOdd = look.isFilled && paint.fillMode == ALTERNATE;
    Draw(paint, outline, look);
}

void PictureWriter::Box(Outline::Kind kind, const Paint& paint, const RECT& rect) {
    const LOGPEN& pen = paint.pen;
    const bool hasPen = isVisible(pen);
    if ((!hasPen && paint.brush.lbStyle == BS_NULL) || !Begin(paint.clip)) return;
    const int width = hasPen ? widthOf(pen) : 0;
    const bool inside = pen.lopnStyle == PS_INSIDEFRAME && width > 1;
    const std::int64_t less = inside ? width : 1;
    Outline outline;
    outline.kind = kind;
    outline.corner = place({rect.left, rect.top}, inside ? width : penOffset(pen));
    outline.size = {std::int64_t{rect.right} - rect.left - less,
                    std::int64_t{rect.bottom} - rect.top - less};
    if (outline.size.x > 0 && outline.size.y > 0) return Draw(paint, outline, lookOf(paint));
    // So thin that there is only the pen.
    if (!hasPen) return;
    const int reach = inside ? 0 : width / 2;
    const int more = inside ? 0 : width - 1;
    Solid(std::int64_t{rect.left} - reach, std::int64_t{rect.top} - reach,
          std::int64_t{rect.right} - rect.left + more, std::int64_t{rect.bottom} - rect.top + more,
          pen.lopnColor);
}

void PictureWriter::Solid(std::int64_t left, std::int64_t top, std::int64_t width,
                          std::int64_t height, COLORREF color) {
    Outline outline;
    outline.corner = {2 * left, 2 * top};
    outline.size = {width, height};
    Look look;
    look.isFilled = true;
    look.color = color;
    Shape(outline, look);
}

void PictureWriter::Fill(const Paint& paint, const RECT& rect) {
    if (paint.brush.lbStyle == BS_NULL || !Begin(paint.clip)) return;
    Outline outline;
    outline.corner = place({rect.left, rect.top}, 0);
    outline.size = {std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top};
    Shape(outline, fillOf(paint));
}

void PictureWriter::Fill(const Paint& paint, const Region& region) {
    const bool shows = paint.brush.lbStyle != BS_NULL && !region.IsEmpty();
    if (!shows || !Begin(paint.clip)) return;
    Outline outline;
    outline.kind = Outline::Kind::Rects;
    outline.region = &region;
    Shape(outline, fillOf(paint));
}

void PictureWriter::Pixel(const Region* clip, const POINT& point, COLORREF color) {
    if (Begin(clip)) Solid(point.x, point.y, 1, 1, color);
}

void PictureWriter::TextLine(const TextRun& run, double place) {
    const double em = run.sizedFont->Em();
    const int thickness = std::max(1, toInt(em * cTextLineThickness + 0.5));
    const int above = toInt(em * place);
    Solid(run.origin.x, std::int64_t{run.origin.y} - above, std::max(0, run.positions.back()),
          thickness, run.color);
}

void PictureWriter::Run(const TextRun& run) {
    CRect cell(run.origin.x, run.origin.y - run.sizedFont->Ascent(),
               run.origin.x + run.positions.back(), run.origin.y + run.sizedFont->Descent());
    cell.NormalizeRect();  // advances may be negative
    const bool isCut = run.isClipped && !isWithin(cell, run.clipRect);
    const Region* clip = run.clip;
    Region cut;
    if (isCut) {
        cut = Region(run.clipRect);
        if (clip != nullptr) cut = clip->And(cut);
        clip = &cut;
    }
    if (!Begin(clip)) return;
    if (run.hasBackground && !CRect(run.background).IsRectEmpty()) {
        const RECT& ground = run.background;
        Solid(ground.left, ground.top, std::int64_t{ground.right} - ground.left,
              std::int64_t{ground.bottom} - ground.top, run.backgroundColor);
    }
    Characters(run);
    if (run.font->lfUnderline != 0) TextLine(run, cUnderlinePlace);
    if (run.font->lfStrikeOut != 0) TextLine(run, cStrikeOutPlace);
}

}  // namespace tessalink::detail
