#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/base/Types.h"

namespace tessalink {
struct WindowCore;

/// Shapes of the cursor, with the numbers of the classic IDC_....
inline constexpr int cArrowCursor = 32512;
inline constexpr int cBeamCursor = 32513;   ///< for text
inline constexpr int cCrossCursor = 32515;  ///< for a point
inline constexpr int cMoveCursor = 32646;   ///< for what can be moved
inline constexpr int cHandCursor = 32649;   ///< for what can be clicked
}  // namespace tessalink

/// The messages of windows, their constants and records, with the names and values of the classic
/// desktop. Parameters are as wide as a pointer.
/// Where the platform has them itself (Windows), they are the platform's.
#ifndef _WIN32

/// A parameter, result or id of a message.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
/// A window, as notifications name it. It is valid while the window exists.
using HWND = tessalink::WindowCore*;

/// Two numbers of 16 bits in one parameter.
constexpr WPARAM MAKEWPARAM(UINT low, UINT high) {
    return (low & 0xFFFFU) | ((high & 0xFFFFU) << 16);
}

/// The low 16 bits.
constexpr UINT LOWORD(WPARAM value) {
    return static_cast<UINT>(value & 0xFFFFU);
}

/// The 16 bits above them.
constexpr UINT HIWORD(WPARAM value) {
    return static_cast<UINT>((value >> 16) & 0xFFFFU);
}

/// A point in one parameter; each coordinate has 16 bits and a sign.
constexpr LPARAM MAKELPARAM(int x, int y) {
    return static_cast<LPARAM>(
        MAKEWPARAM(static_cast<UINT>(x) & 0xFFFFU, static_cast<UINT>(y) & 0xFFFFU));
}

/// The messages of windows.
inline constexpr UINT WM_CREATE = 0x0001;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_MOVE = 0x0003;
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_ERASEBKGND = 0x0014;
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
inline constexpr UINT WM_SHOWWINDOW = 0x0018;
inline constexpr UINT WM_SETCURSOR = 0x0020;
inline constexpr UINT WM_SETFONT = 0x0030;
inline constexpr UINT WM_NOTIFY = 0x004E;
inline constexpr UINT WM_CONTEXTMENU = 0x007B;
inline constexpr UINT WM_GETDLGCODE = 0x0087;
inline constexpr UINT EM_GETSEL = 0x00B0;
inline constexpr UINT EM_SETSEL = 0x00B1;
inline constexpr UINT EM_SCROLLCARET = 0x00B7;
inline constexpr UINT EM_GETLINECOUNT = 0x00BA;
inline constexpr UINT EM_LINEINDEX = 0x00BB;
inline constexpr UINT EM_REPLACESEL = 0x00C2;
inline constexpr UINT EM_LIMITTEXT = 0x00C5;
inline constexpr UINT EM_LINEFROMCHAR = 0x00C9;
inline constexpr UINT EM_SETREADONLY = 0x00CF;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_KEYUP = 0x0101;
inline constexpr UINT WM_CHAR = 0x0102;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;
inline constexpr UINT WM_HSCROLL = 0x0114;
inline constexpr UINT WM_VSCROLL = 0x0115;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_MBUTTONDOWN = 0x0207;
inline constexpr UINT WM_MBUTTONUP = 0x0208;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;
inline constexpr UINT WM_MDIACTIVATE = 0x0222;
inline constexpr UINT WM_CUT = 0x0300;
inline constexpr UINT WM_COPY = 0x0301;
inline constexpr UINT WM_PASTE = 0x0302;
inline constexpr UINT WM_UNDO = 0x0304;
inline constexpr UINT WM_USER = 0x0400;

/// Notifications of every control, and those of edit boxes.
inline constexpr int NM_SETFOCUS = -7;
inline constexpr int NM_KILLFOCUS = -8;
inline constexpr UINT EN_SETFOCUS = 0x0100;
inline constexpr UINT EN_KILLFOCUS = 0x0200;
inline constexpr UINT EN_CHANGE = 0x0300;

/// The styles of windows.
inline constexpr DWORD WS_TABSTOP = 0x00010000;
inline constexpr DWORD WS_GROUP = 0x00020000;
inline constexpr DWORD WS_HSCROLL = 0x00100000;
inline constexpr DWORD WS_VSCROLL = 0x00200000;
inline constexpr DWORD WS_BORDER = 0x00800000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_POPUP = 0x80000000;

/// Further styles of edit boxes.
inline constexpr DWORD ES_MULTILINE = 0x0004;
inline constexpr DWORD ES_AUTOVSCROLL = 0x0040;
inline constexpr DWORD ES_AUTOHSCROLL = 0x0080;
inline constexpr DWORD ES_READONLY = 0x0800;
inline constexpr DWORD ES_WANTRETURN = 0x1000;
inline constexpr DWORD ES_NUMBER = 0x2000;

/// What ShowWindow takes.
inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOW = 5;

/// What SetWindowPos takes.
inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOREDRAW = 0x0008;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_SHOWWINDOW = 0x0040;
inline constexpr UINT SWP_HIDEWINDOW = 0x0080;

