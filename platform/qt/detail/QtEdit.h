#pragma once

#include <QFont>
#include <memory>
#include <utility>

#include "platform/qt/detail/QtWindow.h"

namespace tessalink::detail {

// The field of an edit box: what fields of one and of several lines share. Positions of the library
// count a line end as two characters, those of the toolkit as one.
class QtEdit : public NativeEdit {
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
    void Replace(const CString& text) override;
    void SetLimit(int characters) override { m_limit = characters; }
    void Paste() override;
    void DefaultKey(UINT key) override;
    void DefaultChar(UINT ch) override;

protected:
    QtEdit(WindowLink link, DWORD style) : m_link(std::move(link)), m_style(style) {}

    virtual QString field_text() const = 0;
    virtual bool is_read_only() const = 0;
    virtual bool is_multi_line() const = 0;
    // The positions of the selection in the field.
    virtual std::pair<int, int> selected() const = 0;
    // Replaces the selection.
    virtual void insert(const QString& text) = 0;
    int to_field(int position) const;
    int from_field(int position) const;

private:
    bool takes(const CString& text) const;
    // Lets the field have the key that is being pressed, or one that means the same.
    void press(UINT key);
    bool leave_selection(UINT key);
    void type(const CString& text);

    WindowLink m_link;
    DWORD m_style;
    int m_limit = 0;
};

}  // namespace tessalink::detail
