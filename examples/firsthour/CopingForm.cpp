#include "CopingForm.h"

#include <algorithm>

#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"

namespace {

constexpr int cLabelWidth = 110;  // in pixels
constexpr int cMaxRaw = 20;

}  // namespace

CopingForm::CopingForm()
    : DataEntryCtl(new SingleColLayoutMgr),
      m_name(new TextDataEntryItem(nullptr, "Name")),
      m_age(new IntegerDataEntryItem("Age")) {
    AddItem(m_name, new TextDataEntryUI(cLabelWidth, 40, 1, 25));  // one line of up to 40 letters
    auto* const numbers = new IntegerDataEntryUI(cLabelWidth, 3);  // serves all items of the kind
    AddItem(m_age, numbers);
    for (std::size_t i = 0; i < cScales.size(); ++i) {
        m_raw[i] = new IntegerDataEntryItem(cScales[i]);
        AddItem(m_raw[i], numbers);
    }
}

int CopingForm::OnDataChanging(const DataEntryItem* item) {
    const auto raw = std::find(m_raw.begin(), m_raw.end(), item);
    if (raw != m_raw.end() && (*raw)->GetValue() > cMaxRaw) return 0;  // back to the value before
    return DataEntryCtl::OnDataChanging(item);
}

bool CopingForm::GoToEmpty() {
    for (int i = 0; i < GetItemCount(); ++i) {
        if (GetItem(i)->IsNull() == 0) continue;
        SetCurrItem(i);
        return true;
    }
    return false;
}

Answers CopingForm::GetAnswers() const {
    Answers answers = {m_name->GetValue(), m_age->GetValue()};
    for (std::size_t i = 0; i < cScales.size(); ++i) answers.raw[i] = m_raw[i]->GetValue();
    return answers;
}
