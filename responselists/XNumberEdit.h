#pragma once

#include "platform/windows/CEdit.h"

class NumberListCtl;

/// The edit box of a number list: digits, with a minus sign in front if wanted. What else is keyed
/// or pasted is refused with a beep. The keys that move between cells go to the list; with Shift
/// they select in the text. A Return that is held down counts once.
class TESSALINK_API XNumberEdit : public CEdit {
public:
    /// `list` must outlive it.
    explicit XNumberEdit(NumberListCtl& list) : m_list(list) {}

    UINT OnGetDlgCode() override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnPaste() override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    /// It is called like the entry that it stands on.
    tessalink::AccessibleElement Accessible() const override;

    /// Whether the box may have this text.
    virtual bool IsValid(const CString& text) const;

private:
    static bool leads_out(UINT key);
    CString replaced(const CString& text) const;

    NumberListCtl& m_list;
};

/// The edit boxes of the two further lists. They take what the first one takes.
class TESSALINK_API XNumberEdit2 : public XNumberEdit {
public:
    using XNumberEdit::XNumberEdit;
};

class TESSALINK_API XNumberEdit3 : public XNumberEdit {
public:
    using XNumberEdit::XNumberEdit;
};
