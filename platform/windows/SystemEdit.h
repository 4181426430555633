#pragma once

#include "platform/windows/WindowSystem.h"

namespace tessalink {

/// What the edit fields of all window systems do with keys, characters and the clipboard: what they
/// refuse, which characters are commands, and what goes through the window.
class TESSALINK_API SystemEdit : public NativeEdit {
public:
    void Replace(const CString& text) override { insert(text); }
    void SetLimit(int characters) override { m_limit = characters; }
    void Paste() override;
    void DefaultKey(UINT key) override;
    void DefaultChar(UINT ch) override;

protected:
    /// The field of a window, with its style (ES_...).
    SystemEdit(CWnd& owner, DWORD style) : m_owner(owner), m_style(style) {}

    /// Whether the user can't change the text.
    virtual bool is_read_only() const = 0;
    /// Replaces the selection; as one step that can be undone.
    virtual void insert(const CString& text) = 0;
    /// What the field does with a key by itself, with the modifiers that are held: moves the caret,
    /// or deletes.
    virtual void press(UINT key) = 0;
    /// Lets the user type a character that the field takes.
    virtual void type(char ch) = 0;
    /// Takes the last Undo back; by default nothing.
    virtual void redo() {}

    /// The edit box that the field belongs to.
    CWnd& owner() const { return m_owner; }
    /// Its style (ES_...).
    DWORD style() const { return m_style; }
    /// Whether it has several lines.
    bool is_multi_line() const { return (m_style & ES_MULTILINE) != 0; }

private:
    bool takes(const CString& text) const;
    bool leave_selection(UINT key);
    void start_line();

    CWnd& m_owner;
    DWORD m_style;
    int m_limit = 0;
};

}  // namespace tessalink
