#include "platform/qt/detail/QtColors.h"

#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

COLORREF systemColor(const QPalette& palette, int index) {
    const auto color = [&](QPalette::ColorRole role,
                           QPalette::ColorGroup group = QPalette::Current) {
        const QColor found = palette.color(group, role);
        return RGB(found.red(), found.green(), found.blue());
    };
    const BaseColors colors = {
        .window = color(QPalette::Base),
        .windowText = color(QPalette::Text),
        .highlight = color(QPalette::Highlight),
        .highlightText = color(QPalette::HighlightedText),
        .face = color(QPalette::Window),
        .faceText = color(QPalette::WindowText),
        .grayText = color(QPalette::WindowText, QPalette::Disabled),
        .shadow = color(QPalette::Dark),
        .tip = color(QPalette::ToolTipBase),
        .tipText = color(QPalette::ToolTipText),
    };
    return legibleColor(colors, index);
}

}  // namespace tessalink::detail
