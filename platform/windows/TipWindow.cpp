#include "platform/windows/TipWindow.h"

#include <algorithm>

#include "platform/graphics/DCScope.h"
#include "platform/windows/WindowSystem.h"

namespace {

constexpr int cMargin = 3;
// The mouse pointer hides what is nearer.
constexpr int cPointerHeight = 20;

}  // namespace

IMPLEMENT_DYNAMIC(TipWindow, CWnd)

void TipWindow::ShowText(const CString& text, CPoint screenPoint, CFont* font) {
    if (GetSafeHwnd() == nullptr && Create(nullptr, "", WS_POPUP, CRect(), nullptr, 0) == 0) return;
    m_text = text;
    SetFont(font);
    CClientDC dc(this);
    const tessalink::Selected selected(dc, font);
    const CSize size = dc.GetTextExtent(text);
    CRect rect(CPoint(screenPoint.x, screenPoint.y + cPointerHeight),
               CSize(size.cx + 2 * cMargin, size.cy + 2 * cMargin));
    const CRect screen = tessalink::windowSystem().ScreenAt(screenPoint);
    if (rect.bottom > screen.bottom) rect.OffsetRect(0, screenPoint.y - cMargin - rect.bottom);
    rect.OffsetRect(std::min<int>(0, screen.right - rect.right), 0);
    rect.OffsetRect(std::max<int>(0, screen.left - rect.left), 0);
    MoveWindow(rect);
    SetWindowText(text);
    ShowWindow(SW_SHOW);
    BringWindowToTop();
    Invalidate();
    NotifyAccessible(tessalink::AccessibleEvent::Announcement, tessalink::cNoAccessibleChild, text);
}

void TipWindow::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CPen frame(PS_SOLID, 1, tessalink::GetSysColor(COLOR_INFOTEXT));
    CBrush ground(tessalink::GetSysColor(COLOR_INFOBK));
    const tessalink::Selected pen(dc, &frame);
    const tessalink::Selected brush(dc, &ground);
    const tessalink::Selected font(dc, GetFont());
    dc.Rectangle(&client);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(tessalink::GetSysColor(COLOR_INFOTEXT));
    dc.TextOut(cMargin, cMargin, m_text);
}

tessalink::AccessibleElement TipWindow::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::Tip;
    element.name = m_text;
    return element;
}
