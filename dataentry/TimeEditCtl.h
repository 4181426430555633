#pragma once

#include "dataentry/SimpleTextEditCtl.h"

/// An edit box for a time of day in the user's format: a pattern of fixed width whose places are
/// overwritten one by one. A digit goes to the next place for one; a separator goes on to the next
/// field; a letter that begins the indicator of morning or afternoon writes it; a blank clears a
/// place. Everything else is refused with a beep, and so is a second digit that makes an hour above
/// 23, or a minute or second above 59. A first digit that would clears the second.
class TESSALINK_API TimeEditCtl : public SimpleTextEditCtl {
public:
    /// `shortFormat` 0 for times with seconds.
    TimeEditCtl(TextDataEntryUI& itemUI, int shortFormat);

    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    /// A time in the user's format replaces the whole text; everything else is refused.
    void OnPaste() override;
    /// What is cut leaves its places empty.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// What the text and the caret become when a character is keyed; false when it is refused.
    /// `text` has the width of the pattern.
    bool Key(char ch, CString& text, int& caret) const;

private:
    /// The place for a digit at `from` or after it, or -1.
    int place_from(int from) const;
    bool key_digit(char ch, CString& text, int& caret) const;
    bool key_indicator(char ch, CString& text, int& caret) const;
    /// Clears the places of a part of the text.
    void clear(CString& text, int start, int end) const;
    void clear_selection();
    void show(const CString& text, int caret);

    int m_shortFormat;
    CString m_pattern;
};
