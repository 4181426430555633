#pragma once

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "platform/graphics/Geometry.h"
#include "platform/windows/Messages.h"

namespace tessalink::test {

/// What a form tells and does in the order of time: a code of WM_NOTIFY and the item, or a bell.
struct FormNote {
    static constexpr int cBell = 99;

    int code;
    int index;

    bool operator==(const FormNote&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const FormNote& note) {
    if (note.code == FormNote::cBell) return out << "bell";
    return out << note.code << "@" << note.index;
}

/// What there is to know about the items of one interface.
struct FieldKind {
    enum Type { Text, Lines, Backward, Integer, Implied, Float, Time, Checks, Radio };
    struct Cell {
        CRect place;
        std::string keys;
        int value;
    };

    Type type = Text;
    int limit = 0;  ///< characters; 0: any number
    int decimals = 0;
    bool negative = false;
    bool isShort = false;       ///< a time without seconds
    std::vector<Cell> cells{};  ///< the choices, in the item
    CRect choosing{};           ///< where clicks choose

    bool IsChoice() const { return type == Checks || type == Radio; }
    bool IsFiltered() const { return type == Implied || type == Float; }
};

/// How the user writes.
struct FormLocale {
    char point = '.';
    bool is24Hour = true;
};

/// An item and its value, as its interface shows and reads it.
struct FormItem {
    const FieldKind* kind = nullptr;
    CSize size;
    CRect place;
    bool isReadOnly = false;
    bool isNull = true;
    int value = 0;
    double number = 0;
    std::string text;

    void SetNull() {
        isNull = true;
        value = 0;
        text.clear();
    }
    bool SameValue(const FormItem& other) const {
        return isNull == other.isNull && value == other.value && text == other.text &&
               (isNull || number == other.number);
    }
    static std::string Printed(double value, int decimals, char point) {
        std::array<char, 400> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
        std::string text = buffer.data();
        std::replace(text.begin(), text.end(), '.', point);
        return text;
    }
    static int Whole(double value) {
        return value <= INT_MIN ? INT_MIN : value >= INT_MAX ? INT_MAX : static_cast<int>(value);
    }
    std::string Blank(FormLocale locale) const {
        return std::string(kind->isShort ? "__:__" : "__:__:__") + (locale.is24Hour ? "" : " AM");
    }
    double Unit() const { return std::pow(10.0, kind->decimals); }

    std::string Shown(FormLocale locale) const {
        if (kind->type == FieldKind::Time) {
            const int time = kind->isShort ? value * 100 : value;
            const int hour = time / 10000;
            if (isNull) return Blank(locale);
            if (value < 0 || hour > 23 || time / 100 % 100 > 59 || time % 100 > 59) return "";
            const int shown = locale.is24Hour ? hour : hour % 12 == 0 ? 12 : hour % 12;
            std::array<char, 40> buffer{};
            std::snprintf(buffer.data(), buffer.size(),
                          kind->isShort ? "%02d:%02d" : "%02d:%02d:%02d", shown, time / 100 % 100,
                          time % 100);
            return buffer.data() + std::string(locale.is24Hour ? "" : hour < 12 ? " AM" : " PM");
        }
        if (isNull) return "";
        switch (kind->type) {
            case FieldKind::Integer:
                return std::to_string(value);
            case FieldKind::Implied:
                return kind->decimals == 0 ? std::to_string(value)
                                           : Printed(value / Unit(), kind->decimals, locale.point);
            case FieldKind::Float:
                return Printed(number, kind->decimals, locale.point);
            case FieldKind::Backward:
                return {text.rbegin(), text.rend()};
            default:
                return text;
        }
    }
    void Store(std::string typed, FormLocale locale) {
        if (typed.find_first_not_of(" \r\n\t") == std::string::npos) return SetNull();
        if (kind->type == FieldKind::Time) {
            const std::optional<int> time = TimeOf(typed, locale);
            if (!time) return SetNull();
            value = kind->isShort ? *time / 100 : *time;
        } else if (kind->type == FieldKind::Text || kind->type == FieldKind::Lines) {
            text = typed;
        } else if (kind->type == FieldKind::Backward) {
            text.assign(typed.rbegin(), typed.rend());
        } else {
            std::replace(typed.begin(), typed.end(), locale.point, '.');
            number = std::strtod(typed.c_str(), nullptr);
            const double scaled = number * (kind->type == FieldKind::Implied ? Unit() : 1.0);
            if (kind->decimals > 0) {
                value = Whole(scaled < 0 ? scaled - 0.5 : scaled + 0.5);
            } else {
                value = Whole(std::trunc(scaled));
            }
            if (kind->type == FieldKind::Float) value = 0;
        }
        isNull = false;
    }
    /// HHMMSS: numbers with blanks around, a separator after the hour, perhaps one after the
    /// minute, the indicator.
    static std::optional<int> TimeOf(std::string typed, FormLocale locale) {
        std::replace(typed.begin(), typed.end(), '_', ' ');
        int hour = 0;
        int minute = 0;
        int second = 0;
        int used = 0;
        if (std::sscanf(typed.c_str(), " %2d :%2d %n", &hour, &minute, &used) != 2 || used == 0) {
            return std::nullopt;
        }
        std::string rest = typed.substr(static_cast<std::size_t>(used));
        if (!rest.empty() && rest[0] == ':') {
            used = 1;
            if (std::sscanf(rest.c_str(), ":%2d %n", &second, &used) == 0) used = 1;
            rest = rest.substr(static_cast<std::size_t>(used));
        }
        rest.erase(0, rest.find_first_not_of(' '));
        if (locale.is24Hour ? !rest.empty() : rest != "AM" && rest != "PM") return std::nullopt;
        if (rest == "AM" && hour == 12) hour = 0;
        if (rest == "PM" && hour >= 1 && hour <= 11) hour += 12;
        if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
        return hour * 10000 + minute * 100 + second;
    }
};

/// How items are placed, and where the arrows lead.
struct FormLayout {
    enum Type { Column, FlowRows, FlowColumns, GridDown, GridAcross };

