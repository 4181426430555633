#pragma once

#include "dataentry/ChoiceItemUI.h"

/// Check boxes: any number of responses may be chosen; the item holds their bits and is null
/// without any.
class TESSALINK_API CheckBoxItemUI : public ChoiceItemUI {
    DECLARE_DYNAMIC(CheckBoxItemUI)

public:
    /// `labelWidth` in pixels; 0 for that of a number.
    CheckBoxItemUI(const char* responseSet, int labelWidth)
        : CheckBoxItemUI(responseSet, labelWidth, 0) {}

protected:
    CheckBoxItemUI(const char* responseSet, int labelWidth, int singleChoice)
        : ChoiceItemUI(responseSet, labelWidth, singleChoice != 0) {}

    void draw_choice(CDC& dc, const Choice& choice, const CRect& cell, bool chosen,
                     bool readOnly) const override;
    /// The mark in its square: a box with a tick.
    virtual void draw_mark(CDC& dc, const CRect& box, bool chosen) const;
};

/// Radio buttons: one response is chosen, and the item holds its code. A choice that is made by a
/// key goes on to the next item.
class TESSALINK_API RadioBtnItemUI : public CheckBoxItemUI {
    DECLARE_DYNAMIC(RadioBtnItemUI)

public:
    /// As that of CheckBoxItemUI.
    RadioBtnItemUI(const char* responseSet, int labelWidth)
        : CheckBoxItemUI(responseSet, labelWidth, 1) {}

protected:
    void draw_mark(CDC& dc, const CRect& box, bool chosen) const override;
};

/// Check boxes one below the other. A new group leaves half a line free.
class TESSALINK_API CheckBoxItemColUI : public CheckBoxItemUI {
    DECLARE_DYNAMIC(CheckBoxItemColUI)

public:
    using CheckBoxItemUI::CheckBoxItemUI;
    /// As that of CheckBoxItemUI.
    CheckBoxItemColUI(const char* responseSet, int labelWidth)
        : CheckBoxItemUI(responseSet, labelWidth) {}

protected:
    void place_choices() override;
};
