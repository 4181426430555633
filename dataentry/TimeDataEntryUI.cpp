#include "dataentry/TimeDataEntryUI.h"

#include "core/Time.h"
#include "dataentry/TimeEditCtl.h"

IMPLEMENT_DYNAMIC(TimeDataEntryUI, TextDataEntryUI)

namespace {

/// HHMM, the number of the short format, is HHMMSS divided by this.
constexpr std::uint32_t cSeconds = 100;

}  // namespace

TimeDataEntryUI::TimeDataEntryUI(int labelWidth, int shortFormat)
    : TextDataEntryUI(labelWidth, Time::GetTimeFormatLen(shortFormat), 1,
                      Time::GetTimeFormatLen(shortFormat)),
      m_shortFormat(shortFormat) {}

CEdit* TimeDataEntryUI::create_edit_box() {
    return new TimeEditCtl(*this, m_shortFormat);
}

CString TimeDataEntryUI::get_curr_item_text_value() {
    const auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, m_item);
    if (number == nullptr || number->IsNull() != 0) return Time::GetBlankFormatStr(m_shortFormat);
    const auto value = static_cast<std::uint32_t>(number->GetValue());
    const Time time(static_cast<unsigned long>(m_shortFormat != 0 ? value * cSeconds : value));
    return time.GetAsStr(m_shortFormat);
}

CString TimeDataEntryUI::ValueText(DataEntryItem* item) {
    return item->IsNull() != 0 ? CString() : text_of(*item);
}

void TimeDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item);
    if (number == nullptr) return;
    CString blanked = text;
    blanked.Replace('_', ' ');
    const Time time(blanked.GetString());
    if (time.IsValid() == 0) {
        number->SetNull(1);
        return;
    }
    const std::uint32_t value = time.Get();
    number->SetValue(static_cast<int>(m_shortFormat != 0 ? value / cSeconds : value));
}
