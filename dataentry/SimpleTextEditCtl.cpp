#include "dataentry/SimpleTextEditCtl.h"

#include "dataentry/DataEntryCtl.h"
#include "dataentry/TextDataEntryUI.h"

namespace {

constexpr UINT cReturnChar = '\r';
constexpr UINT cTabChar = '\t';
constexpr UINT cEscapeChar = 27;

}  // namespace

UINT SimpleTextEditCtl::OnGetDlgCode() {
    return DLGC_WANTALLKEYS;
}

SimpleTextEditCtl::Selection SimpleTextEditCtl::selection() const {
    Selection result;
    GetWindowText(result.text);
    GetSel(result.start, result.end);
    return result;
}

CString SimpleTextEditCtl::replaced(const Selection& selection, const CString& text) {
    return selection.text.Left(selection.start) + text + selection.text.Mid(selection.end);
}

bool SimpleTextEditCtl::leads_out(UINT key) const {
    if (key == VK_PRIOR || key == VK_NEXT) return true;
    if (key < VK_LEFT || key > VK_DOWN) return false;
    if (key == VK_UP) return LineFromChar() == 0;
    if (key == VK_DOWN) return LineFromChar() == GetLineCount() - 1;
    int start = 0;
    int end = 0;
    GetSel(start, end);
    if (start != end) return false;
    return key == VK_LEFT ? start == 0 : end >= GetWindowTextLength();
}

void SimpleTextEditCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_TAB) {
        m_interface.OnTab();
    } else if (key == VK_RETURN && !IsKeyDown(VK_CONTROL)) {
        m_interface.OnReturn();
    } else if (key == VK_ESCAPE) {
        m_interface.OnCancel();
    } else if (leads_out(key)) {
        m_interface.OnEditKey(key, repeat, flags);
    } else {
        CEdit::OnKeyDown(key, repeat, flags);
    }
}

void SimpleTextEditCtl::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (ch == cTabChar || ch == cEscapeChar) return;
    if (ch == cReturnChar && !IsKeyDown(VK_CONTROL)) return;
    CEdit::OnChar(ch, repeat, flags);
}

BOOL SimpleTextEditCtl::OnMouseWheel(UINT flags, short delta, CPoint point) {
    return m_interface.OnMouseWheel(flags, delta, point);
}

tessalink::AccessibleElement SimpleTextEditCtl::Accessible() const {
    tessalink::AccessibleElement element = CEdit::Accessible();
    if (DataEntryItem* item = m_interface.GetCurrItem()) {
        element.name = item->GetLabel();
        element.isReadOnly = item->IsReadOnly() != 0;
    }
    return element;
}
