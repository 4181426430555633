#include "platform/windows/CEdit.h"

#include "platform/graphics/DCScope.h"
#include "platform/windows/WindowSystem.h"

using tessalink::NativeEdit;

namespace {

// The field of an edit box; null without a window.
NativeEdit* fieldOf(const CWnd& window) {
    tessalink::NativeWindow* native = tessalink::nativeOf(window);
    return native != nullptr ? native->Edit() : nullptr;
}

}  // namespace

IMPLEMENT_DYNAMIC(CEdit, CWnd)

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create("EDIT", "", style, rect, parent, id);
}

void CEdit::SetSel(int start, int end) {
    if (NativeEdit* field = fieldOf(*this)) field->Select(start, end);
}

void CEdit::GetSel(int& start, int& end) const {
    start = end = 0;
    if (const NativeEdit* field = fieldOf(*this)) field->Selection(start, end);
}

void CEdit::ReplaceSel(const char* text) {
    if (NativeEdit* field = fieldOf(*this)) field->Replace(text);
}

BOOL CEdit::SetReadOnly(BOOL readOnly) {
    NativeEdit* field = fieldOf(*this);
    if (field == nullptr) return 0;
    field->SetReadOnly(readOnly != 0);
    return 1;
}

void CEdit::SetLimitText(UINT characters) {
    if (NativeEdit* field = fieldOf(*this)) field->SetLimit(static_cast<int>(characters));
}

int CEdit::LineFromChar(int position) const {
    const NativeEdit* field = fieldOf(*this);
    return field != nullptr ? field->LineOf(position) : 0;
}

int CEdit::GetLineCount() const {
    const NativeEdit* field = fieldOf(*this);
    return field != nullptr ? field->LineCount() : 0;
}

int CEdit::LineIndex(int line) const {
    const NativeEdit* field = fieldOf(*this);
    if (field == nullptr) return -1;
    return field->LineStart(line < 0 ? field->LineOf(-1) : line);
}

void CEdit::ScrollCaret() {
    if (NativeEdit* field = fieldOf(*this)) field->ScrollCaret();
}

void CEdit::Cut() {
    if (NativeEdit* field = fieldOf(*this)) field->Cut();
}

void CEdit::Copy() {
    if (NativeEdit* field = fieldOf(*this)) field->Copy();
}

void CEdit::Undo() {
    if (NativeEdit* field = fieldOf(*this)) field->Undo();
}

void CEdit::OnPaste() {
    CString text;
    if (!tessalink::clipboardText(text)) {
        tessalink::MessageBeep(MB_ICONHAND);
    } else if (NativeEdit* field = fieldOf(*this)) {
        field->Paste();
    }
}

CString CEdit::window_text() const {
    const NativeEdit* field = fieldOf(*this);
    return field != nullptr ? field->Text() : CString();
}

LRESULT CEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PASTE) {
        OnPaste();
        return 0;
    }
    const std::optional<LRESULT> answer = field_message(message, wParam, lParam);
    return answer ? *answer : CWnd::WindowProc(message, wParam, lParam);
}

LRESULT CEdit::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            CEdit::OnPaint();
            return 0;
        case WM_SETFOCUS:
            CEdit::OnSetFocus(nullptr);
            return 0;
        case WM_KILLFOCUS:
            CEdit::OnKillFocus(nullptr);
            return 0;
        case WM_GETDLGCODE:
            return CEdit::OnGetDlgCode();
        case WM_KEYDOWN:
            CEdit::OnKeyDown(static_cast<UINT>(wParam), 1, 0);
            return 0;
        case WM_CHAR:
            CEdit::OnChar(static_cast<UINT>(wParam), 1, 0);
            return 0;
        case WM_SETCURSOR:
            return CEdit::OnSetCursor(nullptr, 0, 0);
        case WM_PASTE:
            CEdit::OnPaste();
            return 0;
        default: {
            const std::optional<LRESULT> answer = field_message(message, wParam, lParam);
            return answer ? *answer : CWnd::DefWindowProc(message, wParam, lParam);
        }
    }
}

std::optional<LRESULT> CEdit::field_message(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CUT:
            Cut();
            return 0;
        case WM_COPY:
            Copy();
            return 0;
        case WM_UNDO:
            Undo();
            return 1;
        case EM_GETSEL: {
            int start = 0;
            int end = 0;
            GetSel(start, end);
            return MAKELPARAM(start, end);
        }
        case EM_SETSEL:
            SetSel(static_cast<int>(wParam), static_cast<int>(lParam));
            return 0;
        case EM_REPLACESEL:
            ReplaceSel(reinterpret_cast<const char*>(lParam));
            return 0;
        case EM_SETREADONLY:
            return SetReadOnly(static_cast<BOOL>(wParam));
        case EM_LIMITTEXT:
            SetLimitText(static_cast<UINT>(wParam));
            return 0;
        case EM_SCROLLCARET:
            ScrollCaret();
            return 1;
        case EM_LINEFROMCHAR:
            return LineFromChar(static_cast<int>(wParam));
        case EM_GETLINECOUNT:
            return GetLineCount();
        case EM_LINEINDEX:
            return LineIndex(static_cast<int>(wParam));
        default:
            return std::nullopt;
    }
}

void CEdit::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CPen frame(PS_SOLID, 1, tessalink::GetSysColor(COLOR_WINDOWTEXT));
    CBrush ground(tessalink::GetSysColor(COLOR_WINDOW));
    const tessalink::RestoredState restored(dc);
    dc.SelectObject(&frame);
    dc.SelectObject(&ground);
    if (CFont* font = GetFont()) dc.SelectObject(font);
    dc.Rectangle(&client);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(tessalink::GetSysColor(COLOR_WINDOWTEXT));
    client.DeflateRect(2, 2);
    dc.DrawText(window_text(), &client, DT_NOPREFIX);
}

void CEdit::tell_parent(UINT code) {
    if (CWnd* parent = GetParent()) {
        parent->SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<UINT>(GetDlgCtrlID()), code),
                            reinterpret_cast<LPARAM>(GetSafeHwnd()));
    }
}

void CEdit::OnSetFocus(CWnd*) {
    tell_parent(EN_SETFOCUS);
}

void CEdit::OnKillFocus(CWnd*) {
    tell_parent(EN_KILLFOCUS);
}

UINT CEdit::OnGetDlgCode() {
    const UINT all = (GetStyle() & ES_MULTILINE) != 0 ? DLGC_WANTALLKEYS : 0;
    return DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS | all;
}

void CEdit::OnKeyDown(UINT key, UINT, UINT) {
    if (NativeEdit* field = fieldOf(*this)) field->DefaultKey(key);
}

void CEdit::OnChar(UINT ch, UINT, UINT) {
    if (NativeEdit* field = fieldOf(*this)) field->DefaultChar(ch);
}

BOOL CEdit::OnSetCursor(CWnd*, UINT, UINT) {
    if (native() != nullptr) native()->SetCursor(tessalink::cBeamCursor);
    return 1;
}

tessalink::AccessibleElement CEdit::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::EditableText;
    element.value = element.name;
    element.name = "";
    return element;
}
