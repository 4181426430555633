#pragma once

#include "platform/base/Export.h"

namespace tessalink {

/// Lets the library use the platform: its windows, message boxes, bell, clipboard and printers.
/// Call it once in the thread that has the windows, before anything else of the library; services
/// that the host wants to serve itself are set afterwards (setHostServices), with the present ones
/// as the start. No window may exist.
///
/// - Windows are native child windows (Win32Host.h). They live from the messages that the host's
///   loop gets: TranslateMessage and DispatchMessage, or IsDialogMessage before these.
/// - Pictures are recorded against the application's printer (Win32Printer.h) when there is one, by
///   its resolution and page, with the measures of platformTextMetrics().
/// - Scaling is that of the host's process, which says in its manifest what it is able to do.
TESSALINK_API void useWin32();

/// For programs without a manifest, before their first window: every screen has its own scale, and
/// the platform does not stretch pictures of windows. Nothing where the platform is too old for it.
TESSALINK_API void scalePerMonitor();

}  // namespace tessalink
