#include "platform/graphics/Geometry.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

// All of it at compile time: nothing here may overflow.
constexpr CRect offset(CRect rect, int dx, int dy) {
    rect.OffsetRect(dx, dy);
    return rect;
}
constexpr CRect inflated(CRect rect, int dx, int dy) {
    rect.InflateRect(dx, dy);
    return rect;
}
constexpr CRect deflated(CRect rect, int l, int t, int r, int b) {
    rect.DeflateRect(l, t, r, b);
    return rect;
}
constexpr CRect normalized(CRect rect) {
    rect.NormalizeRect();
    return rect;
}

static_assert(CRect(CPoint(1, 2), CSize(3, 4)) == CRect(1, 2, 4, 6));
static_assert(CRect(CPoint(4, 6), CPoint(1, 2)).Width() == -3);
static_assert(CRect(1, 2, 4, 6).Size() == CSize(3, 4));
static_assert(CRect(INT_MIN, 0, INT_MAX, 1).Width() == -1);
static_assert(CRect(-3, INT_MIN, 0, INT_MAX).CenterPoint() == CPoint(-1, 0));
static_assert(CRect(INT_MAX - 1, 0, INT_MAX, 0).CenterPoint() == CPoint(INT_MAX - 1, 0));
static_assert(CPoint(INT_MAX, 5) + CSize(1, -5) == CPoint(INT_MIN, 0));
static_assert(CPoint(INT_MIN, 5) - CPoint(1, 5) == CSize(INT_MAX, 0));
static_assert(offset({1, 2, 3, 4}, INT_MAX, -2) == CRect(INT_MIN, 0, INT_MIN + 2, 2));
static_assert(inflated({1, 2, 3, 4}, 2, -1) == CRect(-1, 3, 5, 3));
static_assert(deflated({1, 2, 9, 9}, 1, 2, 3, INT_MIN) == CRect(2, 4, 6, INT_MIN + 9));
static_assert(normalized({5, 6, 1, 2}) == CRect(1, 2, 5, 6));
static_assert(CRect(1, 1, 1, 9).IsRectEmpty() && !CRect(1, 1, 2, 2).IsRectEmpty());
static_assert(!CRect(1, 1, 1, 9).IsRectNull() && CRect().IsRectNull());
static_assert(CRect(1, 1, 3, 3).PtInRect(CPoint(1, 2)) &&
              !CRect(1, 1, 3, 3).PtInRect(CPoint(3, 2)));

TEST(CRect, IntersectsAndUnites) {
    struct Case {
        CRect a, b, both, around;
    };
    const Case cases[] = {
        {{0, 0, 5, 5}, {3, 2, 9, 9}, {3, 2, 5, 5}, {0, 0, 9, 9}},
        {{0, 0, 5, 5}, {5, 0, 9, 5}, {}, {0, 0, 9, 5}},
        {{0, 0, 5, 5}, {7, 7, 7, 9}, {}, {0, 0, 5, 5}},
        {{3, 3, 3, 4}, {-2, -2, 0, 0}, {}, {-2, -2, 0, 0}},
        {{3, 3, 1, 1}, {2, 9, 2, 9}, {}, {}},
    };
    for (const Case& c : cases) {
        CRect rect(7, 7, 7, 7);
        EXPECT_EQ(rect.IntersectRect(&c.a, &c.b), !c.both.IsRectNull());
        EXPECT_EQ(rect, c.both);
        EXPECT_EQ(rect.UnionRect(&c.a, &c.b), !c.around.IsRectNull());
        EXPECT_EQ(rect, c.around);
    }
}

}  // namespace
