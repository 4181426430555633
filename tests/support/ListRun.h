#pragma once

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/support/Dice.h"
#include "tests/support/EventCount.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/InputDriver.h"
#include "tests/support/ListModel.h"
#include "tests/support/ListNote.h"

namespace tessalink::test {

constexpr UINT cListId = 5;

/// Knows where captions stand.
template <class List>
class OpenedList : public List {
public:
    using List::List;

    /// Where a caption takes clicks: half a gap belongs to it on either side, of an odd gap the
    /// smaller half on the left.
    CRect Room(int item, int response) const {
        const auto widthOf = [gap = this->m_halfWidth](const auto& responses, int count) {
            int width = 0;
            for (int i = 0; i < count; ++i) {
                width += responses[static_cast<std::size_t>(i)].width + gap;
            }
            return width;
        };
        int widest = 0;
        for (const auto& set : this->m_sets) {
            widest = std::max(widest, widthOf(set, static_cast<int>(set.size())));
        }
        CRect room = this->GetItemRect(item);
        const int start = room.right - widest - this->m_halfWidth / 2;
        const auto& responses = *this->responses_of(item);
        room.right = start + widthOf(responses, response + 1);
        room.left = start + widthOf(responses, response);
        return room;
    }
};

constexpr UINT cKeys[] = {VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN};

/// Random events on a list and its model: what both kinds have in common.
template <class List, class Model>
class ListRun {
public:
    ListRun(InputDriver& used, std::uint64_t seed) : driver(used), dice(seed) {
        HostServices services = hostServices();
        services.messageBox = [this](const char* text, UINT) {
            log.push_back("box " + std::string(text));
            return IDOK;
        };
        services.beep = [this](UINT) { log.emplace_back("bell"); };
        m_services = std::make_unique<HostServicesScope>(std::move(services));
        driver.answer = [this](const NMHDR& header) {
            log.push_back(listNote(header, cListId));
            return 0;
        };
    }
    virtual ~ListRun() {
        list.reset();
        driver.Pump();
        driver.answer = nullptr;
    }

    int Below(int bound) { return static_cast<int>(dice.Below(static_cast<std::size_t>(bound))); }
    void Start(std::unique_ptr<List> made) {
        list = std::move(made);
        list->Create(CRect(CPoint(), size), cListId, &driver.Host());
        driver.Resize(*list, size);
        log.clear();
    }
    void Layout() {
        if (model.count > 0) model.Layout(size, list->GetItemRect(0).Size());
    }
    void Resize() {
        size = CSize(40 + Below(600), 20 + Below(300));
        driver.Resize(*list, size);
        Layout();
        model.Show();
    }
    void Scroll() {
        const int position = Below(20);
        const std::map<UINT, int> targets = {{SB_LINELEFT, model.first - 1},
                                             {SB_LINERIGHT, model.first + 1},
                                             {SB_PAGELEFT, model.first - model.visible},
                                             {SB_PAGERIGHT, model.first + model.visible},
                                             {SB_THUMBPOSITION, position},
                                             {SB_THUMBTRACK, position},
                                             {SB_LEFT, 0},
                                             {SB_RIGHT, INT_MAX}};
        auto target = targets.begin();
        std::advance(target, Below(static_cast<int>(targets.size())));
        driver.Scroll(*list, SB_HORZ, target->first, position);
        if (model.count > 0) model.Scroll(target->second);
    }
    void Wheel() {
        const int notches = (1 + Below(3)) * (dice.OneIn(2) ? 1 : -1);
        driver.Turn(OnScreen({4, 4}), 120 * notches);
        if (model.count > 0) model.Scroll(model.first - notches);
    }
    CPoint Corner(int item) const { return list->GetItemRect(item).TopLeft() + CSize(2, 2); }
    // A cell that shows, or -1.
    int ShownCell() {
        CRect client;
        list->GetClientRect(&client);
        const CPoint point(Below(std::max<int>(client.right, 1)),
                           Below(std::max<int>(client.bottom, 1)));
        const int item = list->ItemAt(point);
        // Its corner, where clicks go, shows as well.
        return client.PtInRect(Corner(item)) != 0 ? item : -1;
    }
    // Events by chance, each as often as its weight says.
    struct Event {
        int weight;
        const char* name;
        std::function<void()> happens;
    };
    void Run(const std::vector<Event>& events, int count) {
        int all = 0;
        for (const Event& event : events) all += event.weight;
        for (int number = 0; number < count && !testing::Test::HasFailure(); ++number) {
            auto event = events.begin();
            for (int left = Below(all); left >= event->weight; ++event) left -= event->weight;
            Trace(event->name);
            event->happens();
            Check();
        }
        EXPECT_GT(model.notifications, static_cast<std::size_t>(count) / 4);
    }
    virtual void Check() {
        driver.Pump();
        model.notifications += model.log.size();
        ASSERT_EQ(std::exchange(log, {}), std::exchange(model.log, {})) << this->trace;
        ASSERT_EQ(list->GetCurrItemIdx(), model.current) << this->trace;
        ASSERT_EQ(list->GetItemCount(), model.count) << this->trace;
        for (int i = 0; i < model.count; ++i) {
            ASSERT_EQ(static_cast<int>(list->GetItem(i)), model.values[static_cast<std::size_t>(i)])
                << i << this->trace;
        }
        if (model.count == 0) return;
        const int item = Below(model.count);
        const AccessibleElement told = list->AccessibleChild(item);
        ASSERT_EQ(told.value.GetString(), model.Spoken(item)) << item << trace;
        ASSERT_EQ(told.isInvalid, model.IsInvalid(item)) << item << trace;
        ASSERT_EQ(told.isReadOnly, model.IsLocked(item)) << item << trace;
        if (model.isVerifying) {
            ASSERT_EQ(keying.SettledCount(), static_cast<int>(model.settled.size())) << trace;
        }
        const CRect cell = list->GetItemRect(0);
        ASSERT_EQ(cell.left, -model.first * cell.Width()) << this->trace;
        const CRect last = list->GetItemRect(model.count - 1);
        ASSERT_EQ(last.top, (model.count - 1) % model.rows * cell.Height()) << this->trace;
    }

