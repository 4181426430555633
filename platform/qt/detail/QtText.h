#pragma once

#include <QString>
#include <optional>
#include <string_view>

#include "platform/base/CString.h"

// Texts of windows are in the code page with "\r\n" at the ends of lines, those of the toolkit
// Unicode with "\n".
namespace tessalink::detail {

QString toQString(std::string_view text);
// The text for a field, without carriage returns.
QString toFieldText(const CString& text);
// Nothing when a character is not in the code page.
std::optional<CString> fromQString(const QString& text);

}  // namespace tessalink::detail
