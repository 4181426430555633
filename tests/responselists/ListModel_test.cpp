// The lists against plain models of them: any events, the same notifications, values and places.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/responselists/ListHost.h"
#include "tests/support/Dice.h"
#include "tests/support/ResponseGrammar.h"

using tessalink::test::Dice;
using tessalink::test::ListHost;
using tessalink::test::Log;
using tessalink::test::ResponseGrammar;
using tessalink::test::windows;

namespace {

constexpr int cNoResponse = 65535;
constexpr int cScrollBar = 17;
constexpr UINT cMissing = 77;

// TESSALINK_LIST_EVENTS: so many for each list.
int eventCount() {
    const char* wanted = std::getenv("TESSALINK_LIST_EVENTS");
    return wanted != nullptr ? std::atoi(wanted) : 10'000;
}

std::string told(int code, int item, int value) {
    return std::to_string(code) + " " + std::to_string(item) + " " + std::to_string(value);
}

// Cells in columns, of which one is current.
struct ColumnModel {
    int count = 0;
    int current = -1;
    int first = 0;
    int rows = 1;
    int columns = 0;
    int visible = 1;
    bool hasFocus = false;
    bool isReadOnly = false;
    Log log;
    std::size_t notifications = 0;

    void Layout(CSize window, CSize cell) {
        for (const int bar : {0, cScrollBar}) {
            rows = std::max((static_cast<int>(window.cy) - 2 - bar) / static_cast<int>(cell.cy), 1);
            columns = (count + rows - 1) / rows;
            visible = std::max((static_cast<int>(window.cx) - 2) / static_cast<int>(cell.cx), 1);
            if (columns <= visible) break;
        }
        Scroll(first);
    }
    void Scroll(int column) { first = std::clamp(column, 0, std::max(columns - visible, 0)); }
    void Show() {
        if (current < 0) return;
        const int column = current / rows;
        Scroll(std::clamp(first, column - visible + 1, column));
    }
    int Target(UINT key) const {
        const std::map<UINT, int> targets = {{VK_PRIOR, current - rows * visible},
                                             {VK_NEXT, current + rows * visible},
                                             {VK_END, count - 1},
                                             {VK_HOME, 0},
                                             {VK_LEFT, current - rows},
                                             {VK_UP, current - 1},
                                             {VK_RIGHT, current + rows},
                                             {VK_DOWN, current + 1}};
        return targets.at(key);
    }
    int Clamped(int index) const { return std::max(std::min(index, count - 1), 0); }
    void Focus(bool focus) {
        if (std::exchange(hasFocus, focus) == focus) return;
        log.push_back(focus ? told(NM_SETFOCUS, current, 0) : told(NM_KILLFOCUS, -1, 0));
    }
};

struct ItemModel : ColumnModel {
    ResponseGrammar grammar;
    std::vector<int> values;
    std::vector<std::pair<int, int>> undo;
    bool isVerifying = false;
    std::vector<int> firstAnswers;
    std::pair<int, int> open{-1, 0};
    bool isStopped = false;
    bool usesBells = false;

