#pragma once

#include "platform/base/Export.h"

namespace tessalink {

/// Lets the library use the toolkit. Call it once, right after the QApplication or QGuiApplication
/// exists and before anything else of the library; services that the host wants to serve itself are
/// set afterwards (setHostServices), with the present ones as the start.
///
/// - Pictures are recorded against the user's default printer when there is one, by its resolution
///   and page, with the measures of toolkitTextMetrics().
/// - With a QApplication, message boxes and the bell are those of the toolkit, and windows are its
///   widgets (QtHost.h). No window that was made without the toolkit may exist then.
/// - Numbers in the C library are written with a full stop again: the application object has set
///   the user's locale.
TESSALINK_API void useQt();

}  // namespace tessalink
