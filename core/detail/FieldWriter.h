#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/base/CString.h"

namespace tessalink::detail {

/// Builds the text of a time or date in place, without allocating.
class FieldWriter {
public:
    /// A text of `width` blanks.
    explicit FieldWriter(int width = 0) : m_length(static_cast<std::size_t>(width)) {
        std::fill_n(m_text, m_length, ' ');
    }

    /// Writes at a position, or behind what is there.
    void Put(int position, std::string_view text) {
        std::copy(text.begin(), text.end(), m_text + position);
        m_length = std::max(m_length, static_cast<std::size_t>(position) + text.size());
    }
    void Append(std::string_view text) { Put(static_cast<int>(m_length), text); }

    /// Appends the number with at least `digits` digits. It is not negative.
    void AppendNumber(int number, int digits) {
        char text[cMaxDigits];
        char* const end = text + cMaxDigits;
        char* start = end;
        for (; number > 0 || end - start < digits; number /= 10) {
            *--start = static_cast<char>('0' + number % 10);
        }
        Append({start, static_cast<std::size_t>(end - start)});
    }

    std::string_view View() const { return {m_text, m_length}; }

private:
    static constexpr std::size_t cMaxDigits = 10;
    /// The longest text is a time: six digits, two separators of four, a blank, an indicator of
    /// nine; or a date: nine digits, two separators of five.
    static constexpr std::size_t cCapacity = 32;

    char m_text[cCapacity];
    std::size_t m_length;
};

}  // namespace tessalink::detail
