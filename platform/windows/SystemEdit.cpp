#include "platform/windows/SystemEdit.h"

#include "platform/windows/detail/InputCodes.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tessalink {

namespace {

// Characters that are commands, by the message that carries them out.
struct Command {
    UINT character;
    UINT message;
};
constexpr Command cCommands[] = {{3, WM_COPY}, {22, WM_PASTE}, {24, WM_CUT}, {26, WM_UNDO}};
constexpr UINT cSelectAll = 1;
constexpr UINT cRedo = 25;
constexpr UINT cDeletedWord = 0x7F;
constexpr const char* cLineEnd = "\r\n";

}  // namespace

bool SystemEdit::takes(const CString& text) const {
    const std::string_view characters = text.View();
    const auto isDigit = [](char ch) { return ch >= '0' && ch <= '9'; };
    if (is_read_only()) return false;
    if ((m_style & ES_NUMBER) != 0 && !std::all_of(characters.begin(), characters.end(), isDigit)) {
        return false;
    }
    int start = 0;
    int end = 0;
    Selection(start, end);
    const int kept = Text().GetLength() - (end - start);
    return m_limit <= 0 || text.GetLength() <= m_limit - kept;
}

void SystemEdit::Paste() {
    CString text;
    if (!clipboardText(text)) return;
    const int lineEnd = text.FindOneOf(cLineEnd);
    if (!is_multi_line() && lineEnd >= 0) text = text.Left(lineEnd);
    if (takes(text)) {
        insert(text);
    } else {
        MessageBeep(MB_OK);
    }
}

// Keys that make characters do what they do then.
void SystemEdit::DefaultKey(UINT key) {
    const bool isMove = key >= VK_PRIOR && key <= VK_DOWN;
    if (key == VK_INSERT && IsKeyDown(VK_SHIFT)) {
        m_owner.SendMessage(WM_PASTE);
    } else if (key == VK_INSERT && IsKeyDown(VK_CONTROL)) {
        m_owner.SendMessage(WM_COPY);
    } else if (key == VK_DELETE && IsKeyDown(VK_SHIFT)) {
        m_owner.SendMessage(WM_CUT);
    } else if ((isMove && !leave_selection(key)) || key == VK_DELETE) {
        press(key);
    }
}

// Left and Right lead out of a selection to its ends, which not all fields do by themselves.
bool SystemEdit::leave_selection(UINT key) {
    if ((key != VK_LEFT && key != VK_RIGHT) || IsKeyDown(VK_SHIFT) || IsKeyDown(VK_CONTROL)) {
        return false;
    }
    int start = 0;
    int end = 0;
    Selection(start, end);
    if (start == end) return false;
    const int place = key == VK_LEFT ? start : end;
    Select(place, place);
    return true;
}

void SystemEdit::start_line() {
    if (!is_multi_line() || (m_style & ES_NUMBER) != 0) return;
    if (takes(cLineEnd)) {
        insert(cLineEnd);
    } else {
        MessageBeep(MB_OK);
    }
}

void SystemEdit::DefaultChar(UINT ch) {
    const auto* const command =
        std::find_if(std::begin(cCommands), std::end(cCommands),
                     [ch](const Command& known) { return known.character == ch; });
    if (command != std::end(cCommands)) {
        m_owner.SendMessage(command->message);
        return;
    }
    switch (ch) {
        case cSelectAll:
            Select(0, -1);
            break;
        case cRedo:
            redo();
            break;
        case '\b':
        case cDeletedWord:
            press(VK_BACK);
            break;
        case '\r':
        case '\n':
            start_line();
            break;
        default:
            if (ch >= cFirstPrintable && takes(CString(static_cast<char>(ch)))) {
                type(static_cast<char>(ch));
            } else {
                MessageBeep(MB_OK);
            }
    }
}

}  // namespace tessalink
