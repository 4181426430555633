#include "report/detail/RTFScaler.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/base/NumberText.h"
#include "report/detail/CharTables.h"

namespace tessalink::detail {

CString RTFScaler::Scale(std::string_view rtf) {
    m_result.clear();
    m_result.reserve(rtf.size());
    const char* p = rtf.data();
    const char* const end = p + rtf.size();
    while (p != end) {
        const void* found = std::memchr(p, '\\', static_cast<std::size_t>(end - p));
        const char* word = found ? static_cast<const char*>(found) : end;
        State state = State::copying;
        const char* q = word;
        while (q != end) {
            state = next_state(state, *q++);
            if (state == State::copying || state == State::number) break;
        }
        m_result.append(p, q);
        p = state == State::number ? read_number(q, end) : q;
    }
    return CString(std::string_view(m_result));
}

RTFScaler::State RTFScaler::next_state(State state, char ch) {
    if (ch == '\\') return state == State::backslash ? State::copying : State::backslash;
    const auto either = [ch](std::string_view letters, State next) {
        return letters.find(ch) != std::string_view::npos ? next : State::copying;
    };
    switch (state) {
        case State::backslash:
            switch (ch) {
                case 'f':
                    return State::f;
                case 'l':
                case 'r':
                    return State::l;
                case 's':
                    return State::s;
                case 't':
                    return State::t;
                default:
                    return State::copying;
            }
        case State::f:
            return either("is", State::number);
        case State::l:
            return either("i", State::number);
        case State::s:
            return either("abl", State::number);
        case State::t:
            return either("x", State::number);
        default:
            return State::copying;
    }
}

/// Scales the number at `p`, if there is one, and returns the place after it. A number that nothing
/// follows is dropped.
const char* RTFScaler::read_number(const char* p, const char* end) {
    if (p == end || (*p != '-' && !isDigit(*p))) return p;
    const bool negative = *p == '-';
    if (negative) ++p;
    std::int32_t value = 0;
    for (; p != end && isDigit(*p); ++p) value = wrapAdd(wrapMul(value, 10), *p - '0');
    if (p == end) return p;
    value = toInt(value * m_factor);
    std::array<char, cMaxIntText> text;
    m_result.append(text.data(), writeInt(text.data(), negative ? wrapNeg(value) : value));
    return p;
}

}  // namespace tessalink::detail
