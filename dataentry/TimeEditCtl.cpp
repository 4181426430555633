#include "dataentry/TimeEditCtl.h"

#include <algorithm>

#include "core/Time.h"
#include "dataentry/TextDataEntryUI.h"
#include "platform/base/HostServices.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::cBackspace;
using tessalink::cFirstPrintable;
using tessalink::isDigit;

namespace {

constexpr char cPlace = '_';
constexpr int cLastHour = 23;
constexpr int cLastMinute = 59;

char lowered(char ch) {
    return CString(ch).MakeLower()[0];
}

}  // namespace

TimeEditCtl::TimeEditCtl(TextDataEntryUI& itemUI, int shortFormat)
    : SimpleTextEditCtl(itemUI),
      m_shortFormat(shortFormat),
      m_pattern(Time::GetBlankFormatStr(shortFormat)) {}

int TimeEditCtl::place_from(int from) const {
    for (int i = std::max(from, 0); i < m_pattern.GetLength(); ++i) {
        if (m_pattern[i] == cPlace) return i;
    }
    return -1;
}

bool TimeEditCtl::Key(char ch, CString& text, int& caret) const {
    if (isDigit(ch) || ch == ' ') return key_digit(ch, text, caret);
    const CString separator = Time::GetTimeSep();
    if (!separator.IsEmpty() && ch == separator[0]) {
        // The separator that was just gone over may be keyed all the same.
        int next = caret;
        if (caret < separator.GetLength() || text[caret - 1] != ch) {
            next = m_pattern.Find(separator, caret);
        }
        if (next < 0) return false;
        caret = std::max(place_from(next), caret);
        return true;
    }
    return key_indicator(ch, text, caret);
}

bool TimeEditCtl::key_digit(char ch, CString& text, int& caret) const {
    const int place = place_from(caret);
    if (place < 0) return false;
    // A field has two places.
    const bool isFirst = place_from(place + 1) == place + 1;
    const int first = isFirst ? place : place - 1;
    const char tens = isFirst ? ch : text[first];
    const char ones = isFirst ? text[first + 1] : ch;
    const int most = first == Time::GetHourPos() ? cLastHour : cLastMinute;
    if (isDigit(tens) && isDigit(ones) && 10 * (tens - '0') + ones - '0' > most) {
        if (!isFirst) return false;
        text.SetAt(first + 1, cPlace);
    }
    text.SetAt(place, ch == ' ' ? cPlace : ch);
    const int next = place_from(place + 1);
    caret = next < 0 ? place + 1 : next;
    return true;
}

bool TimeEditCtl::key_indicator(char ch, CString& text, int& caret) const {
    const int start = Time::GetIndicatorPos(m_shortFormat);
    if (start < 0) return false;
    const CString morning = Time::TimeFormat::FORMAT_AM_STR;
    const CString afternoon = Time::TimeFormat::FORMAT_PM_STR;
    const int width = std::max(morning.GetLength(), afternoon.GetLength());
    const auto matches = [ch](const CString& indicator, int at) {
        return at >= 0 && at < indicator.GetLength() && lowered(indicator[at]) == lowered(ch);
    };
    // Where both begin alike the place decides.
    int at = 0;
    if (matches(morning, 0) && matches(afternoon, 0)) at = caret - start;
    const CString* found = matches(morning, at)     ? &morning
                           : matches(afternoon, at) ? &afternoon
                                                    : nullptr;
    if (found == nullptr) return false;
    for (int i = 0; i < width; ++i) {
        text.SetAt(start + i, i < found->GetLength() ? (*found)[i] : ' ');
    }
    const int place = place_from(caret);
    caret = place < 0 ? std::min(start + at + 1, text.GetLength()) : place;
    return true;
}

void TimeEditCtl::clear(CString& text, int start, int end) const {
    for (int i = start; i < end; ++i) {
        if (m_pattern[i] == cPlace) text.SetAt(i, cPlace);
    }
}

void TimeEditCtl::show(const CString& text, int caret) {
    const DataEntryItem* item = m_interface.GetCurrItem();
    if (item != nullptr && item->IsReadOnly() != 0) {
        tessalink::MessageBeep(MB_ICONHAND);
        return;
    }
    SetWindowText(text);
    SetSel(caret, caret);
}

void TimeEditCtl::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (ch == '\r' || ch == '\n' || ch == '\t' || ch == VK_ESCAPE) return;
    if (ch < cFirstPrintable && ch != cBackspace) {
        SimpleTextEditCtl::OnChar(ch, repeat, flags);
        return;
    }
    Selection now = selection();
    if (now.text.GetLength() != m_pattern.GetLength()) now = {m_pattern, 0, 0};
    int caret = now.start;
    if (ch == cBackspace) {
        if (now.start == now.end && caret > 0) now.start = --caret;
        clear(now.text, now.start, now.end);
        show(now.text, caret);
        return;
    }
    CString text = now.text;
    clear(text, now.start, now.end);
    if (Key(static_cast<char>(ch), text, caret)) {
        show(text, caret);
    } else {
        tessalink::MessageBeep(MB_ICONHAND);
    }
}

void TimeEditCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key != VK_DELETE) {
        SimpleTextEditCtl::OnKeyDown(key, repeat, flags);
        return;
    }
    if (IsKeyDown(VK_SHIFT)) {
        SendMessage(WM_CUT);
        return;
    }
    const Selection now = selection();
    if (now.start == now.end) SetSel(now.start, std::min(now.end + 1, now.text.GetLength()));
    clear_selection();
}

void TimeEditCtl::clear_selection() {
    Selection now = selection();
    if (now.text.GetLength() != m_pattern.GetLength()) now = {m_pattern, 0, 0};
    clear(now.text, now.start, now.end);
    show(now.text, now.start);
}

LRESULT TimeEditCtl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CUT) return SimpleTextEditCtl::WindowProc(message, wParam, lParam);
    Copy();
    const Selection now = selection();
    if (now.start != now.end) clear_selection();
    return 0;
}

void TimeEditCtl::OnPaste() {
    CString text;
    const Time time = tessalink::clipboardText(text) ? Time(text.GetString()) : Time();
    if (time.IsValid() == 0) {
        tessalink::MessageBeep(MB_ICONHAND);
        return;
    }
    show(time.GetAsStr(m_shortFormat), 0);
}
