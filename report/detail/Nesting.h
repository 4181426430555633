#pragma once

namespace tessalink::detail {

/// Counts one construct within another for as long as it is being read.
class NestingCount {
public:
    explicit NestingCount(int& count, int weight = 1) : m_count(count), m_weight(weight) {
        m_count += weight;
    }
    ~NestingCount() { m_count -= m_weight; }
    NestingCount(const NestingCount&) = delete;
    NestingCount& operator=(const NestingCount&) = delete;

private:
    int& m_count;
    int m_weight;
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
