#include "platform/qt/detail/QtEdit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QTextEdit>
#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/base/HostServices.h"
#include "platform/qt/detail/QtInput.h"
#include "platform/qt/detail/QtText.h"

namespace tessalink::detail {

namespace {

// What fields leave free at the left and above the text.
constexpr int cTextMargin = 2;

void tellChange(const WindowLink& link) {
    if (*link != nullptr) editChanged((*link)->Owner());
}

void pasteInto(const WindowLink& link, const QString& text) {
    if (*link == nullptr) return;
    const QtWindowSystem::PasteScope scope(text);
    (*link)->Owner().SendMessage(WM_PASTE);
}

// A field of the toolkit whose input goes to the window first.
template <class Base>
class Field : public Base {
public:
    Field(QWidget* frame, WindowLink link) : Base(frame), m_link(std::move(link)) {}

    void BaseKey(QKeyEvent& event) { Base::keyPressEvent(&event); }
    void BaseCompose(QInputMethodEvent& event) { Base::inputMethodEvent(&event); }

protected:
    bool event(QEvent* event) override {
        return overridesShortcut(m_link, *event) || Base::event(event);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (*m_link != nullptr) (*m_link)->KeyPressed(*event);
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        if (*m_link != nullptr) (*m_link)->KeyReleased(*event);
    }
    void inputMethodEvent(QInputMethodEvent* event) override {
        if (*m_link != nullptr) (*m_link)->TextComposed(*event);
    }
    void focusInEvent(QFocusEvent* event) override {
        Base::focusInEvent(event);
        if (*m_link != nullptr) (*m_link)->FocusCame(event->reason());
    }
    void focusOutEvent(QFocusEvent* event) override {
        Base::focusOutEvent(event);
        if (*m_link != nullptr) (*m_link)->FocusLeft(event->reason());
    }
    void wheelEvent(QWheelEvent* event) override {
        if (*m_link != nullptr) (*m_link)->WheelTurned(*event);
    }
    // The toolkit's menu; it may end with the field.
    void contextMenuEvent(QContextMenuEvent* event) override {
        const QPointer<QMenu> menu = this->createStandardContextMenu();
        for (QAction* const action : menu->actions()) lead_paste(*action);
        event->accept();
        menu->exec(event->globalPos());
        delete menu.data();
    }
    bool focusNextPrevChild(bool) override { return false; }
    const WindowLink& link() const { return m_link; }

private:
    // Pasting goes to the window.
    void lead_paste(QAction& action) {
        const QString key = QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText);
        const bool isPaste = action.objectName() == QLatin1String("edit-paste") ||
                             action.text().endsWith(QLatin1Char('\t') + key);
        if (!isPaste) return;
        action.disconnect(SIGNAL(triggered(bool)));
        QObject::connect(&action, &QAction::triggered, &action, [link = m_link] {
            if (*link != nullptr) (*link)->Owner().SendMessage(WM_PASTE);
        });
    }

    WindowLink m_link;
};

class LineField final : public Field<QLineEdit> {
public:
    using Field::Field;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override {
        const QClipboard* const clipboard = QApplication::clipboard();
        if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
            pasteInto(link(), clipboard->text(QClipboard::Selection));
        } else {
            QLineEdit::mouseReleaseEvent(event);
        }
    }
    void dropEvent(QDropEvent* event) override {
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        event->setDropAction(Qt::CopyAction);
        event->accept();
        pasteInto(link(), event->mimeData()->text());
    }
};

class TextField final : public Field<QTextEdit> {
public:
    using Field::Field;
    void SetUnbroken(bool isUnbroken) { m_isUnbroken = isUnbroken; }

protected:
    // Whatever is pasted or dropped, by whatever means.
    void insertFromMimeData(const QMimeData* source) override { pasteInto(link(), source->text()); }
    void dropEvent(QDropEvent* event) override {
        event->setDropAction(Qt::CopyAction);
        QTextEdit::dropEvent(event);
    }
    // Lines break at the right edge; with room for one line only, that scrolls instead.
    void resizeEvent(QResizeEvent* event) override {
        const bool isLow = height() < 2 * fontMetrics().height();
        setLineWrapMode(isLow || m_isUnbroken ? QTextEdit::NoWrap : QTextEdit::WidgetWidth);
        QTextEdit::resizeEvent(event);
    }

private:
    bool m_isUnbroken = false;
};