    virtual void EndPass() = 0;
    void Verify() {
        if (model.isVerifying) {
            list->EndVerification();
            model.isVerifying = false;
            EndPass();
        } else {
            EXPECT_EQ(list->BeginVerification(keying), model.Begin()) << trace;
        }
        EXPECT_EQ(list->IsVerifying(), model.isVerifying) << trace;
    }
    void Commit() { EXPECT_EQ(list->CommitEntry(), model.CommitEntry()) << trace; }

    CPoint OnScreen(CPoint point) const {
        list->ClientToScreen(&point);
        return point;
    }
    /// What has happened lately.
    void Trace(const std::string& what) {
        constexpr std::size_t cKept = 600;
        trace += " " + what;
        if (trace.size() > 2 * cKept) trace.erase(0, trace.size() - cKept);
    }
    /// Away by Tab or by a click elsewhere.
    void LeaveList() {
        if (model.hasFocus && dice.OneIn(2)) {
            Trace("tab");
            driver.PressKey(VK_TAB);
        } else {
            driver.Leave();
        }
    }

    InputDriver& driver;
    Dice dice;
    Log log;
    std::string trace;
    DoubleKeying keying;  ///< of second passes; it outlives the list
    std::unique_ptr<List> list;
    Model model;
    CSize size{300, 120};

private:
    std::unique_ptr<HostServicesScope> m_services;
};

/// Random events on a list of items.
template <class List>
class ItemRun : public ListRun<OpenedList<List>, ItemModel> {
public:
    using Base = ListRun<OpenedList<List>, ItemModel>;
    using Base::dice;
    using Base::driver;
    using Base::list;
    using Base::log;
    using Base::model;

    ItemRun(InputDriver& used, std::uint64_t seed) : Base(used, seed) {
        model.hasSets = std::is_same_v<List, ItemListCtl2>;
        this->Start(std::make_unique<OpenedList<List>>(0, "", -1));
        list->ReportCounts(true);
        log.clear();
    }
    void RunAll(int events) {
        for (int left = events / 10; left > 0 && !testing::Test::HasFailure(); --left) {
            SetLegend();
            this->Check();
        }
        this->Run({{50, "type", [this] { Type(); }},
                   {16, "press", [this] { Press(); }},
                   {8, "takeback", [this] { TakeBack(); }},
                   {6, "click", [this] { Click(); }},
                   {3, "scroll", [this] { this->Scroll(); }},
                   {2, "wheel", [this] { this->Wheel(); }},
                   {2, "resize", [this] { this->Resize(); }},
                   {3, "setitem", [this] { SetItem(); }},
                   {1, "setlegend", [this] { SetLegend(); }},
                   {2, "setreadonly", [this] { SetReadOnly(); }},
                   {2, "verify", [this] { this->Verify(); }},
                   {1, "commit", [this] { this->Commit(); }},
                   {5, "movefocus", [this] { MoveFocus(); }}},
                  events);
    }

