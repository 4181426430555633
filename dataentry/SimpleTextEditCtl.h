#pragma once

#include "platform/windows/CEdit.h"

class TextDataEntryUI;

/// The edit box of a form. Tab, Return and Escape belong to the interface; the keys that would lead
/// out of the text, to the form: Page Up and Down, Left and Right at the ends, Up in the first and
/// Down in the last line. With Ctrl, Return is a new line in a box of several lines.
class TESSALINK_API SimpleTextEditCtl : public CEdit {
public:
    /// `interface` must outlive it.
    explicit SimpleTextEditCtl(TextDataEntryUI& itemUI) : m_interface(itemUI) {}

    UINT OnGetDlgCode() override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    /// It is called by the label of its item.
    tessalink::AccessibleElement Accessible() const override;

protected:
    /// The text as it is, and the selected part of it.
    struct Selection {
        CString text;   ///< all of it
        int start = 0;  ///< where the selection begins
        int end = 0;    ///< where it ends
    };

    /// The text and its selection.
    Selection selection() const;
    /// What the text becomes when a text replaces the selection.
    static CString replaced(const Selection& selection, const CString& text);

    TextDataEntryUI& m_interface;  ///< what the box belongs to

private:
    bool leads_out(UINT key) const;
};
