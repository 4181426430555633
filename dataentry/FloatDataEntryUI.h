#pragma once

#include "dataentry/TextDataEntryUI.h"

/// Shows and edits numbers with a fixed number of decimals.
class TESSALINK_API FloatDataEntryUI : public TextDataEntryUI {
    DECLARE_DYNAMIC(FloatDataEntryUI)

public:
    /// As the base class; so many decimals, and a minus sign when `allowNegative` is nonzero.
    FloatDataEntryUI(int labelWidth, int maxChars, int decimals, int allowNegative)
        : TextDataEntryUI(labelWidth, maxChars, 1, maxChars),
          m_decimals(decimals),
          m_allowNegative(allowNegative) {}

protected:
    CEdit* create_edit_box() override;
    CString get_curr_item_text_value() override;
    void store_text(const CString& text, DataEntryItem& item) override;

private:
    int m_decimals;
    int m_allowNegative;
};
