#include "graphs/common/MarkShape.h"

#include <array>
#include <initializer_list>

#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

/// Half the width of an equilateral triangle whose height is 1.5.
constexpr double cTriangleWidth = 0.8660254;

/// The shapes that have numbers; the hollow ones come after the filled ones.
constexpr std::array cNumbered = {MarkShape::Disc, MarkShape::Square, MarkShape::Triangle,
                                  MarkShape::Diamond};
constexpr int cFilledMarks = static_cast<int>(cNumbered.size());
static_assert(cNumberedMarks == 2 * cFilledMarks);

/// How far triangles and diamonds reach.
int enlarged(int radius) {
    return 12 * radius / 10;
}

void drawPolygon(CDC& dc, std::initializer_list<POINT> points) {
    dc.Polygon(points.begin(), static_cast<int>(points.size()));
}

void drawShape(CDC& dc, int x, int y, int rx, int ry, MarkShape shape) {
    const CRect box(x - rx, y - ry, x + rx, y + ry);
    const int dx = enlarged(rx);
    const int dy = enlarged(ry);
    switch (shape) {
        case MarkShape::Cross:
            dc.MoveTo(box.left, box.top);
            dc.LineTo(box.right, box.bottom);
            dc.MoveTo(box.right, box.top);
            dc.LineTo(box.left, box.bottom);
            break;
        case MarkShape::Disc:
            dc.Ellipse(&box);
            break;
        case MarkShape::Square:
            dc.Rectangle(&box);
            break;
        case MarkShape::Triangle: {
            const int half = toDevice(dx * cTriangleWidth);
            drawPolygon(dc, {{x, y - dy}, {x + half, y + dy / 2}, {x - half, y + dy / 2}});
            break;
        }
        case MarkShape::Diamond:
            drawPolygon(dc, {{x, y - dy}, {x + dx, y}, {x, y + dy}, {x - dx, y}});
            break;
    }
}

}  // namespace

void drawMark(CDC& dc, int x, int y, int rx, int ry, MarkShape shape, bool isHollow) {
    auto* const hollow = static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH));
    const Selected filling(dc, isHollow ? hollow : nullptr);
    drawShape(dc, x, y, rx, ry, shape);
}

void drawNumberedMark(CDC& dc, int x, int y, int rx, int ry, int number) {
    if (number < 0 || number >= cNumberedMarks) return;
    drawMark(dc, x, y, rx, ry, cNumbered[static_cast<std::size_t>(number % cFilledMarks)],
             number >= cFilledMarks);
}

}  // namespace tessalink