    void Type() {
        const char ch = dice.Pick(std::string_view("YyNn123TtFfx "));
        if (model.hasFocus && dice.OneIn(8)) {
            driver.Repeat(ch);  // held: nothing
            return;
        }
        if (!model.hasFocus) return;
        this->Trace({ch});
        driver.Type(ch);
        model.Char(ch);
    }
    void Press() {
        const UINT key = dice.Pick(cKeys);
        if (!model.hasFocus) return;
        this->Trace(std::to_string(key));
        driver.PressKey(key);
        model.Go(model.Target(key));
    }
    void TakeBack() {
        if (dice.OneIn(4)) {
            EXPECT_EQ(list->Undo(), model.Undo()) << this->trace;
        } else if (model.hasFocus) {
            driver.PressKey(VK_BACK);
            model.TakeBack();
        }
    }
    void Click() {
        const int item = this->ShownCell();
        if (item < 0) return;
        int response = this->Below(static_cast<int>(model.Of(item).size()) + 1) - 1;
        CPoint point = this->Corner(item);
        CRect client;
        list->GetClientRect(&client);
        if (response >= 0) {
            const CRect room = list->Room(item, response);
            const int places[] = {room.left, room.right - 1, room.CenterPoint().x};
            const CPoint in(dice.Pick(places), room.CenterPoint().y);
            client.PtInRect(in) != 0 ? static_cast<void>(point = in)
                                     : static_cast<void>(response = -1);
        }
        // In a second pass the second press of a double click keys nothing.
        const bool isSecond = model.isVerifying && model.hasFocus && dice.OneIn(4);
        driver.Click(this->OnScreen(point), isSecond);
        if (!isSecond) model.Click(item, response);
    }
    void SetItem() {
        if (model.count == 0 || model.isVerifying) return;
        const int item = this->Below(model.count);
        const auto value = static_cast<std::uint16_t>(dice.OneIn(3) ? 65535 : dice.Below(9));
        list->SetItem(item, value);
        model.Set(item, value, false);
    }
    void SetLegend() {
        const int count = dice.OneIn(3) ? this->Below(8) : 16 + this->Below(45);
        const ItemDefinition definition = Define(count);
        const int defaultResponse = dice.OneIn(3) ? this->Below(4) - 1 : -1;
        bool isValid = false;
        try {
            isValid = list->SetLegend(count, definition.text.c_str(), defaultResponse) != 0;
        } catch (const CInvalidArgException&) {
            isValid = false;
        }
        ASSERT_EQ(isValid, model.SetLegend(count, definition, defaultResponse)) << definition.text;
        this->Layout();
    }
    /// Responses by chance, as a definition says them.
    ItemDefinition::Responses Responses(int most, std::string& text) {
        static const std::string captions[] = {"Yes", "No", "a[b", "", "at times"};
        static const std::string keys[] = {"Yy", "Nn", "1", "2", "Tt", "x[;:", ""};
        static const std::string codes[] = {"", "7", "65535", "65538", "005", "99999999999"};
        ItemDefinition::Responses responses;
        while (static_cast<int>(responses.size()) < most) {
            ItemDefinition::Response one{dice.Pick(captions), "",
                                         static_cast<int>(responses.size())};
            text += "[" + one.caption;
            const int parts = this->Below(8);
            if (parts > 0) text += "|" + (one.keys = dice.Pick(keys));
            if (parts > 4) {
                const std::string& code = dice.Pick(codes);
                text += "|" + code;
                const long long number = code.empty() ? one.value : std::stoll(code);
                one.value = static_cast<int>(std::min(number, 0x7FFFFFFFLL) & 0xFFFF);
            }
            text += "]";
            responses.push_back(one);
        }
        return responses;
    }
    /// Gives a set to some of the items, as a definition says it.
    void Assign(ItemDefinition& made) {
        const int count = static_cast<int>(made.items.size());
        for (char before = ':'; before != 0; before = dice.OneIn(3) ? ',' : '\0') {
            int first = this->Below(count);
            int last = this->Below(count);
            if (!dice.OneIn(4)) std::tie(first, last) = std::minmax(first, last);
            if (first == last) {
                made.text += before + std::to_string(first);
            } else {
                made.text += before + std::to_string(first) + "-" + std::to_string(last);
            }
            for (int i = first; i <= last; ++i) {
                made.items[static_cast<std::size_t>(i)] = made.sets.back();
            }
        }
    }
    /// A definition for so many items; of six one is none.
    ItemDefinition Define(int count) {
        ItemDefinition made;
        made.items.resize(static_cast<std::size_t>(count));
        if (!model.hasSets) {
            made.sets.push_back(Responses(this->Below(5), made.text));
            made.items.assign(made.items.size(), made.sets.front());
        } else if (count > 0) {
            for (int left = this->Below(5); left > 0; --left) {
                if (!made.text.empty()) made.text += ";";
                made.sets.push_back(Responses(1 + this->Below(4), made.text));
                Assign(made);
            }
        }
        if (!dice.OneIn(6)) return made;
        made.isValid = false;
        if (model.hasSets && dice.OneIn(2)) {
            const std::string faults[] = {"[a]", "[a]0", "[a]:", "[a]:" + std::to_string(count)};
            made.text += (made.text.empty() ? "" : ";") + dice.Pick(faults);
        } else {
            static const std::string faults[] = {"[x",      " ",       "]", ":", ";",
                                                 "[a||1x]", "[a||-1]", "-", ",", "[a|b|1|2]"};
            made.text += dice.Pick(faults);
        }
        return made;
    }
    void SetReadOnly() {
        EXPECT_EQ(list->SetReadOnly(dice.OneIn(4) ? 1 : 0) != 0, model.isReadOnly);
        model.isReadOnly = list->IsReadOnly() != 0;
        model.usesBells = dice.OneIn(2);
        list->UseBells(model.usesBells);
    }
    void EndPass() override {}
    void MoveFocus() {
        const bool focus = !dice.OneIn(5);
        if (!focus) {
            this->LeaveList();
        } else if (!model.hasFocus) {
            driver.Enter(*list);
        }
        model.Focus(focus);
    }
};

/// Random events on a list of numbers.
template <class List>
class NumberRun : public ListRun<List, NumberModel> {
public:
    using Base = ListRun<List, NumberModel>;
    using Base::dice;
    using Base::driver;
    using Base::list;
    using Base::model;

