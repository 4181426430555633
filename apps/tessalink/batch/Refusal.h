#pragma once

#include <string>
#include <string_view>

#include "platform/base/CException.h"

namespace tessalink::cli {

/// A run that can't be done as it was asked for.
[[noreturn]] inline void refuseRun(const std::string& message) {
    throw CException(CString(std::string_view(message)));
}

}  // namespace tessalink::cli
