#include "platform/win32/detail/Win32Colors.h"

#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

namespace {

// The platform's calls for colors know of light themes only.
constexpr BaseColors cDark = {
    .window = RGB(25, 25, 25),
    .windowText = RGB(255, 255, 255),
    .highlight = RGB(0, 95, 184),
    .highlightText = RGB(255, 255, 255),
    .face = RGB(43, 43, 43),
    .faceText = RGB(255, 255, 255),
    .grayText = RGB(150, 150, 150),
    .shadow = RGB(96, 96, 96),
    .tip = RGB(43, 43, 43),
    .tipText = RGB(255, 255, 255),
};

bool isHighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof(contrast);
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) != 0 &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool isDark() {
    DWORD isLight = 1;
    DWORD size = sizeof(isLight);
    ::RegGetValueW(HKEY_CURRENT_USER,
                   L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                   L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &isLight, &size);
    return isLight == 0;
}

BaseColors lightColors() {
    return {
        .window = ::GetSysColor(COLOR_WINDOW),
        .windowText = ::GetSysColor(COLOR_WINDOWTEXT),
        .highlight = ::GetSysColor(COLOR_HIGHLIGHT),
        .highlightText = ::GetSysColor(COLOR_HIGHLIGHTTEXT),
        .face = ::GetSysColor(COLOR_BTNFACE),
        .faceText = ::GetSysColor(COLOR_BTNTEXT),
        .grayText = ::GetSysColor(COLOR_GRAYTEXT),
        .shadow = ::GetSysColor(COLOR_BTNSHADOW),
        .tip = ::GetSysColor(COLOR_INFOBK),
        .tipText = ::GetSysColor(COLOR_INFOTEXT),
    };
}

}  // namespace

COLORREF platformColor(int index) {
    return legibleColor(isDark() && !isHighContrast() ? cDark : lightColors(), index);
}

}  // namespace tessalink::detail