class LineEdit final : public QtEdit {
public:
    LineEdit(QWidget* frame, const WindowLink& link, DWORD style)
        : QtEdit((*link)->Owner(), style), m_field(new LineField(frame, link)) {
        m_field->setFrame(false);
        m_field->setReadOnly((style & ES_READONLY) != 0);
        QObject::connect(m_field, &QLineEdit::textChanged, m_field, [link] { tellChange(link); });
    }

    QWidget& Widget() override { return *m_field; }
    void BaseKey(QKeyEvent& event) override { m_field->BaseKey(event); }
    void BaseCompose(QInputMethodEvent& event) override { m_field->BaseCompose(event); }
    void SetFont(const QFont& font, int) override { m_field->setFont(font); }
    void SetText(const CString& text) override {
        const QSignalBlocker silent(m_field);
        m_field->setText(toFieldText(text));
        m_field->setCursorPosition(0);
    }
    void Select(int start, int end) override {
        const int from = to_field(start);
        m_field->setSelection(from, to_field(end) - from);
    }
    void SetReadOnly(bool readOnly) override { m_field->setReadOnly(readOnly); }
    int LineOf(int) const override { return 0; }
    int LineCount() const override { return 1; }
    int LineStart(int line) const override { return line <= 0 ? 0 : -1; }
    // The field shows its caret at all times.
    void ScrollCaret() override {}
    void Cut() override { m_field->cut(); }
    void Copy() override { m_field->copy(); }
    void Undo() override { m_field->undo(); }

protected:
    QString field_text() const override { return m_field->text(); }
    bool is_read_only() const override { return m_field->isReadOnly(); }
    std::pair<int, int> selected() const override {
        const int caret = m_field->cursorPosition();
        if (!m_field->hasSelectedText()) return {caret, caret};
        return {m_field->selectionStart(), m_field->selectionEnd()};
    }
    void insert(const CString& text) override { m_field->insert(toFieldText(text)); }

private:
    LineField* m_field;
};

class TextEdit final : public QtEdit {
public:
    TextEdit(QWidget* frame, const WindowLink& link, DWORD style)
        : QtEdit((*link)->Owner(), style), m_field(new TextField(frame, link)) {
        m_field->setFrameShape(QFrame::NoFrame);
        m_field->setAcceptRichText(false);
        m_field->document()->setDocumentMargin(cTextMargin);
        // Characters are as wide as where the library draws them, and lines break at the same.
        m_field->document()->setUseDesignMetrics(true);
        m_field->SetUnbroken((style & ES_AUTOHSCROLL) != 0);
        const auto bar = [style](DWORD bit) {
            return (style & bit) != 0 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
        };
        m_field->setVerticalScrollBarPolicy(bar(WS_VSCROLL));
        m_field->setHorizontalScrollBarPolicy(bar(WS_HSCROLL));
        SetReadOnly((style & ES_READONLY) != 0);
        QObject::connect(m_field, &QTextEdit::textChanged, m_field, [link] { tellChange(link); });
    }

    QWidget& Widget() override { return *m_field; }
    void BaseKey(QKeyEvent& event) override { m_field->BaseKey(event); }
    void BaseCompose(QInputMethodEvent& event) override { m_field->BaseCompose(event); }
    void SetFont(const QFont& font, int lineHeight) override {
        m_lineHeight = lineHeight;
        m_field->setFont(font);
        format();
    }
    void SetText(const CString& text) override {
        const QSignalBlocker silent(m_field);
        m_field->setPlainText(toFieldText(text));
        format();
    }
    void Select(int start, int end) override {
        QTextCursor cursor = m_field->textCursor();
        cursor.setPosition(to_field(start));
        cursor.setPosition(to_field(end), QTextCursor::KeepAnchor);
        m_field->setTextCursor(cursor);
    }
    void SetReadOnly(bool readOnly) override {
        m_field->setReadOnly(readOnly);
        // The keys move through the text all the same.
        if (readOnly) {
            m_field->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                             Qt::TextSelectableByKeyboard);
        }
    }
    int LineOf(int position) const override {
        const int place = position < 0 ? m_field->textCursor().position() : to_field(position);
        const QTextBlock block = m_field->document()->findBlock(place);
        int line = lines_before(block);
        if (!block.isValid()) return std::max(0, line - 1);
        const QTextLine row = block.layout()->lineForTextPosition(place - block.position());
        if (row.isValid()) line += row.lineNumber();
        return line;
    }
    int LineCount() const override { return lines_before(QTextBlock()); }
    int LineStart(int line) const override {
        for (QTextBlock block = m_field->document()->begin(); block.isValid();
             block = block.next()) {
            if (line < lines_in(block)) {
                const QTextLine row = block.layout()->lineAt(std::max(line, 0));
                return from_field(block.position() + (row.isValid() ? row.textStart() : 0));
            }
            line -= lines_in(block);
        }
        return -1;
    }
    void ScrollCaret() override { m_field->ensureCursorVisible(); }
    void Cut() override { m_field->cut(); }
    void Copy() override { m_field->copy(); }
    void Undo() override { m_field->undo(); }

