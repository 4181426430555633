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

/// A form for demographic data on the left; on the right what it tells its parent. The frame
/// refuses more than 30 years of schooling.
class FormFrame : public CFrameWnd {
public:
    explicit FormFrame(Layout layout);
    ~FormFrame() override;

    BOOL CreateFrame(const RECT& rect);
    DataEntryCtl& Form() { return m_form; }

    int OnCreate(CREATESTRUCT* create) override;
    void OnSize(UINT type, int width, int height) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void add_items();
    void place();

    DataEntryCtl m_form;
    LogWindow m_log;
};

/// A line for a notification: "changed: Name".
CString lineOf(const DATAENTRYCTL_NOTIFICATION& notification);

}  // namespace forms
