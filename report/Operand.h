#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/base/NumberText.h"

namespace tessalink {

/// A number of an expression: a 32-bit integer or a double.
struct Operand {
    std::int32_t isInteger;  ///< nonzero for an integer
    std::int32_t integer;    ///< its value
    double real;             ///< the value of a double

    /// An integer.
    static Operand Integer(std::int32_t value) { return {1, value, 0.0}; }
    /// A double.
    static Operand Real(double value) { return {0, 0, value}; }

    /// Any number but zero is true, a NaN included.
    bool IsTrue() const { return isInteger ? integer != 0 : real != 0.0; }
    /// The number as a double.
    double AsReal() const { return isInteger ? integer : real; }
    /// A double is truncated toward zero and saturated to 32 bits; a NaN gives 0.
    std::int32_t AsInteger() const { return isInteger ? integer : toInt(real); }
};

/// A stack that holds at most N entries.
template <class T, std::size_t N>
class FixedStack {
public:
    /// Whether nothing is on the stack.
    bool IsEmpty() const { return m_count == 0; }
    /// False, and nothing is pushed, when the stack is full.
    bool Push(const T& entry) {
        if (m_count == N) return false;
        m_entries[m_count++] = entry;
        return true;
    }
    /// The last entry pushed; the stack must not be empty.
    T& Top() { return m_entries[m_count - 1]; }
    /// Takes the last entry off; the stack must not be empty.
    T Pop() { return m_entries[--m_count]; }
    /// Takes all entries off.
    void Clear() { m_count = 0; }

private:
    std::size_t m_count = 0;
    std::array<T, N> m_entries;
};

}  // namespace tessalink
