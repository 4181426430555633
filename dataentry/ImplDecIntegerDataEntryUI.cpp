#include "dataentry/ImplDecIntegerDataEntryUI.h"

#include "dataentry/FloatEditCtl.h"
#include "dataentry/detail/DecimalPoint.h"
#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(ImplDecIntegerDataEntryUI, TextDataEntryUI)

ImplDecIntegerDataEntryUI::ImplDecIntegerDataEntryUI(int labelWidth, int maxChars, int decimals,
                                                     int allowNegative)
    : TextDataEntryUI(labelWidth, maxChars, 1, maxChars),
      m_decimals(decimals),
      m_allowNegative(allowNegative) {
    for (int i = 0; i < decimals; ++i) m_multiplier *= 10;
}

CEdit* ImplDecIntegerDataEntryUI::create_edit_box() {
    return new FloatEditCtl(*this, m_decimals, m_allowNegative);
}

CString ImplDecIntegerDataEntryUI::get_curr_item_text_value() {
    const auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, m_item);
    if (number == nullptr || number->IsNull() != 0) return {};
    if (m_decimals <= 0) return tessalink::formatInt(number->GetValue(), 0, -1);
    return tessalink::withLocalPoint(
        tessalink::formatDouble(number->GetValue() / m_multiplier, 0, m_decimals));
}

void ImplDecIntegerDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item);
    if (number == nullptr) return;
    const CString plain = tessalink::withFullStop(text);
    if (m_decimals <= 0) {
        number->SetValue(tessalink::readInt(plain.View()));
        return;
    }
    const double value = tessalink::readDouble(plain.View()) * m_multiplier;
    number->SetValue(tessalink::toInt(value < 0 ? value - 0.5 : value + 0.5));
}
