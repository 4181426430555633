#include "platform/win32/detail/Win32Edit.h"

#include <algorithm>
#include <utility>

#include "platform/win32/detail/PlatformFonts.h"
#include "platform/win32/detail/PlatformText.h"

namespace tessalink::detail {

namespace {

// What fields leave free around the text.
constexpr int cTextMargin = 2;

}  // namespace

Win32Edit::Win32Edit(CWnd& owner, HWND field, WNDPROC base, DWORD style)
    : SystemEdit(owner, style), m_field(field), m_base(base) {
    // What the field takes is decided here; by itself it would take no more than 32,767 characters.
    Base(EM_SETLIMITTEXT);
}

DWORD Win32Edit::PlatformStyle(DWORD style, bool isLow) {
    constexpr DWORD cKept =
        ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_READONLY | WS_HSCROLL | WS_VSCROLL;
    DWORD result = style & cKept;
    const bool isMultiLine = (style & ES_MULTILINE) != 0;
    if (isMultiLine) result |= ES_WANTRETURN;
    // Lines break at the right edge; with room for one line only, that scrolls instead.
    if (!isMultiLine || isLow) result |= ES_AUTOHSCROLL;
    return result;
}

bool Win32Edit::NeedsOther(int height) const {
    const bool isLow = m_lineHeight > 0 && height < 2 * m_lineHeight;
    return is_multi_line() && (style() & ES_AUTOHSCROLL) == 0 && isLow != m_isLow;
}

void Win32Edit::MoveTo(HWND field, WNDPROC base) {
    const CString text = Text();
    int start = 0;
    int end = 0;
    Selection(start, end);
    const bool isReadOnly = is_read_only();
    m_field = field;
    m_base = base;
    m_isLow = !m_isLow;
    Base(EM_SETLIMITTEXT);
    use_font();
    SetText(text);
    SetReadOnly(isReadOnly);
    Select(start, end);
}

LRESULT Win32Edit::Base(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::CallWindowProcW(m_base, m_field, message, wParam, lParam);
}

void Win32Edit::SetText(const CString& text) {
    const bool before = std::exchange(m_isSilent, true);
    const std::wstring shown = toPlatform(text.View());
    Base(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(shown.c_str()));
    m_isSilent = before;
}

CString Win32Edit::Text() const {
    std::wstring text(static_cast<std::size_t>(Base(WM_GETTEXTLENGTH)), L'\0');
    Base(WM_GETTEXT, text.size() + 1, reinterpret_cast<LPARAM>(text.data()));
    return fromPlatform(text).value_or(CString());
}

void Win32Edit::Select(int start, int end) {
    const int length = static_cast<int>(Base(WM_GETTEXTLENGTH));
    const auto bounded = [length](int position) {
        return position < 0 ? length : std::min(position, length);
    };
    Base(EM_SETSEL, static_cast<WPARAM>(bounded(start)), bounded(end));
    Base(EM_SCROLLCARET);
}

void Win32Edit::Selection(int& start, int& end) const {
    DWORD from = 0;
    DWORD to = 0;
    Base(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    start = static_cast<int>(from);
    end = static_cast<int>(to);
}

void Win32Edit::SetReadOnly(bool readOnly) {
    Base(EM_SETREADONLY, readOnly ? TRUE : FALSE);
}

bool Win32Edit::is_read_only() const {
    return (::GetWindowLongW(m_field, GWL_STYLE) & ES_READONLY) != 0;
}

int Win32Edit::LineOf(int position) const {
    if (!is_multi_line()) return 0;
    return static_cast<int>(Base(EM_LINEFROMCHAR, static_cast<WPARAM>(position)));
}

int Win32Edit::LineCount() const {
    return is_multi_line() ? static_cast<int>(Base(EM_GETLINECOUNT)) : 1;
}

int Win32Edit::LineStart(int line) const {
    if (!is_multi_line()) return line <= 0 ? 0 : -1;
    return static_cast<int>(Base(EM_LINEINDEX, static_cast<WPARAM>(std::max(line, 0))));
}

void Win32Edit::ScrollCaret() {
    Base(EM_SCROLLCARET);
}

void Win32Edit::Cut() {
    if (!is_read_only()) Base(WM_CUT);
}

void Win32Edit::Copy() {
    Base(WM_COPY);
}

void Win32Edit::Undo() {
    if (!is_read_only()) Base(EM_UNDO);
}

void Win32Edit::insert(const CString& text) {
    const std::wstring shown = toPlatform(text.View());
    Base(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(shown.c_str()));
}

void Win32Edit::press(UINT key) {
    if (key != VK_BACK) {
        Base(WM_KEYDOWN, key, 1);
    } else if (IsKeyDown(VK_CONTROL)) {
        delete_word();
    } else {
        Base(WM_CHAR, '\b', 1);
    }
}

// Back to the start of the word before the caret, which the platform's field does not know.
void Win32Edit::delete_word() {
    if (is_read_only()) return;
    int start = 0;
    int end = 0;
    Selection(start, end);
    if (start == end) {
        const CString text = Text();
        const auto isBlank = [&](int place) { return text[place] == ' ' || text[place] == '\n'; };
        while (start > 0 && isBlank(start - 1)) --start;
        while (start > 0 && !isBlank(start - 1)) --start;
        Select(start, end);
    }
    if (start != end) insert({});
}

void Win32Edit::type(char ch) {
    Base(WM_CHAR, toPlatform(std::string_view(&ch, 1)).front(), 1);
}

void Win32Edit::SetFont(const LOGFONTA& font, const Scale& scale) {
    const SizedFont sized(platformMetrics(font), font);
    GdiHandle<HFONT> made = makePlatformFont(font, sized.Em() * scale.Factor());
    m_lineHeight = scale.Edge(sized.Height());
    m_margin = scale.Length(cTextMargin);
    std::swap(m_font, made);
    use_font();
}

void Win32Edit::use_font() {
    if (!m_font) return;
    Base(WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), TRUE);
    Base(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(m_margin, m_margin));
}

void Win32Edit::LayOut() const {
    if (!is_multi_line()) return;
    RECT room = {};
    ::GetClientRect(m_field, &room);
    room.top = m_margin;
    Base(EM_SETRECTNP, 0, reinterpret_cast<LPARAM>(&room));
}

HBRUSH Win32Edit::Ground(HDC context, COLORREF text, COLORREF ground) {
    ::SetTextColor(context, text);
    ::SetBkColor(context, ground);
    if (!m_ground || ground != m_groundColor) {
        m_ground.reset(::CreateSolidBrush(ground));
        m_groundColor = ground;
    }
    return m_ground.get();
}

}  // namespace tessalink::detail
