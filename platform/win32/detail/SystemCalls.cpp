#include "platform/win32/detail/SystemCalls.h"

#include "platform/win32/detail/GdiHandle.h"

namespace tessalink::detail {

namespace {

constexpr const wchar_t* cUser = L"user32.dll";

int usedDpi = 0;

}  // namespace

FARPROC loadedCall(const wchar_t* library, const char* name) {
    const HMODULE module = ::LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return module != nullptr ? ::GetProcAddress(module, name) : nullptr;
}

void useDpi(int dpi) {
    usedDpi = dpi;
}

int dpiOfProcess() {
    if (usedDpi != 0) return usedDpi;
    const WindowContext screen(nullptr);
    return ::GetDeviceCaps(screen.Get(), LOGPIXELSX);
}

int dpiOfWindow(HWND window) {
    static auto* const call = loadedCall<UINT WINAPI(HWND)>(cUser, "GetDpiForWindow");
    const UINT dpi = call != nullptr && usedDpi == 0 ? call(window) : 0;
    return dpi != 0 ? static_cast<int>(dpi) : dpiOfProcess();
}

int dpiOfMonitor(HMONITOR monitor) {
    static auto* const call =
        loadedCall<HRESULT WINAPI(HMONITOR, int, UINT*, UINT*)>(L"shcore.dll", "GetDpiForMonitor");
    UINT dpi = 0;
    UINT vertical = 0;
    const bool isKnown =
        usedDpi == 0 && call != nullptr && call(monitor, 0, &dpi, &vertical) == S_OK && dpi != 0;
    return isKnown ? static_cast<int>(dpi) : dpiOfProcess();
}

int metricForDpi(int index, int dpi) {
    static auto* const call = loadedCall<int WINAPI(int, UINT)>(cUser, "GetSystemMetricsForDpi");
    return call != nullptr ? call(index, static_cast<UINT>(dpi)) : ::GetSystemMetrics(index);
}

void addFrame(RECT& client, DWORD style, DWORD extendedStyle, int dpi) {
    static auto* const call =
        loadedCall<BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT)>(cUser, "AdjustWindowRectExForDpi");
    if (call != nullptr) {
        call(&client, style, FALSE, extendedStyle, static_cast<UINT>(dpi));
    } else {
        ::AdjustWindowRectEx(&client, style, FALSE, extendedStyle);
    }
}

void allowScalePerMonitor() {
    static auto* const call =
        loadedCall<BOOL WINAPI(HANDLE)>(cUser, "SetProcessDpiAwarenessContext");
    // Per monitor, with the frames of windows, or else without.
    constexpr LONG_PTR cKinds[] = {-4, -3};
    for (const LONG_PTR kind : cKinds) {
        if (call == nullptr || call(reinterpret_cast<HANDLE>(kind)) != 0) return;
    }
}

}  // namespace tessalink::detail
