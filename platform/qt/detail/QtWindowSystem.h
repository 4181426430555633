#pragma once

#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QWidget>
#include <map>
#include <memory>
#include <optional>

#include "platform/graphics/NullDevice.h"
#include "platform/qt/detail/QtInput.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink::detail {

class QtWindow;

// A native window that lies in the toolkit: one of ours, or a widget of the host.
class QtNative : public NativeWindow {
public:
    // What child windows lie in; null when it is gone.
    virtual QWidget* Client() const = 0;
    // The whole window; null when it is gone.
    virtual QWidget* Outer() const = 0;
};

// The native window of an object, if it lies in the toolkit.
QtNative* toolkitNative(const CWnd& window);

// Windows as widgets of the toolkit. A QApplication must exist whenever it is used.
class QtWindowSystem final : public QObject, public WindowSystem {
public:
    static QtWindowSystem& Get();
    // Listens to the application; call it for every application object.
    void Start();

    std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) override;
    void DropFocus() override;
    COLORREF Color(int index) const override;
    int Metric(int index) const override;
    CRect ScreenAt(CPoint point) const override;
    int WheelLines() const override;
    bool IsKeyDown(int key) const override;
    CPoint CursorPosition() const override;
    bool ClipboardText(CString& text) const override;
    void StartTimer(int number, UINT period) override;
    void StopTimer(int number) override;
    void WakeUp() override;
    bool RunUntil(const std::function<bool()>& isDone) override;
    DrawingDevice& Screen() override { return m_screen; }

    // The windows by their client widgets.
    void Register(QWidget& client, QtWindow& window) { m_windows[&client] = &window; }
    void Forget(const QWidget* client) { m_windows.erase(client); }
    // The window of a client widget; null for other widgets.
    QtWindow* WindowOf(const QWidget* client) const;
    // The widget by which the toolkit's focus enters a window.
    static QWidget* EntryOf(const CWnd& window);
    // The window that has the toolkit's focus; null when none of ours has it.
    QtWindow* Focused() const;
    bool IgnoresFocus() const { return m_ignoresFocus; }
    // Assistive technology is told where the focus is when the toolkit has told what it has to.
    void TellFocusSoon();

    // Moves the toolkit's focus on from a window in a host's widget, as Tab does, or back. Returns
    // false when nothing else takes the focus.
    bool MoveOn(const CWnd& from, bool isBack);

    // While it lives, an input event is handled: its modifiers are those that are held.
    class InputScope {
    public:
        InputScope(Qt::KeyboardModifiers modifiers, QKeyEvent* key = nullptr);
        ~InputScope();
        InputScope(const InputScope&) = delete;
        InputScope& operator=(const InputScope&) = delete;

    private:
        std::optional<Qt::KeyboardModifiers> m_modifiersBefore;
        QKeyEvent* m_keyBefore;
    };
    // The key event that is handled, until somebody takes it; null when there is none.
    QKeyEvent* CurrentKey() const { return m_key; }
    QKeyEvent* TakeKey() { return std::exchange(m_key, nullptr); }
    Qt::KeyboardModifiers Modifiers() const;
    bool IsKeyHeld() const { return m_heldKey.IsRepeat(); }

    // While it lives, this is what is pasted instead of the clipboard's text.
    class PasteScope {
    public:
        explicit PasteScope(const QString& text) { Get().m_pasted = text; }
        ~PasteScope() { Get().m_pasted.reset(); }
        PasteScope(const PasteScope&) = delete;
        PasteScope& operator=(const PasteScope&) = delete;
    };

    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void timerEvent(QTimerEvent* event) override;
    void customEvent(QEvent* event) override;

private:
    QtWindowSystem();

    void settings_changed_soon();

    std::map<const QWidget*, QtWindow*> m_windows;
    std::map<int, int> m_timers;   // the library's number of each timer of the toolkit
    std::map<int, int> m_numbers;  // and the reverse
    mutable std::map<int, COLORREF> m_colors;
    QPointer<QObject> m_application;
    std::optional<Qt::KeyboardModifiers> m_modifiers;
    std::optional<QString> m_pasted;
    QKeyEvent* m_key = nullptr;
    HeldKey m_heldKey;
    bool m_ignoresFocus = false;
    bool m_isWoken = false;
    bool m_tellsFocus = false;
    bool m_settingsChange = false;
    bool m_hasQuit = false;
    NullDevice m_screen;
};

}  // namespace tessalink::detail