    Type type = Column;
    int rows = 0;
    int columns = 1;

    bool IsGrid() const { return type == Column || type == GridDown || type == GridAcross; }
    bool Horizontal() const { return type != FlowRows; }
    bool Vertical() const { return type != FlowColumns; }

    /// Items of a line of a grid, and its lines.
    std::pair<int, int> Lines(int count) const {
        const int length = type == GridAcross ? columns : rows;
        const int lines = type == GridAcross ? rows : columns;
        if (length != 0) return {length, (count + length - 1) / length};
        if (lines == 0) return {0, 0};
        return {(count + lines - 1) / lines, lines};
    }
    void Place(std::vector<FormItem>& items, CSize client) const {
        if (type == Column) {
            PlaceColumn(items, client);
        } else if (IsGrid()) {
            PlaceGrid(items);
        } else {
            PlaceFlow(items, type == FlowRows ? client.cx : client.cy);
        }
    }

private:
    static void PlaceColumn(std::vector<FormItem>& items, CSize client) {
        LONG width = client.cx;
        for (const FormItem& item : items) width = std::max(width, item.size.cx);
        LONG y = 0;
        for (FormItem& item : items) {
            item.place = CRect(0, y, width, y + item.size.cy);
            y += item.size.cy;
        }
    }
    void PlaceFlow(std::vector<FormItem>& items, LONG room) const {
        const bool inRows = type == FlowRows;
        LONG along = 0;
        LONG across = 0;
        LONG depth = 0;
        std::size_t start = 0;
        const auto end = [&](std::size_t stop) {
            for (; start < stop; ++start) {
                CRect& place = items[start].place;
                (inRows ? place.bottom : place.right) = across + depth;
            }
            across += depth;
            along = depth = 0;
        };
        for (std::size_t i = 0; i < items.size(); ++i) {
            const CSize size = items[i].size;
            if (along + (inRows ? size.cx : size.cy) > room) end(i);
            const CPoint corner = inRows ? CPoint(along, across) : CPoint(across, along);
            items[i].place = CRect(corner, size);
            along += inRows ? size.cx : size.cy;
            depth = std::max(depth, inRows ? size.cy : size.cx);
        }
        end(items.size());
    }
    void PlaceGrid(std::vector<FormItem>& items) const {
        const int length = Lines(static_cast<int>(items.size())).first;
        if (length == 0) return;
        const auto column = [&](std::size_t i) {
            const auto n = static_cast<std::size_t>(length);
            return type == GridDown ? i / n : i % n;
        };
        const auto row = [&](std::size_t i) {
            const auto n = static_cast<std::size_t>(length);
            return type == GridDown ? i % n : i / n;
        };
        const auto sizeOf = [&](const auto& lineOf, std::size_t line, LONG SIZE::*part) {
            LONG largest = 0;
            for (std::size_t i = 0; i < items.size(); ++i) {
                if (lineOf(i) == line) largest = std::max(largest, items[i].size.*part);
            }
            return largest;
        };
        for (std::size_t i = 0; i < items.size(); ++i) {
            CPoint corner;
            for (std::size_t c = 0; c < column(i); ++c) corner.x += sizeOf(column, c, &SIZE::cx);
            for (std::size_t r = 0; r < row(i); ++r) corner.y += sizeOf(row, r, &SIZE::cy);
            items[i].place = CRect(corner, CSize(sizeOf(column, column(i), &SIZE::cx),
                                                 sizeOf(row, row(i), &SIZE::cy)));
        }
    }
};

/// The box in which a text is typed.
struct FormBox {
    std::string text;
    int anchor = 0;
    int caret = 0;
    bool isCaretFree = false;  ///< the caret stands somewhere in its line

    int Start() const { return std::min(anchor, caret); }
    int End() const { return std::max(anchor, caret); }
    int Length() const { return static_cast<int>(text.size()); }
    void Load(const std::string& loaded) { *this = {loaded, 0, static_cast<int>(loaded.size())}; }
    std::string Replaced(const std::string& with) const { return Replaced(with, Start(), End()); }
    std::string Replaced(const std::string& with, int start, int end) const {
        return text.substr(0, static_cast<std::size_t>(start)) + with +
               text.substr(static_cast<std::size_t>(end));
    }
    void Replace(const std::string& with) {
        const int place = Start() + static_cast<int>(with.size());
        text = Replaced(with);
        anchor = caret = place;
    }
    int LineOf(int place) const {
        return static_cast<int>(std::count(text.begin(), text.begin() + place, '\n'));
    }
    /// The next place, never inside a line end.
    int Step(int place, int by) const {
        const int next = std::clamp(place + by, 0, Length());
        const bool splits = next > 0 && next < Length() &&
                            text.compare(static_cast<std::size_t>(next) - 1, 2, "\r\n") == 0;
        return splits ? next + by : next;
    }
    void MoveTo(int place, bool extends) {
        caret = place;
        if (!extends) anchor = place;
    }
    int LineStart() const {
        const std::size_t end =
            caret == 0 ? std::string::npos : text.rfind('\n', static_cast<std::size_t>(caret) - 1);
        return end == std::string::npos ? 0 : static_cast<int>(end) + 1;
    }
    int LineEnd() const {
        const std::size_t end = text.find('\r', static_cast<std::size_t>(caret));
        return end == std::string::npos ? Length() : static_cast<int>(end);
    }
};

}  // namespace tessalink::test
