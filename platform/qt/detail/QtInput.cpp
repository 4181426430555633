#include "platform/qt/detail/QtInput.h"

#include <algorithm>
#include <iterator>

#include "platform/base/CodePage.h"

namespace tessalink::detail {

namespace {

constexpr UINT cFirstFunctionKey = 0x70;
/// No key repeats itself faster, in milliseconds; programs that type release keys sooner.
constexpr quint64 cShortestRepeat = 10;
constexpr char cDeletedWord = 0x7F;

struct Key {
    Qt::Key toolkit;
    UINT key;
    char character;          // what it makes; 0 for nothing
    char characterWithCtrl;  // the same while Ctrl is held
};

constexpr Key cKeys[] = {
    {Qt::Key_Backspace, VK_BACK, '\b', cDeletedWord},
    {Qt::Key_Tab, VK_TAB, '\t', 0},
    {Qt::Key_Backtab, VK_TAB, '\t', 0},
    {Qt::Key_Return, VK_RETURN, '\r', '\n'},
    {Qt::Key_Enter, VK_RETURN, '\r', '\n'},
    {Qt::Key_Escape, VK_ESCAPE, '\x1b', 0},
    {Qt::Key_Space, VK_SPACE, ' ', ' '},
    {Qt::Key_Shift, VK_SHIFT, 0, 0},
    {Qt::Key_Control, VK_CONTROL, 0, 0},
    {Qt::Key_PageUp, VK_PRIOR, 0, 0},
    {Qt::Key_PageDown, VK_NEXT, 0, 0},
    {Qt::Key_End, VK_END, 0, 0},
    {Qt::Key_Home, VK_HOME, 0, 0},
    {Qt::Key_Left, VK_LEFT, 0, 0},
    {Qt::Key_Up, VK_UP, 0, 0},
    {Qt::Key_Right, VK_RIGHT, 0, 0},
    {Qt::Key_Down, VK_DOWN, 0, 0},
    {Qt::Key_Insert, VK_INSERT, 0, 0},
    {Qt::Key_Delete, VK_DELETE, 0, 0},
};

const Key* findKey(int toolkit) {
    const auto found = std::find_if(std::begin(cKeys), std::end(cKeys),
                                    [toolkit](const Key& key) { return key.toolkit == toolkit; });
    return found != std::end(cKeys) ? &*found : nullptr;
}

bool isLetter(int key) {
    return key >= Qt::Key_A && key <= Qt::Key_Z;
}

UINT codeOf(int key) {
    if (isLetter(key) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return static_cast<UINT>(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return cFirstFunctionKey + static_cast<UINT>(key - Qt::Key_F1);
    }
    return 0;
}

bool isPrintable(const QString& text) {
    return !text.isEmpty() && text.front().isPrint();
}

}  // namespace

KeyInput keyInputOf(const QKeyEvent& event) {
    const bool isCtrl = event.modifiers().testFlag(Qt::ControlModifier);
    const bool isAlt = event.modifiers().testFlag(Qt::AltModifier);
    KeyInput input;
    if (const Key* key = findKey(event.key())) {
        input.key = key->key;
        const char character = isCtrl ? key->characterWithCtrl : key->character;
        if (character != 0) input.characters = character;
        return input;
    }
    input.key = codeOf(event.key());
    if (isCtrl && !isAlt) {
        constexpr int cControlBits = 0x1F;
        if (isLetter(event.key())) {
            input.characters = static_cast<char>(event.key() & cControlBits);
        }
        return input;
    }
    // Ctrl and Alt together are the third level of the keyboard.
    if (!isPrintable(event.text()) || (isAlt && !isCtrl)) return input;
    const CodePageText text = fromUtf8(event.text().toStdString());
    input.isRefused = !text.IsWhole();
    if (!input.isRefused) input.characters = text.text;
    return input;
}

Qt::Key toolkitKey(UINT key) {
    const auto found = std::find_if(std::begin(cKeys), std::end(cKeys),
                                    [key](const Key& known) { return known.key == key; });
    return found != std::end(cKeys) ? found->toolkit : Qt::Key{};
}

bool isKeyOfHost(const QKeyEvent& event) {
    const bool isCtrl = event.modifiers().testFlag(Qt::ControlModifier);
    const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
    return isCtrl ? isTab : event.modifiers().testFlag(Qt::AltModifier);
}

bool isPlainKey(const QKeyEvent& event) {
    const bool isEscape = event.key() == Qt::Key_Escape;
    if (isEscape || event.modifiers().testFlag(Qt::AltModifier)) return false;
    if (event.modifiers().testFlag(Qt::ControlModifier)) return findKey(event.key()) != nullptr;
    return findKey(event.key()) != nullptr || isPrintable(event.text());
}

UINT mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    UINT flags = 0;
    if (buttons.testFlag(Qt::LeftButton)) flags |= MK_LBUTTON;
    if (buttons.testFlag(Qt::RightButton)) flags |= MK_RBUTTON;
    if (buttons.testFlag(Qt::MiddleButton)) flags |= MK_MBUTTON;
    if (modifiers.testFlag(Qt::ShiftModifier)) flags |= MK_SHIFT;
    if (modifiers.testFlag(Qt::ControlModifier)) flags |= MK_CONTROL;
    return flags;
}

UINT mouseMessage(const QMouseEvent& event) {
    struct Button {
        Qt::MouseButton button;
        UINT pressed;
        UINT released;
        UINT pressedTwice;
    };
    constexpr Button cButtons[] = {
        {Qt::LeftButton, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK},
        {Qt::RightButton, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDOWN},
        {Qt::MiddleButton, WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDOWN},
    };
    for (const Button& button : cButtons) {
        if (button.button != event.button()) continue;
        if (event.type() == QEvent::MouseButtonRelease) return button.released;
        const bool isSecond = event.type() == QEvent::MouseButtonDblClick;
        return isSecond ? button.pressedTwice : button.pressed;
    }
    return 0;
}

Qt::CursorShape cursorShape(int shape) {
    switch (shape) {
        case IDC_IBEAM:
            return Qt::IBeamCursor;
        case IDC_CROSS:
            return Qt::CrossCursor;
        case IDC_SIZEALL:
            return Qt::SizeAllCursor;
        case IDC_HAND:
            return Qt::PointingHandCursor;
        default:
            return Qt::ArrowCursor;
    }
}

void HeldKey::See(const QKeyEvent& event) {
    if (event.type() == QEvent::KeyRelease) {
        if (event.key() == m_key) m_released = event.timestamp();
        return;
    }
    const quint64 time = event.timestamp();
    if (event.key() == m_key && time == m_pressed && time != 0) return;  // for another object
    const bool isSameMoment = event.key() == m_key && time == m_released;
    m_isRepeat =
        event.isAutoRepeat() || (isSameMoment && m_released >= m_pressed + cShortestRepeat);
    m_key = event.key();
    m_pressed = time;
}

}  // namespace tessalink::detail
