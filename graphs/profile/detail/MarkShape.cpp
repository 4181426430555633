#include "graphs/profile/detail/MarkShape.h"

#include "graphs/common/DeviceUnits.h"

namespace tessalink {

namespace {

/// The half width of a triangle of even sides, by its height above the middle.
constexpr double cTriangleWidth = 0.8660254;

void drawPolygon(CDC& dc, std::initializer_list<POINT> points) {
    dc.Polygon(points.begin(), static_cast<int>(points.size()));
}

}  // namespace

void drawMarkShape(CDC& dc, int x, int y, int rx, int ry, int shape) {
    const CRect box(x - rx, y - ry, x + rx, y + ry);
    // Polygons reach further than boxes, so that all cover about the same area.
    const int dx = 12 * rx / 10;
    const int dy = 12 * ry / 10;
    const int top = y - dy;
    switch (shape) {
        case 1:
            dc.MoveTo(box.left, box.top);
            dc.LineTo(box.right, box.bottom);
            dc.MoveTo(box.right, box.top);
            dc.LineTo(box.left, box.bottom);
            break;
        case 2:
            dc.Ellipse(&box);
            break;
        case 3:
            dc.Rectangle(&box);
            break;
        case 4: {
            const int w = toDevice(dx * cTriangleWidth);
            const int below = y + dy / 2;
            drawPolygon(dc, {{x, top}, {x + w, below}, {x - w, below}});
            break;
        }
        case 5:
            drawPolygon(dc, {{x, top}, {x + dx, y}, {x, y + dy}, {x - dx, y}});
            break;
        default:
            break;
    }
}

}  // namespace tessalink
