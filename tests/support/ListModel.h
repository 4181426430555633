#pragma once

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/graphics/Geometry.h"
#include "platform/windows/Messages.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink::test {

/// What a list tells, message boxes and bells, all in their order.
using Log = std::vector<std::string>;

constexpr int cNoResponse = 65535;
constexpr UINT cMissingNumber = 77;

inline std::string told(int code, int item, int value) {
    return std::to_string(code) + " " + std::to_string(item) + " " + std::to_string(value);
}

/// The responses of items, and the text that says so.
struct ItemDefinition {
    struct Response {
        std::string caption;
        std::string keys;
        int value = 0;
    };
    using Responses = std::vector<Response>;

    std::string text;
    bool isValid = true;
    std::vector<Responses> sets;
    std::vector<Responses> items;  ///< the responses of each; none for one without
};

/// Cells in columns, of which one is current.
struct ColumnModel {
    int count = 0;
    int current = -1;
    int first = 0;
    int rows = 1;
    int columns = 0;
    int visible = 1;
    bool hasFocus = false;
    bool isReadOnly = false;
    std::vector<int> values;
    bool isVerifying = false;
    std::set<int> settled;
    std::pair<int, int> open{-1, 0};
    int corrections = 0;
    bool isComplete = false;
    Log log;
    std::size_t notifications = 0;

    virtual ~ColumnModel() = default;

