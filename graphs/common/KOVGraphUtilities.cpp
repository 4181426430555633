#include "graphs/common/KOVGraphUtilities.h"

#include <string_view>

#include "graphs/common/FormattedText.h"

namespace KOVGraphUtilities {

void CalcARScaleFactors(CDC* dc, int deviceWidth, int deviceHeight, int designWidth,
                        int designHeight, double& xScale, double& yScale) {
    xScale = static_cast<double>(deviceWidth) / designWidth;
    yScale = static_cast<double>(deviceHeight) / designHeight;
    if (dc == nullptr) return;
    const double dx = dc->GetDeviceCaps(LOGPIXELSX);
    const double dy = dc->GetDeviceCaps(LOGPIXELSY);
    if (xScale * dy >= dx * yScale) {
        xScale = dx * yScale / dy;
    } else {
        yScale = xScale * dy / dx;
    }
}

void PrintMultipleLines(CDC* dc, int x, int y, const CString& text) {
    if (dc == nullptr) return;
    if (text.View().find('\n') == std::string_view::npos) {
        PrintFormatted(dc, x, y, text, nullptr, nullptr, nullptr);
        return;
    }
    const int height = dc->GetTextExtent("m", 1).cy;
    for (std::string_view rest = text.View(); !rest.empty(); y += height) {
        const auto end = rest.find('\n');
        PrintFormatted(dc, x, y, rest.substr(0, end), nullptr, nullptr, nullptr);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
}

int CountLines(const char* text) {
    if (text == nullptr || *text == '\0') return 0;
    int lines = 1;
    for (; *text != '\0'; ++text) lines += *text == '\n' ? 1 : 0;
    return lines;
}

}  // namespace KOVGraphUtilities
