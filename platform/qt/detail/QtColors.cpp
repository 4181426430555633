#include "platform/qt/detail/QtColors.h"

#include <algorithm>
#include <cmath>

#include "platform/windows/Messages.h"

namespace tessalink::detail {

namespace {

constexpr double cLegibleContrast = 4.5;
constexpr int cBlendSteps = 20;
// How much of the text's color is in the shadow of a dark theme.
constexpr double cDarkShadow = 0.25;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

// Relative luminance and contrast ratio, as WCAG 2.1 defines them.
double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor blend(const QColor& from, const QColor& to, double share) {
    const auto channel = [share](int a, int b) {
        return static_cast<int>(std::lround(a + (b - a) * share));
    };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()),
            channel(from.blue(), to.blue())};
}

// The color, moved towards black or white until it is legible on the grounds.
QColor legible(const QColor& color, const QColor& ground) {
    const QColor end = contrast(Qt::black, ground) > contrast(Qt::white, ground)
                           ? QColor(Qt::black)
                           : QColor(Qt::white);
    for (int i = 0; i < cBlendSteps; ++i) {
        const QColor tried = blend(color, end, static_cast<double>(i) / cBlendSteps);
        if (contrast(tried, ground) >= cLegibleContrast) return tried;
    }
    return end;
}

bool isDark(const QPalette& palette) {
    return luminance(palette.color(QPalette::Window)) <
           luminance(palette.color(QPalette::WindowText));
}

// Labels are white on it.
QColor shadow(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor start = isDark(palette)
                             ? blend(window, palette.color(QPalette::WindowText), cDarkShadow)
                             : palette.color(QPalette::Dark);
    return legible(start, Qt::white);
}

QColor colorOf(const QPalette& palette, int index) {
    const auto color = [&](QPalette::ColorRole role) { return palette.color(role); };
    switch (index) {
        case COLOR_WINDOW:
            return color(QPalette::Base);
        case COLOR_WINDOWTEXT:
            return legible(color(QPalette::Text), color(QPalette::Base));
        case COLOR_HIGHLIGHT:
            return color(QPalette::Highlight);
        case COLOR_HIGHLIGHTTEXT:
            return legible(color(QPalette::HighlightedText), color(QPalette::Highlight));
        case COLOR_BTNSHADOW:
            return shadow(palette);
        case COLOR_BTNHIGHLIGHT:
            return Qt::white;
        case COLOR_GRAYTEXT:
            return legible(palette.color(QPalette::Disabled, QPalette::WindowText),
                           color(QPalette::Window));
        case COLOR_BTNTEXT:
            return legible(color(QPalette::WindowText), color(QPalette::Window));
        case COLOR_INFOBK:
            return color(QPalette::ToolTipBase);
        case COLOR_INFOTEXT:
            return legible(color(QPalette::ToolTipText), color(QPalette::ToolTipBase));
        default:
            return color(QPalette::Window);
    }
}

}  // namespace

COLORREF systemColor(const QPalette& palette, int index) {
    const QColor color = colorOf(palette, index);
    return RGB(color.red(), color.green(), color.blue());
}

}  // namespace tessalink::detail
