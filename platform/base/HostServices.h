#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/base/CString.h"
#include "platform/base/CodePage.h"
#include "platform/base/LocaleValues.h"
#include "platform/base/MessageBoxNames.h"

namespace tessalink {

class DrawingDevice;

/// What the library asks of the program that it runs in. A host replaces the members that it wants
/// to serve itself; the others keep their defaults.
struct TESSALINK_API HostServices {
    /// Shows `text` with the buttons and icon of `flags` (MB_...) and returns the answer (ID...).
    /// Default: the text and a line feed to standard error; the answer is IDOK.
    std::function<int(const char* text, UINT flags)> messageBox;

    /// Sounds the bell for the kind of event in `type` (MB_ICON...). Default: the bell character to
    /// standard error when that is a terminal, otherwise nothing.
    std::function<void(UINT type)> beep;

    /// Puts the string with this number into `text` and returns true, or returns false when there
    /// is none. Default: there is none.
    std::function<bool(UINT id, CString& text)> stringTable;

    /// The folder that GetModuleDir returns. Default: empty, the folder of the running executable.
    CString moduleDirectory;

    /// The code page of all texts. What is drawn, written as UTF-8 or read from it goes by it, and
    /// so do built-in measures; templates keep what their `\ansicpg` says. Default: empty, that of
    /// the user's settings where the system has one, otherwise 1252.
    std::optional<CodePage> codePage;

    /// How the user writes times, dates and decimals. It is called once: on first use, in a program
    /// with times when services are set. Default: empty, what the system's settings for times say.
    std::function<LocaleValues()> localeValues;

    /// The local time. Default: empty, the system's clock.
    std::function<CalendarTime()> clock;

    /// A new device for the user's default printer, against which pictures are recorded; null when
    /// there is none. One thread calls it at a time. Default: empty, there is none.
    std::function<std::shared_ptr<DrawingDevice>()> defaultPrinter;

    HostServices();
};

/// Replaces the services. Call it before anything else of the library is used, and not while
/// another thread uses it: from then on the record is constant. An empty function stands for the
/// default. What was read from the services before is read again. A code page that texts can't be
/// in raises CInvalidArgException, and nothing is replaced.
TESSALINK_API void setHostServices(HostServices services);

/// The services in force.
TESSALINK_API const HostServices& hostServices();

/// For those that keep what a service told them: `reread` is called each time services have been
/// replaced, in the order of the calls of this function.
TESSALINK_API void whenHostServicesChange(void (*reread)());

/// Sounds the host's bell for a kind of event. Returns nonzero.
TESSALINK_API BOOL MessageBeep(UINT type = MB_OK);

}  // namespace tessalink

/// Shows a message through the host's message box and returns its answer (ID...). A null text shows
/// an empty one.
TESSALINK_API int AfxMessageBox(const char* text, UINT flags = MB_OK);

// Windows has a function of this name: there ours is that of the namespace alone.
#ifndef _WIN32
using tessalink::MessageBeep;
#endif
