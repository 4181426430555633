#pragma once

#include <cstdarg>
#include <string>

namespace tessalink::detail {

// Appends the text that vsprintf makes of the format in the C locale. Raises CInvalidArgException
// for a format that CString::Format does not know; `text` then holds the part before it.
void appendFormat(std::string& text, const char* format, std::va_list arguments)
    __attribute__((format(printf, 2, 0)));

}  // namespace tessalink::detail
