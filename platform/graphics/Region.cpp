#include "platform/graphics/Region.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tessalink {

namespace {

// A run of units in one row band.
struct Span {
    LONG left;
    LONG right;

    bool operator==(const Span&) const = default;
};
using Spans = std::vector<Span>;

// The rows of one band: they all have the same spans.
struct Band {
    LONG top;
    LONG bottom;
    Spans spans;
};

// Regions end here: coordinates of a device are smaller by far. Curved and slanted ones, which have
// a rectangle for each row, end earlier.
constexpr LONG cFarthest = 1 << 26;
constexpr LONG cFarthestRow = 1 << 16;

LONG limited(LONG value) {
    return std::clamp(value, -cFarthest, cFarthest);
}

LONG limitedRow(LONG value) {
    return std::clamp(value, -cFarthestRow, cFarthestRow);
}

// Puts bands together, joining equal neighbours.
class Builder {
public:
    void Add(LONG top, LONG bottom, const Spans& spans) {
        if (spans.empty() || top >= bottom) return;
        if (!m_last.spans.empty() && m_last.bottom == top && m_last.spans == spans) {
            m_last.bottom = bottom;
            return;
        }
        Flush();
        m_last = {top, bottom, spans};
    }
    std::vector<RECT> Take() {
        Flush();
        return std::move(m_rects);
    }

private:
    void Flush() {
        for (const Span& span : m_last.spans) {
            m_rects.push_back({span.left, m_last.top, span.right, m_last.bottom});
        }
        m_last.spans.clear();
    }

    Band m_last{};
    std::vector<RECT> m_rects;
};

// The spans of a region in the rows from `top` on, and where the next change of them is.
class Rows {
public:
    explicit Rows(std::span<const RECT> rects) : m_rects(rects) {}

    void FirstRow(LONG& row) const {
        if (!m_rects.empty()) row = std::min(row, m_rects.front().top);
    }
    bool IsDone() const { return m_next == m_rects.size(); }

    Spans At(LONG row, LONG& nextChange) {
        while (!IsDone() && m_rects[m_next].bottom <= row) ++m_next;
        Spans spans;
        if (IsDone()) return spans;
        const RECT& first = m_rects[m_next];
        nextChange = std::min(nextChange, first.top > row ? first.top : first.bottom);
        if (first.top > row) return spans;
        for (std::size_t i = m_next; i < m_rects.size() && m_rects[i].top == first.top; ++i) {
            spans.push_back({m_rects[i].left, m_rects[i].right});
        }
        return spans;
    }

private:
    std::span<const RECT> m_rects;
    std::size_t m_next = 0;
};

// The spans where `keep(inFirst, inSecond)` holds.
template <class Keep>
Spans combined(const Spans& first, const Spans& second, Keep keep) {
    struct Edge {
        LONG place;
        bool ofFirst;
    };
    std::vector<Edge> edges;
    for (const Span& span : first)
        edges.insert(edges.end(), {{span.left, true}, {span.right, true}});
    for (const Span& span : second) {
        edges.insert(edges.end(), {{span.left, false}, {span.right, false}});
    }
    std::stable_sort(edges.begin(), edges.end(),
                     [](const Edge& a, const Edge& b) { return a.place < b.place; });
    Spans spans;
    bool inFirst = false;
    bool inSecond = false;
    bool inside = false;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        (edges[i].ofFirst ? inFirst : inSecond) ^= true;
        if (i + 1 < edges.size() && edges[i + 1].place == edges[i].place) continue;
        if (keep(inFirst, inSecond) == inside) continue;
        if (inside) {
            spans.back().right = edges[i].place;
        } else {
            spans.push_back({edges[i].place, edges[i].place});
        }
        inside = !inside;
    }
    return spans;
}

template <class Keep>
std::vector<RECT> combine(std::span<const RECT> a, std::span<const RECT> b, Keep keep) {
    Rows first(a);
    Rows second(b);
    Builder builder;
    LONG row = cFarthest;
    first.FirstRow(row);
    second.FirstRow(row);
    for (;;) {
        LONG next = cFarthest;
        const Spans ofFirst = first.At(row, next);
        const Spans ofSecond = second.At(row, next);
        if (first.IsDone() && second.IsDone()) break;
        builder.Add(row, next, combined(ofFirst, ofSecond, keep));
        row = next;
    }
    return builder.Take();
}

LONG shifted(LONG place, int by) {
    return static_cast<LONG>(
        std::clamp<std::int64_t>(std::int64_t{place} + by, -cFarthest, cFarthest));
}

CRect limited(const RECT& rect) {
    return {limited(rect.left), limited(rect.top), limited(rect.right), limited(rect.bottom)};
}

// The first unit whose centre is not left of x.
LONG firstUnit(double x) {
    return static_cast<LONG>(std::ceil(x - 0.5));
}

}  // namespace

