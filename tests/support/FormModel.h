#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "platform/graphics/Geometry.h"
#include "platform/windows/Messages.h"
#include "tests/support/FormParts.h"

namespace tessalink::test {

/// A form as its manual tells it. What texts measure, and where the choices of an item lie, is
/// given; everything else it works out plainly.
class FormModel {
public:
    // The state that can be compared.
    std::vector<FormItem> items;
    std::vector<FormNote> notes;
    FormLayout layout;
    FormLocale locale;
    FormBox box;
    CSize client;
    CPoint scroll;
    int current = 0;
    bool hasFocus = false;
    bool autoAdvance = true;
    bool tabMoves = false;
    /// The parent's mood.
    bool refusesChanges = false;
    bool refusesClicks = false;

    bool ShowsBox() const { return hasFocus && !Now().kind->IsChoice(); }
    const FormItem& Now() const { return items[static_cast<std::size_t>(current)]; }

    // The program.

    void Layout(CSize size) {
        client = size;
        layout.Place(items, size);
        scroll.x = std::clamp<LONG>(scroll.x, 0, std::max<LONG>(Extent().cx - client.cx, 0));
        scroll.y = std::clamp<LONG>(scroll.y, 0, std::max<LONG>(Extent().cy - client.cy, 0));
    }
    void Resize(CSize size) {
        if (size != client) Grow(size);
    }
    /// Bars that come take room from the current item.
    void Grow(CSize size) {
        const bool changes = size != client;
        Layout(size);
        if (changes) ScrollIntoView();
    }
    CSize Extent() const {
        CSize extent;
        for (const FormItem& item : items) {
            extent.cx = std::max(extent.cx, item.place.right);
            extent.cy = std::max(extent.cy, item.place.bottom);
        }
        return extent;
    }
    void SetCurrent(int index) {
        if (index != current && !Commit()) return;
        // What is being typed into the current item is not disturbed.
        const bool isThere = hasFocus && index == current;
        GoTo(index);
        ScrollIntoView();
        TakeFocus(true, isThere);
    }
    void SetReadOnly(int index, bool readOnly) {
        if (index == current) Commit();
        FormItem& item = items[static_cast<std::size_t>(index)];
        if (std::exchange(item.isReadOnly, readOnly) != readOnly && index == current) Load();
    }
    void SetAllReadOnly(bool readOnly) {
        Commit();
        for (FormItem& item : items) item.isReadOnly = readOnly;
        Load();
    }
    /// Whether all that was typed is kept, when a dialog asks.
    bool CommitEntry() {
        const bool wasRefused = std::exchange(m_wasRefused, false);
        const bool isUntouched = ShowsBox() && box.text == Now().Shown(locale);
        return !(wasRefused && isUntouched) && Commit();
    }
    // What is still refused goes with the window.
    void Destroy() {
        Leave();
        m_wasRefused = false;
        hasFocus = m_isAttached = false;
        m_cursor = -1;
    }

    // The user.

