#pragma once

#include <QSize>
#include <QWidget>
#include <memory>

#include "platform/base/Export.h"
#include "platform/windows/HostParent.h"

/// Windows of the library in windows of a host that uses the toolkit. useQt() comes first
/// (platform/qt/UseQt.h), with a QApplication.
namespace tessalink {

/// Any widget, a QDialog too, as the parent of windows of the library:
///
///     tessalink::HostWindow host(dialog, [&](UINT message, WPARAM, LPARAM lParam) {
///         if (message != WM_NOTIFY) return tessalink::HostWindow::cNotHandled;
///         const auto& record = *reinterpret_cast<const NMHDR*>(lParam);
///         return tessalink::HostWindow::Answer(isRefused(record) ? 1 : 0);
///     });
///     form.Create(CRect(10, 10, 400, 300), 1, &host);
///
/// The widget stays the host's: it is not moved, painted or deleted, and keeps its events. Windows
/// in it lie where their rectangles say, in pixels from the widget's left top corner; they show
/// with it and are destroyed when it is deleted, their objects are not. Tab leads from the host's
/// own widgets to windows that have a tab stop, and on from these, in the toolkit's order (that of
/// creation, unless QWidget::setTabOrder changes it; widgetOf tells what to order).
///
class TESSALINK_API HostWindow : public HostParent {
public:
    /// An empty handler answers nothing.
    explicit HostWindow(QWidget& widget, Handler handler = {});
};

/// A widget for one window of the library, which fills it: for layouts, splitters and scroll areas
/// of the host.
///
///     auto* holder = new tessalink::WindowHolder(handler);
///     form.Create(CRect(), 1, &holder->Host());
///     layout->addWidget(holder);
class TESSALINK_API WindowHolder : public QWidget {
public:
    /// `handler` as for HostWindow; a widget in `parent`, if there is one.
    explicit WindowHolder(HostWindow::Handler handler = {}, QWidget* parent = nullptr);
    ~WindowHolder() override;

    /// The parent for the window that it holds.
    HostWindow& Host() { return *m_host; }
    /// What layouts are told; 400 by 300 pixels at first.
    void SetSizeHint(QSize size);
    /// See SetSizeHint.
    QSize sizeHint() const override { return m_sizeHint; }

protected:
    /// The window follows the widget.
    void resizeEvent(QResizeEvent* event) override;
    /// The window shows with the widget.
    void showEvent(QShowEvent* event) override;

private:
    void fill();

    QSize m_sizeHint;
    std::unique_ptr<HostWindow> m_host;
};

/// Keeps what is being typed in all windows of the library that lie in a widget, at any depth.
/// Returns false when one of them is refused what stands in its box; it has the focus then. For a
/// dialog's OK, which the toolkit may carry out before the window has asked:
///
///     void Dialog::accept() {
///         if (tessalink::commitEntries(*this)) QDialog::accept();
///     }
TESSALINK_API bool commitEntries(const QWidget& widget);

/// The widget that a window consists of, with its frame and scroll bars; for HostWindow the host's.
/// Null for a window that does not exist or is none of the toolkit's. It is the library's, and may
/// be grabbed, ordered, or asked for its place.
TESSALINK_API QWidget* widgetOf(const CWnd& window);

}  // namespace tessalink
