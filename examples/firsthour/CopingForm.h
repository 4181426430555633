#pragma once

#include <array>

#include "Answers.h"
#include "dataentry/DataEntryCtl.h"

/// Asks for name, age and raw scores.
class CopingForm : public DataEntryCtl {
public:
    CopingForm();

    /// Goes to the first field that is empty; false when none is.
    bool GoToEmpty();
    Answers GetAnswers() const;

protected:
    int OnDataChanging(const DataEntryItem* item) override;

private:
    TextDataEntryItem* m_name;  // the form owns them
    IntegerDataEntryItem* m_age;
    std::array<IntegerDataEntryItem*, cScales.size()> m_raw{};
};