    /// The focus comes by Tab, or by Shift+Tab from behind.
    void Focus(bool isBack) {
        if (hasFocus) return;
        if (tabMoves) {
            GoTo(isBack ? Count() - 1 : 0);
            ScrollIntoView();
        }
        TakeFocus(true, false);
    }
    void Leave() {
        if (!hasFocus) return;
        m_wasRefused = !Commit();
        if (m_wasRefused) return;
        hasFocus = false;
        notes.push_back({static_cast<int>(NM_KILLFOCUS), -1});
    }
    /// A click, in the client area, but not into the box of a text.
    void Click(CPoint point) {
        const CPoint place = point + CSize(scroll.x, scroll.y);
        const auto inside = [&](const FormItem& item) { return place - item.place.TopLeft(); };
        // The window over the current item gets clicks there.
        if (m_isAttached && Now().place.PtInRect(place)) {
            const bool isDone = ClickChoice(CPoint(inside(Now()).cx, inside(Now()).cy));
            if (!isDone || !hasFocus) SetCurrent(current);
            return;
        }
        const int hit = ItemAt(place);
        if (hit < 0) return;
        notes.push_back({3, hit});
        if (refusesClicks) return TakeFocus(false, hasFocus);
        SetCurrent(hit);
        if (current == hit) ClickChoice(CPoint(inside(Now()).cx, inside(Now()).cy));
    }
    void Turn(int delta, bool isLow) {
        const bool isOverBar = isLow && layout.Horizontal() && Extent().cx > client.cx;
        const bool vertical = layout.Vertical() && !isOverBar;
        for (int i = std::abs(delta) * 3 / 120; i > 0; --i) {
            Scroll(vertical, delta < 0 ? SB_LINEDOWN : SB_LINEUP, 0);
        }
    }
    void Scroll(bool vertical, UINT code, int thumb) {
        if (!m_isAttached || !hasFocus) TakeFocus(true, false);
        LONG& position = vertical ? scroll.y : scroll.x;
        const LONG size = vertical ? client.cy : client.cx;
        const LONG end = std::max<LONG>((vertical ? Extent().cy : Extent().cx) - size, 0);
        const LONG before = position;
        switch (code) {
            case SB_LINEUP:
            case SB_PAGEUP:
                position = std::max<LONG>(position - (code == SB_PAGEUP ? size : size / 4), 0);
                break;
            case SB_LINEDOWN:
            case SB_PAGEDOWN:
                if (position >= end) break;
                position = std::min(position + (code == SB_PAGEDOWN ? size : size / 4), end);
                break;
            case SB_THUMBPOSITION:
                position = std::clamp<LONG>(thumb, 0, end);
                break;
            case SB_TOP:
                position = 0;
                break;
            case SB_BOTTOM:
                position = end;
                break;
            default:
                break;
        }
        if (position == before) return;
        const int shown = ItemAfterScroll(position > before ? 1 : -1);
        if (shown < 0 || shown == current || !Commit()) return;
        GoTo(shown);
        TakeFocus(true, false);
    }
    void Type(char ch) {
        if (!hasFocus) return;
        if (Now().kind->IsChoice()) return ChooseByKey(ch);
        if (Now().kind->type == FieldKind::Time) return TypeTime(ch);
        if (Now().kind->type == FieldKind::Integer && (ch < '0' || ch > '9')) return Bell();
        if (Now().kind->IsFiltered() && !(Accepts(ch) && IsValid(box.Replaced({ch})))) {
            return Bell();
        }
        Insert({ch});
    }
    void Press(UINT key, bool ctrl, bool shift) {
        if (!hasFocus) return;
        if (key == VK_TAB) return Tab(shift);
        if (Now().kind->IsChoice()) {
            const int count = static_cast<int>(Now().kind->cells.size());
            if (ctrl && (key == VK_LEFT || key == VK_RIGHT)) {
                const int from = m_cursor < 0 && key == VK_LEFT ? count : m_cursor;
                m_cursor = (from + (key == VK_RIGHT ? 1 : count - 1)) % count;
                return;
            }
        } else if (InBox(key, ctrl, shift)) {
            return;
        }
        Navigate(key, ctrl);
    }

private:
    FormItem& Mine() { return items[static_cast<std::size_t>(current)]; }
    int Count() const { return static_cast<int>(items.size()); }
    void Bell() { notes.push_back({FormNote::cBell, 0}); }

    // The current item.

    void Tab(bool isBack) {
        const int target = current + (isBack ? -1 : 1);
        if (tabMoves && target >= 0 && target < Count()) {
            SetCurrent(target);
        } else {
            Leave();
        }
    }
    void GoTo(int index) {
        if (index != current) {
            m_cursor = -1;
            m_wasRefused = false;
        }
        current = index;
    }
    void Load() {
        if (ShowsBox()) box.Load(Now().Shown(locale));
    }
    void TakeFocus(bool tells, bool isThere) {
        if (tells) notes.push_back({hasFocus ? 4 : static_cast<int>(NM_SETFOCUS), current});
        hasFocus = m_isAttached = true;
        if (!isThere) Load();
    }
    /// Keeps what was typed; a refusal leaves everything as it was.
    bool Commit() {
        if (!ShowsBox() || Now().isReadOnly) return true;
        m_wasRefused = false;
        if (box.text == Now().Shown(locale)) return true;
        const FormItem before = Now();
        Mine().Store(box.text, locale);
        notes.push_back({1, current});
        if (refusesChanges) {
            Mine() = before;
            Load();
            ScrollIntoView();
            notes.push_back({4, current});
            return false;
        }
        notes.push_back({2, current});
        Load();
        return true;
    }
    void Advance() {
        if (!autoAdvance) return;
        const int next = NextEditable();
        if (next >= 0) {
            SetCurrent(next);
        } else {
            notes.push_back({6, current});
        }
    }
    int NextEditable() const {
        for (int i = current + 1; i < Count(); ++i) {
            if (!items[static_cast<std::size_t>(i)].isReadOnly) return i;
        }
        return -1;
    }

    // Places.

