#pragma once

#include "dataentry/TextDataEntryUI.h"

/// Shows and edits whole numbers from 0 on: an edit box for digits only.
class TESSALINK_API IntegerDataEntryUI : public TextDataEntryUI {
    DECLARE_DYNAMIC(IntegerDataEntryUI)

public:
    /// `labelWidth` in pixels and the number of digits; 0 as for TextDataEntryUI.
    explicit IntegerDataEntryUI(int labelWidth = 0, int digits = 0)
        : TextDataEntryUI(labelWidth, digits, 1, digits) {}

protected:
    DWORD extra_edit_style() const override { return ES_NUMBER; }
    CString get_curr_item_text_value() override;
    void store_text(const CString& text, DataEntryItem& item) override;
};
