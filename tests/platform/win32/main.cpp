// The main of the tests of the platform's windows.
#include <gtest/gtest.h>

#include "platform/base/Types.h"
#include "platform/win32/UseWin32.h"

namespace {

// Where the platform is played over X11, and no window manager runs, nobody answers what it asks of
// one; it waits for two seconds each time.
void askNoWindowManager() {
    constexpr wchar_t cNo[] = L"N";
    ::RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\X11 Driver", L"Managed", REG_SZ, cNo,
                      sizeof(cNo));
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    askNoWindowManager();
    tessalink::useWin32();
    return RUN_ALL_TESTS();
}