    NumberRun(InputDriver& used, std::uint64_t seed) : Base(used, seed) {
        for (std::size_t i = 0; i < cMost; ++i) {
            const int number = static_cast<int>(i);
            m_names[i] = i % 3 == 0 ? "Scale A" : "A scale with a longer name";
            m_ranges[2 * i] = number % 5 - 2;
            m_ranges[2 * i + 1] = number % 7 == 6 ? -10 : 40 + number;
        }
        if constexpr (std::is_same_v<List, NumberListCtl3>) {
            model.knowsMissing = true;
            this->Start(std::make_unique<List>(0, nullptr, nullptr, cMissingNumber));
        } else {
            this->Start(std::make_unique<List>(0, nullptr, nullptr));
        }
    }

    void Type() {
        const char ch = dice.Pick(std::string_view("0123456789011223-x"));
        if (!model.hasFocus) return;
        this->Trace({ch});
        driver.Type(ch);
        model.Char(ch);
    }
    void Press() {
        const UINT key = dice.Pick(cKeys);
        if (!model.hasFocus) return;
        this->Trace(std::to_string(key));
        driver.PressKey(key);
        model.Key(key);
    }
    void Return() {
        if (!model.hasFocus) return;
        driver.PressKey(VK_RETURN);
        if (model.count > 0) model.Return();
    }
    void TakeBack() {
        const bool isEscape = dice.OneIn(3);
        if (isEscape && dice.OneIn(2)) {
            EXPECT_EQ(list->OnCancel(), model.Cancel()) << this->trace;
        } else if (model.hasFocus) {
            driver.PressKey(isEscape ? VK_ESCAPE : VK_BACK);
            isEscape ? static_cast<void>(model.Cancel()) : model.Back();
        }
    }
    void Click() {
        const int item = this->ShownCell();
        if (item < 0) return;
        this->Trace(std::to_string(item));
        driver.Click(this->OnScreen(this->Corner(item)));
        model.FocusIn(item == model.current);
        model.Go(item);
    }
    void SetItem() {
        if (model.count == 0) return;
        const int item = this->Below(model.count);
        if (model.isVerifying || dice.OneIn(3)) {
            list->SetReadOnlyItem(item);
            model.readOnly.insert(item);
        } else {
            const int value = this->Below(2000) - 100;
            list->SetItem(item, value);
            model.values[static_cast<std::size_t>(item)] = value;
        }
        if (item == model.current) model.Load();
    }
    void SetLegend() {
        const int count = this->Below(cMost + 1) - 1;
        int* ranges = dice.OneIn(3) ? nullptr : m_ranges.data();
        EXPECT_EQ(list->SetLegend(count, m_names.data(), ranges), count >= 0 ? 1 : 0);
        model.count = std::max(count, 0);
        model.current = model.count > 0 ? 0 : -1;
        model.first = 0;
        model.values.assign(static_cast<std::size_t>(model.count),
                            model.knowsMissing ? static_cast<int>(cMissingNumber) : 0);
        model.names = m_names.data();
        model.ranges = ranges;
        model.readOnly.clear();
        model.isVerifying = false;
        model.Load();
        this->Layout();
    }
    void EndPass() override { model.Load(); }
    void SetCurrent() {
        if constexpr (std::is_same_v<List, NumberListCtl2>) {
            if (model.count == 0) return;
            const int item = this->Below(model.count + 2) - 1;
            list->SetCurrItem(item);
            model.Go(item);
        }
    }
    void SetReadOnly() {
        const bool locks = dice.OneIn(4);
        list->SetReadOnly(locks ? 1 : 0);
        if (std::exchange(model.isReadOnly, locks) != locks) model.Load();
    }
    void SetMaxTextLen() {
        model.longest = 1 + this->Below(8);
        list->SetMaxTextLen(model.longest);
        this->Layout();
        model.Show();
    }
    void MoveFocus() {
        if (dice.OneIn(4)) {
            this->LeaveList();
            model.FocusOut();
        } else {
            if (!model.hasFocus) driver.Enter(*list);
            model.FocusIn();
        }
    }
    void Check() override {
        Base::Check();
        const CWnd* box = list->GetDlgItem(NumberListCtl::cEditId);
        ASSERT_EQ(box->IsWindowVisible() != 0, model.isShown) << this->trace;
        if (!model.isShown) return;
        CString text;
        box->GetWindowText(text);
        ASSERT_EQ(text.GetString(), model.text) << this->trace;
    }
    void RunAll(int events) {
        this->Run({{45, "type", [this] { Type(); }},
                   {20, "press", [this] { Press(); }},
                   {10, "return", [this] { Return(); }},
                   {3, "takeback", [this] { TakeBack(); }},
                   {4, "click", [this] { Click(); }},
                   {2, "scroll", [this] { this->Scroll(); }},
                   {2, "wheel", [this] { this->Wheel(); }},
                   {2, "resize", [this] { this->Resize(); }},
                   {2, "setitem", [this] { SetItem(); }},
                   {1, "setlegend", [this] { SetLegend(); }},
                   {2, "setreadonly", [this] { SetReadOnly(); }},
                   {1, "setmaxtextlen", [this] { SetMaxTextLen(); }},
                   {1, "verify", [this] { this->Verify(); }},
                   {2, "commit", [this] { this->Commit(); }},
                   {2, "setcurrent", [this] { SetCurrent(); }},
                   {6, "movefocus", [this] { MoveFocus(); }}},
                  events);
    }

private:
    static constexpr int cMost = 60;

    std::array<const char*, cMost> m_names;
    std::array<int, 2 * cMost> m_ranges;
};

/// One list with a driver of its own. TESSALINK_LIST_EVENTS: so many events.
template <class Driver, class Run>
void runList(const char* name, std::uint64_t seed) {
    SCOPED_TRACE(name);
    Driver driver;
    Run(driver, seed).RunAll(eventCount("TESSALINK_LIST_EVENTS", 5'000));
}

template <class Driver>
void runLists(std::uint64_t seed) {
    runList<Driver, ItemRun<ItemListCtl>>("ItemListCtl", seed);
    runList<Driver, ItemRun<ItemListCtl2>>("ItemListCtl2", seed + 1);
    runList<Driver, NumberRun<NumberListCtl>>("NumberListCtl", seed + 2);
    runList<Driver, NumberRun<NumberListCtl2>>("NumberListCtl2", seed + 3);
    runList<Driver, NumberRun<NumberListCtl3>>("NumberListCtl3", seed + 4);
}

}  // namespace tessalink::test