    void Counts() {
        const auto answered = count - std::count(values.begin(), values.end(), cNoResponse);
        log.push_back("3 " + std::to_string(answered) + "/" + std::to_string(count - answered) +
                      "/" + std::to_string(count));
    }
    bool SetLegend(int newCount, const std::string& definition, int defaultResponse) {
        undo.clear();
        isVerifying = false;
        first = 0;
        grammar = ResponseGrammar::OfSeveral(definition, static_cast<std::size_t>(newCount));
        bool isValid = grammar.verdict == ResponseGrammar::Verdict::Valid;
        for (const auto& set : grammar.sets) {
            isValid = isValid && defaultResponse < static_cast<int>(set.size());
        }
        isValid = isValid && (defaultResponse < 0 || !grammar.sets.empty());
        count = isValid ? newCount : 0;
        current = count > 0 ? 0 : -1;
        values.clear();
        for (int i = 0; i < count; ++i) {
            const bool has = defaultResponse >= 0 && !Of(i).empty();
            values.push_back(has ? Of(i)[static_cast<std::size_t>(defaultResponse)].value
                                 : cNoResponse);
        }
        Counts();
        return isValid;
    }
    const ResponseGrammar::Responses& Of(int item) const {
        return grammar.items[static_cast<std::size_t>(item)];
    }
    int& Value(int item) { return values[static_cast<std::size_t>(item)]; }
    void Set(int item, int value, bool tells) {
        const int before = std::exchange(Value(item), value);
        if (before == value) return;
        if (tells) log.push_back(told(1, item, value));
        if ((before == cNoResponse) != (value == cNoResponse)) Counts();
    }
    void Move(int index) {
        if (count == 0) return;
        if (Clamped(index) != current) log.push_back(told(2, current = Clamped(index), 0));
    }
    void Go(int index) {
        Move(index);
        Show();
    }
    bool Answer(int value) {
        if (!isVerifying) {
            undo.emplace_back(current, Value(current));
            Set(current, value, true);
            return true;
        }
        int& firstAnswer = firstAnswers[static_cast<std::size_t>(current)];
        isStopped = false;
        if (value != firstAnswer && open != std::pair(current, value)) {
            open = {current, value};
            log.insert(log.end(), {"bell", told(4, current, value)});
            return false;
        }
        open.first = -1;
        if (std::exchange(firstAnswer, value) != value) Set(current, value, true);
        log.push_back(told(5, current, value));
        return true;
    }
    bool IsStopped() const { return isStopped && isVerifying && open.first == current; }
    void Char(char ch) {
        if (current < 0 || isReadOnly) return;
        for (const auto& response : Of(current)) {
            if (IsStopped() || response.keys.find(ch) == std::string::npos) continue;
            isStopped = !Answer(response.value);
            if (isStopped) return Show();
            if (usesBells && current == count - 1) log.emplace_back("bell");
            Go(current + 1);
            return;
        }
        if (usesBells || IsStopped()) log.emplace_back("bell");
    }
    void Undo() {
        if (IsStopped()) isStopped = false;
        if (undo.empty() || isReadOnly || isVerifying) return;
        const auto [item, before] = undo.back();
        undo.pop_back();
        Set(item, before, true);
        Go(item);
    }
    void Click(int item, int response) {
        Focus(true);
        Move(item);
        if (response >= 0 && !isReadOnly)
            Answer(Of(item)[static_cast<std::size_t>(response)].value);
        Show();
    }
    void Verify() {
        isVerifying = true;
        isStopped = false;
        firstAnswers = values;
        open.first = -1;
        undo.clear();
        Go(0);
    }
};

// Knows where captions stand.
class OpenedList : public ItemListCtl2 {
public:
    using ItemListCtl2::ItemListCtl2;

    CPoint MiddleOf(int item, int response) const {
        int widest = 0;
        for (const auto& set : m_sets) {
            int width = 0;
            for (const auto& one : set) width += one.width + m_halfWidth;
            widest = std::max(widest, width);
        }
        const CRect cell = GetItemRect(item);
        const auto& responses = *responses_of(item);
        int x = cell.right - widest;
        for (int i = 0; i < response; ++i) {
            x += responses[static_cast<std::size_t>(i)].width + m_halfWidth;
        }
        return {x + responses[static_cast<std::size_t>(response)].width / 2, cell.CenterPoint().y};
    }
};

constexpr UINT cKeys[] = {VK_PRIOR, VK_NEXT, VK_END, VK_HOME, VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN};

// What both lists have in common.
template <class List, class Model>
class Driver {
public:
    explicit Driver(std::uint64_t seed) : dice(seed) {}
    virtual ~Driver() = default;

