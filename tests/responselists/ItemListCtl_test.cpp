#include "responselists/ItemListCtl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/responselists/ListHost.h"

using tessalink::test::ListHost;
using tessalink::test::windows;

namespace {

constexpr const char* cYesNo = "[Yes|Yy|1][No|Nn|2]";

TEST(ItemListDefinitions, FieldsHaveAtMostEightyCharacters) {
    const std::string longest(80, 'x');
    const std::string zeros(79, '0');
    struct {
        std::string text;
        bool isValid;
    } const cases[] = {
        {"[" + longest + "|" + longest + "|" + zeros + "5]", true},
        {"[x" + longest + "]", false},
        {"[a|x" + longest + "]", false},
        {"[a|b|00" + zeros + "]", false},
        {"[A|a][B", false},
        {"[A|a", false},
        {"[A|a|1", false},
    };
    for (const auto& c : cases) {
        const ItemListCtl list(3, c.text.c_str(), c.isValid ? 0 : -1);
        EXPECT_EQ(list.GetItemCount(), c.isValid ? 3 : 0) << c.text;
        if (c.isValid) {
            EXPECT_EQ(list.GetItem(2), 5);
        }
    }
}

TEST(ItemListDefinitions, WithoutADefinitionAListStaysAsItWas) {
    ItemListCtl kept(2, cYesNo, 0);
    EXPECT_EQ(kept.SetLegend(-1, cYesNo, 0), 0);
    EXPECT_EQ(kept.SetLegend(3, nullptr, 0), 0);
    EXPECT_EQ(kept.GetItem(1), 1);
    for (const int index : {-1, 2}) {
        EXPECT_THROW(kept.GetItem(index), CInvalidArgException);
        EXPECT_THROW(kept.SetItem(index, 1), CInvalidArgException);
    }
}

class ItemListCtlTest : public testing::Test {
protected:
    ItemListCtlTest() : m_list(std::make_unique<ItemListCtl>(10, cYesNo, -1)) {
        m_list->Create(CRect(0, 0, 400, 100), 5, &m_host);
        m_list->SetFocus();
        m_host.Take();
    }

    ListHost m_host;
    std::unique_ptr<ItemListCtl> m_list;
};

TEST_F(ItemListCtlTest, ANotificationMayDestroyDeleteOrReplaceTheList) {
    const std::vector<std::function<void()>> deeds = {
        [&] { m_list->DestroyWindow(); },
        [&] { m_list.reset(); },
        [&] { m_list->SetLegend(10, "[only|y]", -1); },
        [&] { m_list->SetLegend(0, "", -1); },
    };
    tessalink::DoubleKeying keying;
    const auto run = [&](std::size_t deed, int code, bool clicks) {
        m_list = std::make_unique<ItemListCtl>(10, cYesNo, -1);
        m_list->Create(CRect(0, 0, 400, 100), 5, &m_host);
        m_list->ReportCounts(true);
        if (code == 4) m_list->BeginVerification(keying);
        bool done = false;
        m_host.whenTold = [&](int told) {
            if (told == code && !std::exchange(done, true)) deeds[deed]();
        };
        CPoint point = m_list->GetItemRect(9).TopLeft();
        point.x = m_list->GetItemRect(9).right - 10;
        const std::function<void()> steps[] = {
            [&] { clicks ? windows().Click(point + CSize(0, 5)) : windows().Type("y"); },
            [&] { m_list->Undo(); },
            [&] { m_host.other.SetFocus(); },
        };
        if (!clicks) m_list->SetFocus();
        for (const auto& step : steps) {
            if (!done) step();
        }
        windows().Pump();
        m_host.whenTold = nullptr;
        EXPECT_TRUE(done) << deed << " " << code << clicks;
        if (deed == 2) {
            EXPECT_EQ(m_list->GetCurrItemIdx(), 0) << code << clicks;
        }
        m_host.other.SetFocus();
    };
    m_host.other.SetFocus();
    for (std::size_t deed = 0; deed < deeds.size(); ++deed) {
        for (const int code :
             {1, 2, 3, 4, static_cast<int>(NM_SETFOCUS), static_cast<int>(NM_KILLFOCUS)}) {
            for (const bool clicks : {false, true}) run(deed, code, clicks);
        }
    }
}

TEST_F(ItemListCtlTest, PaintsOnlyWhatHasChanged) {
    windows().Pump();
    const auto before = windows().PaintedArea();
    windows().Type("y");
    windows().Pump();
    const CRect cell = m_list->GetItemRect(0);
    EXPECT_LE(windows().PaintedArea() - before, std::int64_t{2} * cell.Width() * cell.Height());
}

TEST_F(ItemListCtlTest, CirclesAnswersAndMarksTheCurrentItem) {
    const auto count = [&](auto kind) {
        tessalink::RecordingDevice device;
        windows().PaintAll(*m_list, device);
        const auto& all = device.Primitives();
        return std::count_if(all.begin(), all.end(), kind);
    };
    const auto isEllipse = [](const auto& p) { return p.kind == decltype(p.kind)::Ellipse; };
    EXPECT_EQ(m_list->OnGetDlgCode(), UINT{DLGC_WANTARROWS | DLGC_WANTCHARS});
    EXPECT_EQ(count(isEllipse), 0);
    windows().Type("yn");
    EXPECT_EQ(count(isEllipse), 2);
    tessalink::DoubleKeying keying;
    m_list->BeginVerification(keying);
    EXPECT_EQ(count(isEllipse), 0) << "answers are hidden";
    const auto isBox = [](const auto& p) { return p.kind == decltype(p.kind)::Rectangle; };
    const auto boxes = count(isBox);
    windows().Type("n");
    EXPECT_EQ(count(isEllipse), 1) << "the first answer of the first item";
    EXPECT_EQ(count(isBox), boxes + 1) << "and the second one";
}

}  // namespace
