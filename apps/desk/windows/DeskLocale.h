#pragma once

#include <QString>

namespace tessalink::desk {

/// Makes texts, dates and decimal points those of a language ("de", "en"), or of the system when it
/// is empty; the library's windows follow. After useQt, before any window: those that are there
/// keep their texts.
void useLanguage(const QString& language);
/// Dark colors in place of the system's.
void useDarkColors();

}  // namespace tessalink::desk
