#include "dataentry/FilteredEditCtl.h"

#include <algorithm>

#include "platform/base/HostServices.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::cBackspace;
using tessalink::cFirstPrintable;

void FilteredEditCtl::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (ch == '\r' || ch == '\n' || ch == '\t' || ch == VK_ESCAPE) return;
    // Other control characters are commands, such as copy and paste.
    if (ch < cFirstPrintable && ch != cBackspace) {
        SimpleTextEditCtl::OnChar(ch, repeat, flags);
        return;
    }
    Selection now = selection();
    CString typed;
    if (ch != cBackspace) {
        typed = CString(static_cast<char>(ch));
    } else if (now.start == now.end && now.start > 0) {
        --now.start;
    }
    const bool accepted = ch == cBackspace || accepts(static_cast<char>(ch));
    if (accepted && IsValid(replaced(now, typed))) {
        SimpleTextEditCtl::OnChar(ch, repeat, flags);
    } else {
        tessalink::MessageBeep(MB_ICONHAND);
    }
}

void FilteredEditCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_DELETE) {
        Selection now = selection();
        if (now.start == now.end) now.end = std::min(now.end + 1, now.text.GetLength());
        if (!IsValid(replaced(now, CString()))) {
            tessalink::MessageBeep(MB_ICONHAND);
            return;
        }
    }
    SimpleTextEditCtl::OnKeyDown(key, repeat, flags);
}

void FilteredEditCtl::OnPaste() {
    CString text;
    if (!tessalink::clipboardText(text) || !IsValid(replaced(selection(), text))) {
        tessalink::MessageBeep(MB_ICONHAND);
        return;
    }
    SimpleTextEditCtl::OnPaste();
}

void FilteredEditCtl::OnSetFocus(CWnd* old) {
    SimpleTextEditCtl::OnSetFocus(old);
    SetSel(0, -1);
    ScrollCaret();
}
