#include "platform/windows/detail/HeadlessEdit.h"

#include <algorithm>
#include <string_view>

#include "platform/windows/HeadlessSystem.h"

namespace tessalink {

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

void HeadlessEdit::insert(const CString& text) {
    int start = 0;
    int end = 0;
    Selection(start, end);
    m_before = m_text;
    m_text = m_text.Left(start) + text + m_text.Mid(end);
    m_anchor = m_caret = start + text.GetLength();
    editChanged(owner());
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
    if (!m_isReadOnly && m_anchor != m_caret) insert({});
}

void HeadlessEdit::Copy() {
    int start = 0;
    int end = 0;
    Selection(start, end);
    if (start != end) m_system.SetClipboard(m_text.Mid(start, end - start));
}

void HeadlessEdit::Undo() {
    if (m_isReadOnly || m_before == m_text) return;
    std::swap(m_text, m_before);
    m_anchor = m_caret = m_text.GetLength();
    editChanged(owner());
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

void HeadlessEdit::delete_step(int direction) {
    if (m_isReadOnly) return;
    if (m_anchor == m_caret) m_caret = step(direction);
    if (m_anchor != m_caret) insert({});
}

void HeadlessEdit::press(UINT key) {
    switch (key) {
        case VK_LEFT:
            move_to(step(-1));
            break;
        case VK_RIGHT:
            move_to(step(1));
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
            delete_step(1);
            break;
        case VK_BACK:
            delete_step(-1);
            break;
        default:
            break;
    }
}

}  // namespace tessalink