protected:
    // Unlike the plain text it has blanks that do not break.
    QString field_text() const override {
        QString text = m_field->document()->toRawText();
        text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
        return text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    }
    bool is_read_only() const override { return m_field->isReadOnly(); }
    std::pair<int, int> selected() const override {
        const QTextCursor cursor = m_field->textCursor();
        return {cursor.selectionStart(), cursor.selectionEnd()};
    }
    void insert(const CString& text) override { m_field->insertPlainText(toFieldText(text)); }

private:
    static int lines_in(const QTextBlock& block) {
        return std::max(1, block.layout()->lineCount());
    }
    // All, before no block.
    int lines_before(const QTextBlock& end) const {
        int lines = 0;
        for (QTextBlock block = m_field->document()->begin(); block.isValid() && block != end;
             block = block.next()) {
            lines += lines_in(block);
        }
        return lines;
    }
    // Lines are as high as where the library draws them. It is no step to undo.
    void format() {
        const QSignalBlocker silent(m_field);
        QTextBlockFormat height;
        height.setLineHeight(m_lineHeight, m_lineHeight > 0 ? QTextBlockFormat::FixedHeight
                                                            : QTextBlockFormat::SingleHeight);
        m_field->setUndoRedoEnabled(false);
        QTextCursor all(m_field->document());
        all.select(QTextCursor::Document);
        all.mergeBlockFormat(height);
        m_field->setUndoRedoEnabled(true);
    }

    TextField* m_field;
    int m_lineHeight = 0;
};

}  // namespace

std::unique_ptr<QtEdit> QtEdit::Make(QWidget* frame, const WindowLink& link, DWORD style) {
    if ((style & ES_MULTILINE) != 0) return std::make_unique<TextEdit>(frame, link, style);
    return std::make_unique<LineEdit>(frame, link, style);
}

void QtEdit::SetColors(const QColor& text, const QColor& ground) {
    QPalette palette = Widget().palette();
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Base, ground);
    Widget().setPalette(palette);
}

CString QtEdit::Text() const {
    return fromQString(field_text()).value_or(CString());
}

int QtEdit::to_field(int position) const {
    const CString text = Text();
    const int length = text.GetLength();
    const int end = position < 0 ? length : std::min(position, length);
    const std::string_view before = text.View().substr(0, static_cast<std::size_t>(end));
    return end - static_cast<int>(std::count(before.begin(), before.end(), '\r'));
}

int QtEdit::from_field(int position) const {
    return position + static_cast<int>(field_text().left(position).count(QLatin1Char('\n')));
}

void QtEdit::Selection(int& start, int& end) const {
    const auto [from, to] = selected();
    start = from_field(from);
    end = from_field(to);
}

// Lets the field have the key that is being pressed, or one that means the same.
void QtEdit::press(UINT key) {
    QtWindowSystem& system = QtWindowSystem::Get();
    QKeyEvent* const current = system.CurrentKey();
    if (current != nullptr && keyInputOf(*current).key == key) {
        system.TakeKey();
        BaseKey(*current);
        return;
    }
    QKeyEvent made(QEvent::KeyPress, toolkitKey(key), system.Modifiers());
    BaseKey(made);
}

void QtEdit::type(char ch) {
    QKeyEvent typed(QEvent::KeyPress, 0, Qt::NoModifier, toFieldText(CString(ch)));
    BaseKey(typed);
}

void QtEdit::redo() {
    QKeyEvent redo(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    BaseKey(redo);
}

}  // namespace tessalink::detail
