#pragma once

namespace tessalink::detail {

/// Adds to a count for as long as a construct within another is being read or run.
template <class Count>
class NestingCount {
public:
    explicit NestingCount(Count& count, Count weight = 1) : m_count(count), m_weight(weight) {
        m_count += weight;
    }
    ~NestingCount() { m_count -= m_weight; }
    NestingCount(const NestingCount&) = delete;
    NestingCount& operator=(const NestingCount&) = delete;

private:
    Count& m_count;
    Count m_weight;
};

/// Sets a variable for the current scope.
template <class T>
class ScopedValue {
public:
    ScopedValue(T& variable, T value) : m_variable(variable), m_before(variable) {
        m_variable = value;
    }
    ~ScopedValue() { m_variable = m_before; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    T& m_variable;
    T m_before;
};

}  // namespace tessalink::detail
