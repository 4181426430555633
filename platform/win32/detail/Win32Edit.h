#pragma once

#include "platform/win32/detail/GdiHandle.h"
#include "platform/win32/detail/Scale.h"
#include "platform/windows/SystemEdit.h"

namespace tessalink::detail {

// The platform's edit field. Its positions count as ours do.
class Win32Edit final : public SystemEdit {
public:
    // `base` is the field's own procedure.
    Win32Edit(CWnd& owner, HWND field, WNDPROC base, DWORD style);

    // The styles of the platform's field for those of an edit box, which has room for one line only
    // or for more.
    static DWORD PlatformStyle(DWORD style, bool isLow);
    // Whether a field of this height has another style than it has now.
    bool NeedsOther(int height) const;
    // Goes on in another field of the platform, with text, selection, font and state.
    void MoveTo(HWND field, WNDPROC base);
    bool IsLow() const { return m_isLow; }
    // Has another size: places the text in it.
    void LayOut() const;

    void SetText(const CString& text) override;
    CString Text() const override;
    void Select(int start, int end) override;
    void Selection(int& start, int& end) const override;
    void SetReadOnly(bool readOnly) override;
    int LineOf(int position) const override;
    int LineCount() const override;
    int LineStart(int line) const override;
    void ScrollCaret() override;
    void Cut() override;
    void Copy() override;
    void Undo() override;

    // What the field does with a message by itself.
    LRESULT Base(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    void SetFont(const LOGFONTA& font, const Scale& scale);
    // Sets the colors for a context in which the field paints, and returns the ground.
    HBRUSH Ground(HDC context, COLORREF text, COLORREF ground);
    // While the library sets the text, it is told of no change.
    bool IsSilent() const { return m_isSilent; }

protected:
    bool is_read_only() const override;
    void insert(const CString& text) override;
    void press(UINT key) override;
    void type(char ch) override;

private:
    void delete_word();
    void use_font();

    HWND m_field;
    WNDPROC m_base;
    GdiHandle<HFONT> m_font;
    GdiHandle<HBRUSH> m_ground;
    COLORREF m_groundColor = 0;
    int m_lineHeight = 0;
    int m_margin = 0;
    bool m_isLow = false;
    bool m_isSilent = false;
};

}  // namespace tessalink::detail
