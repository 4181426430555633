#pragma once

#include <string>

#include "platform/base/LocaleValues.h"

namespace tessalink::test {

/// The values in one line: "[:] 12 front [AM] [PM] [/] DMY".
inline std::string textOf(const LocaleValues& values) {
    const auto quoted = [](const CString& text) {
        return "[" + std::string(text.GetString()) + "] ";
    };
    const char* const orders[] = {"MDY", "DMY", "YMD"};
    std::string text = quoted(values.timeSeparator) + (values.is24Hour ? "24 " : "12 ");
    if (!values.is24Hour) {
        text += values.indicatorInFront ? "front " : "";
        text += quoted(values.morningIndicator) + quoted(values.afternoonIndicator);
    }
    return text + quoted(values.dateSeparator) + orders[values.dateOrder];
}

}  // namespace tessalink::test
