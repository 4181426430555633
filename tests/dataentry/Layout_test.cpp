#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/GridLayoutMgr.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/detail/NeighbourIndex.h"
#include "tests/support/Dice.h"
#include "tests/support/FormHost.h"

using tessalink::NeighbourIndex;
using tessalink::Side;
using tessalink::test::Dice;
using tessalink::test::FormHost;
using tessalink::test::SizedItemUI;

namespace {

std::vector<CRect> placesOf(DataEntryLayoutMgr* manager, const std::vector<CSize>& sizes,
                            CSize area) {
    DataEntryCtl form(manager);
    auto* ui = sizes.empty() ? nullptr : new SizedItemUI(sizes);
    for (std::size_t i = 0; i < sizes.size(); ++i) form.AddItem(new IntegerDataEntryItem, ui);
    manager->RecalcLayout(&form, nullptr, CRect(CPoint(), area));
    std::vector<CRect> places;
    for (int i = 0; i < form.GetItemCount(); ++i) places.push_back(form.GetItemLoc(i));
    return places;
}

TEST(Layout, ExactPlaces) {
    const std::vector<CSize> three = {{100, 20}, {100, 30}, {100, 10}};
    const std::vector<CSize> seven(7, CSize(50, 20));
    EXPECT_EQ(placesOf(new FlowLayoutMgr(0), three, {250, 400}),
              (std::vector<CRect>{{0, 0, 100, 30}, {100, 0, 200, 30}, {0, 30, 100, 40}}));
    EXPECT_EQ(placesOf(new FlowLayoutMgr(0), three, {50, 400}),
              (std::vector<CRect>{{0, 0, 100, 20}, {0, 20, 100, 50}, {0, 50, 100, 60}}));
    EXPECT_EQ(placesOf(new FlowLayoutMgr(1), three, {250, 50}),
              (std::vector<CRect>{{0, 0, 100, 20}, {0, 20, 100, 50}, {100, 0, 200, 10}}));
    EXPECT_EQ(placesOf(new SingleColLayoutMgr, three, {80, 400}),
              (std::vector<CRect>{{0, 0, 100, 20}, {0, 20, 100, 50}, {0, 50, 100, 60}}));
    EXPECT_EQ(placesOf(new SingleColLayoutMgr, three, {180, 400})[1], CRect(0, 20, 180, 50));
    const auto down = placesOf(new GridLayoutMgr(3, 0, 1), seven, {0, 0});
    EXPECT_EQ(down[2], CRect(0, 40, 50, 60));
    EXPECT_EQ(down[6], CRect(100, 0, 150, 20));
    const auto across = placesOf(new GridLayoutMgr(0, 3, 0), seven, {0, 0});
    EXPECT_EQ(across[2], CRect(100, 0, 150, 20));
    EXPECT_EQ(across[6], CRect(0, 40, 50, 60));
    EXPECT_EQ(placesOf(new GridLayoutMgr(0, 0, 1), seven, {9, 9}), std::vector<CRect>(7));
    EXPECT_TRUE(placesOf(new GridLayoutMgr(2, 2, 0), {}, {9, 9}).empty());
    // Columns and rows are as large as their largest item.
    EXPECT_EQ(placesOf(new GridLayoutMgr(0, 2, 0), {{10, 5}, {20, 7}, {30, 9}}, {0, 0}),
              (std::vector<CRect>{{0, 0, 30, 7}, {30, 0, 50, 7}, {0, 7, 30, 16}}));
}

// The least score by looking at all.
int closestOfAll(const std::vector<CRect>& places, int index, Side side) {
    const CRect& own = places[static_cast<std::size_t>(index)];
    const auto centreX = [](const CRect& r) { return r.left + (r.Width() >> 1); };
    const auto centreY = [](const CRect& r) { return r.top + (r.Height() >> 1); };
    int best = -1;
    int bestScore = 0;
    for (int j = 0; j < static_cast<int>(places.size()); ++j) {
        const CRect& r = places[static_cast<std::size_t>(j)];
        const int gap = side == Side::Above   ? own.top - r.bottom
                        : side == Side::Below ? r.top - own.bottom
                        : side == Side::Left  ? own.left - r.right
                                              : r.left - own.right;
        if (j == index || gap < 0) continue;
        const bool vertical = side == Side::Above || side == Side::Below;
        const int score = gap + (vertical ? std::abs(centreX(r) - centreX(own))
                                          : std::abs(centreY(r) - centreY(own)));
        if (best < 0 || score < bestScore) {
            best = j;
            bestScore = score;
        }
    }
    return best;
}

TEST(Layout, NeighboursAreTheNearestOfAll) {
    Dice dice(11);
    const auto below = [&](int n) {
        return static_cast<int>(dice.Below(static_cast<std::size_t>(n)));
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<CRect> places;
        const int range = 1 + below(round % 2 == 0 ? 12 : 400);
        for (int i = 1 + below(30); i > 0; --i) {
            places.emplace_back(CPoint(below(range), below(range)), CSize(below(range), below(9)));
        }
        NeighbourIndex neighbours;
        for (int i = 0; i < static_cast<int>(places.size()); ++i) {
            for (const Side side : {Side::Above, Side::Below, Side::Left, Side::Right}) {
                ASSERT_EQ(neighbours.Closest(places, i, side, false),
                          closestOfAll(places, i, side));
            }
        }
        const CRect area(CPoint(below(range), below(range)), CSize(1 + below(range), 1 + below(9)));
        std::vector<int> touching;
        for (int i = 0; i < static_cast<int>(places.size()); ++i) {
            CRect common;
            const CRect& place = places[static_cast<std::size_t>(i)];
            if (common.IntersectRect(&place, &area) != 0) touching.push_back(i);
        }
        ASSERT_EQ(neighbours.Touching(places, area), touching);
    }
}

// Makes what a manager answers visible: "moved to 3", "not used".
class Navigation {
public:
    Navigation(DataEntryLayoutMgr* manager, int count, CSize area)
        : m_manager(*manager), m_form(manager) {
        auto* ui = count == 0 ? nullptr : new SizedItemUI({CSize(50, 20)});
        for (int i = 0; i < count; ++i) m_form.AddItem(new IntegerDataEntryItem, ui);
        manager->RecalcLayout(&m_form, nullptr, CRect(CPoint(), area));
    }
    // The item that the key leads to; -99 when the manager does not use it.
    int Press(UINT key, int from) {
        int item = from;
        return m_manager.NavigateOnKeyDown(&m_form, key, 1, 0, item) != 0 ? item : -99;
    }
    DataEntryCtl& Form() { return m_form; }

private:
    DataEntryLayoutMgr& m_manager;
    DataEntryCtl m_form;
};

TEST(Layout, ArrowsInAGridWithRowsToSpare) {
    // More rows asked for than items need.
    Navigation spare(new GridLayoutMgr(8, 0, 0), 9, {150, 400});
    EXPECT_LT(spare.Press(VK_UP, 1), 9);
}

TEST(Layout, KeysWithNothingToLeadTo) {
    Navigation rows(new FlowLayoutMgr(0), 7, {150, 400});
    EXPECT_EQ(rows.Press(VK_RETURN, 6), -99) << "nothing follows";
    Navigation none(new FlowLayoutMgr(0), 0, {100, 100});
    EXPECT_EQ(none.Press(VK_RIGHT, -1), -99);
    // Items without width stand at the same place, and each leads to the other.
    FormHost host;
    DataEntryCtl row(new FlowLayoutMgr(0));
    auto* ui = new SizedItemUI({{50, 20}, {0, 20}, {0, 20}, {50, 20}});
    for (int i = 0; i < 4; ++i) row.AddItem(new IntegerDataEntryItem, ui);
    row.Create(CRect(0, 0, 200, 100), 1, &host);
    for (const auto& [key, end] : {std::pair(VK_END, 3), {VK_HOME, 0}}) {
        row.HandleKeyDown(key, 1, 0);
        EXPECT_EQ(row.GetCurrItemIdx(), end);
    }
    // Home and End among items that have no place yet.
    Navigation unplaced(new GridLayoutMgr(0, 0, 0), 5, {100, 100});
    EXPECT_EQ(unplaced.Press(VK_END, 2), 2);
    EXPECT_EQ(unplaced.Press(VK_RIGHT, 2), 0);
}

}  // namespace
