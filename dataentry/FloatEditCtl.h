#pragma once

#include "dataentry/FilteredEditCtl.h"

/// An edit box for numbers with decimals, in the user's way to write them.
class TESSALINK_API FloatEditCtl : public FilteredEditCtl {
public:
    /// At most `decimals` digits after the point; 0: and no point. Its limit bounds the length.
    FloatEditCtl(TextDataEntryUI& itemUI, int decimals, int allowNegative)
        : FilteredEditCtl(itemUI), m_decimals(decimals), m_allowNegative(allowNegative) {}

    /// White space, a minus sign if negatives are allowed, digits, the point and decimals, white
    /// space; each may be missing.
    bool IsValid(const CString& text) const override;

protected:
    bool accepts(char ch) const override;

private:
    int m_decimals;
    int m_allowNegative;
};
