#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "platform/base/NumberText.h"

namespace tessalink::detail {

/// The digits of a numeral of any length, kept in a buffer of fixed size without changing the
/// number: leading zeros do not count, integer digits beyond the buffer overflow every type anyway,
/// and decimals beyond it matter only as "more than the digits before".
class NumeralText {
public:
    NumeralText(char* buffer, std::size_t capacity) : m_buffer(buffer), m_capacity(capacity) {}

    void AddDigit(char digit) {
        if (!m_hasPoint && m_length == 1 && m_buffer[0] == '0') m_length = 0;
        if (m_length < m_capacity) {
            m_buffer[m_length++] = digit;
        } else if (!m_hasPoint) {
            m_overflow = true;
        } else if (digit != '0' && m_buffer[m_length - 1] == '0') {
            m_buffer[m_length - 1] = '1';
        }
    }
    void AddPoint() {
        m_hasPoint = true;
        if (m_length < m_capacity) {
            m_buffer[m_length++] = '.';
        } else {
            m_overflow = true;
        }
    }

    /// The number saturated to 32 bits.
    std::int32_t GetInt() const {
        return m_overflow ? std::numeric_limits<std::int32_t>::max() : readInt(Text());
    }
    /// The number, or infinity beyond the range of a double.
    double GetDouble() const {
        return m_overflow ? std::numeric_limits<double>::infinity() : readDouble(Text());
    }
    std::string_view Text() const { return {m_buffer, m_length}; }

private:
    char* m_buffer;
    std::size_t m_capacity;
    std::size_t m_length = 0;
    bool m_hasPoint = false;
    bool m_overflow = false;
};

}  // namespace tessalink::detail
