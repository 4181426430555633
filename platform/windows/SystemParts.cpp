#include "platform/windows/SystemParts.h"

#include "platform/windows/detail/InputCodes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tessalink {

namespace {

constexpr int cLargestTurn = 0x7FFF;
constexpr double cLegibleContrast = 4.5;
constexpr int cBlendSteps = 20;
// How much of the text's color is in the shadow of a dark theme.
constexpr double cDarkShadow = 0.25;

double linear(BYTE channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

// Relative luminance and contrast ratio, as WCAG 2.1 defines them.
double luminance(COLORREF color) {
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

double contrast(COLORREF a, COLORREF b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

COLORREF blend(COLORREF from, COLORREF to, double share) {
    const auto channel = [share](int a, int b) {
        return static_cast<BYTE>(std::lround(a + (b - a) * share));
    };
    return RGB(channel(GetRValue(from), GetRValue(to)), channel(GetGValue(from), GetGValue(to)),
               channel(GetBValue(from), GetBValue(to)));
}

// The color, moved towards black or white until it is legible on the ground.
COLORREF legible(COLORREF color, COLORREF ground) {
    const COLORREF end = contrast(cBlack, ground) > contrast(cWhite, ground) ? cBlack : cWhite;
    for (int i = 0; i < cBlendSteps; ++i) {
        const COLORREF tried = blend(color, end, static_cast<double>(i) / cBlendSteps);
        if (contrast(tried, ground) >= cLegibleContrast) return tried;
    }
    return end;
}

// Labels are white on it.
COLORREF shadow(const BaseColors& colors) {
    const bool isDark = luminance(colors.face) < luminance(colors.faceText);
    const COLORREF start =
        isDark ? blend(colors.face, colors.faceText, cDarkShadow) : colors.shadow;
    return legible(start, cWhite);
}

}  // namespace

short WheelTurns::Told(int delta, int lines) {
    if ((delta > 0) != (m_left > 0)) m_left = 0;
    m_left += delta;
    const int unit = cWheelNotch / std::clamp(lines, 1, cWheelNotch);
    const int told = std::clamp(m_left / unit * unit, -cLargestTurn, cLargestTurn);
    m_left -= told;
    return static_cast<short>(told);
}

bool TypedAhead::Keeps(Key key, bool isHeld) {
    const bool isReturn = key == Key::Return;
    const bool isText = key == Key::Text;
    if (!isText && !(isReturn && (m_any || isHeld))) return false;
    m_any = isText;
    MessageBeep(MB_OK);
    return true;
}

bool isTabEntry(const CWnd& window) {
    if ((window.GetStyle() & WS_TABSTOP) == 0) return false;
    const CWnd* parent = window.GetParent();
    while (parent != nullptr && (parent->GetStyle() & WS_TABSTOP) == 0) {
        parent = parent->GetParent();
    }
    return parent == nullptr;
}

const CWnd& tabEntryOf(const CWnd& window) {
    const CWnd* entry = &window;
    for (const CWnd* outer = &window; outer->GetParent() != nullptr; outer = outer->GetParent()) {
        const bool isInHost = outer->GetParent()->GetParent() == nullptr;
        const bool isStop = (outer->GetStyle() & WS_TABSTOP) != 0;
        if (isStop || (isInHost && (entry->GetStyle() & WS_TABSTOP) == 0)) entry = outer;
    }
    return *entry;
}

CRect placedWithin(const CRect& window, const CRect& room, int titleHeight) {
    const auto kept = [](int start, int length, int first, int count) {
        return std::max(std::min(start, first + count - length), first);
    };
    const CPoint corner(kept(window.left, window.Width(), room.left, room.Width()),
                        kept(window.top, window.Height() + titleHeight, room.top, room.Height()));
    return CRect(corner, window.Size());
}

std::optional<EditColors> editColors(CWnd& edit) {
    CClientDC dc(&edit);
    dc.SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc.SetBkColor(GetSysColor(COLOR_WINDOW));
    const WindowGuard alive(edit);
    if (CWnd* const parent = edit.GetParent()) {
        parent->SendMessage(WM_CTLCOLOR, reinterpret_cast<WPARAM>(static_cast<CDC*>(&dc)),
                            reinterpret_cast<LPARAM>(edit.GetSafeHwnd()));
    }
    if (!alive || edit.GetSafeHwnd() == nullptr) return std::nullopt;
    return EditColors{dc.GetTextColor(), dc.GetBkColor()};
}

COLORREF legibleColor(const BaseColors& colors, int index) {
    switch (index) {
        case COLOR_WINDOW:
            return colors.window;
        case COLOR_WINDOWTEXT:
            return legible(colors.windowText, colors.window);
        case COLOR_HIGHLIGHT:
            return colors.highlight;
        case COLOR_HIGHLIGHTTEXT:
            return legible(colors.highlightText, colors.highlight);
        case COLOR_BTNSHADOW:
            return shadow(colors);
        case COLOR_BTNHIGHLIGHT:
            return cWhite;
        case COLOR_GRAYTEXT:
            return legible(colors.grayText, colors.face);
        case COLOR_BTNTEXT:
            return legible(colors.faceText, colors.face);
        case COLOR_INFOBK:
            return colors.tip;
        case COLOR_INFOTEXT:
            return legible(colors.tipText, colors.tip);
        default:
            return colors.face;
    }
}

AccessibleElement accessibleElement(const CWnd* window, int child) {
    if (window == nullptr) return {};
    if (child < 0) return window->Accessible();
    return child < window->AccessibleChildCount() ? window->AccessibleChild(child)
                                                  : AccessibleElement();
}

CString accessibleDescription(const AccessibleElement& element) {
    CString description;
    const auto add = [&description](const CString& part) {
        if (part.IsEmpty()) return;
        if (!description.IsEmpty()) description += ", ";
        description += part;
    };
    if (element.role != AccessibleRole::EditableText) add(element.value);
    add(element.description);
    if (element.isRequired) add("required");
    if (element.isInvalid) add("invalid entry");
    return description;
}

FocusedPart focusedPart(const CWnd& focused) {
    const CWnd* around = &focused;
    while (around != nullptr && around->AccessibleFocusChild() < 0) around = around->GetParent();
    return {around, around != nullptr ? around->AccessibleFocusChild() : cNoAccessibleChild};
}

}  // namespace tessalink