Region::Region(const RECT& rect) {
    const CRect cut = limited(rect);
    if (!cut.IsRectEmpty()) m_rects.push_back(cut);
}

Region Region::OfPolygon(std::span<const POINT> points) {
    Region region;
    if (points.size() < 3) return region;
    LONG top = cFarthestRow;
    LONG bottom = -cFarthestRow;
    for (const POINT& point : points) {
        top = std::min(top, limitedRow(point.y));
        bottom = std::max(bottom, limitedRow(point.y));
    }
    Builder builder;
    std::vector<double> crossings;
    for (LONG row = top; row < bottom; ++row) {
        crossings.clear();
        for (std::size_t i = 0; i < points.size(); ++i) {
            const POINT& a = points[i];
            const POINT& b = points[(i + 1) % points.size()];
            if ((a.y <= row) == (b.y <= row)) continue;
            // One division, so that a line through the centre of a unit is found there.
            const double dx = static_cast<double>(b.x) - a.x;
            const double dy = static_cast<double>(b.y) - a.y;
            const double x = (a.x * dy + (static_cast<double>(row) - a.y) * dx) / dy;
            crossings.push_back(std::clamp<double>(x, -cFarthest, cFarthest));
        }
        std::sort(crossings.begin(), crossings.end());
        Spans spans;
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const Span span = {static_cast<LONG>(std::ceil(crossings[i])),
                               static_cast<LONG>(std::ceil(crossings[i + 1]))};
            if (span.left >= span.right) continue;
            if (!spans.empty() && spans.back().right == span.left) {
                spans.back().right = span.right;
            } else {
                spans.push_back(span);
            }
        }
        builder.Add(row, row + 1, spans);
    }
    region.m_rects = builder.Take();
    region.m_corners.assign(points.begin(), points.end());
    return region;
}

std::optional<Region> Region::OfBands(std::vector<RECT> rects) {
    for (std::size_t i = 0; i < rects.size(); ++i) {
        if (CRect(rects[i]).IsRectEmpty()) return std::nullopt;
        if (i == 0) continue;
        const RECT& before = rects[i - 1];
        const bool beside = rects[i].top == before.top && rects[i].bottom == before.bottom &&
                            rects[i].left >= before.right;
        if (!beside && rects[i].top < before.bottom) return std::nullopt;
    }
    Region region;
    region.m_rects = std::move(rects);
    region.Offset(0, 0);  // cuts what is too far away
    return region;
}

Region Region::OfEllipse(const RECT& rect) {
    Region region;
    CRect box = limited(rect);
    box.NormalizeRect();
    const double centre = (static_cast<double>(box.left) + box.right) / 2;
    const double halfWidth = box.Width() / 2.0;
    const double halfHeight = box.Height() / 2.0;
    Builder builder;
    for (LONG row = limitedRow(box.top); row < limitedRow(box.bottom); ++row) {
        const double y = (row + 0.5 - box.top - halfHeight) / halfHeight;
        const double reach = halfWidth * std::sqrt(std::max(0.0, 1 - y * y));
        const Span span = {firstUnit(centre - reach), firstUnit(centre + reach)};
        if (span.left < span.right) builder.Add(row, row + 1, {span});
    }
    region.m_rects = builder.Take();
    return region;
}

CRect Region::Bounds() const {
    CRect bounds;
    for (const RECT& rect : m_rects) {
        const CRect before = bounds;
        bounds.UnionRect(&before, &rect);
    }
    return bounds;
}

bool Region::Contains(const POINT& point) const {
    return std::any_of(m_rects.begin(), m_rects.end(),
                       [&](const RECT& rect) { return CRect(rect).PtInRect(point); });
}

Region Region::And(const Region& other) const {
    Region result;
    if (m_rects.size() == 1 && other.m_rects.size() == 1) {
        CRect common;
        if (common.IntersectRect(&m_rects.front(), &other.m_rects.front())) {
            result.m_rects.push_back(common);
        }
        return result;
    }
    result.m_rects = combine(m_rects, other.m_rects, [](bool a, bool b) { return a && b; });
    return result;
}

Region Region::Or(const Region& other) const {
    Region result;
    result.m_rects = combine(m_rects, other.m_rects, [](bool a, bool b) { return a || b; });
    return result;
}

Region Region::Minus(const Region& other) const {
    Region result;
    result.m_rects = combine(m_rects, other.m_rects, [](bool a, bool b) { return a && !b; });
    return result;
}

void Region::Offset(int dx, int dy) {
    for (POINT& corner : m_corners) corner = {corner.x + dx, corner.y + dy};
    std::size_t kept = 0;
    for (const RECT& rect : m_rects) {
        const CRect moved(shifted(rect.left, dx), shifted(rect.top, dy), shifted(rect.right, dx),
                          shifted(rect.bottom, dy));
        if (!moved.IsRectEmpty()) m_rects[kept++] = moved;
    }
    m_rects.resize(kept);
}

}  // namespace tessalink
