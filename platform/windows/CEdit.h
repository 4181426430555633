#pragma once

#include <optional>

#include "platform/windows/CWnd.h"

/// An edit box: an edit field of the system, with its selection, clipboard, undo and input methods.
/// Positions count characters from 0 on, -1 is the end; lines end in "\r\n". Its parent gets
/// WM_COMMAND with EN_CHANGE, EN_SETFOCUS and EN_KILLFOCUS.
///
/// Keys and characters come to the handlers first; the base class's pass them to the field. What a
/// paste would insert can be asked of tessalink::clipboardText. Characters that the code page lacks
/// are refused with a beep, a paste as a whole.
class TESSALINK_API CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)

public:
    CEdit() = default;
    ~CEdit() override = default;

    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    /// Selects from one position to another; 0 and -1 select all.
    void SetSel(int start, int end);
    /// The selection; both are the caret's when nothing is selected.
    void GetSel(int& start, int& end) const;
    /// Replaces the selection by a text.
    void ReplaceSel(const char* text);
    /// Whether the user can't change the text; returns nonzero when there is a field.
    BOOL SetReadOnly(BOOL readOnly = 1);
    /// How many characters the user may type; 0 for as many as the field takes.
    void SetLimitText(UINT characters);
    /// The line of a position, or of the caret.
    int LineFromChar(int position = -1) const;
    /// How many lines there are; one at least.
    int GetLineCount() const;
    /// Where a line starts, or with -1 the line of the caret; -1 when there is no such line.
    int LineIndex(int line) const;
    /// Scrolls until the caret shows.
    void ScrollCaret();
    /// Moves the selection to the clipboard.
    void Cut();
    /// Copies the selection to the clipboard.
    void Copy();
    /// Replaces the selection by the text of the clipboard, through OnPaste.
    void Paste() { SendMessage(WM_PASTE); }
    /// Takes the last change of the user back.
    void Undo();

    /// The user, or Paste, pastes. The base hands that on to the field.
    virtual void OnPaste();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    /// Where the system doesn't draw its edit fields itself.
    void OnPaint() override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    UINT OnGetDlgCode() override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message) override;
    tessalink::AccessibleElement Accessible() const override;
    using CWnd::Create;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    /// The text of the field.
    CString window_text() const override;

private:
    /// The messages of edit boxes; nothing for others.
    std::optional<LRESULT> field_message(UINT message, WPARAM wParam, LPARAM lParam);
    void tell_parent(UINT code);
};