    int Below(int bound) { return static_cast<int>(dice.Below(static_cast<std::size_t>(bound))); }
    void Start(std::unique_ptr<List> made) {
        list = std::move(made);
        list->Create(CRect(CPoint(), size), 5, &host);
        host.Take();
    }
    void Layout() {
        if (model.count > 0) model.Layout(size, list->GetItemRect(0).Size());
    }
    void Resize() {
        size = CSize(40 + Below(600), 20 + Below(300));
        list->MoveWindow(CRect(CPoint(), size));
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
        list->SendMessage(WM_HSCROLL, MAKEWPARAM(target->first, static_cast<UINT>(position)));
        if (model.count > 0) model.Scroll(target->second);
    }
    void Wheel() {
        const int notches = Below(7) - 3;
        windows().Turn({5, 5}, static_cast<short>(120 * notches));
        if (model.count > 0) model.Scroll(model.first - (notches == 0 ? 1 : notches));
    }
    // A cell that shows, or -1.
    int ShownCell() {
        CRect client;
        list->GetClientRect(&client);
        const CPoint point(Below(std::max<int>(client.right, 1)),
                           Below(std::max<int>(client.bottom, 1)));
        return list->ItemAt(point);
    }
    // Events by chance, each as often as its weight says.
    struct Event {
        int weight;
        std::function<void()> happens;
    };
    void Run(const std::vector<Event>& events, int count) {
        int all = 0;
        for (const Event& event : events) all += event.weight;
        for (int number = 0; number < count && !testing::Test::HasFailure(); ++number) {
            auto event = events.begin();
            for (int left = Below(all); left >= event->weight; ++event) left -= event->weight;
            event->happens();
            Check(number);
        }
        EXPECT_GT(model.notifications, static_cast<std::size_t>(count) / 4);
    }
    virtual void Check(int event) {
        windows().Pump();
        model.notifications += model.log.size();
        ASSERT_EQ(host.Take(), std::exchange(model.log, {})) << event;
        ASSERT_EQ(list->GetCurrItemIdx(), model.current) << event;
        ASSERT_EQ(list->GetItemCount(), model.count) << event;
        for (int i = 0; i < model.count; ++i) {
            ASSERT_EQ(static_cast<int>(list->GetItem(i)), model.values[static_cast<std::size_t>(i)])
                << event << " " << i;
        }
        if (model.count == 0) return;
        const CRect cell = list->GetItemRect(0);
        ASSERT_EQ(cell.left, -model.first * cell.Width()) << event;
        const CRect last = list->GetItemRect(model.count - 1);
        ASSERT_EQ(last.top, (model.count - 1) % model.rows * cell.Height()) << event;
    }

    Dice dice;
    ListHost host;
    std::unique_ptr<List> list;
    Model model;
    CSize size{300, 120};
};

class ItemRun : public Driver<OpenedList, ItemModel> {
public:
    ItemRun() : Driver(61) {
        Start(std::make_unique<OpenedList>(0, "", -1));
        list->ReportCounts(1);
        host.Take();
    }

