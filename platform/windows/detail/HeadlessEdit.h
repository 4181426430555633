#pragma once

#include "platform/windows/SystemEdit.h"

namespace tessalink {

class HeadlessSystem;

// An edit field without a screen.
class HeadlessEdit final : public SystemEdit {
public:
    HeadlessEdit(HeadlessSystem& system, CWnd& owner, DWORD style)
        : SystemEdit(owner, style), m_system(system), m_isReadOnly((style & ES_READONLY) != 0) {}

    void SetText(const CString& text) override;
    CString Text() const override { return m_text; }
    void Select(int start, int end) override;
    void Selection(int& start, int& end) const override;
    void SetReadOnly(bool readOnly) override { m_isReadOnly = readOnly; }
    int LineOf(int position) const override;
    int LineCount() const override;
    int LineStart(int line) const override;
    void ScrollCaret() override {}
    void Cut() override;
    void Copy() override;
    void Undo() override;

protected:
    bool is_read_only() const override { return m_isReadOnly; }
    void insert(const CString& text) override;
    void press(UINT key) override;
    void type(char ch) override { insert(CString(ch)); }

private:
    void move_to(int position);
    int step(int direction) const;
    int line_move(int direction) const;
    void delete_step(int direction);

    HeadlessSystem& m_system;
    CString m_text;
    CString m_before;  // for Undo
    int m_anchor = 0;
    int m_caret = 0;
    bool m_isReadOnly;
};

}  // namespace tessalink
