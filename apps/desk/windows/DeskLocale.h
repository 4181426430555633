#pragma once

#include <QString>

namespace tessalink::desk {

/// Makes texts, dates and decimal points those of a language ("de", "en"), or of the system when it
/// is empty; the library's windows follow. After useQt, before any window.
void useLanguage(const QString& language);

}  // namespace tessalink::desk
