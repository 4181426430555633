#pragma once

#include <string>

#include "platform/base/CString.h"
#include "platform/base/CodePage.h"

namespace tessalink::detail {

inline std::string utf8(const CString& text) {
    return toUtf8(text.View());
}

}  // namespace tessalink::detail
