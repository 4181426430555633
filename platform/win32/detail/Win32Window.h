#pragma once

#include <array>
#include <memory>
#include <optional>

#include "platform/win32/detail/Scale.h"
#include "platform/win32/detail/Win32Edit.h"
#include "platform/win32/detail/Win32WindowSystem.h"
#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

// How code that goes on after a handler finds its window, which may have ended meanwhile.
using WindowLink = std::shared_ptr<class Win32Window*>;

// A window as one of the platform's, whose frame has the border and the scroll bars; an edit box is
// an edit field of the platform.
class Win32Window final : public Win32Native {
public:
    explicit Win32Window(const WindowSetup& setup);
    ~Win32Window() override;

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
    NativeEdit* Edit() override { return m_edit.get(); }

    HWND Handle() const override { return m_handle; }
    CWnd& Owner() const { return m_owner; }
    const Scale& Units() const { return m_scale; }
    // What was to be spoken last, of a part or of the window itself.
    CString Announcement(int child) const {
        return child == cNoAccessibleChild || child == m_announced ? m_announcement : CString();
    }
    // For which part of the window around it the field stands.
    std::optional<int> Part() const { return m_part; }

    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

    // What its field tells the parent. The window may be gone afterwards.
    void FieldChanged();
    LRESULT FieldColors(HDC context);

    void SettingsChanged();

private:
    struct Entry;
    struct Received {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };
    // Does what a message asks for; nothing when the platform shall do it.
    using Reaction = std::optional<LRESULT> (Win32Window::*)(const Received& received);

    void create(const WindowSetup& setup);
    HWND create_field(HWND parent);
    // The field becomes one of another style when its height asks for that.
    void fit_field();
    LRESULT by_default(const Received& received) const;
    static Reaction reaction_to(UINT message);
    void lost();
    void rescale();
    void place(const CRect& rect);
    void repaint_all();
    void drop_focus();

    std::optional<LRESULT> frame_sized(const Received& received);
    std::optional<LRESULT> frame_painted(const Received& received);
    std::optional<LRESULT> paint(const Received& received);
    std::optional<LRESULT> erase(const Received& received);
    std::optional<LRESULT> moved(const Received& received);
    std::optional<LRESULT> activated(const Received& received);
    std::optional<LRESULT> mouse_activates(const Received& received);
    std::optional<LRESULT> close_asked(const Received& received);
    std::optional<LRESULT> scale_changed(const Received& received);
    std::optional<LRESULT> key_pressed(const Received& received);
    std::optional<LRESULT> key_released(const Received& received);
    std::optional<LRESULT> character(const Received& received);
    std::optional<LRESULT> dialog_code(const Received& received);
    std::optional<LRESULT> focus_came(const Received& received);
    std::optional<LRESULT> focus_left(const Received& received);
    std::optional<LRESULT> mouse(const Received& received);
    std::optional<LRESULT> wheel(const Received& received);
    std::optional<LRESULT> menu(const Received& received);
    std::optional<LRESULT> cursor(const Received& received);
    std::optional<LRESULT> capture_left(const Received& received);
    std::optional<LRESULT> scrolled(const Received& received);
    std::optional<LRESULT> child_told(const Received& received);
    std::optional<LRESULT> pasted(const Received& received);
    std::optional<LRESULT> object_asked(const Received& received);
    std::optional<LRESULT> function_called(const Received& received);
    std::optional<LRESULT> destroyed(const Received& received);

    Region invalid_units() const;
    void paint_area(HDC screen, const CRect& pixels, const Region& units);
    // The field, which has the focus, stands for a part of the window around it.
    void stand_for(int part);

    CWnd& m_owner;
    WindowLink m_link;
    HWND m_handle = nullptr;
    WNDPROC m_base = nullptr;  // of a field
    DWORD m_style = 0;         // the platform's, of a field without its own
    DWORD m_extendedStyle = 0;
    Scale m_scale;
    bool m_isPopup;
    bool m_isTopLevel;
    bool m_isPainting = false;
    bool m_hasBorder;
    DWORD m_fieldStyle = 0;  // ES_...
    std::unique_ptr<Win32Edit> m_edit;
    std::optional<LOGFONTA> m_font;
    HCURSOR m_cursor = nullptr;
    std::array<HWND, 4> m_outline = {};
    HWND m_focusToRestore = nullptr;
    CPoint m_lastMouse;
    WheelTurns m_wheel;
    CString m_announcement;
    int m_announced = cNoAccessibleChild;
    std::optional<int> m_part;
};

}  // namespace tessalink::detail
