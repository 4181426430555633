#include "platform/graphics/Region.h"

#include <gtest/gtest.h>

#include <array>
#include <bitset>
#include <climits>
#include <functional>

#include "platform/graphics/GdiObjects.h"
#include "tests/support/Dice.h"

namespace {

using tessalink::Region;
using tessalink::test::Dice;

constexpr int cSide = 24;
constexpr std::size_t cUnits = std::size_t{cSide} * cSide;
using Bitmap = std::bitset<cUnits>;

std::size_t indexOf(int x, int y) {
    return static_cast<std::size_t>(y) * cSide + static_cast<std::size_t>(x);
}

Bitmap bitmapOf(const Region& region) {
    Bitmap bitmap;
    for (int y = 0; y < cSide; ++y) {
        for (int x = 0; x < cSide; ++x) {
            bitmap[indexOf(x, y)] = region.Contains({x, y});
        }
    }
    return bitmap;
}

Bitmap bitmapWhere(const std::function<bool(int, int)>& holds) {
    Bitmap bitmap;
    for (int y = 0; y < cSide; ++y) {
        for (int x = 0; x < cSide; ++x) {
            bitmap[indexOf(x, y)] = holds(x, y);
        }
    }
    return bitmap;
}

// The form that the header promises, and no band that could be joined with the one before.
void expectCanonical(const Region& region) {
    const std::vector<RECT> rects(region.Rects().begin(), region.Rects().end());
    const auto again = Region::OfBands(rects);
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(*again, region);
    for (std::size_t i = 1; i < rects.size(); ++i) {
        if (rects[i].top == rects[i - 1].top) {
            EXPECT_LT(rects[i - 1].right, rects[i].left);
        }
    }
    EXPECT_EQ(region.Or(region).Rects().size(), rects.size());
    CRect bounds;
    for (const RECT& rect : rects) {
        const CRect before = bounds;
        bounds.UnionRect(&before, &rect);
    }
    EXPECT_EQ(region.Bounds(), bounds);
}

CRect randomRect(Dice& dice) {
    const auto place = [&] { return static_cast<int>(dice.Below(cSide + 4)) - 2; };
    return {place(), place(), place(), place()};
}

TEST(Region, JoinsLikeSetsOfUnits) {
    Dice dice(1);
    for (int run = 0; run < 300; ++run) {
        Region region;
        Bitmap model;
        for (int step = 0; step < 12; ++step) {
            const CRect rect = randomRect(dice);
            const Region part(rect);
            const Bitmap bits =
                bitmapWhere([&](int x, int y) { return rect.PtInRect(CPoint(x, y)); });
            const auto operation = dice.Below(5);
            if (operation <= 2) {
                region = region.Or(part);
                model |= bits;
            } else if (operation == 3) {
                region = region.Minus(part);
                model &= ~bits;
            } else {
                const Region whole = region;
                region = whole.And(part).Or(whole.Minus(part));
            }
            const CRect window(1, 1, cSide - 1, cSide - 1);
            ASSERT_EQ(bitmapOf(region), model);
            ASSERT_EQ(
                bitmapOf(region.And(Region(window))),
                model & bitmapWhere([&](int x, int y) { return window.PtInRect(CPoint(x, y)); }));
            expectCanonical(region);
        }
        Region moved = region;
        moved.Offset(3, -2);
        moved.Offset(-3, 2);
        EXPECT_EQ(moved, region);
    }
}

// A unit belongs to a polygon when a ray from its centre crosses the outline an odd number of
// times.
TEST(Region, OfPolygonHasTheUnitsWhoseCentreLiesInside) {
    Dice dice(2);
    for (int run = 0; run < 400; ++run) {
        std::vector<POINT> corners(dice.Below(7));
        for (POINT& corner : corners) {
            corner = {static_cast<LONG>(dice.Below(cSide)), static_cast<LONG>(dice.Below(cSide))};
        }
        const auto inside = [&](int x, int y) {
            bool odd = false;
            for (std::size_t i = 0; i < corners.size(); ++i) {
                const auto& a = corners[i];
                const auto& b = corners[(i + 1) % corners.size()];
                if ((a.y <= y) == (b.y <= y)) continue;
                const int side = (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y);
                // A centre on the line belongs to the right of it.
                odd ^= b.y > a.y ? side <= 0 : side >= 0;
            }
            return odd;
        };
        const Region region = Region::OfPolygon(corners);
        ASSERT_EQ(bitmapOf(region), bitmapWhere(inside)) << run;
        expectCanonical(region);
        EXPECT_EQ(region.Corners().size(), corners.size() < 3 ? 0u : corners.size());
    }
}

TEST(Region, OfEllipseHasTheUnitsWhoseCentreLiesInside) {
    for (const CRect& box : {CRect(0, 0, 24, 24), CRect(3, 2, 20, 9), CRect(20, 9, 3, 2),
                             CRect(5, 5, 6, 6), CRect(4, 4, 4, 9)}) {
        CRect sorted = box;
        sorted.NormalizeRect();
        const auto inside = [&](int x, int y) {
            const double dx = (2 * x + 1 - sorted.left - sorted.right) / double(sorted.Width());
            const double dy = (2 * y + 1 - sorted.top - sorted.bottom) / double(sorted.Height());
            return sorted.Width() > 0 && dx * dx + dy * dy < 1;
        };
        EXPECT_EQ(bitmapOf(Region::OfEllipse(box)), bitmapWhere(inside));
        expectCanonical(Region::OfEllipse(box));
    }
}

TEST(Region, SurvivesCoordinatesOfAnySize) {
    const CRect everything(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    const Region plane(everything);
    EXPECT_TRUE(plane.Contains({0, 0}));
    const Region hole = plane.Minus(Region({-1, -1, 1, 1}));
    EXPECT_EQ(hole.Rects().size(), 4u);
    expectCanonical(hole);
    EXPECT_TRUE(Region::OfEllipse(everything).Contains({12345, -50000}));
    const std::array<POINT, 3> corners = {{{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {0, INT_MAX}}};
    EXPECT_TRUE(Region::OfPolygon(corners).Contains({0, 0}));
    const auto bands = Region::OfBands(
        {{INT_MIN, INT_MIN, INT_MAX, -5}, {-9, 0, INT_MAX, 9}, {1 << 30, 9, INT_MAX, INT_MAX}});
    EXPECT_EQ(bands->And(plane).Rects().size(), 2u);
    expectCanonical(*bands);
    Region far({0, 0, 5, 5});
    far.Offset(INT_MAX, INT_MAX);
    EXPECT_TRUE(far.IsEmpty());
}

TEST(Region, OfBandsRefusesWhatIsNotSorted) {
    const std::vector<std::vector<RECT>> refused = {
        {{0, 0, 0, 5}},
        {{0, 0, 5, 5}, {4, 0, 9, 5}},
        {{5, 0, 9, 5}, {0, 0, 4, 5}},
        {{0, 0, 5, 5}, {6, 0, 9, 6}},
        {{0, 5, 5, 9}, {0, 0, 5, 5}},
        {{0, 0, 5, 5}, {0, 4, 5, 9}},
    };
    for (const auto& rects : refused) EXPECT_FALSE(Region::OfBands(rects).has_value());
    EXPECT_TRUE(Region::OfBands({{0, 0, 5, 5}, {5, 0, 9, 5}, {2, 5, 3, 6}}).has_value());
}

TEST(CRgn, TellsItsKind) {
    CRgn a;
    CRgn b;
    EXPECT_EQ(a.CombineRgn(&a, &b, RGN_OR), ERRORREGION);
    EXPECT_EQ(a.OffsetRgn(1, 1), ERRORREGION);
    a.CreateRectRgn(9, 9, 0, 0);
    b.CreateRectRgn(3, 3, 6, 6);
    struct Case {
        int mode, kind;
        std::size_t rects;
    };
    const Case cases[] = {{RGN_AND, SIMPLEREGION, 1},  {RGN_OR, SIMPLEREGION, 1},
                          {RGN_XOR, COMPLEXREGION, 4}, {RGN_DIFF, COMPLEXREGION, 4},
                          {RGN_COPY, SIMPLEREGION, 1}, {0, ERRORREGION, 0}};
    for (const Case& c : cases) {
        CRgn result;
        EXPECT_EQ(result.CombineRgn(&a, &b, c.mode), c.kind);
        EXPECT_EQ(result.Get().Rects().size(), c.rects);
    }
    EXPECT_EQ(b.CombineRgn(&b, &a, RGN_DIFF), NULLREGION);
    EXPECT_EQ(a.PtInRegion(8, 8), 1);
    EXPECT_EQ(a.PtInRegion(9, 8), 0);
    CRect box;
    EXPECT_EQ(a.OffsetRgn(1, 2), SIMPLEREGION);
    EXPECT_EQ(a.GetRgnBox(box), SIMPLEREGION);
    EXPECT_EQ(box, CRect(1, 2, 10, 11));
    EXPECT_NE(a.DeleteObject(), 0);
    EXPECT_EQ(a.GetRgnBox(box), ERRORREGION);
    const POINT point = {1, 1};
    EXPECT_EQ(a.CreatePolygonRgn(&point, 1, ALTERNATE), 0);
    EXPECT_EQ(a.CreatePolygonRgn(nullptr, 3, ALTERNATE), 0);
}

}  // namespace
