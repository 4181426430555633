#include "dataentry/IntegerDataEntryUI.h"

#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(IntegerDataEntryUI, TextDataEntryUI)

CString IntegerDataEntryUI::text_value(DataEntryItem& item) const {
    const auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item);
    if (number == nullptr || item.IsNull() != 0) return {};
    return tessalink::formatInt(number->GetValue(), 0, -1);
}

void IntegerDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    if (auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item)) {
        number->SetValue(tessalink::readInt(text.View()));
    }
}
