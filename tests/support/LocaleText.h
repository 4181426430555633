#pragma once

#include <string>

#include "platform/base/LocaleValues.h"

namespace tessalink::test {

/// The values in one line: "[:] 12 front [AM] [PM] [/] DMY".
inline std::string textOf(const LocaleValues& values) {
    const auto inQuotes = [](const CString& text) {
        return "[" + std::string(text.GetString()) + "] ";
    };
    const char* const orders[] = {"MDY", "DMY", "YMD"};
    std::string text = inQuotes(values.timeSeparator) + (values.is24Hour ? "24 " : "12 ");
    if (!values.is24Hour) {
        text += values.indicatorInFront ? "front " : "";
        text += inQuotes(values.morningIndicator) + inQuotes(values.afternoonIndicator);
    }
    return text + inQuotes(values.dateSeparator) + orders[values.dateOrder];
}

}  // namespace tessalink::test
