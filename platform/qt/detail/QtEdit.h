#pragma once

#include <QFont>
#include <memory>
#include <utility>

#include "platform/qt/detail/QtWindow.h"
#include "platform/windows/SystemEdit.h"

namespace tessalink::detail {

// The field of an edit box: what fields of one and of several lines share. Positions of the library
// count a line end as two characters, those of the toolkit as one.
class QtEdit : public SystemEdit {
public:
    // A field in a frame, which owns the widget.
    static std::unique_ptr<QtEdit> Make(QWidget* frame, const WindowLink& link, DWORD style);

    virtual QWidget& Widget() = 0;
    // An event of the toolkit as the field takes it by itself.
    virtual void BaseKey(QKeyEvent& event) = 0;
    virtual void BaseCompose(QInputMethodEvent& event) = 0;
    // Lines are so many pixels high.
    virtual void SetFont(const QFont& font, int lineHeight) = 0;
    void SetColors(const QColor& text, const QColor& ground);

    CString Text() const override;
    void Selection(int& start, int& end) const override;

protected:
    QtEdit(CWnd& owner, DWORD style) : SystemEdit(owner, style) {}

    virtual QString field_text() const = 0;
    // The positions of the selection in the field.
    virtual std::pair<int, int> selected() const = 0;
    void press(UINT key) override;
    void type(char ch) override;
    void redo() override;
    int to_field(int position) const;
    int from_field(int position) const;
};

}  // namespace tessalink::detail