    void Type() {
        const char ch = dice.Pick(std::string_view("YyNn123TtFfx "));
        if (model.hasFocus && dice.OneIn(8)) {
            tessalink::keyPressed(*list, 'X', std::string(1, ch), 1, true);  // held: nothing
            return;
        }
        windows().Type(std::string(1, ch));
        if (model.hasFocus) model.Char(ch);
    }
    void Press() {
        const UINT key = dice.Pick(cKeys);
        windows().PressKey(key);
        if (model.hasFocus) model.Go(model.Target(key));
    }
    void TakeBack() {
        windows().PressKey(VK_BACK);
        if (model.hasFocus) model.Undo();
    }
    void Click() {
        const int item = ShownCell();
        if (item < 0) return;
        const int response = Below(static_cast<int>(model.Of(item).size()) + 1) - 1;
        CPoint point = list->GetItemRect(item).TopLeft() + CSize(2, 2);
        if (response >= 0) point = list->MiddleOf(item, response);
        list->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(point.x, point.y));
        model.Click(item, response);
    }
    void SetItem() {
        if (model.count == 0) return;
        const int item = Below(model.count);
        const auto value = static_cast<std::uint16_t>(dice.OneIn(3) ? 65535 : dice.Below(9));
        list->SetItem(item, value);
        model.Set(item, value, false);
    }
    void SetLegend() {
        static const std::string definitions[] = {"[Yes|Yy|1][No|Nn|2]:0-9;[1|1][2|2][3|3]:3,12-14",
                                                  "[T|Tty][F|Ffn][none||65535]:0-4",
                                                  "[a|y|7][b|y1|7][c|n2|8]:0",
                                                  "[Yes|Yy|1]:0-40",
                                                  "",
                                                  "[x",
                                                  "[a]:2;"};
        const int count = dice.OneIn(6) ? Below(16) : 16 + Below(45);
        const auto& definition = dice.OneIn(3) ? dice.Pick(definitions) : definitions[0];
        const int defaultResponse = dice.OneIn(3) ? Below(4) - 1 : -1;
        bool isValid = false;
        try {
            isValid = list->SetLegend(count, definition.c_str(), defaultResponse) != 0;
        } catch (const CInvalidArgException&) {
            isValid = false;
        }
        ASSERT_EQ(isValid, model.SetLegend(count, definition, defaultResponse)) << definition;
        Layout();
    }
    void SetReadOnly() {
        EXPECT_EQ(list->SetReadOnly(dice.OneIn(4) ? 1 : 0) != 0, model.isReadOnly);
        model.isReadOnly = list->IsReadOnly() != 0;
        model.usesBells = dice.OneIn(2);
        list->UseBells(model.usesBells ? 1 : 0);
    }
    void Verify() {
        if (model.isVerifying) {
            list->EndVerification();
            model.isVerifying = false;
        } else {
            list->BeginVerification(m_keying);
            model.Verify();
        }
    }
    void MoveFocus() {
        const bool focus = !dice.OneIn(5);
        (focus ? static_cast<CWnd*>(list.get()) : &host.other)->SetFocus();
        model.Focus(focus);
    }

private:
    tessalink::DoubleKeying m_keying;
};

TEST(ListModels, ItemListCtl2) {
    ItemRun run;
    run.Run({{50, [&] { run.Type(); }},
             {16, [&] { run.Press(); }},
             {8, [&] { run.TakeBack(); }},
             {6, [&] { run.Click(); }},
             {3, [&] { run.Scroll(); }},
             {2, [&] { run.Wheel(); }},
             {2, [&] { run.Resize(); }},
             {3, [&] { run.SetItem(); }},
             {1, [&] { run.SetLegend(); }},
             {2, [&] { run.SetReadOnly(); }},
             {2, [&] { run.Verify(); }},
             {5, [&] { run.MoveFocus(); }}},
            eventCount());
}

struct NumberModel : ColumnModel {
    std::vector<int> values;
    const char** names = nullptr;
    const int* ranges = nullptr;
    bool knowsMissing = false;
    std::set<int> readOnly;
    bool isShown = false;
    bool isRefused = false;
    int longest = 5;
    std::string text;
    bool isSelected = false;
    std::size_t caret = 0;
    bool isVerifying = false;
    std::set<int> settled;
    std::pair<int, int> open{-1, 0};

