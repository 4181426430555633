#include "examples/forms/FormFrame.h"

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/GridLayoutMgr.h"
#include "dataentry/ImplDecIntegerDataEntryUI.h"
#include "dataentry/RspListItemUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TimeDataEntryUI.h"

namespace forms {

namespace {

constexpr UINT cFormId = 1;
constexpr UINT cLogId = 2;
constexpr UINT cReasonId = 3;
constexpr int cLabelWidth = 130;
constexpr double cMaxSchooling = 30;
constexpr int cLogWidth = 260;

DataEntryLayoutMgr* makeLayout(Layout layout) {
    switch (layout) {
        case Layout::Grid:
            return new GridLayoutMgr(0, 2, 0);
        case Layout::Flow:
            return new FlowLayoutMgr(0);
        default:
            return new SingleColLayoutMgr;
    }
}

}  // namespace

CString lineOf(const DATAENTRYCTL_NOTIFICATION& notification) {
    struct Name {
        int code;
        const char* text;
    };
    static constexpr Name cNames[] = {{DATAENTRY_CHANGING, "changing"},
                                      {DATAENTRY_CHANGED, "changed"},
                                      {DATAENTRY_CLICKED, "clicked"},
                                      {DATAENTRY_MOVED, "moved to"},
                                      {DATAENTRY_BEFORE_FIRST, "before the first"},
                                      {DATAENTRY_PAST_LAST, "past the last"},
                                      {static_cast<int>(NM_SETFOCUS), "focus gained"},
                                      {static_cast<int>(NM_KILLFOCUS), "focus lost"}};
    CString line;
    for (const Name& name : cNames) {
        if (name.code == static_cast<int>(notification.hdr.code)) line = name.text;
    }
    if (notification.itemIndex >= 0) line.AppendFormat(", item %d", notification.itemIndex);
    if (notification.item != nullptr) {
        CString label = notification.item->GetLabel();
        label.Replace('\n', ' ');
        line += ": " + label;
    }
    return line;
}

void LogWindow::Add(const CString& line) {
    m_lines.push_back(line);
    if (m_lines.size() > cMaxLines) m_lines.pop_front();
    Invalidate();
}

void LogWindow::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(&client, tessalink::GetSysColor(COLOR_WINDOW));
    dc.SetTextColor(tessalink::GetSysColor(COLOR_WINDOWTEXT));
    dc.SetBkMode(TRANSPARENT);
    const int height = dc.GetTextExtent("M", 1).cy;
    // The last ones that fit.
    const auto fit = static_cast<std::size_t>(client.Height() / height);
    int y = 2;
    for (std::size_t i = m_lines.size() > fit ? m_lines.size() - fit : 0; i < m_lines.size(); ++i) {
        dc.TextOut(6, y, m_lines[i]);
        y += height;
    }
}

void ReasonWindow::Show(const CString& text, const CRect& field) {
    constexpr int cMargin = 4;
    SetWindowText(text);
    CSize size;
    {
        const CClientDC dc(this);
        size = dc.GetTextExtent(text);
    }
    const int top = field.CenterPoint().y - size.cy / 2 - cMargin / 2;
    MoveWindow(
        CRect(CPoint(field.right + cMargin, top), CSize(size.cx + 2 * cMargin, size.cy + cMargin)));
    ShowWindow(SW_SHOW);
    BringWindowToTop();
    Invalidate();
}

