#include "dataentry/IntegerDataEntryUI.h"

#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(IntegerDataEntryUI, TextDataEntryUI)

CString IntegerDataEntryUI::get_curr_item_text_value() {
    const auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, m_item);
    if (number == nullptr || number->IsNull() != 0) return {};
    return tessalink::formatInt(number->GetValue(), 0, -1);
}

void IntegerDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    if (auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item)) {
        number->SetValue(tessalink::readInt(text.View()));
    }
}