    int ItemAt(CPoint place) const {
        for (int i = 0; i < Count(); ++i) {
            if (items[static_cast<std::size_t>(i)].place.PtInRect(place)) return i;
        }
        return -1;
    }
    void ScrollIntoView() {
        const CRect place = Now().place;
        const auto least = [](LONG& position, LONG start, LONG end, LONG size) {
            if (start < position || end - start > size) {
                position = start;
            } else if (end > position + size) {
                position = end - size;
            }
        };
        least(scroll.x, place.left, place.right, client.cx);
        least(scroll.y, place.top, place.bottom, client.cy);
    }
    bool IsVisible(int index, bool whole) const {
        CRect place = items[static_cast<std::size_t>(index)].place;
        place.OffsetRect(-scroll.x, -scroll.y);
        if (!whole) {
            return place.left < client.cx && place.right >= 1 && place.top < client.cy &&
                   place.bottom >= 1;
        }
        return place.left >= 0 && place.left < client.cx && place.right >= 1 &&
               place.right <= client.cx && place.top >= 0 && place.top < client.cy &&
               place.bottom >= 1 && place.bottom <= client.cy;
    }
    int ItemAfterScroll(int step) const {
        for (const bool whole : {true, false}) {
            for (int i = current; i >= 0 && i < Count(); i += step) {
                if (IsVisible(i, whole)) return i;
            }
        }
        return -1;
    }
    /// The nearest item on the side that a key points to; -1 without any. If wanted, only of those
    /// whose middle lies farther left or right.
    int Closest(int from, UINT key, bool isFarther = false) const {
        const CRect own = items[static_cast<std::size_t>(from)].place;
        int best = -1;
        LONG least = 0;
        for (int i = 0; i < Count(); ++i) {
            const CRect other = items[static_cast<std::size_t>(i)].place;
            const bool isAcross = key == VK_LEFT || key == VK_RIGHT;
            const LONG gap = key == VK_UP     ? own.top - other.bottom
                             : key == VK_DOWN ? other.top - own.bottom
                             : key == VK_LEFT ? own.left - other.right
                                              : other.left - own.right;
            if (i == from || gap < 0) continue;
            if (isFarther && Reach(i, key) <= Reach(from, key)) continue;
            const LONG aside =
                isAcross ? (other.top + (other.Height() >> 1)) - (own.top + (own.Height() >> 1))
                         : (other.left + (other.Width() >> 1)) - (own.left + (own.Width() >> 1));
            const LONG score = std::abs(aside) + gap;
            if (best >= 0 && score >= least) continue;
            best = i;
            least = score;
        }
        return best;
    }

    // Keys of the form.

    void Go(int target) {
        const int bounded = std::clamp(target, 0, Count() - 1);
        if (bounded != current) SetCurrent(bounded);
        if (target != bounded) notes.push_back({target < 0 ? 5 : 6, current});
    }
    void Navigate(UINT key, bool ctrl) {
        const int last = Count() - 1;
        switch (key) {
            case VK_RETURN:
                if (NextEditable() >= 0) Go(NextEditable());
                break;
            case VK_PRIOR:
                current == 0 ? Go(-1) : Page(SB_PAGEUP);
                break;
            case VK_NEXT:
                current == last ? Go(Count()) : Page(SB_PAGEDOWN);
                break;
            case VK_HOME:
                Go(ctrl ? 0 : EndOfRow(VK_LEFT));
                break;
            case VK_END:
                Go(ctrl ? last : EndOfRow(VK_RIGHT));
                break;
            case VK_LEFT:
            case VK_UP:
            case VK_RIGHT:
            case VK_DOWN:
                Go(ArrowTarget(key));
                break;
            default:
                break;
        }
    }
    LONG Reach(int item, UINT key) const {
        const CRect place = items[static_cast<std::size_t>(item)].place;
        return (place.left + place.right) * (key == VK_LEFT ? -1 : 1);
    }
    int EndOfRow(UINT key) const {
        for (int item = current;;) {
            int next = Closest(item, key);
            // Neighbours without width may lead nowhere: then those that lie farther out count.
            if (next >= 0 && Reach(next, key) <= Reach(item, key)) next = Closest(item, key, true);
            if (next < 0) return item;
            item = next;
        }
    }
    int ArrowTarget(UINT key) const {
        if (layout.type == FormLayout::FlowRows && (key == VK_LEFT || key == VK_RIGHT)) {
            return current + (key == VK_LEFT ? -1 : 1);
        }
        if (layout.type == FormLayout::FlowColumns && (key == VK_UP || key == VK_DOWN)) {
            return current + (key == VK_UP ? -1 : 1);
        }
        const auto [length, lines] = layout.Lines(Count());
        if (layout.IsGrid() && length != 0) return GridTarget(key, length, lines);
        const int closest = Closest(current, key);
        return closest >= 0 ? closest : current;
    }
    int GridTarget(UINT key, int length, int lines) const {
        const bool down = layout.type != FormLayout::GridAcross;
        if (key == (down ? VK_UP : VK_LEFT)) return current - 1;
        if (key == (down ? VK_DOWN : VK_RIGHT)) return current + 1;
        int line = current / length;
        int cell = current % length;
        if (key == (down ? VK_LEFT : VK_UP)) {
            if (--line < 0) {
                line = lines - 1;
                --cell;
            }
            if (cell < 0) return current;
            int target = line * length + cell;
            while (target >= Count()) target -= length;
            return target < 0 ? current : target;
        }
        if ((line + 1) * length + cell < Count()) return (line + 1) * length + cell;
        const bool stays = cell + 1 >= length || (down && cell + 1 >= Count());
        return stays ? current : cell + 1;
    }
    void Page(UINT code) {
        for (const bool vertical : {true, false}) {
            const bool scrolls = vertical ? layout.Vertical() : layout.Horizontal();
            const bool isLong = vertical ? Extent().cy >= client.cy : Extent().cx >= client.cx;
            if (scrolls && isLong) return Scroll(vertical, code, 0);
        }
    }

