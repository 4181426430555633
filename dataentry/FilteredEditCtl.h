#pragma once

#include "dataentry/SimpleTextEditCtl.h"

/// An edit box that refuses, with a beep, what would make its text invalid: keys and pasted texts
/// alike, each as a whole.
class TESSALINK_API FilteredEditCtl : public SimpleTextEditCtl {
public:
    using SimpleTextEditCtl::SimpleTextEditCtl;

    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnSetFocus(CWnd* old) override;
    void OnPaste() override;

    /// Whether the box may have this text.
    virtual bool IsValid(const CString& text) const = 0;

protected:
    /// Whether a character may be in the text at all.
    virtual bool accepts(char ch) const = 0;
};
