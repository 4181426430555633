#include "dataentry/FloatDataEntryUI.h"

#include <algorithm>

#include "dataentry/FloatEditCtl.h"
#include "dataentry/detail/DecimalPoint.h"
#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(FloatDataEntryUI, TextDataEntryUI)

CEdit* FloatDataEntryUI::create_edit_box() {
    return new FloatEditCtl(*this, m_decimals, m_allowNegative);
}

CString FloatDataEntryUI::get_curr_item_text_value() {
    const auto* number = DYNAMIC_DOWNCAST(FloatDataEntryItem, m_item);
    if (number == nullptr || number->IsNull() != 0) return {};
    return tessalink::withLocalPoint(
        tessalink::formatDouble(number->GetValue(), 0, std::max(m_decimals, 0)));
}

void FloatDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    if (auto* number = DYNAMIC_DOWNCAST(FloatDataEntryItem, &item)) {
        number->SetValue(tessalink::readDouble(tessalink::withFullStop(text).View()));
    }
}