    bool IsMissing(int value) const { return knowsMissing && value == static_cast<int>(cMissing); }
    bool IsLocked(int index) const { return isReadOnly || readOnly.count(index) != 0; }
    std::string TextOf(int index) const {
        if (isVerifying && settled.count(index) == 0) return "";
        const int value = values[static_cast<std::size_t>(index)];
        return IsMissing(value) ? "" : std::to_string(value);
    }
    void Select() {
        isSelected = !text.empty();
        caret = text.size();
    }
    void Load() {
        isRefused = false;
        if (current < 0) {
            isShown = false;
            return;
        }
        text = TextOf(current);
        Select();
        isShown = hasFocus;
    }
    void Cancel() {
        if (current >= 0 && text != TextOf(current)) Load();
    }
    bool Verify(int value) {
        int& own = values[static_cast<std::size_t>(current)];
        if (settled.count(current) != 0 && value == own) return true;
        if (value != own && open != std::pair(current, value)) {
            open = {current, value};
            log.insert(log.end(), {"bell", told(4, current, value)});
            Change("", 0);
            return false;
        }
        open.first = -1;
        if (std::exchange(own, value) != value) log.push_back(told(1, current, value));
        settled.insert(current);
        log.push_back(told(5, current, value));
        return true;
    }
    bool Commit(bool asks, bool isReturn = false) {
        isRefused = false;
        const int value =
            text.empty() && knowsMissing ? static_cast<int>(cMissing) : std::atoi(text.c_str());
        int& own = values[static_cast<std::size_t>(current)];
        if (isVerifying && text.empty() && !(isReturn && IsMissing(value))) {
            if (isReturn) log.emplace_back("bell");
            return !isReturn;
        }
        if (value == own) return !isVerifying || Verify(value);
        const int* range =
            ranges != nullptr && !IsMissing(value) ? ranges + std::ptrdiff_t{2} * current : nullptr;
        if (range != nullptr && (value < range[0] || value > range[1])) {
            isRefused = !asks;
            if (!asks) return false;
            const bool isBelow = value < range[0];
            log.push_back("box " + std::string(names[current]) + " The " +
                          (isBelow ? "minimum" : "maximum") + " value is " +
                          std::to_string(range[isBelow ? 0 : 1]) + "!");
            if (hasFocus) Select();
            return false;
        }
        if (isVerifying) return Verify(value);
        own = value;
        log.push_back(told(1, current, value));
        return true;
    }
    bool Begin() {
        if (isShown && current >= 0 && !IsLocked(current) && !Commit(true)) return false;
        isVerifying = true;
        settled.clear();
        open.first = -1;
        Load();
        Go(0);
        return true;
    }
    void Go(int index, bool isReturn = false) {
        if (count == 0) return;
        index = Clamped(index);
        if (index != current && (!isShown || IsLocked(current) || Commit(true, isReturn))) {
            current = index;
            Load();
            log.push_back(told(2, index, 0));
        }
        Show();
    }
    void Return() {
        int target = current + 1;
        while (target < count && IsLocked(target)) ++target;
        if (target >= count) target = current;
        if (target == current && !IsLocked(current) && Commit(true, true)) Load();
        Go(target, true);
    }
    void FocusIn(bool asks = true) {
        if (hasFocus) return;
        const bool wasShown = std::exchange(isShown, count > 0);
        Focus(true);
        if (count > 0 && !wasShown) Load();
        if (isRefused && asks) Commit(true);
    }
    void FocusOut() {
        if (!hasFocus) return;
        if (count > 0 && !IsLocked(current)) Commit(false);
        isShown = isRefused;
        Focus(false);
    }
    void Change(const std::string& now, std::size_t place) {
        text = now;
        caret = place;
        isSelected = false;
    }
    void Char(char ch) {
        if (current < 0) return;
        Show();
        const std::string now =
            isSelected ? std::string(1, ch) : text.substr(0, caret) + ch + text.substr(caret);
        const bool isNumber =
            now.find_first_not_of("0123456789", now[0] == '-') == std::string::npos;
        if (!isNumber || static_cast<int>(now.size()) > longest || IsLocked(current)) {
            log.push_back("bell");
        } else {
            Change(now, isSelected ? 1 : caret + 1);
        }
    }
    void Back() {
        Show();
        if (current < 0 || IsLocked(current)) return;
        if (isSelected) {
            Change("", 0);
        } else if (caret > 0) {
            Change(text.substr(0, caret - 1) + text.substr(caret), caret - 1);
        }
    }
    void Key(UINT key) {
        if (current >= 0) Go(Target(key));
    }
};