    // Choices.

    bool ClickChoice(CPoint point) {
        if (!Now().kind->IsChoice()) return false;
        const CRect area = Now().kind->choosing;
        if (point.x < area.left || point.x > area.right || point.y < area.top ||
            point.y > area.bottom) {
            return false;
        }
        for (const FieldKind::Cell& cell : Now().kind->cells) {
            if (cell.place.PtInRect(point)) return Choose(cell.value);
        }
        return false;
    }
    void ChooseByKey(char ch) {
        const auto& cells = Now().kind->cells;
        auto found = std::find_if(cells.begin(), cells.end(), [ch](const FieldKind::Cell& cell) {
            return cell.keys.find(ch) != std::string::npos;
        });
        if (found == cells.end() && ch == ' ' && m_cursor >= 0) found = cells.begin() + m_cursor;
        if (found == cells.end() || Now().isReadOnly) return;
        if (Choose(found->value) && Now().kind->type == FieldKind::Radio) Advance();
    }
    bool Choose(int code) {
        if (Now().isReadOnly) return false;
        const bool radio = Now().kind->type == FieldKind::Radio;
        if (radio && !Now().isNull && Now().value == code) return true;
        const FormItem before = Now();
        const int value = before.value;
        const int changed = radio ? code : (value & code) != 0 ? value & ~code : value | code;
        Mine().value = changed;
        Mine().isNull = !radio && changed == 0;
        notes.push_back({1, current});
        if (refusesChanges) {
            Mine() = before;
            return false;
        }
        notes.push_back({2, current});
        return true;
    }

    // The box.

    bool Accepts(char ch) const {
        const FieldKind& kind = *Now().kind;
        const bool isSign =
            (ch == locale.point && kind.type != FieldKind::Integer) || (ch == '-' && kind.negative);
        return (ch >= '0' && ch <= '9') || isSign;
    }
    bool IsValid(std::string text) const {
        const FieldKind& kind = *Now().kind;
        const auto digits = [&text] {
            const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
            text.erase(0, end);
            return static_cast<int>(end);
        };
        if (kind.negative && !text.empty() && text[0] == '-') text.erase(0, 1);
        digits();
        if (kind.decimals > 0 && !text.empty() && text[0] == locale.point) {
            text.erase(0, 1);
            if (digits() > kind.decimals) return false;
        }
        return text.empty();
    }
    void Insert(const std::string& typed) {
        const int limit = Now().kind->limit;
        const bool fits = limit == 0 || static_cast<int>(box.Replaced(typed).size()) <= limit;
        if (fits && !Now().isReadOnly) {
            box.Replace(typed);
        } else {
            Bell();
        }
    }
    void Erase(UINT key) {
        int start = box.Start();
        int end = box.End();
        if (start == end && key == VK_BACK) start = box.Step(start, -1);
        if (start == end && key == VK_DELETE) end = box.Step(end, 1);
        if (Now().kind->type == FieldKind::Time) return ClearTime(start, end);
        if (Now().kind->IsFiltered() && !IsValid(box.Replaced("", start, end))) return Bell();
        if (Now().isReadOnly || start == end) return;
        box.anchor = start;
        box.caret = end;
        box.Replace("");
    }
    /// Whether the box uses the key itself.
    bool InBox(UINT key, bool ctrl, bool shift) {
        const bool marked = box.anchor != box.caret;
        // The box of a host's own does not let Left and Right lead out of it.
        const bool isOwn = Now().kind->type == FieldKind::Backward;
        switch (key) {
            case VK_RETURN:
                if (ctrl) {
                    if (Now().kind->type == FieldKind::Lines) Insert("\r\n");
                } else if (Commit()) {
                    Advance();
                }
                return true;
            case VK_ESCAPE:
                Load();
                return true;
            case VK_BACK:
            case VK_DELETE:
                Erase(key);
                return true;
            case VK_LEFT:
                if (!marked && box.caret == 0) return isOwn;
                box.MoveTo(marked && !shift ? box.Start() : box.Step(box.caret, -1), shift);
                return true;
            case VK_RIGHT:
                if (!marked && box.caret == box.Length()) return isOwn;
                box.MoveTo(marked && !shift ? box.End() : box.Step(box.caret, 1), shift);
                return true;
            case VK_HOME:
                box.MoveTo(box.LineStart(), shift);
                return true;
            case VK_END:
                box.MoveTo(box.LineEnd(), shift);
                return true;
            case VK_UP:
                return MoveLine(-1);
            case VK_DOWN:
                return MoveLine(1);
            default:
                return false;
        }
    }
    bool MoveLine(int by) {
        const int line = box.LineOf(box.caret) + by;
        if (line < 0 || line > box.LineOf(box.Length())) return false;
        while (box.LineOf(box.caret) != line) box.caret += by;
        box.anchor = box.caret;
        box.isCaretFree = true;
        return true;
    }

