#include "dataentry/DataEntryCtl.h"

// What assistive technology is told of a form.

tessalink::AccessibleElement DataEntryCtl::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::Form;
    return element;
}

tessalink::AccessibleElement DataEntryCtl::AccessibleChild(int index) const {
    DataEntryItem* item = GetItem(index);
    DataEntryItemUI* itemUI = GetItemUI(index);
    tessalink::AccessibleElement element;
    element.role = itemUI->Role();
    element.name = item->GetLabel();
    element.value = itemUI->ValueText(item);
    element.isReadOnly = item->IsReadOnly() != 0;
    element.isRequired = item->IsRequired();
    element.isFocused = m_hasFocus && index == m_current;
    element.rect = window_rect(index);
    element.choices = itemUI->Choices(item, element.rect);
    if (element.isFocused) element.focusedChoice = itemUI->FocusedChoice();
    return element;
}

int DataEntryCtl::AccessibleChildAt(CPoint point) const {
    return item_at(CPoint(point.x + m_scroll.x, point.y + m_scroll.y));
}

void DataEntryCtl::ChooseAccessibleChoice(int index, int choice) {
    const tessalink::WindowGuard alive(*this);
    SetCurrItem(index);
    if (!alive || m_current != index) return;
    const auto choices =
        GetItemUI(index)->Choices(GetItem(index), CRect(CPoint(), GetItemSize(index)));
    if (choice < 0 || choice >= static_cast<int>(choices.size())) return;
    GetItemUI(index)->OnClick(choices[static_cast<std::size_t>(choice)].rect.CenterPoint());
}