void ReasonWindow::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CString text;
    GetWindowText(text);
    dc.FillSolidRect(&client, tessalink::GetSysColor(COLOR_INFOBK));
    dc.SetTextColor(tessalink::GetSysColor(COLOR_INFOTEXT));
    dc.SetBkMode(TRANSPARENT);
    dc.DrawText(text, &client, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

FormFrame::FormFrame(Layout layout) : m_form(makeLayout(layout)) {
    add_items();
    m_form.TabMoves(true);
}

FormFrame::~FormFrame() {
    DestroyWindow();
}

BOOL FormFrame::CreateFrame(const RECT& rect) {
    return Create("Demographic data", rect);
}

void FormFrame::add_items() {
    auto* text = new TextDataEntryUI(cLabelWidth, 60, 0, 24);
    m_form.AddItem(new TextDataEntryItem(nullptr, "Name"), text);
    m_form.AddItem(new TextDataEntryItem(nullptr, "Date of birth"), text);
    m_form.AddItem(new TextDataEntryItem(nullptr, "Date of test"), text);
    m_form.AddItem(new IntegerDataEntryItem("Time of test"), new TimeDataEntryUI(cLabelWidth, 1));
    m_form.AddItem(new IntegerDataEntryItem("Sex"),
                   new RadioBtnItemUI("[female|fF|1][male|mM|2][diverse|dD|3]", cLabelWidth));
    m_form.AddItem(new FloatDataEntryItem("Years of\nschooling"),
                   new FloatDataEntryUI(cLabelWidth, 5, 1, 0));
    m_form.AddItem(new IntegerDataEntryItem("Income"),
                   new ImplDecIntegerDataEntryUI(cLabelWidth, 9, 2, 0));
    m_form.AddItem(new IntegerDataEntryItem("Languages"),
                   new CheckBoxItemUI("[English|eE][French|fF][Spanish|sS][]"
                                      "[German|gG][Italian|iI][other|oO]",
                                      cLabelWidth));
    m_form.AddItem(
        new IntegerDataEntryItem("I feel rested"),
        new RspListItemUI("[never|1|1][sometimes|2|2][often|3|3][always|4|4]", cLabelWidth));
    m_form.AddItem(new TextDataEntryItem(nullptr, "Remarks"),
                   new TextDataEntryUI(cLabelWidth, 400, 3, 24));
}

int FormFrame::OnCreate(CREATESTRUCTA* create) {
    if (CFrameWnd::OnCreate(create) != 0) return -1;
    m_form.Create(CRect(), cFormId, this);
    m_log.Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(), this, cLogId);
    m_reason.Create(nullptr, "", WS_CHILD, CRect(), this, cReasonId);
    place();
    return 0;
}

void FormFrame::place() {
    CRect client;
    GetClientRect(&client);
    const int split = client.right - cLogWidth;
    m_form.MoveWindow(CRect(0, 0, split, client.bottom));
    m_log.MoveWindow(CRect(split, 0, client.right, client.bottom));
}

void FormFrame::OnSize(UINT type, int width, int height) {
    CFrameWnd::OnSize(type, width, height);
    place();
}

void FormFrame::refuse(const DATAENTRYCTL_NOTIFICATION& notification, const CString& reason) {
    m_log.Add("refused: " + reason);
    tessalink::MessageBeep(MB_ICONHAND);
    m_refusedItem = notification.itemIndex;
    const CWnd* box = m_form.GetItemUI(m_refusedItem)->GetDlgItem(TextDataEntryUI::cEditId);
    CRect field;
    box->GetWindowRect(&field);
    CPoint corner = field.TopLeft();
    ScreenToClient(&corner);
    m_reason.Show(reason, CRect(corner, field.Size()));
    m_form.NotifyAccessible(tessalink::AccessibleEvent::Announcement, m_refusedItem, reason);
}

BOOL FormFrame::OnNotify(WPARAM, LPARAM lParam, LRESULT* result) {
    const auto& notification = *reinterpret_cast<DATAENTRYCTL_NOTIFICATION*>(lParam);
    m_log.Add(lineOf(notification));
    const int code = notification.hdr.code;
    const auto* number = DYNAMIC_DOWNCAST(FloatDataEntryItem, notification.item);
    if (code == DATAENTRY_CHANGING && number != nullptr && number->GetValue() > cMaxSchooling) {
        refuse(notification, "more than 30 years");
        *result = 1;
    } else if (code == DATAENTRY_CHANGED || notification.itemIndex != m_refusedItem) {
        m_reason.ShowWindow(SW_HIDE);
    }
    return 1;
}

}  // namespace forms
