#pragma once

#include "platform/windows/WindowSystem.h"

namespace tessalink {

class HeadlessSystem;

// An edit field without a screen.
class HeadlessEdit final : public NativeEdit {
public:
    HeadlessEdit(HeadlessSystem& system, CWnd& owner, DWORD style)
        : m_system(system),
          m_owner(owner),
          m_style(style),
          m_isReadOnly((style & ES_READONLY) != 0) {}

    void SetText(const CString& text) override;
    CString Text() const override { return m_text; }
    void Select(int start, int end) override;
    void Selection(int& start, int& end) const override;
    void Replace(const CString& text) override;
    void SetReadOnly(bool readOnly) override { m_isReadOnly = readOnly; }
    void SetLimit(int characters) override { m_limit = characters; }
    int LineOf(int position) const override;
    int LineCount() const override;
    int LineStart(int line) const override;
    void ScrollCaret() override {}
    void Cut() override;
    void Copy() override;
    void Paste() override;
    void Undo() override;
    void DefaultKey(UINT key) override;
    void DefaultChar(UINT ch) override;

private:
    bool is_multi_line() const { return (m_style & ES_MULTILINE) != 0; }
    void move_to(int position);
    int step(int direction) const;
    int line_move(int direction) const;
    bool takes(const CString& text) const;
    void type(const CString& text);

    HeadlessSystem& m_system;
    CWnd& m_owner;
    DWORD m_style;
    CString m_text;
    CString m_before;  // for Undo
    int m_anchor = 0;
    int m_caret = 0;
    int m_limit = 0;
    bool m_isReadOnly;
};

}  // namespace tessalink
