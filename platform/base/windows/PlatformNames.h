#pragma once

/// The platform's own header on Windows, once for the whole library, without `min`, `max` and what
/// is seldom needed. Its macros that stand for functions would also replace the methods of the same
/// names in our classes; functions take their place, so that the calls of a host go on. A host may
/// include the platform's header itself, before or after.
///
/// Texts of the library are bytes, whether a host defines UNICODE or not: where the platform has a
/// name for both kinds, our headers say LOGFONTA, TEXTMETRICA and CREATESTRUCTA.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

// Behind the platform's header, which it needs.
#include <commctrl.h>

// Old words for kinds of pointers, which are empty, and functions that the standard library has; a
// host may have included the platform's header with them.
#undef near
#undef far
#undef min
#undef max

#ifdef UNICODE
#define TESSALINK_PLATFORM_CALL(name) name##W
#else
#define TESSALINK_PLATFORM_CALL(name) name##A
#endif

#undef CopyEnhMetaFile
inline ::HENHMETAFILE CopyEnhMetaFile(::HENHMETAFILE picture, LPCTSTR fileName) {
    return ::TESSALINK_PLATFORM_CALL(CopyEnhMetaFile)(picture, fileName);
}
#undef CreateFont
inline HFONT CreateFont(int height, int width, int escapement, int orientation, int weight,
                        DWORD italic, DWORD underline, DWORD strikeOut, DWORD charSet,
                        DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                        DWORD pitchAndFamily, LPCTSTR face) {
    return ::TESSALINK_PLATFORM_CALL(CreateFont)(
        height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet,
        outPrecision, clipPrecision, quality, pitchAndFamily, face);
}
#undef CreateFontIndirect
inline HFONT CreateFontIndirect(const LOGFONT* font) {
    return ::TESSALINK_PLATFORM_CALL(CreateFontIndirect)(font);
}
#undef DefWindowProc
inline LRESULT DefWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::TESSALINK_PLATFORM_CALL(DefWindowProc)(window, message, wParam, lParam);
}
#undef DrawText
inline int DrawText(HDC dc, LPCTSTR text, int count, LPRECT rect, UINT format) {
    return ::TESSALINK_PLATFORM_CALL(DrawText)(dc, text, count, rect, format);
}
#undef ExtTextOut
inline BOOL ExtTextOut(HDC dc, int x, int y, UINT options, const RECT* rect, LPCTSTR text,
                       UINT count, const INT* advances) {
    return ::TESSALINK_PLATFORM_CALL(ExtTextOut)(dc, x, y, options, rect, text, count, advances);
}
#undef GetClassName
inline int GetClassName(HWND window, LPTSTR name, int room) {
    return ::TESSALINK_PLATFORM_CALL(GetClassName)(window, name, room);
}
#undef GetEnhMetaFile
inline ::HENHMETAFILE GetEnhMetaFile(LPCTSTR fileName) {
    return ::TESSALINK_PLATFORM_CALL(GetEnhMetaFile)(fileName);
}
#undef GetObject
inline int GetObject(HGDIOBJ object, int room, LPVOID description) {
    return ::TESSALINK_PLATFORM_CALL(GetObject)(object, room, description);
}
#undef GetTextExtentPoint32
inline BOOL GetTextExtentPoint32(HDC dc, LPCTSTR text, int count, LPSIZE size) {
    return ::TESSALINK_PLATFORM_CALL(GetTextExtentPoint32)(dc, text, count, size);
}
#undef GetTextMetrics
inline BOOL GetTextMetrics(HDC dc, LPTEXTMETRIC metrics) {
    return ::TESSALINK_PLATFORM_CALL(GetTextMetrics)(dc, metrics);
}
#undef GetWindowText
inline int GetWindowText(HWND window, LPTSTR text, int room) {
    return ::TESSALINK_PLATFORM_CALL(GetWindowText)(window, text, room);
}
#undef GetWindowTextLength
inline int GetWindowTextLength(HWND window) {
    return ::TESSALINK_PLATFORM_CALL(GetWindowTextLength)(window);
}
#undef LoadString
inline int LoadString(HINSTANCE module, UINT id, LPTSTR text, int room) {
    return ::TESSALINK_PLATFORM_CALL(LoadString)(module, id, text, room);
}
#undef PostMessage
inline BOOL PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::TESSALINK_PLATFORM_CALL(PostMessage)(window, message, wParam, lParam);
}
#undef SendMessage
inline LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return ::TESSALINK_PLATFORM_CALL(SendMessage)(window, message, wParam, lParam);
}
#undef SetWindowText
inline BOOL SetWindowText(HWND window, LPCTSTR text) {
    return ::TESSALINK_PLATFORM_CALL(SetWindowText)(window, text);
}
#undef SystemParametersInfo
inline BOOL SystemParametersInfo(UINT action, UINT number, PVOID value, UINT kept) {
    return ::TESSALINK_PLATFORM_CALL(SystemParametersInfo)(action, number, value, kept);
}
#undef TextOut
inline BOOL TextOut(HDC dc, int x, int y, LPCTSTR text, int count) {
    return ::TESSALINK_PLATFORM_CALL(TextOut)(dc, x, y, text, count);
}

#undef TESSALINK_PLATFORM_CALL
