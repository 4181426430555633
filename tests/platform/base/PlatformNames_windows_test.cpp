#include <gtest/gtest.h>

#include <string>

#include "platform/base/Types.h"

namespace tessalink::test {
namespace {

// Classes of ours have methods of these names, and a host's own calls go on.
TEST(PlatformNames, CallsOfAHostReachThePlatform) {
    const HWND window = ::CreateWindowExA(0, "STATIC", "first", WS_POPUP, 0, 0, 10, 10, nullptr,
                                          nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_NE(SetWindowText(window, "second"), 0);
    EXPECT_EQ(GetWindowTextLength(window), 6);
    char text[16] = {};
    EXPECT_EQ(SendMessage(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text)), 6);
    EXPECT_STREQ(text, "second");
    char name[16] = {};
    EXPECT_EQ(GetClassName(window, name, sizeof name), 6);
    EXPECT_STREQ(name, "Static");
    LOGFONTA face{};
    ::lstrcpyA(face.lfFaceName, "Arial");
    face.lfHeight = -20;
    const HFONT font = CreateFontIndirect(&face);
    LOGFONTA made{};
    EXPECT_EQ(GetObject(font, sizeof made, &made), static_cast<int>(sizeof made));
    EXPECT_EQ(made.lfHeight, -20);
    ::DeleteObject(font);
    ::DestroyWindow(window);
}

}  // namespace
}  // namespace tessalink::test
