#pragma once

#include <deque>
#include <string_view>

#include "dataentry/DataEntryCtl.h"
#include "platform/windows/CFrameWnd.h"

namespace forms {

/// How the items are placed.
enum class Layout { Column, Grid, Flow };

/// A window that lists texts as they come, the last one at the end.
class LogWindow : public CWnd {
public:
    void Add(const CString& line);
    void OnPaint() override;

private:
    static constexpr std::size_t cMaxLines = 60;

    std::deque<CString> m_lines;
};

/// Says beside a field why its value was refused.
class ReasonWindow : public CWnd {
public:
    /// Shows the text to the right of a field, which lies in the parent of this window.
    void Show(const CString& text, const CRect& field);
    void OnPaint() override;
};

/// A form for demographic data on the left; on the right what it tells its parent. The frame
/// refuses more than 30 years of schooling, with a sound, and says why beside the field.
class FormFrame : public CFrameWnd {
public:
    explicit FormFrame(Layout layout);
    ~FormFrame() override;

    BOOL CreateFrame(const RECT& rect);
    DataEntryCtl& Form() { return m_form; }

    int OnCreate(CREATESTRUCTA* create) override;
    void OnSize(UINT type, int width, int height) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void add_items();
    void place();
    void refuse(const DATAENTRYCTL_NOTIFICATION& notification, const CString& reason);

    DataEntryCtl m_form;
    LogWindow m_log;
    ReasonWindow m_reason;
    int m_refusedItem = -1;
};

/// A line for a notification: "changed: Name".
CString lineOf(const DATAENTRYCTL_NOTIFICATION& notification);

}  // namespace forms
