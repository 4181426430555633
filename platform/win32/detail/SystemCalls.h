#pragma once

#include "platform/base/Types.h"

// Calls that not every version of the platform has; without them their older likes answer.
namespace tessalink::detail {

// Pixels per inch of a window, of the process, and of the screen at a point.
int dpiOfWindow(HWND window);
int dpiOfProcess();
int dpiOfMonitor(HMONITOR monitor);

// While it is not 0, all windows and screens have so many pixels per inch: for the tests.
void useDpi(int dpi);

int metricForDpi(int index, int dpi);
// Around a client area.
void addFrame(RECT& client, DWORD style, DWORD extendedStyle, int dpi);
void allowScalePerMonitor();

// The function of a library that is loaded then; null when either is missing.
FARPROC loadedCall(const wchar_t* library, const char* name);

template <class Function>
Function* loadedCall(const wchar_t* library, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(loadedCall(library, name)));
}

}  // namespace tessalink::detail
