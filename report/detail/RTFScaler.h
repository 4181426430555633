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
    static const char* find_control(const char* p, const char* end);
    static const char* skip_word(const char* p, const char* end);
    static const char* find_number_end(const char* p, const char* end);
    void append_scaled(std::string_view number);

    double m_factor;
    std::string m_result;
};

}  // namespace tessalink::detail
