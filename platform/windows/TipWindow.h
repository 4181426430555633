#pragma once

#include "platform/windows/CWnd.h"

/// A small window on top of all others that shows one text, for instance near the mouse. It gives
/// way to the mouse.
class TESSALINK_API TipWindow : public CWnd {
    DECLARE_DYNAMIC(TipWindow)

public:
    /// Shows the text in a font right below a point of the screen, or above it when there is no
    /// room below. The font must outlive its use.
    void ShowText(const CString& text, CPoint screenPoint, CFont* font);
    /// Hides the tip.
    void Hide() { ShowWindow(SW_HIDE); }
    /// What is shown.
    const CString& GetText() const { return m_text; }

    void OnPaint() override;
    void OnMouseMove(UINT, CPoint) override { Hide(); }
    tessalink::AccessibleElement Accessible() const override;

private:
    CString m_text;
};
