#pragma once

#include "dataentry/TextDataEntryUI.h"

/// Shows and edits numbers with decimals that are stored as whole numbers: with 2 decimals, 12.34
/// is 1234. What is keyed is rounded to the nearest, halves away from zero.
class TESSALINK_API ImplDecIntegerDataEntryUI : public TextDataEntryUI {
    DECLARE_DYNAMIC(ImplDecIntegerDataEntryUI)

public:
    /// As the base class; so many decimals, and a minus sign when `allowNegative` is nonzero.
    explicit ImplDecIntegerDataEntryUI(int labelWidth = 0, int maxChars = 0, int decimals = 0,
                                       int allowNegative = 0);

protected:
    CEdit* create_edit_box() override;
    CString get_curr_item_text_value() override;
    void store_text(const CString& text, DataEntryItem& item) override;

private:
    int m_decimals;
    int m_allowNegative;
    double m_multiplier = 1;  ///< 10 to the power of the decimals
};
