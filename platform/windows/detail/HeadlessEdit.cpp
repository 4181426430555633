#include "platform/windows/detail/HeadlessEdit.h"

#include <algorithm>
#include <string_view>

#include "platform/windows/HeadlessSystem.h"

namespace tessalink {

namespace {

constexpr UINT cFirstPrintable = 32;
constexpr UINT cControlC = 3;
constexpr UINT cControlV = 22;
constexpr UINT cControlX = 24;
constexpr UINT cControlZ = 26;
constexpr const char* cLineEnd = "\r\n";

}  // namespace

void HeadlessEdit::SetText(const CString& text) {
    m_text = text;
    m_before = text;
    m_anchor = m_caret = 0;
}

void HeadlessEdit::Select(int start, int end) {
    const int length = m_text.GetLength();
    const auto bounded = [length](int position) {
        return position < 0 ? length : std::min(position, length);
    };
    m_anchor = bounded(start);
    m_caret = bounded(end);
}

void HeadlessEdit::Selection(int& start, int& end) const {
    start = std::min(m_anchor, m_caret);
    end = std::max(m_anchor, m_caret);
}

void HeadlessEdit::Replace(const CString& text) {
    int start = 0;
    int end = 0;
    Selection(start, end);
    m_before = m_text;
    m_text = m_text.Left(start) + text + m_text.Mid(end);
    m_anchor = m_caret = start + text.GetLength();
    editChanged(m_owner);
}

int HeadlessEdit::LineOf(int position) const {
    const std::string_view before =
        m_text.View().substr(0, static_cast<std::size_t>(position < 0 ? m_caret : position));
    return static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

int HeadlessEdit::LineCount() const {
    return LineOf(m_text.GetLength()) + 1;
}

int HeadlessEdit::LineStart(int line) const {
    int start = 0;
    for (; line > 0; --line) {
        const int end = m_text.Find('\n', start);
        if (end < 0) return -1;
        start = end + 1;
    }
    return start;
}

void HeadlessEdit::Cut() {
    Copy();
    if (!m_isReadOnly && m_anchor != m_caret) Replace({});
}

void HeadlessEdit::Copy() {
    int start = 0;
    int end = 0;
    Selection(start, end);
    if (start != end) m_system.SetClipboard(m_text.Mid(start, end - start));
}

void HeadlessEdit::Paste() {
    CString text;
    if (!clipboardText(text)) return;
    const int lineEnd = text.FindOneOf("\r\n");
    type(is_multi_line() || lineEnd < 0 ? text : text.Left(lineEnd));
}

void HeadlessEdit::Undo() {
    if (m_isReadOnly || m_before == m_text) return;
    std::swap(m_text, m_before);
    m_anchor = m_caret = m_text.GetLength();
    editChanged(m_owner);
}

void HeadlessEdit::move_to(int position) {
    m_caret = position;
    if (!IsKeyDown(VK_SHIFT)) m_anchor = position;
}

int HeadlessEdit::step(int direction) const {
    const int next = std::clamp(m_caret + direction, 0, m_text.GetLength());
    // Never between the two characters of a line end.
    const bool splits =
        next > 0 && next < m_text.GetLength() && m_text[next] == '\n' && m_text[next - 1] == '\r';
    return splits ? next + direction : next;
}

int HeadlessEdit::line_move(int direction) const {
    const int line = LineOf(-1);
    const int target = line + direction;
    if (target < 0 || target >= LineCount()) return m_caret;
    const int column = m_caret - LineStart(line);
    const int start = LineStart(target);
    int end = m_text.Find('\r', start);
    if (end < 0) end = m_text.GetLength();
    return std::min(start + column, end);
}

void HeadlessEdit::DefaultKey(UINT key) {
    switch (key) {
        case VK_LEFT:
            move_to(m_anchor != m_caret && !IsKeyDown(VK_SHIFT) ? std::min(m_anchor, m_caret)
                                                                : step(-1));
            break;
        case VK_RIGHT:
            move_to(m_anchor != m_caret && !IsKeyDown(VK_SHIFT) ? std::max(m_anchor, m_caret)
                                                                : step(1));
            break;
        case VK_UP:
            move_to(line_move(-1));
            break;
        case VK_DOWN:
            move_to(line_move(1));
            break;
        case VK_HOME:
            move_to(LineStart(LineOf(-1)));
            break;
        case VK_END: {
            const int end = m_text.Find('\r', m_caret);
            move_to(end < 0 ? m_text.GetLength() : end);
            break;
        }
        case VK_DELETE:
            if (m_isReadOnly) break;
            if (m_anchor == m_caret) m_caret = step(1);
            if (m_anchor != m_caret) Replace({});
            break;
        default:
            break;
    }
}

bool HeadlessEdit::takes(const CString& text) const {
    const std::string_view characters = text.View();
    const auto isDigit = [](char ch) { return ch >= '0' && ch <= '9'; };
    const bool isNumber = std::all_of(characters.begin(), characters.end(), isDigit);
    if (m_isReadOnly || ((m_style & ES_NUMBER) != 0 && !isNumber)) return false;
    int start = 0;
    int end = 0;
    Selection(start, end);
    const int left = m_limit - (m_text.GetLength() - (end - start));
    return m_limit <= 0 || text.GetLength() <= left;
}

void HeadlessEdit::type(const CString& text) {
    if (takes(text)) {
        Replace(text);
    } else {
        tessalink::MessageBeep(MB_OK);
    }
}

void HeadlessEdit::DefaultChar(UINT ch) {
    switch (ch) {
        case cControlC:
            m_owner.SendMessage(WM_COPY);
            return;
        case cControlV:
            m_owner.SendMessage(WM_PASTE);
            return;
        case cControlX:
            m_owner.SendMessage(WM_CUT);
            return;
        case cControlZ:
            m_owner.SendMessage(WM_UNDO);
            return;
        case '\b':
            if (m_isReadOnly) return;
            if (m_anchor == m_caret) m_caret = step(-1);
            if (m_anchor != m_caret) Replace({});
            return;
        case '\r':
        case '\n':
            if (is_multi_line() && (m_style & ES_NUMBER) == 0) type(cLineEnd);
            return;
        default:
            break;
    }
    if (ch < cFirstPrintable) {
        tessalink::MessageBeep(MB_OK);
        return;
    }
    type(CString(static_cast<char>(ch)));
}

}  // namespace tessalink
