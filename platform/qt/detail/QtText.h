#pragma once

#include <QString>
#include <optional>
#include <string_view>

#include "platform/base/CString.h"

// Texts of windows are Windows-1252 with "\r\n" at the ends of lines, those of the toolkit Unicode
// with "\n".
namespace tessalink::detail {

QString toQString(std::string_view windows1252);
// The text for a field, without carriage returns.
QString toFieldText(const CString& text);
// Nothing when a character is not in Windows-1252.
std::optional<CString> fromQString(const QString& text);

}  // namespace tessalink::detail
