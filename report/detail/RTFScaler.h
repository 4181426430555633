#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/CString.h"

namespace tessalink::detail {

/// Multiplies the sizes and indents of an RTF fragment: a state machine over its characters.
class RTFScaler {
public:
    explicit RTFScaler(double factor) : m_factor(factor) {}

    CString Scale(std::string_view rtf);

private:
    enum class State : std::uint8_t {
        copying,
        backslash,
        f,      ///< after "\f"
        l,      ///< after "\l" or "\r"
        s,      ///< after "\s"
        t,      ///< after "\t"
        number  ///< after a control word whose number is scaled
    };

    static State next_state(State state, char ch);
    const char* read_number(const char* p, const char* end);

    double m_factor;
    std::string m_result;
};

}  // namespace tessalink::detail
