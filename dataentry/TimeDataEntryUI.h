#pragma once

#include "dataentry/TextDataEntryUI.h"

/// Shows and edits times of day, in the user's format. The item's number is HHMMSS, or HHMM in the
/// short format, which has no seconds. A text that is no time makes the item null; a number that is
/// none shows an empty text.
class TESSALINK_API TimeDataEntryUI : public TextDataEntryUI {
    DECLARE_DYNAMIC(TimeDataEntryUI)

public:
    /// `labelWidth` as in the base class; `shortFormat` 0 for times with seconds.
    explicit TimeDataEntryUI(int labelWidth = 0, int shortFormat = 1);

    CString ValueText(DataEntryItem* item) override;

protected:
    CEdit* create_edit_box() override;
    CString get_curr_item_text_value() override;
    void store_text(const CString& text, DataEntryItem& item) override;

private:
    int m_shortFormat;
};
