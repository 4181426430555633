#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/NumberText.h"

namespace tessalink::test {

/// Scales the numbers of an RTF text character by character, state by state, as it is described.
inline std::string scaleByStates(double factor, std::string_view rtf) {
    enum State { copying, backslash, f, lr, s, t, expect, number };
    State state = copying;
    std::string result;
    std::int32_t value = 0;
    bool negative = false;
    const auto afterOther = [](char ch) { return ch == '\\' ? backslash : copying; };
    for (const char ch : rtf) {
        const bool digit = ch >= '0' && ch <= '9';
        switch (state) {
            case copying:
                state = afterOther(ch);
                break;
            case backslash:
                state = ch == 'f'                ? f
                        : ch == 'l' || ch == 'r' ? lr
                        : ch == 's'              ? s
                        : ch == 't'              ? t
                                                 : copying;
                break;
            case f:
                state = ch == 'i' || ch == 's' ? expect : afterOther(ch);
                break;
            case lr:
                state = ch == 'i' ? expect : afterOther(ch);
                break;
            case s:
                state = ch == 'a' || ch == 'b' || ch == 'l' ? expect : afterOther(ch);
                break;
            case t:
                state = ch == 'x' ? expect : afterOther(ch);
                break;
            case expect:
                negative = ch == '-';
                value = digit ? ch - '0' : 0;
                state = digit || negative ? number : afterOther(ch);
                if (state == number) continue;
                break;
            case number:
                if (digit) {
                    value = wrapAdd(wrapMul(value, 10), ch - '0');
                    continue;
                }
                value = toInt(value * factor);
                result += std::to_string(negative ? wrapNeg(value) : value);
                state = afterOther(ch);
                break;
        }
        result += ch;
    }
    return result;
}

}  // namespace tessalink::test
