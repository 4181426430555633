// The number lists that add something.
#include <algorithm>

#include "responselists/NumberListCtl.h"

IMPLEMENT_DYNAMIC(NumberListCtl2, NumberListCtl)
IMPLEMENT_DYNAMIC(NumberListCtl3, NumberListCtl)

NumberListCtl2::NumberListCtl2(int count, const char** names, int* ranges) {
    SetLegend(count, names, ranges);
}

void NumberListCtl2::SetCurrItem(int index) {
    go_to(index);
}

NumberListCtl3::NumberListCtl3(int count, const char** names, int* ranges,
                               unsigned int missingValue)
    : m_missing(missingValue) {
    SetLegend(count, names, ranges);
}

// Here, so that a last commit still knows what is missing.
NumberListCtl3::~NumberListCtl3() {
    DestroyWindow();
}

void NumberListCtl3::SetMissingValue(unsigned int value) {
    std::replace(m_values.begin(), m_values.end(), m_missing, std::uint32_t{value});
    m_missing = value;
    Invalidate();
    load_edit();
}

CString NumberListCtl3::text_of(int number) const {
    return is_exempt(static_cast<std::uint32_t>(number)) ? CString()
                                                         : NumberListCtl::text_of(number);
}

std::uint32_t NumberListCtl3::value_of(const CString& text) const {
    CString trimmed = text;
    return trimmed.Trim().IsEmpty() ? m_missing : NumberListCtl::value_of(text);
}
