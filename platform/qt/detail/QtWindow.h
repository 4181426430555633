#pragma once

#include <QMouseEvent>
#include <QPointer>
#include <QRubberBand>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWidget>
#include <array>
#include <memory>
#include <optional>

#include "platform/qt/detail/QtWindowSystem.h"
#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

class QtEdit;

// How widgets find their window, which may end before them: a widget whose event destroys the
// window is deleted later.
using WindowLink = std::shared_ptr<QtWindow*>;

// Takes an event that asks whether a key is no shortcut when its window wants the key.
bool overridesShortcut(const WindowLink& link, QEvent& event);

// A window as two widgets: the outer one has the frame, the scroll bars and the size of the window;
// the client widget in it shows what the window paints, or is the field of an edit box, and has the
// focus.
class QtWindow final : public QtNative {
public:
    explicit QtWindow(const WindowSetup& setup);
    ~QtWindow() override;

    void Move(const CRect& rect) override;
    void Show(bool show) override;
    void Enable(bool enable) override;
    void Raise() override;
    void PlaceAfter(NativeWindow* sibling) override;
    void RequestPaint(const CRect& rect) override;
    void PaintNow() override;
    void Scroll(int dx, int dy) override;
    void TakeFocus() override;
    void Capture(bool capture) override;
    void SetCursor(int shape) override;
    void SetText(const CString& text) override;
    void SetFont(const LOGFONTA& font) override;
    void SetScrollBar(int bar, bool isShown, const SCROLLINFO& info) override;
    CPoint ClientOrigin() const override;
    void ShowOutline(const CRect& rect) override;
    void NotifyAccessible(AccessibleEvent event, int child, const CString& text) override;
    NativeEdit* Edit() override;

    QWidget* Client() const override { return m_client; }
    QWidget* Outer() const override { return m_frame; }
    CWnd& Owner() const { return m_owner; }
    // What was to be spoken last, in the window; of a part, when it was said of that.
    CString Announcement(int part) const {
        return part < 0 || part == m_announced ? m_announcement : CString();
    }

    // What the widgets hand over. The window may be gone afterwards.
    void KeyPressed(QKeyEvent& event);
    void KeyReleased(QKeyEvent& event);
    void TextComposed(const QInputMethodEvent& event);
    void FocusCame(Qt::FocusReason reason);
    void FocusLeft(Qt::FocusReason reason);
    void MouseUsed(QMouseEvent& event);
    void WheelTurned(QWheelEvent& event);
    void MenuAsked(QContextMenuEvent& event);
    void Painted(QPaintEvent& event);
    void FrameMoved();
    void CloseAsked();
    void Lost();

    // Whether a key comes to the window before it is a shortcut of the host.
    bool GoesBeforeShortcuts(const QKeyEvent& event) const;
    void SettingsChanged();
    // Places the parts in the frame.
    void LayOut();

private:
    void make_frame(const WindowSetup& setup);
    void place_frame(const CRect& rect);
    void make_bar(int bar);
    void bar_acted(int bar, int action);
    // Sends a request; false when the window is gone.
    bool scroll(int bar, UINT code, int position);
    void show_position(int bar);
    void color_edit();
    // The field, which has the focus, stands for a part of the window around it.
    void stand_for(int part);

    CWnd& m_owner;
    WindowLink m_link;
    QWidget* m_frame = nullptr;
    QWidget* m_client = nullptr;
    std::array<QScrollBar*, 2> m_bars = {nullptr, nullptr};
    std::unique_ptr<QtEdit> m_edit;
    QPointer<QRubberBand> m_outline;
    CString m_announcement;
    int m_announced = cNoAccessibleChild;
    std::optional<int>
        m_part;  // for which the field stands, if that was told since it got the focus
    WheelTurns m_wheel;
    bool m_isTopLevel;
    bool m_isPainting = false;
    bool m_isMovingBar = false;
};

}  // namespace tessalink::detail