    void Layout(CSize window, CSize cell) {
        for (const int bar : {0, tessalink::GetSystemMetrics(SM_CYHSCROLL)}) {
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
    int& Value(int item) { return values[static_cast<std::size_t>(item)]; }
    void BeginPass() {
        isVerifying = true;
        settled.clear();
        open.first = -1;
        corrections = 0;
        isComplete = false;
    }
    /// Whether a second pass can come to a cell.
    virtual bool IsKeyed(int item) const = 0;
    /// What a value reads.
    virtual std::string Reading(int item, int value) const = 0;
    std::string Named(int item, int value) const {
        const std::string reading = Reading(item, value);
        return reading.empty() ? "none" : reading;
    }
    bool IsOpen(int item) const { return isVerifying && open.first == item; }
    /// What assistive technology reads at a cell.
    std::string Spoken(int item) {
        if (IsOpen(item)) {
            return "First " + Named(item, Value(item)) + ", now " + Named(item, open.second);
        }
        return isVerifying && settled.count(item) == 0 ? "" : Reading(item, Value(item));
    }
    virtual void Store(int item, int value) {
        Value(item) = value;
        log.push_back(told(1, item, value));
    }
    /// The current cell is keyed again; false at a difference.
    bool Verify(int value) {
        if (value != Value(current) && open != std::pair(current, value)) {
            open = {current, value};
            log.insert(log.end(), {"bell", told(4, current, value)});
            return false;
        }
        open.first = -1;
        settled.insert(current);
        if (value != Value(current)) {
            ++corrections;
            Store(current, value);
        }
        log.push_back(told(5, current, value));
        bool isLeft = isComplete;
        for (int i = 0; i < count; ++i) isLeft = isLeft || (IsKeyed(i) && settled.count(i) == 0);
        if (isLeft) return true;
        isComplete = true;
        log.insert(log.end(), {"bell", told(6, -1, corrections)});
        return true;
    }
    int Clamped(int index) const { return std::max(std::min(index, count - 1), 0); }
    void Focus(bool focus) {
        if (std::exchange(hasFocus, focus) == focus) return;
        log.push_back(focus ? told(static_cast<int>(NM_SETFOCUS), current, 0)
                            : told(static_cast<int>(NM_KILLFOCUS), -1, 0));
    }
};

/// A list of items with responses.
struct ItemModel : ColumnModel {
    bool hasSets = true;  ///< of responses
    ItemDefinition definition;
    std::vector<std::pair<int, int>> undo;
    bool isStopped = false;
    bool usesBells = false;

    void Counts() {
        const auto answered = count - std::count(values.begin(), values.end(), cNoResponse);
        log.push_back("3 " + std::to_string(answered) + "/" + std::to_string(count - answered) +
                      "/" + std::to_string(count));
    }
    bool SetLegend(int newCount, const ItemDefinition& given, int defaultResponse) {
        undo.clear();
        isVerifying = false;
        first = 0;
        definition = given;
        bool isValid = given.isValid && (defaultResponse < 0 || !given.sets.empty());
        for (const auto& set : given.sets) {
            isValid = isValid && defaultResponse < static_cast<int>(set.size());
        }
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
    const ItemDefinition::Responses& Of(int item) const {
        return definition.items[static_cast<std::size_t>(item)];
    }
    std::string Reading(int item, int value) const override {
        for (const auto& response : Of(item)) {
            if (response.value == value) return response.caption;
        }
        return "";
    }
    bool IsKeyed(int item) const override { return !Of(item).empty(); }
    bool IsInvalid(int item) const { return IsOpen(item); }
    bool IsLocked(int) const { return isReadOnly; }
    void Store(int item, int value) override { Set(item, value, true); }
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
        isStopped = false;
        return Verify(value);
    }
    bool IsStopped() const { return isStopped && isVerifying && open.first == current; }
    void Char(char ch) {
        if (current < 0 || isReadOnly) return;
        for (const auto& response : Of(current)) {
            if (IsStopped() || response.keys.find(ch) == std::string::npos) continue;
            isStopped = !Answer(response.value);
            if (isStopped) return Show();
            if (usesBells && !isVerifying && current == count - 1) log.emplace_back("bell");
            Go(current + 1);
            return;
        }
        if (usesBells || IsStopped()) log.emplace_back("bell");
    }
    void TakeBack() {
        if (IsStopped()) isStopped = false;
        Undo();
    }
    bool Undo() {
        if (undo.empty() || isReadOnly || isVerifying) return false;
        const auto [item, before] = undo.back();
        undo.pop_back();
        Set(item, before, true);
        Go(item);
        return true;
    }
    void Click(int item, int response) {
        Focus(true);
        Move(item);
        if (response >= 0 && !isReadOnly)
            Answer(Of(item)[static_cast<std::size_t>(response)].value);
        Show();
    }
    bool CommitEntry() { return true; }
    bool Begin() {
        BeginPass();
        undo.clear();
        Go(0);
        return true;
    }
};

/// A list of numbers and its box.
struct NumberModel : ColumnModel {
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

    bool IsMissing(int value) const {
        return knowsMissing && value == static_cast<int>(cMissingNumber);
    }
    bool IsLocked(int index) const { return isReadOnly || readOnly.count(index) != 0; }
    std::string TextOf(int index) const {
        if (isVerifying && settled.count(index) == 0) return "";
        return Reading(index, values[static_cast<std::size_t>(index)]);
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
    bool Cancel() {
        if (current < 0 || !isShown || text == TextOf(current)) return false;
        Load();
        return true;
    }
    bool IsKeyed(int item) const override { return readOnly.count(item) == 0; }
    bool IsInvalid(int item) const { return IsOpen(item) || (isRefused && item == current); }
    std::string Reading(int, int value) const override {
        return IsMissing(value) ? "" : std::to_string(value);
    }
    bool Again(int value) {
        const bool isSaid = settled.count(current) != 0 && open.first != current;
        if ((isSaid && value == Value(current)) || Verify(value)) return true;
        Change("", 0);
        return false;
    }
    bool Commit(bool asks, bool isReturn = false) {
        isRefused = false;
        const int value = text.empty() && knowsMissing ? static_cast<int>(cMissingNumber)
                                                       : std::atoi(text.c_str());
        int& own = values[static_cast<std::size_t>(current)];
        if (isVerifying && text.empty() && !(isReturn && IsMissing(value))) {
            if (isReturn) log.emplace_back("bell");
            return !isReturn;
        }
        if (value == own) return !isVerifying || Again(value);
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
        if (isVerifying) return Again(value);
        Store(current, value);
        return true;
    }
    bool CommitEntry() {
        if (!isShown || current < 0 || IsLocked(current) || Commit(true)) return true;
        if (!hasFocus) FocusIn(false);
        Select();
        return false;
    }
    bool Begin() {
        if (!CommitEntry()) return false;
        BeginPass();
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
        Select();
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

}  // namespace tessalink::test
