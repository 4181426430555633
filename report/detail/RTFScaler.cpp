#include "report/detail/RTFScaler.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/base/NumberText.h"
#include "report/detail/CharClasses.h"

namespace tessalink::detail {

CString RTFScaler::Scale(std::string_view rtf) {
    m_result.clear();
    m_result.reserve(rtf.size());
    const char* const end = rtf.data() + rtf.size();
    const char* copied = rtf.data();  // what is before it stands in the result, scaled
    const char* p = copied;
    while (const char* word = find_control(p, end)) {
        p = skip_word(word, end);
        if (!p) break;
        const char* const number = p;
        p = find_number_end(number, end);
        if (p == number) continue;
        m_result.append(copied, number);
        if (p != end) append_scaled({number, static_cast<std::size_t>(p - number)});
        copied = p;
    }
    m_result.append(copied, end);
    return CString(std::move(m_result));
}

/// The next backslash, or null.
const char* RTFScaler::find_control(const char* p, const char* end) {
    return p == end
               ? nullptr
               : static_cast<const char*>(std::memchr(p, '\\', static_cast<std::size_t>(end - p)));
}

/// The place after the next control word whose number is scaled, from a backslash on; null if there
/// is none.
const char* RTFScaler::skip_word(const char* p, const char* end) {
    State state = State::copying;
    while (p != end) {
        state = next_state(state, *p++);
        if (state == State::number) return p;
        if (state == State::copying) p = find_control(p, end);
        if (!p) return nullptr;
    }
    return nullptr;
}

/// The end of the sign and digits at `p`; `p` itself when there are none.
const char* RTFScaler::find_number_end(const char* p, const char* end) {
    if (p != end && *p == '-') ++p;
    return std::find_if_not(p, end, isDigit);
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

void RTFScaler::append_scaled(std::string_view number) {
    const bool negative = number.front() == '-';
    if (negative) number.remove_prefix(1);
    std::int32_t value = 0;
    for (const char digit : number) value = wrapAdd(wrapMul(value, 10), digit - '0');
    value = toInt(value * m_factor);
    std::array<char, cMaxIntText> text;
    m_result.append(text.data(), writeInt(text.data(), negative ? wrapNeg(value) : value));
}

}  // namespace tessalink::detail
