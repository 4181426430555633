#pragma once

#include <string>
#include <string_view>

#include "platform/base/Types.h"

namespace tessalink::detail {

/// A name in UTF-8 as the system's wide calls take it: whole, with a prefix that lifts the limit of
/// 260 characters where it is long. Empty, with errno, when it is no UTF-8 or names a stream within
/// a file (EILSEQ), is empty (ENOENT), the name of a device (ENODEV), or has a name of more than
/// 255 characters (ENAMETOOLONG).
std::wstring widePath(std::string_view name);

/// The path from the root of its drive or share; as it is when the system knows none.
std::wstring fullPath(const std::wstring& path);

/// Texts between UTF-8 and the system's. What is no text becomes U+FFFD.
std::wstring wideText(std::string_view text);
std::string utf8Text(std::wstring_view text);

/// The errno value for a code of GetLastError.
int errnoOf(DWORD code);
/// Sets errno from GetLastError; returns -1.
int systemFault();

}  // namespace tessalink::detail
