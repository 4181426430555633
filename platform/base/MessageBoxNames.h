#pragma once

#include "platform/base/Types.h"

/// Kinds of message boxes and the answers to them, with their classic values.
/// Where the platform has them itself (Windows), they are the platform's.
#ifndef _WIN32

/// Kinds and pictures of message boxes.
inline constexpr UINT MB_OK = 0x00;
inline constexpr UINT MB_OKCANCEL = 0x01;
inline constexpr UINT MB_ABORTRETRYIGNORE = 0x02;
inline constexpr UINT MB_YESNOCANCEL = 0x03;
inline constexpr UINT MB_YESNO = 0x04;
inline constexpr UINT MB_RETRYCANCEL = 0x05;
inline constexpr UINT MB_ICONHAND = 0x10;
inline constexpr UINT MB_ICONSTOP = MB_ICONHAND;
inline constexpr UINT MB_ICONERROR = MB_ICONHAND;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
inline constexpr UINT MB_ICONASTERISK = 0x40;
inline constexpr UINT MB_ICONINFORMATION = MB_ICONASTERISK;

/// What a message box returns: the button that was pressed.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

#endif
