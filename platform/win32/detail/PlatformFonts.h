#pragma once

#include "platform/graphics/FaceMetrics.h"
#include "platform/win32/detail/GdiHandle.h"

namespace tessalink::detail {

// The platform's font for an em in pixels; null when the platform refuses.
GdiHandle<HFONT> makePlatformFont(const LOGFONTA& font, double em);

// Whether the platform has a face of symbols; otherwise another one shows their characters.
bool hasSymbolFace();
// The platform's character for one of the library in a font.
wchar_t shownCharacter(const LOGFONTA& font, char code);

// The measures of a face; the built-in ones unless another face was asked for and is installed.
const FaceMetrics& platformMetrics(const LOGFONTA& font);

}  // namespace tessalink::detail