/// The two scroll bars of a window.
inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;
/// What the user asks of a scroll bar.
inline constexpr UINT SB_LINEUP = 0;
inline constexpr UINT SB_LINELEFT = 0;
inline constexpr UINT SB_LINEDOWN = 1;
inline constexpr UINT SB_LINERIGHT = 1;
inline constexpr UINT SB_PAGEUP = 2;
inline constexpr UINT SB_PAGELEFT = 2;
inline constexpr UINT SB_PAGEDOWN = 3;
inline constexpr UINT SB_PAGERIGHT = 3;
inline constexpr UINT SB_THUMBPOSITION = 4;
inline constexpr UINT SB_THUMBTRACK = 5;
inline constexpr UINT SB_TOP = 6;
inline constexpr UINT SB_LEFT = 6;
inline constexpr UINT SB_BOTTOM = 7;
inline constexpr UINT SB_RIGHT = 7;
inline constexpr UINT SB_ENDSCROLL = 8;

/// What of a SCROLLINFO counts.
inline constexpr UINT SIF_RANGE = 1;
inline constexpr UINT SIF_PAGE = 2;
inline constexpr UINT SIF_POS = 4;
inline constexpr UINT SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS;

/// Which keys a control wants for itself; the others belong to the dialog that it is in.
inline constexpr UINT DLGC_WANTARROWS = 0x0001;
inline constexpr UINT DLGC_WANTTAB = 0x0002;
inline constexpr UINT DLGC_WANTALLKEYS = 0x0004;
inline constexpr UINT DLGC_HASSETSEL = 0x0008;
inline constexpr UINT DLGC_WANTCHARS = 0x0080;

/// Among the flags of a key or character: the key is held down, and repeats itself.
inline constexpr UINT KF_REPEAT = 0x4000;

/// Keys that are no characters.
inline constexpr UINT VK_BACK = 0x08;
inline constexpr UINT VK_TAB = 0x09;
inline constexpr UINT VK_RETURN = 0x0D;
inline constexpr UINT VK_SHIFT = 0x10;
inline constexpr UINT VK_CONTROL = 0x11;
inline constexpr UINT VK_MENU = 0x12;
inline constexpr UINT VK_ESCAPE = 0x1B;
inline constexpr UINT VK_SPACE = 0x20;
inline constexpr UINT VK_PRIOR = 0x21;
inline constexpr UINT VK_NEXT = 0x22;
inline constexpr UINT VK_END = 0x23;
inline constexpr UINT VK_HOME = 0x24;
inline constexpr UINT VK_LEFT = 0x25;
inline constexpr UINT VK_UP = 0x26;
inline constexpr UINT VK_RIGHT = 0x27;
inline constexpr UINT VK_DOWN = 0x28;
inline constexpr UINT VK_INSERT = 0x2D;
inline constexpr UINT VK_DELETE = 0x2E;

/// What else is down while the mouse is used.
inline constexpr UINT MK_LBUTTON = 0x01;
inline constexpr UINT MK_RBUTTON = 0x02;
inline constexpr UINT MK_SHIFT = 0x04;
inline constexpr UINT MK_CONTROL = 0x08;
inline constexpr UINT MK_MBUTTON = 0x10;

/// Colors of the system, for GetSysColor.
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_BTNHIGHLIGHT = 20;
inline constexpr int COLOR_INFOTEXT = 23;
inline constexpr int COLOR_INFOBK = 24;

/// Measures of the system, for GetSystemMetrics.
inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CXVSCROLL = 2;
inline constexpr int SM_CYHSCROLL = 3;
inline constexpr int SM_CXBORDER = 5;
inline constexpr int SM_CYBORDER = 6;
inline constexpr int SM_CYMENU = 15;

/// Settings of the system, for SystemParametersInfo.
inline constexpr UINT SPI_GETWHEELSCROLLLINES = 0x0068;

/// Shapes of the cursor, for SetCursor.
inline constexpr int IDC_ARROW = tessalink::cArrowCursor;
inline constexpr int IDC_IBEAM = tessalink::cBeamCursor;
inline constexpr int IDC_CROSS = tessalink::cCrossCursor;
inline constexpr int IDC_SIZEALL = tessalink::cMoveCursor;
inline constexpr int IDC_HAND = tessalink::cHandCursor;

/// Where in a window the mouse is.
inline constexpr UINT HTCLIENT = 1;

/// The start of every notification.
struct NMHDR {
    HWND hwndFrom = nullptr;  ///< the control
    UINT_PTR idFrom = 0;      ///< its id
    /// What it tells: NM_... or a code of its own.
    std::int32_t code = 0;
};

/// What a scroll bar shows. Positions are in any unit of the program's.
struct SCROLLINFO {
    UINT cbSize = sizeof(SCROLLINFO);  ///< the size of the record
    /// What counts of it: SIF_... together.
    UINT fMask = 0;
    int nMin = 0;       ///< the least position
    int nMax = 0;       ///< the end of the range
    UINT nPage = 0;     ///< how much shows at a time
    int nPos = 0;       ///< the present position
    int nTrackPos = 0;  ///< the position while the user drags
};

/// What a new window is made of; the text in bytes of the code page.
struct CREATESTRUCTA {
    int cy = 0;                      ///< the height
    int cx = 0;                      ///< the width
    int y = 0;                       ///< in the parent's client area
    int x = 0;                       ///< in the parent's client area
    std::int32_t style = 0;          ///< WS_
    const char* lpszName = nullptr;  ///< the text
};
/// The same as CREATESTRUCTA.
using CREATESTRUCT = CREATESTRUCTA;

#endif