template <class List>
class NumberRun : public Driver<List, NumberModel> {
public:
    using Driver<List, NumberModel>::dice;
    using Driver<List, NumberModel>::host;
    using Driver<List, NumberModel>::list;
    using Driver<List, NumberModel>::model;

    NumberRun(std::unique_ptr<List> made, bool knowsMissing) : Driver<List, NumberModel>(62) {
        for (std::size_t i = 0; i < cMost; ++i) {
            const int number = static_cast<int>(i);
            m_names[i] = i % 3 == 0 ? "Scale A" : "A scale with a longer name";
            m_ranges[2 * i] = number % 5 - 2;
            m_ranges[2 * i + 1] = number % 7 == 6 ? -10 : 40 + number;
        }
        model.knowsMissing = knowsMissing;
        this->Start(std::move(made));
    }

    void Type() {
        const char ch = dice.Pick(std::string_view("0123456789011223-x"));
        windows().Type(std::string(1, ch));
        if (model.hasFocus) model.Char(ch);
    }
    void Press() {
        const UINT key = dice.Pick(cKeys);
        windows().PressKey(key);
        if (model.hasFocus) model.Key(key);
    }
    void Return() {
        windows().PressKey(VK_RETURN);
        if (model.hasFocus && model.count > 0) model.Return();
    }
    void TakeBack() {
        const bool isEscape = dice.OneIn(3);
        windows().PressKey(isEscape ? VK_ESCAPE : VK_BACK);
        if (!model.hasFocus) return;
        isEscape ? model.Cancel() : model.Back();
    }
    void Click() {
        const int item = this->ShownCell();
        if (item < 0) return;
        const CPoint point = list->GetItemRect(item).TopLeft() + CSize(2, 2);
        list->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(point.x, point.y));
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
                            model.knowsMissing ? static_cast<int>(cMissing) : 0);
        model.names = m_names.data();
        model.ranges = ranges;
        model.readOnly.clear();
        model.isVerifying = false;
        model.Load();
        this->Layout();
    }
    void Verify() {
        if (model.isVerifying) {
            list->EndVerification();
            model.isVerifying = false;
            model.Load();
        } else {
            EXPECT_EQ(list->BeginVerification(m_keying) != 0, model.Begin());
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
            host.other.SetFocus();
            model.FocusOut();
        } else {
            list->SetFocus();
            model.FocusIn();
        }
    }
    void Check(int event) override {
        Driver<List, NumberModel>::Check(event);
        const CWnd* box = list->GetDlgItem(NumberListCtl::cEditId);
        ASSERT_EQ(box->IsWindowVisible() != 0, model.isShown) << event;
        if (!model.isShown) return;
        CString text;
        box->GetWindowText(text);
        ASSERT_EQ(text.GetString(), model.text) << event;
    }
    void RunAll() {
        this->Run({{45, [this] { Type(); }},
                   {20, [this] { Press(); }},
                   {10, [this] { Return(); }},
                   {3, [this] { TakeBack(); }},
                   {4, [this] { Click(); }},
                   {2, [this] { this->Scroll(); }},
                   {2, [this] { this->Wheel(); }},
                   {2, [this] { this->Resize(); }},
                   {2, [this] { SetItem(); }},
                   {1, [this] { SetLegend(); }},
                   {2, [this] { SetReadOnly(); }},
                   {1, [this] { SetMaxTextLen(); }},
                   {1, [this] { Verify(); }},
                   {6, [this] { MoveFocus(); }}},
                  eventCount() / 2);
    }

private:
    static constexpr int cMost = 60;

    std::array<const char*, cMost> m_names;
    std::array<int, 2 * cMost> m_ranges;
    tessalink::DoubleKeying m_keying;
};

TEST(ListModels, NumberListCtl) {
    NumberRun(std::make_unique<NumberListCtl>(0, nullptr, nullptr), false).RunAll();
}

TEST(ListModels, NumberListCtl3) {
    NumberRun(std::make_unique<NumberListCtl3>(0, nullptr, nullptr, cMissing), true).RunAll();
}

}  // namespace
