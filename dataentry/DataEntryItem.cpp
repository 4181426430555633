#include "dataentry/DataEntryItem.h"

#include <utility>

IMPLEMENT_DYNAMIC(DataEntryItem, CObject)
IMPLEMENT_DYNAMIC(IntegerDataEntryItem, DataEntryItem)
IMPLEMENT_DYNAMIC(FloatDataEntryItem, DataEntryItem)
IMPLEMENT_DYNAMIC(TextDataEntryItem, DataEntryItem)

DataEntryItem::DataEntryItem(const char* label) {
    if (label != nullptr) m_label = label;
}

CString DataEntryItem::GetLabel() {
    if (m_label.IsEmpty()) m_label.Format("%d", m_index + 1);
    return m_label;
}

void DataEntryItem::SetLabel(const char* label) {
    m_label = label;
}

int DataEntryItem::SetNull(int isNull) {
    return set_flag(cNull, isNull);
}

int DataEntryItem::SetReadOnly(int isReadOnly) {
    return set_flag(cReadOnly, isReadOnly);
}

int DataEntryItem::set_flag(std::uint16_t bit, int on) {
    const int was = flag(bit);
    m_flags = static_cast<std::uint16_t>(on != 0 ? m_flags | bit : m_flags & ~bit);
    return was;
}

IntegerDataEntryItem::IntegerDataEntryItem(int value, const char* label)
    : DataEntryItem(label), m_value(value) {
    DataEntryItem::SetNull(0);
}

int IntegerDataEntryItem::SetValue(int value) {
    DataEntryItem::SetNull(0);
    return std::exchange(m_value, value);
}

int IntegerDataEntryItem::SetNull(int isNull) {
    m_value = 0;
    return DataEntryItem::SetNull(isNull);
}

double FloatDataEntryItem::SetValue(double value) {
    SetNull(0);
    return std::exchange(m_value, value);
}

TextDataEntryItem::TextDataEntryItem(const char* value) {
    start_with(value);
}

TextDataEntryItem::TextDataEntryItem(const char* value, const char* label) : DataEntryItem(label) {
    start_with(value);
}

void TextDataEntryItem::start_with(const char* value) {
    if (value == nullptr) return;
    m_value = value;
    DataEntryItem::SetNull(0);
}

int TextDataEntryItem::SetNull(int isNull) {
    m_value.Empty();
    return DataEntryItem::SetNull(isNull);
}
