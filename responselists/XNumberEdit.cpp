#include "responselists/XNumberEdit.h"

#include <algorithm>
#include <string_view>

#include "platform/windows/detail/InputCodes.h"
#include "responselists/NumberListCtl.h"

using tessalink::cFirstPrintable;

UINT XNumberEdit::OnGetDlgCode() {
    return DLGC_WANTALLKEYS;
}

bool XNumberEdit::IsValid(const CString& text) const {
    std::string_view digits = text.View();
    if (!digits.empty() && digits.front() == '-') digits.remove_prefix(1);
    return std::all_of(digits.begin(), digits.end(),
                       [](char ch) { return ch >= '0' && ch <= '9'; }) &&
           text.GetLength() <= m_list.GetMaxTextLen();
}

CString XNumberEdit::replaced(const CString& text) const {
    CString now;
    GetWindowText(now);
    int start = 0;
    int end = 0;
    GetSel(start, end);
    return now.Left(start) + text + now.Mid(end);
}

bool XNumberEdit::leads_out(UINT key) {
    if (key < VK_PRIOR || key > VK_DOWN) return false;
    return key == VK_UP || key == VK_DOWN || !IsKeyDown(VK_SHIFT);
}

void XNumberEdit::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    // What the list has no use for either does nothing: the box wants all keys.
    if (key == VK_TAB) {
        if (!m_list.FocusNextControl(IsKeyDown(VK_SHIFT))) m_list.OnKeyDown(key, repeat, flags);
    } else if (key == VK_RETURN) {
        if ((flags & KF_REPEAT) == 0) m_list.OnReturn();
    } else if (key == VK_ESCAPE) {
        if (!m_list.OnCancel()) m_list.OnKeyDown(key, repeat, flags);
    } else if (leads_out(key)) {
        m_list.OnKeyDown(key, repeat, flags);
    } else {
        CEdit::OnKeyDown(key, repeat, flags);
    }
}

void XNumberEdit::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (ch == '\r' || ch == '\n' || ch == '\t' || ch == VK_ESCAPE) {
        m_list.OnChar(ch, repeat, flags);  // the key has done it, or nobody wants it
        return;
    }
    m_list.ShowCurrItem();  // the wheel may have led away from it
    const bool isCommand = ch < cFirstPrintable;
    if (isCommand || IsValid(replaced(CString(static_cast<char>(ch))))) {
        CEdit::OnChar(ch, repeat, flags);
    } else {
        tessalink::MessageBeep(MB_ICONHAND);
    }
}

void XNumberEdit::OnPaste() {
    CString text;
    if (!tessalink::clipboardText(text) || !IsValid(replaced(text))) {
        tessalink::MessageBeep(MB_ICONHAND);
    } else {
        CEdit::OnPaste();
    }
}

void XNumberEdit::OnSetFocus(CWnd* old) {
    CEdit::OnSetFocus(old);
    m_list.OnEditSetFocus();
}

void XNumberEdit::OnKillFocus(CWnd* next) {
    CEdit::OnKillFocus(next);
    m_list.OnEditKillFocus(next);
}

BOOL XNumberEdit::OnMouseWheel(UINT flags, short delta, CPoint point) {
    return m_list.OnMouseWheel(flags, delta, point);
}

tessalink::AccessibleElement XNumberEdit::Accessible() const {
    tessalink::AccessibleElement element = CEdit::Accessible();
    if (m_list.GetCurrItemIdx() < 0) return element;
    const tessalink::AccessibleElement entry = m_list.AccessibleChild(m_list.GetCurrItemIdx());
    element.name = entry.name;
    element.isReadOnly = entry.isReadOnly;
    element.isInvalid = entry.isInvalid;
    return element;
}