    // Times.

    int PlaceFrom(int from) const {
        const std::size_t place = Now().Blank(locale).find('_', static_cast<std::size_t>(from));
        return place == std::string::npos ? -1 : static_cast<int>(place);
    }
    std::string Cleared(int start, int end) const {
        // What is no time gives way to the pattern.
        std::string text = Now().Blank(locale);
        if (box.text.size() == text.size()) text = box.text;
        for (int i = start; i < end; ++i) {
            if (PlaceFrom(i) == i) text[static_cast<std::size_t>(i)] = '_';
        }
        return text;
    }
    void ClearTime(int start, int end) { ShowTime(Cleared(start, end), start, start, end); }
    void ShowTime(const std::string& text, int caret, int start, int end) {
        if (Now().isReadOnly) {
            Bell();
            // Deleting marks what it would delete.
            if (box.anchor == box.caret && end > box.caret) {
                box.anchor = start;
                box.caret = end;
            }
            return;
        }
        box.text = text;
        box.anchor = box.caret = caret;
    }
    /// Whether a digit can be at a place; a first one that can't be with the second clears that.
    static bool FitsTime(std::string& text, std::size_t place, char ch) {
        const std::size_t first = place - place % 3;
        std::string field = text.substr(first, 2);
        field[place - first] = ch;
        const bool isWhole = field.find_first_not_of("0123456789") == std::string::npos;
        if (!isWhole || field <= (first == 0 ? "23" : "59")) return true;
        if (place == first) text[first + 1] = '_';
        return place == first;
    }
    void TypeTime(char ch) {
        std::string text = Cleared(box.Start(), box.End());
        int caret = box.Start();
        if ((ch >= '0' && ch <= '9') || ch == ' ') {
            const int place = PlaceFrom(caret);
            if (place < 0 || !FitsTime(text, static_cast<std::size_t>(place), ch)) return Bell();
            text[static_cast<std::size_t>(place)] = ch == ' ' ? '_' : ch;
            caret = std::max(PlaceFrom(place + 1), place + 1);
        } else if (ch == ':') {
            // One that was just gone over may be typed all the same.
            const bool isOver = caret > 0 && text[static_cast<std::size_t>(caret) - 1] == ':';
            const std::size_t next = text.find(':', static_cast<std::size_t>(caret));
            if (!isOver && next == std::string::npos) return Bell();
            caret = std::max(PlaceFrom(isOver ? caret : static_cast<int>(next)), caret);
        } else if (!locale.is24Hour && std::string("aApP").find(ch) != std::string::npos) {
            const std::size_t start = text.size() - 2;
            text.replace(start, 2, ch == 'a' || ch == 'A' ? "AM" : "PM");
            const int place = PlaceFrom(caret);
            caret = place < 0 ? static_cast<int>(start) + 1 : place;
        } else {
            return Bell();
        }
        ShowTime(text, caret, 0, 0);
    }

    bool m_isAttached = false;  ///< a window stands over the current item
    bool m_wasRefused = false;  ///< what was typed, when the focus left last
    int m_cursor = -1;          ///< the choice that the blank chooses
};

}  // namespace tessalink::test
