#include "examples/gallery/TextFaults.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/RecordingDevice.h"

namespace gallery {

namespace {

using tessalink::Primitive;
using Kind = Primitive::Kind;

bool holds(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool overlap(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

// A text without a background is as high as its digits.
CRect textPlace(const Primitive& text) {
    if (text.textBackground) return *text.textBackground;
    constexpr double digits = 0.68;  // of the em
    const POINT origin = text.points[0];
    const int height = static_cast<int>(std::lround(std::abs(text.font.lfHeight) * digits));
    return {origin.x, origin.y - height, origin.x + text.positions.back(), origin.y};
}

// Whether the line from a to b, so wide, meets the rectangle: it is cut to it, edge by edge. Lines
// of two units may touch.
bool lineMeets(const POINT& a, const POINT& b, int width, const RECT& rect) {
    const double half = std::max(0, width - 2) / 2.0;
    double from = 0;
    double to = 1;
    const auto cut = [&](double start, double change, double low, double high) {
        if (change == 0) return start > low && start < high;
        const double first = (low - start) / change;
        const double second = (high - start) / change;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
        return from < to;
    };
    return cut(a.x, b.x - a.x, rect.left - half, rect.right + half) &&
           cut(a.y, b.y - a.y, rect.top - half, rect.bottom + half);
}

bool linesMeet(const Primitive& lines, const RECT& place) {
    std::vector<POINT> points = lines.points;
    if (lines.kind == Kind::Polygon) points.push_back(points.front());
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (lineMeets(points[i - 1], points[i], lines.pen.lopnWidth.x, place)) return true;
    }
    return false;
}

bool covers(const tessalink::Region& region, const RECT& place) {
    return !region.And(tessalink::Region(place)).IsEmpty();
}

// The same number at the same place, up to a unit, where two axes meet.
bool isSame(const Primitive& a, const Primitive& b) {
    if (a.kind != Kind::Text || b.kind != Kind::Text || a.text != b.text) return false;
    const CRect first = textPlace(a);
    const CRect second = textPlace(b);
    return std::abs(first.left - second.left) <= 1 && std::abs(first.top - second.top) <= 1;
}

// Whether the outline of the ellipse meets the rectangle.
bool ringMeets(const RECT& ellipse, const RECT& place) {
    const double x = (ellipse.left + ellipse.right) / 2.0;
    const double y = (ellipse.top + ellipse.bottom) / 2.0;
    const double rx = (ellipse.right - ellipse.left) / 2.0;
    const double ry = (ellipse.bottom - ellipse.top) / 2.0;
    const double farX = std::max(std::abs(place.left - x), std::abs(place.right - x));
    const double farY = std::max(std::abs(place.top - y), std::abs(place.bottom - y));
    const double nearX = x - std::clamp(x, double(place.left), double(place.right));
    const double nearY = y - std::clamp(y, double(place.top), double(place.bottom));
    return std::hypot(nearX / rx, nearY / ry) < 1 && std::hypot(farX / rx, farY / ry) > 1;
}

// Whether a text, which lies at `place`, can't be read because of the other. `isLater` says that
// the text was drawn later, `mayCover` that it may lie over lines and rings.
bool disturbs(const Primitive& other, const RECT& place, bool isLater, bool mayCover) {
    const bool isUnder = isLater && mayCover;
    switch (other.kind) {
        case Kind::Text:
            return overlap(textPlace(other), place);
        case Kind::Line:
        case Kind::Polyline:
            return !isUnder && linesMeet(other, place);
        case Kind::FillRectangle:
            return !isLater && overlap(other.rect, place);
        case Kind::FillRegion:
            return !isLater && covers(other.region, place);
        case Kind::Ellipse:
            return !isUnder && ringMeets(other.rect, place);
        case Kind::Rectangle:
            return overlap(other.rect, place) && !holds(other.rect, place);
        case Kind::Polygon:
            if (other.brush.lbStyle != BS_NULL && !isLater &&
                covers(tessalink::Region::OfPolygon(other.points), place)) {
                return true;
            }
            return !isUnder && linesMeet(other, place);
        case Kind::Pixel:
            return false;
    }
    return false;
}

// The faults of the texts of a picture, given which primitives disturb a text.
template <class Draw, class Disturbs>
std::vector<std::string> faultsOf(Draw draw, int width, int height, Disturbs isDisturbed) {
    tessalink::RecordingDevice device;
    CDC dc(device);
    draw(dc);
    const CRect sheet(0, 0, width, height);
    std::vector<std::string> faults;
    for (const Primitive& text : device.Primitives()) {
        if (text.kind != Kind::Text || text.text.empty()) continue;
        const CRect place = textPlace(text);
        if (!holds(sheet, place)) faults.push_back('"' + text.text + "\" leaves the sheet");
        for (const Primitive& other : device.Primitives()) {
            if (&other == &text || isSame(other, text)) continue;
            if (other.kind == Kind::Text && other.text.empty()) continue;
            if (isDisturbed(text, place, other)) {
                faults.push_back('"' + text.text + "\" meets " + toText(other));
            }
        }
    }
    return faults;
}

}  // namespace

std::vector<std::string> textFaults(const Card& card, UnderText allowed) {
    return faultsOf(card.draw, card.width, card.height,
                    [&](const Primitive& text, const CRect& place, const Primitive& other) {
                        const bool mayCover =
                            allowed == UnderText::LinesAndRings && text.textBackground.has_value();
                        return disturbs(other, place, &other < &text, mayCover);
                    });
}

std::vector<std::string> textOverlaps(const std::function<void(CDC&)>& draw, int width,
                                      int height) {
    return faultsOf(
        draw, width, height, [](const Primitive& text, const CRect& place, const Primitive& other) {
            return other.kind == Kind::Text && &other < &text && overlap(textPlace(other), place);
        });
}

}  // namespace gallery
